// The messages to the service manager, read from a real socket.
#include "platform/posix/service_manager.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;

class ServiceManagerTest : public testing::Test {
protected:
    void SetUp() override {
        const QByteArray path = folder_.filePath(QStringLiteral("notify")).toUtf8();
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        std::copy(path.begin(), path.end(), address.sun_path);
        socket_ = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
        ASSERT_EQ(::bind(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
        qputenv("NOTIFY_SOCKET", path);
        qputenv("WATCHDOG_USEC", "200000");
    }
    void TearDown() override {
        ::close(socket_);
        qunsetenv("NOTIFY_SOCKET");
        qunsetenv("WATCHDOG_USEC");
    }
    QByteArrayList Messages() const {
        QByteArrayList messages;
        QByteArray buffer(4096, '\0');
        for (ssize_t size = 0; (size = ::recv(socket_, buffer.data(), 4096, 0)) > 0;) {
            messages.append(buffer.left(size));
        }
        return messages;
    }

    const QTemporaryDir folder_;
    int socket_ = -1;
};

TEST_F(ServiceManagerTest, AStartHasItsOwnLimit) {
    ServiceManager manager;
    manager.Starting(600s);
    EXPECT_EQ(Messages(), QByteArrayList({"EXTEND_TIMEOUT_USEC=600000000", "WATCHDOG_USEC=600000000"}));
    manager.Ready(QStringLiteral("two\nlines"));
    EXPECT_EQ(Messages(),
              QByteArrayList({"WATCHDOG_USEC=200000", "READY=1\nSTATUS=two lines", "WATCHDOG=1"}));
}

TEST_F(ServiceManagerTest, AliveSendsAtMostEveryQuarterOfTheLimit) {
    ServiceManager manager;
    for (int i = 0; i < 1000; ++i) {
        manager.Alive();
    }
    const auto began = std::chrono::steady_clock::now();
    QByteArrayList messages = Messages();
    while (messages.size() < 3) {
        manager.Alive();
        messages += Messages();
    }
    // The first one may have been sent just before the measurement began.
    EXPECT_GE(std::chrono::steady_clock::now() - began, 50ms);
}

TEST_F(ServiceManagerTest, TheWatchCanBeStopped) {
    ServiceManager manager;
    manager.StopWatching();
    manager.Alive();
    EXPECT_EQ(Messages(), QByteArrayList({"WATCHDOG_USEC=0"}));
}

TEST_F(ServiceManagerTest, WithoutALimitThereIsNoWatchdogMessage) {
    qputenv("WATCHDOG_USEC", "many");
    ServiceManager manager;
    manager.Starting(1s);
    manager.Ready({});
    manager.Alive();
    EXPECT_EQ(Messages(), QByteArrayList({"EXTEND_TIMEOUT_USEC=1000000", "READY=1\nSTATUS="}));
}

TEST_F(ServiceManagerTest, NothingHappensWithoutASocket) {
    for (const QByteArray& name :
         {QByteArray(), QByteArray("relative"), QByteArray("/nowhere/at/all"), QByteArray(300, '/')}) {
        qputenv("NOTIFY_SOCKET", name);
        ServiceManager manager;
        manager.Ready(QStringLiteral("ready"));
        manager.Alive();
        manager.Stopping();
    }
    EXPECT_TRUE(Messages().isEmpty());
}

} // namespace

// Tests of the serial line on a pseudo terminal.
#include "platform/serial/qserialport_line.h"

#include "core/run_time_error.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <array>
#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <random>
#include <termios.h>
#include <thread>
#include <unistd.h>

namespace {

// The controller's end of a line.
class Pty {
public:
    Pty() {
        std::array<char, 256> name = {};
        EXPECT_EQ(openpty(&master_, &slave_, name.data(), nullptr, nullptr), 0);
        termios raw = {};
        tcgetattr(slave_, &raw);
        cfmakeraw(&raw);
        tcsetattr(slave_, TCSANOW, &raw);
        device = QString::fromLatin1(name.data());
    }
    ~Pty() { Vanish(); }
    Pty(const Pty&) = delete;
    Pty& operator=(const Pty&) = delete;

    void Vanish() {
        for (int* end : {&master_, &slave_}) {
            if (*end >= 0) {
                close(*end);
            }
            *end = -1;
        }
    }
    termios Settings() const {
        termios settings = {};
        tcgetattr(master_, &settings);
        return settings;
    }
    void Send(const QByteArray& bytes) const {
        EXPECT_EQ(write(master_, bytes.constData(), size(bytes)), bytes.size());
    }
    // Returns what arrives until there are `count` bytes, or until nothing has arrived for `patience`
    // milliseconds.
    QByteArray Receive(qsizetype count, int patience = 2000) const {
        QByteArray all;
        pollfd waiting = {master_, POLLIN, 0};
        while (all.size() < count && poll(&waiting, 1, patience) > 0) {
            std::array<char, 4096> part = {};
            const ssize_t got = read(master_, part.data(), part.size());
            if (got <= 0) {
                break;
            }
            all.append(part.data(), got);
        }
        return all;
    }

    QString device;

private:
    static std::size_t size(const QByteArray& bytes) { return static_cast<std::size_t>(bytes.size()); }

    int master_ = -1;
    int slave_ = -1;
};

class SerialTest : public testing::Test {
protected:
    void Open(int port = 3) {
        line.Open({.commPort = port, .baudRate = 115200, .rtsEnable = true, .dtrEnable = false});
    }
    // Writes until the line is full and messages are dropped.
    void Fill() {
        for (int i = 0; i < 1000 && log.filter(QStringLiteral("ne prend rien")).isEmpty(); ++i) {
            line.Output(QByteArray(515, 'x') + "\r\n");
        }
        EXPECT_EQ(log.filter(QStringLiteral("ne prend rien")).size(), 1);
    }

    Pty controller;
    QTemporaryDir folder;
    QStringList log;
    QSerialPortLine line{
        {{3, controller.device}}, folder.path(), [this](const QString& text) { log += text; }};
};

int NumberOf(const std::function<void()>& operation) {
    try {
        operation();
    } catch (const RunTimeError& error) {
        return error.number;
    }
    return 0;
}

} // namespace

TEST_F(SerialTest, OpensWithTheControllersSettings) {
    Open();
    EXPECT_TRUE(line.IsOpen());
    const termios settings = controller.Settings();
    EXPECT_EQ(cfgetospeed(&settings), static_cast<speed_t>(B115200));
    EXPECT_EQ(settings.c_cflag & static_cast<tcflag_t>(CSIZE), static_cast<tcflag_t>(CS8));
    EXPECT_EQ(settings.c_cflag & static_cast<tcflag_t>(PARENB | CSTOPB | CRTSCTS), 0U);
    EXPECT_EQ(settings.c_iflag & static_cast<tcflag_t>(IXON | IXOFF), 0U);
}

TEST_F(SerialTest, SignalsThatTheDeviceRefusesAreLoggedAndNoError) {
    Open();
    ASSERT_EQ(log.size(), 2);
    EXPECT_TRUE(log[0].contains(QStringLiteral("RTS")));
    EXPECT_TRUE(log[1].contains(QStringLiteral("DTR")));
    line.Output("AT+I\r\n");
    EXPECT_EQ(controller.Receive(6), "AT+I\r\n");
}

TEST_F(SerialTest, APortThatDoesNotExistIsAnInvalidPortNumber) {
    EXPECT_EQ(NumberOf([this] { Open(0); }), 8002);
    EXPECT_EQ(NumberOf([this] { Open(-4); }), 8002);
    EXPECT_EQ(NumberOf([this] { Open(20'000); }), 8002);
    EXPECT_FALSE(line.IsOpen());
}

TEST_F(SerialTest, AFileThatIsNoDeviceIsAnInvalidPortNumber) {
    QFile file(folder.filePath(QStringLiteral("COM7")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    EXPECT_EQ(NumberOf([this] { Open(7); }), 8002);
}

TEST_F(SerialTest, ALinkInTheApplicationFolderNamesTheDevice) {
    ASSERT_TRUE(QFile::link(controller.device, folder.filePath(QStringLiteral("COM12"))));
    Open(12);
    line.Output("AT+T\r\n");
    EXPECT_EQ(controller.Receive(6), "AT+T\r\n");
}

TEST_F(SerialTest, ADeviceOfTheCommandLineGoesBeforeTheLink) {
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/null"), folder.filePath(QStringLiteral("COM3"))));
    Open(3);
    EXPECT_TRUE(line.IsOpen());
}

TEST_F(SerialTest, ADanglingLinkIsNotPassedOver) {
    ASSERT_TRUE(QFile::link(QStringLiteral("/dev/no such device"), folder.filePath(QStringLiteral("COM1"))));
    try {
        Open(1);
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number, 8002);
        EXPECT_TRUE(error.detail.contains(folder.path())) << error.detail.toStdString();
    }
}

TEST_F(SerialTest, OpeningTwiceIsRefused) {
    Open();
    EXPECT_EQ(NumberOf([this] { Open(); }), 8005);
    line.Close();
    Open();
    EXPECT_TRUE(line.IsOpen());
}

TEST_F(SerialTest, AClosedPortNeitherSendsNorReads) {
    EXPECT_EQ(NumberOf([this] { line.Output("x"); }), 8018);
    EXPECT_EQ(NumberOf([this] { line.Input(); }), 8018);
    line.Close();
}

TEST_F(SerialTest, MessagesArriveWholeAndInOrder) {
    Open();
    QByteArray all;
    for (int i = 0; i < 60; ++i) {
        const QByteArray message = "AT+B-" + QByteArray::number(i).rightJustified(10, '0') + "\r\n";
        line.Output(message);
        all += message;
    }
    EXPECT_EQ(controller.Receive(all.size()), all);
}

TEST_F(SerialTest, InputGivesAllThatHasArrivedAndOnlyOnce) {
    Open();
    EXPECT_EQ(line.Input(), QByteArray());
    controller.Send("Mode Normal\nOK\n");
    QByteArray arrived;
    QElapsedTimer time;
    time.start();
    while (arrived.size() < 15 && time.elapsed() < 5000) {
        arrived += line.Input();
    }
    EXPECT_EQ(arrived, "Mode Normal\nOK\n");
    EXPECT_EQ(line.Input(), QByteArray());
}

TEST_F(SerialTest, ADeadLineIsDroppedInTimeAndToldOnce) {
    Open();
    log.clear();
    QElapsedTimer time;
    time.start();
    Fill();
    for (int i = 0; i < 50; ++i) {
        line.Output("AT+B-0000000000\r\n");
    }
    EXPECT_LT(time.elapsed(), 99) << "a line that accepts nothing must not hold up every message";
    EXPECT_EQ(log.size(), 1);
    EXPECT_TRUE(line.IsOpen());
}

TEST_F(SerialTest, ALineThatTakesAgainIsUsedAgain) {
    Open();
    Fill();
    controller.Receive(1 << 20, 50);
    QByteArray arrived;
    QElapsedTimer time;
    time.start();
    while (!arrived.contains("AT+I\r\n") && time.elapsed() < 10'000) {
        line.Output("AT+I\r\n");
        arrived += controller.Receive(6, 20);
    }
    EXPECT_TRUE(arrived.contains("AT+I\r\n"));
}

TEST_F(SerialTest, ASlowReaderGetsWholeMessagesInOrder) {
    Open();
    Fill();
    QByteArray arrived;
    QElapsedTimer time;
    time.start();
    // The event loop sends what waits.
    while (!arrived.endsWith("AT+R-1\r\n") && time.elapsed() < 10'000) {
        if (!line.IsBehind()) {
            line.Output("AT+R-1\r\n");
        }
        QCoreApplication::processEvents();
        arrived += controller.Receive(700, 5);
    }
    for (const QByteArray& message : arrived.split('\n')) {
        EXPECT_TRUE(message.isEmpty() || message == QByteArray(515, 'x') + '\r' || message == "AT+R-1\r")
            << message.toStdString();
    }
    EXPECT_FALSE(line.IsBehind());
}

TEST_F(SerialTest, ClosingSendsWhatWaits) {
    Open();
    for (int i = 0; i < 1000 && !line.IsBehind(); ++i) {
        line.Output(QByteArray(515, 'x') + "\r\n");
    }
    line.Output("AT+R-1\r\n");
    QByteArray all;
    std::thread reader([&] {
        for (QByteArray part = "x"; !part.isEmpty() && !all.endsWith("AT+R-1\r\n"); all += part) {
            part = controller.Receive(1, 5000);
        }
    });
    line.Close();
    reader.join();
    EXPECT_TRUE(all.endsWith("AT+R-1\r\n"));
}

TEST_F(SerialTest, ClosingADeadLineTakesASecondAtMost) {
    Open();
    Fill();
    QElapsedTimer time;
    time.start();
    line.Close();
    EXPECT_LT(time.elapsed(), 2000);
    EXPECT_FALSE(line.IsBehind());
}

TEST_F(SerialTest, OnlySixteenPortsExist) {
    QSerialPortLine many({{17, controller.device}, {16, controller.device}}, folder.path(),
                         [](const QString&) {});
    const auto open = [&](int port) {
        return NumberOf([&] { many.Open({.commPort = port, .baudRate = 115200}); });
    };
    EXPECT_EQ(open(17), 8002);
    EXPECT_EQ(open(16), 0);
}

TEST_F(SerialTest, ADeviceThatIsInUseIsOpenAlready) {
    QSerialPortLine other({{1, controller.device}}, folder.path(), [](const QString&) {});
    other.Open({.commPort = 1, .baudRate = 115200});
    try {
        Open();
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number, 8005);
        EXPECT_TRUE(error.detail.contains(controller.device)) << error.detail.toStdString();
    }
}

TEST_F(SerialTest, ARestEndsWithTheReplyOrAfterTenMilliseconds) {
    Open();
    QElapsedTimer time;
    time.start();
    line.AwaitInput();
    EXPECT_GE(time.nsecsElapsed(), 9'000'000);
    controller.Send("Mode Nor");
    std::thread rest([this] { controller.Send("mal\nOK\n"); });
    line.AwaitInput();
    rest.join();
    line.AwaitInput();
    EXPECT_EQ(line.Input(), "Mode Normal\nOK\n");
}

TEST_F(SerialTest, ARestOnALineThatNeverStopsSendingTakesNoLonger) {
    Open();
    controller.Send(QByteArray(3000, 'x'));
    QElapsedTimer time;
    time.start();
    line.AwaitInput();
    EXPECT_LT(time.elapsed(), 1000);
    EXPECT_FALSE(line.Input().isEmpty());
}

// Whatever is being done when the device goes, the next write is an error, and the next device works.
TEST_F(SerialTest, AThousandPullsAtRandomMomentsAreErrorsOfTheNextWrite) {
    std::minstd_rand dice(1000);
    for (int pull = 0; pull < 1000; ++pull) {
        Pty pulled;
        QSerialPortLine other({{1, pulled.device}}, folder.path(), [](const QString&) {});
        ASSERT_EQ(NumberOf([&] { other.Open({.commPort = 1, .baudRate = 115200}); }), 0) << pull;
        const auto messages = static_cast<int>(dice() % 60);
        for (int i = 0; i < messages; ++i) {
            other.Output("AT+B-0000000000\r\n");
        }
        switch (dice() % 5) {
        case 0:
            pulled.Send("Mode Normal");
            break;
        case 1:
            QCoreApplication::processEvents();
            break;
        case 2:
            pulled.Receive(17, 1);
            break;
        case 3:
            other.Output(QByteArray(20'000, 'x'));
            break;
        default:
            break;
        }
        pulled.Vanish();
        if (dice() % 2 == 0) {
            QCoreApplication::processEvents();
            other.AwaitInput();
            other.IsBehind();
        }
        EXPECT_EQ(NumberOf([&] { other.Output("AT+R-1\r\n"); }), 8018) << pull;
        EXPECT_FALSE(other.IsOpen());
        other.Close();
    }
}

TEST_F(SerialTest, ALineThatIsClosedIsNotBehindAndDoesNotRest) {
    QElapsedTimer time;
    time.start();
    line.AwaitInput();
    EXPECT_LT(time.elapsed(), 9);
    EXPECT_FALSE(line.IsBehind());
}

TEST_F(SerialTest, ADeviceThatHangsUpIsNoLongerWatched) {
    Open();
    controller.Vanish();
    QElapsedTimer time;
    time.start();
    while (line.IsOpen() && time.elapsed() < 5000) {
        QCoreApplication::processEvents();
    }
    EXPECT_FALSE(line.IsOpen());
    line.AwaitInput();
    EXPECT_FALSE(line.IsBehind());
    try {
        line.Output("AT+R-1\r\n");
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number, 8018);
        EXPECT_TRUE(
            error.detail.contains(QStringLiteral("COM3, ") + controller.device + QStringLiteral(" has gone")))
            << error.detail.toStdString();
    }
}

TEST_F(SerialTest, ADeviceThatGoesAwayIsAnErrorOfTheNextWrite) {
    Open();
    controller.Vanish();
    EXPECT_EQ(NumberOf([this] { line.Output("AT+R-1\r\n"); }), 8018);
    EXPECT_FALSE(line.IsOpen());
    EXPECT_EQ(NumberOf([this] { line.Output("AT+R-1\r\n"); }), 8018);
    line.Close();
}

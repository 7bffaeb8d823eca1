// Sending datagrams to the service manager.
#include "platform/posix/service_manager.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

// The address of a socket in the file system, or of an abstract one, whose name begins with "@".
bool AddressOf(const QByteArray& name, sockaddr_un& address, socklen_t& length) {
    if ((!name.startsWith('/') && !name.startsWith('@')) ||
        name.size() >= qsizetype{sizeof(address.sun_path)}) {
        return false;
    }
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, name.constData(), static_cast<std::size_t>(name.size()));
    if (name.startsWith('@')) {
        address.sun_path[0] = '\0';
    }
    length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + static_cast<std::size_t>(name.size()));
    return true;
}

int ConnectedSocket(const QByteArray& name) {
    sockaddr_un address = {};
    socklen_t length = 0;
    if (!AddressOf(name, address, length)) {
        return -1;
    }
    const int descriptor = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (descriptor >= 0 && ::connect(descriptor, reinterpret_cast<const sockaddr*>(&address), length) != 0) {
        ::close(descriptor);
        return -1;
    }
    return descriptor;
}

} // namespace

ServiceManager::ServiceManager() : socket_(ConnectedSocket(qgetenv("NOTIFY_SOCKET"))) {
    bool isNumber = false;
    const qlonglong limit = qgetenv("WATCHDOG_USEC").toLongLong(&isNumber);
    if (isNumber && limit > 0) {
        limit_ = limit;
    }
}

ServiceManager::~ServiceManager() {
    if (socket_ >= 0) {
        ::close(socket_);
    }
}

void ServiceManager::Send(const QByteArray& message) const {
    if (socket_ >= 0) {
        ::send(socket_, message.constData(), static_cast<std::size_t>(message.size()), MSG_NOSIGNAL);
    }
}

void ServiceManager::Starting(std::chrono::seconds limit) {
    const QByteArray microseconds = QByteArray::number(std::chrono::microseconds(limit).count());
    Send("EXTEND_TIMEOUT_USEC=" + microseconds);
    if (limit_) {
        Send("WATCHDOG_USEC=" + microseconds);
    }
}

void ServiceManager::Ready(const QString& status) {
    if (limit_) {
        Send("WATCHDOG_USEC=" + QByteArray::number(qlonglong{*limit_}));
    }
    Send("READY=1\nSTATUS=" + QString(status).replace(u'\n', u' ').toUtf8());
    lastAlive_.reset();
    Alive();
}

void ServiceManager::Stopping() {
    Send("STOPPING=1");
}

void ServiceManager::Alive() {
    const auto now = std::chrono::steady_clock::now();
    if (limit_ && (!lastAlive_ || now - *lastAlive_ >= std::chrono::microseconds(*limit_ / 4))) {
        Send("WATCHDOG=1");
        lastAlive_ = now;
    }
}

void ServiceManager::StopWatching() {
    if (limit_) {
        Send("WATCHDOG_USEC=0");
        limit_.reset();
    }
}

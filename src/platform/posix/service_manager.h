// Messages to the service manager that has started the program, such as systemd.
#pragma once

#include <QByteArray>
#include <QString>

#include <chrono>
#include <optional>

// Speaks the protocol of sd_notify(3): datagrams of NAME=value lines to the socket that NOTIFY_SOCKET names.
// Does nothing without one. A message that cannot be sent is dropped, and no operation blocks. One thread
// only. WATCHDOG_PID is ignored: the process that the manager has started may be an X server's launcher.
class ServiceManager {
public:
    ServiceManager();
    ~ServiceManager();
    ServiceManager(const ServiceManager&) = delete;
    ServiceManager& operator=(const ServiceManager&) = delete;

    // The program starts or starts again: it may take this long until the next Alive or Ready.
    void Starting(std::chrono::seconds limit);
    // The program is ready; from now on Alive must follow within the manager's limit.
    void Ready(const QString& status);
    // The program ends on purpose.
    void Stopping();
    // The program works. Call it as often as convenient; it sends a message at most every quarter of the
    // manager's limit.
    void Alive();
    // Switches the manager's limit off for this run.
    void StopWatching();

private:
    void Send(const QByteArray& message) const;

    int socket_ = -1;
    // The manager's limit in microseconds; nothing when it has none.
    std::optional<std::int64_t> limit_;
    std::optional<std::chrono::steady_clock::time_point> lastAlive_;
};

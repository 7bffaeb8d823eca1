// The serial line of the LED controller on a real port.
#pragma once

#include "platform/serial/output_queue.h"
#include "platform/serial_port.h"

#include <QSerialPort>
#include <QSocketNotifier>
#include <QString>

#include <functional>
#include <map>
#include <memory>

// The device of port number n is the first match of: the one given for n, a file or link "COMn" in the
// application folder, "/dev/ttyS(n-1)". A line signal that the device refuses and a line that accepts nothing
// are logged and are not errors. The toolkit opens and reads the device; messages are written to its
// descriptor directly, because the toolkit's own queue has no bound and reports a full device as an error.
class QSerialPortLine : public SerialPort {
public:
    using Log = std::function<void(const QString&)>;

    // `devices`: port number to device path.
    QSerialPortLine(std::map<int, QString> devices, QString appFolder, Log log);

    void Open(const SerialSettings& settings) override;
    void Close() override;
    bool IsOpen() const override { return port_.isOpen(); }
    void Output(const QByteArray& bytes) override;
    bool IsBehind() override;
    void AwaitInput() override;
    QByteArray Input() override;

private:
    QString DeviceOf(int number) const;
    [[noreturn]] void RefuseToOpen(const QString& name);
    void Apply(const SerialSettings& settings);
    void Send();
    void SendRest();
    void CloseIfGone();
    void DropStalled();
    void TellDropped();
    [[noreturn]] void DeviceGone(const QString& reason);

    std::map<int, QString> devices_;
    QString appFolder_;
    Log log_;
    QSerialPort port_;
    OutputQueue queue_;
    // Wakes the event loop when the device accepts more; enabled while messages wait.
    std::unique_ptr<QSocketNotifier> writable_;
    // Why the device has gone, until a write reports it; empty while it is there.
    QString gone_;
    // Logged once, until everything has been sent again.
    bool dropped_ = false;
    // "COM1 (/dev/ttyS0)", for messages.
    QString name_;
};

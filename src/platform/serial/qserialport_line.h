// The serial line of the LED controller on a real port.
#pragma once

#include "platform/serial_port.h"

#include <QDeadlineTimer>
#include <QSerialPort>
#include <QString>

#include <functional>
#include <map>

// The device of port number n is the first match of: the one given for n, a file or link "COMn" in the
// application folder, "/dev/ttyS(n-1)". A line signal that the device refuses and a line that accepts nothing
// are logged and are not errors.
class QSerialPortLine : public SerialPort {
public:
    using Log = std::function<void(const QString&)>;

    // `devices`: port number to device path.
    QSerialPortLine(std::map<int, QString> devices, QString appFolder, Log log);

    void Open(const SerialSettings& settings) override;
    void Close() override;
    bool IsOpen() const override { return port_.isOpen(); }
    void Output(const QByteArray& bytes) override;
    QByteArray Input() override;

private:
    QString DeviceOf(int number) const;
    void Apply(const SerialSettings& settings);
    bool Send(const QByteArray& bytes);
    void DropOutput();
    [[noreturn]] void DeviceGone();

    std::map<int, QString> devices_;
    QString appFolder_;
    Log log_;
    QSerialPort port_;
    // A line that accepted nothing is not used until this has passed. Logged once, until the line recovers.
    QDeadlineTimer asleep_;
    bool stalled_ = false;
};

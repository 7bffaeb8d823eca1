// The simulated serial line, with an LED controller at its other end.
#pragma once

#include "platform/serial_port.h"

#include <functional>

class CallRecord;
class Failures;

// A line without losses. Ports 1 to 16 exist. Bytes that arrive wait for the next read, even while the port
// is closed.
class SimulatedSerial : public SerialPort {
public:
    static constexpr int kPorts = 16;
    // The most bytes that wait.
    static constexpr qsizetype kWaitingBytes = 1 << 20;

    // Record and failures outlive the line.
    SimulatedSerial(CallRecord& record, const Failures& failures) : record_(record), failures_(failures) {}

    void Open(const SerialSettings& settings) override;
    void Close() override;
    bool IsOpen() const override { return open_; }
    void Output(const QByteArray& bytes) override;
    bool IsBehind() override { return false; }
    // No time passes: what arrives has arrived at once.
    void AwaitInput() override {}
    QByteArray Input() override;

    // Delivers bytes to the line. Returns false and delivers nothing when they do not fit.
    bool Arrive(const QByteArray& bytes);

    // Whether the controller answers "AT+R-0" by itself.
    bool controllerAnswers = true;
    // Called after every arrival.
    std::function<void()> arrived;

private:
    CallRecord& record_;
    const Failures& failures_;
    QByteArray waiting_;
    bool open_ = false;
};

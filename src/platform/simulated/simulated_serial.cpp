// The simulated serial line.
#include "platform/simulated/simulated_serial.h"

#include "core/run_time_error.h"
#include "platform/simulated/calls.h"

#include <utility>

void SimulatedSerial::Open(const SerialSettings& settings) {
    record_.Add({QStringLiteral("PortOpen"), true});
    const int port = settings.commPort.value();
    const QString name = QStringLiteral("COM%1").arg(port);
    if (open_) {
        throw RunTimeError(kPortAlreadyOpen, name + QStringLiteral(" is open already"));
    }
    if (failures_.Has("PortOpen") || port < 1 || port > kPorts) {
        throw RunTimeError(kInvalidPortNumber, QStringLiteral("there is no port %1").arg(name));
    }
    open_ = true;
}

void SimulatedSerial::Close() {
    record_.Add({QStringLiteral("PortOpen"), false});
    open_ = false;
}

void SimulatedSerial::Output(const QByteArray& bytes) {
    record_.Add({QStringLiteral("Output"), QString::fromLatin1(bytes)});
    if (!open_ || failures_.Has("Output")) {
        throw RunTimeError(kPortNotOpen, QStringLiteral("the serial port is closed: nothing can be sent"));
    }
    if (!controllerAnswers) {
        return;
    }
    for (const QByteArray& line : bytes.split('\n')) {
        if (line == "AT+R-0\r") {
            Arrive("Mode Normal\nOK");
        }
    }
}

QByteArray SimulatedSerial::Input() {
    if (!open_ || failures_.Has("Input")) {
        throw RunTimeError(kPortNotOpen,
                           QStringLiteral("the serial port is closed: nothing can be received"));
    }
    return std::exchange(waiting_, QByteArray());
}

bool SimulatedSerial::Arrive(const QByteArray& bytes) {
    if (bytes.size() > kWaitingBytes - waiting_.size()) {
        return false;
    }
    waiting_ += bytes;
    if (arrived) {
        arrived();
    }
    return true;
}

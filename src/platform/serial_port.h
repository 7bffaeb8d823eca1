// Port: the serial line of the LED controller.
#pragma once

#include "core/integer.h"

#include <QByteArray>

// The line settings that PortOpen applies.
struct SerialSettings {
    Integer16 commPort = 1;
    int baudRate = 0;
    bool rtsEnable = false;
    bool dtrEnable = false;
};

// Event thread only.
struct SerialPort {
    virtual ~SerialPort() = default;

    // Opens the line: 8 data bits, no parity, one stop bit, no flow control. Raises 8002 when the port does
    // not exist or cannot be opened, 8005 when it is open already.
    virtual void Open(const SerialSettings& settings) = 0;
    virtual void Close() = 0;
    virtual bool IsOpen() const = 0;
    // Sends all bytes, within 99 ms; drops what a dead line has not accepted by then. Raises 8018 when the
    // port is closed or the device has gone away.
    virtual void Output(const QByteArray& bytes) = 0;
    // All bytes that have arrived since the last call. Raises 8018 when closed.
    virtual QByteArray Input() = 0;
};

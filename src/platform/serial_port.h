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
    // Sends a message without waiting: what the device does not accept at once follows while events run. A
    // message is sent whole or not at all. Messages are dropped when the device has accepted nothing for a
    // second, or when too many wait. Raises 8018 when the port is closed or the device has gone away.
    virtual void Output(const QByteArray& bytes) = 0;
    // Whether more than 512 bytes still wait to be sent. False when closed.
    virtual bool IsBehind() = 0;
    // Rests until bytes have arrived and no more follow, at most 10 ms. Returns at once when closed.
    virtual void AwaitInput() = 0;
    // All bytes that have arrived since the last call. Raises 8018 when closed.
    virtual QByteArray Input() = 0;
};

// Messages that wait until a serial device accepts them.
#pragma once

#include <QByteArray>

#include <chrono>
#include <deque>

// Never blocks. A message that has been begun is always finished, so the device never gets a torn one.
class OutputQueue {
public:
    using Time = std::chrono::steady_clock::time_point;

    enum class Outcome {
        kSent,    // nothing waits
        kWaiting, // the device accepts nothing more at present
        kFailed,  // the device has gone; errno says why
    };

    // The most bytes that wait: a tick for the longest strip, and room for commands.
    static constexpr qsizetype kMostBytes = qsizetype{32} * 1024;
    // How long a device may accept nothing before the messages are dropped. A device that is slow takes its
    // bytes in pieces of up to a third of a second.
    static constexpr std::chrono::milliseconds kLongestStall{1000};

    // Appends a message. Returns false, and drops the message, when too many bytes wait.
    bool Add(const QByteArray& message, Time now);
    // Writes what the descriptor accepts, one write for each message.
    Outcome Send(int descriptor, Time now);
    // Drops the messages that have not been begun if the device has accepted nothing for too long. Returns
    // whether it dropped any.
    bool DropStalled(Time now);
    // Forgets everything.
    void Clear();

    // Bytes that wait.
    qsizetype Size() const { return size_; }
    bool IsStalled(Time now) const { return size_ > 0 && now - progress_ > kLongestStall; }

private:
    std::deque<QByteArray> messages_;
    // Bytes of the first message that have been written.
    qsizetype written_ = 0;
    qsizetype size_ = 0;
    // When the device last accepted something, or when the first message came.
    Time progress_;
};

// Tests of the messages that wait for a serial device.
#include "platform/serial/output_queue.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

using std::chrono::milliseconds;
using Outcome = OutputQueue::Outcome;

// A device that accepts as much as a pipe holds.
class OutputQueueTest : public testing::Test {
protected:
    OutputQueueTest() { EXPECT_EQ(pipe2(ends.data(), O_NONBLOCK | O_CLOEXEC), 0); }
    ~OutputQueueTest() override {
        for (const int end : ends) {
            close(end);
        }
    }
    Outcome Send() { return queue.Send(ends[1], now); }
    QByteArray Read() const {
        QByteArray all(1 << 20, Qt::Uninitialized);
        all.resize(std::max<ssize_t>(0, read(ends[0], all.data(), static_cast<std::size_t>(all.size()))));
        return all;
    }
    // Sends messages until the device accepts no more; the last one is torn.
    void FillDevice() {
        EXPECT_GT(fcntl(ends[1], F_SETPIPE_SZ, 4096), 0);
        while (Send() == Outcome::kSent) {
            EXPECT_TRUE(queue.Add(QByteArray(6000, 'x'), now));
        }
    }

    std::array<int, 2> ends = {-1, -1};
    OutputQueue queue;
    OutputQueue::Time now{};
};

} // namespace

TEST_F(OutputQueueTest, SendsAtOnceInOrder) {
    EXPECT_EQ(Send(), Outcome::kSent);
    EXPECT_TRUE(queue.Add("one ", now));
    EXPECT_TRUE(queue.Add("two", now));
    EXPECT_EQ(queue.Size(), 7);
    EXPECT_EQ(Send(), Outcome::kSent);
    EXPECT_EQ(queue.Size(), 0);
    EXPECT_EQ(Read(), "one two");
}

TEST_F(OutputQueueTest, WhatDoesNotFitWaits) {
    FillDevice();
    EXPECT_EQ(queue.Size(), 6000 - 4096);
    EXPECT_TRUE(queue.Add("y", now));
    EXPECT_EQ(Read(), QByteArray(4096, 'x'));
    EXPECT_EQ(Send(), Outcome::kSent);
    EXPECT_EQ(Read(), QByteArray(6000 - 4096, 'x') + 'y');
}

TEST_F(OutputQueueTest, AMessageThatDoesNotFitIsDroppedWhole) {
    FillDevice();
    while (queue.Add("0123456789", now)) {
    }
    EXPECT_LE(queue.Size(), OutputQueue::kMostBytes);
    EXPECT_GT(queue.Size(), OutputQueue::kMostBytes - 10);
    Read();
    QByteArray rest;
    while (Send() == Outcome::kWaiting) {
        rest += Read();
    }
    rest += Read();
    EXPECT_TRUE(rest.endsWith("0123456789"));
    EXPECT_EQ((rest.size() - (6000 - 4096)) % 10, 0);
}

TEST_F(OutputQueueTest, AStalledDeviceLosesAllButTheMessageThatHasBegun) {
    FillDevice();
    EXPECT_TRUE(queue.Add("lost", now));
    now += OutputQueue::kLongestStall;
    EXPECT_FALSE(queue.DropStalled(now)) << "it is not late yet";
    now += milliseconds(1);
    EXPECT_TRUE(queue.DropStalled(now));
    EXPECT_FALSE(queue.DropStalled(now)) << "there is nothing more to drop";
    EXPECT_EQ(queue.Size(), 6000 - 4096);
    Read();
    EXPECT_TRUE(queue.Add("kept", now));
    EXPECT_EQ(Send(), Outcome::kSent);
    EXPECT_EQ(Read(), QByteArray(6000 - 4096, 'x') + "kept");
}

TEST_F(OutputQueueTest, ADeviceThatAcceptsAByteHasNotStalled) {
    FillDevice();
    now += OutputQueue::kLongestStall;
    Read();
    EXPECT_EQ(Send(), Outcome::kSent);
    FillDevice();
    now += OutputQueue::kLongestStall;
    EXPECT_FALSE(queue.IsStalled(now));
}

TEST_F(OutputQueueTest, TimeWithoutAMessageIsNoStall) {
    now += milliseconds(5000);
    EXPECT_TRUE(queue.Add("x", now));
    EXPECT_FALSE(queue.IsStalled(now));
    queue.Clear();
    EXPECT_EQ(queue.Size(), 0);
}

TEST_F(OutputQueueTest, AClosedDeviceIsAFailure) {
    std::signal(SIGPIPE, SIG_IGN);
    close(ends[0]);
    ends[0] = -1;
    EXPECT_TRUE(queue.Add("x", now));
    EXPECT_EQ(Send(), Outcome::kFailed);
    EXPECT_EQ(errno, EPIPE);
}

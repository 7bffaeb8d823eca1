// Tests of the limits for opening a file, counted with the test's own clock, and with files that would take
// minutes.
#include "platform/gstreamer/audio_library.h"
#include "platform/gstreamer/audio_stream.h"
#include "platform/gstreamer/decode_file.h"
#include "platform/gstreamer/opening.h"
#include "platform/gstreamer/pipeline_state.h"
#include "platform/gstreamer/probe_media.h"
#include "platform/gstreamer/start.h"

#include "platform/gstreamer_media.h"

#include <condition_variable>
#include <filesystem>
#include <mutex>
#include <stdexcept>

namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;
using std::chrono::seconds;

// Blocks an errand until the test opens it.
class Gate {
public:
    void Open() {
        const std::lock_guard lock(mutex_);
        open_ = true;
        opened_.notify_all();
    }
    void Pass() {
        std::unique_lock lock(mutex_);
        opened_.wait(lock, [this] { return open_; });
    }

private:
    std::mutex mutex_;
    std::condition_variable opened_;
    bool open_ = false;
};

// The clock of the work, which advances by a fixed step at each look.
struct Looks {
    milliseconds each{0};
    int count = 0;
};

OpeningLimits LimitsBy(const std::shared_ptr<Looks>& looks) {
    OpeningLimits limits;
    limits.lookEvery = milliseconds(1);
    limits.workSoFar = [looks] { return nanoseconds(looks->each) * looks->count++; };
    return limits;
}

// The number of looks after which a file that never opens is given up.
int LooksUntilGivenUp(milliseconds workAtEachLook) {
    const auto gate = std::make_shared<Gate>();
    const auto looks = std::make_shared<Looks>(Looks{workAtEachLook});
    const auto result = WithinLimits<int>(LimitsBy(looks), [gate](const std::atomic<bool>& abandoned) {
        gate->Pass();
        return abandoned ? 1 : 0;
    });
    EXPECT_FALSE(result);
    gate->Open();
    return looks->count - 1;
}

TEST(Opening, ADecoderThatWorksIsGivenUpAfterFiveSecondsOfItsWork) {
    EXPECT_EQ(LooksUntilGivenUp(milliseconds(100)), 50);
    EXPECT_EQ(LooksUntilGivenUp(milliseconds(40)), 125) << "a busy machine gives it less at each look";
    EXPECT_EQ(LooksUntilGivenUp(seconds(5)), 1);
}

TEST(Opening, AFileThatOnlyWaitsIsGivenUpAfterFifteenSecondsOfLooks) {
    EXPECT_EQ(LooksUntilGivenUp(milliseconds(0)), 150);
    EXPECT_EQ(LooksUntilGivenUp(milliseconds(1)), 150);
}

TEST(Opening, WhatOpensBeforeTheLimitIsGivenBack) {
    const auto gate = std::make_shared<Gate>();
    const auto looks = std::make_shared<Looks>();
    OpeningLimits limits = LimitsBy(looks);
    limits.workSoFar = [gate, looks] {
        if (++looks->count == 100) {
            gate->Open(); // the disk has woken up
        }
        return nanoseconds(0);
    };
    limits.looks = 1'000'000;
    const auto result = WithinLimits<int>(limits, [gate](const std::atomic<bool>&) {
        gate->Pass();
        return 7;
    });
    EXPECT_EQ(result, 7);
}

TEST(Opening, TheRoutineIsToldWhenNobodyWaitsForItAnyMore) {
    const auto ended = std::make_shared<Gate>();
    OpeningLimits limits;
    limits.looks = 2;
    limits.lookEvery = milliseconds(1);
    EXPECT_FALSE(WithinLimits<int>(limits, [ended](const std::atomic<bool>& abandoned) {
        while (!abandoned) {
            std::this_thread::yield();
        }
        ended->Open();
        return 0;
    }));
    ended->Pass();
}

TEST(Opening, StopEndsTheWait) {
    const auto gate = std::make_shared<Gate>();
    const auto looks = std::make_shared<Looks>();
    std::atomic<bool> stop{true};
    EXPECT_FALSE(WithinLimits<int>(
        LimitsBy(looks),
        [gate](const std::atomic<bool>&) {
            gate->Pass();
            return 0;
        },
        &stop));
    EXPECT_EQ(looks->count, 2) << "one look";
    gate->Open();
}

TEST(Opening, AnExceptionReachesTheCaller) {
    EXPECT_THROW(WithinLimits<int>(OpeningLimits{},
                                   [](const std::atomic<bool>&) -> int { throw std::length_error("x"); }),
                 std::length_error);
}

// Ten gigabytes of zeros, of which the disk holds only the head.
QString WriteSparse(media::Scratch& scratch, const QByteArray& name, const std::string& head,
                    std::uintmax_t size) {
    const QString path = scratch.Write(name, head);
    std::filesystem::resize_file(path.toStdString(), size);
    return path;
}

constexpr std::uintmax_t kTenGigabytes = 10'000'000'000;

// The header of hours of sound without a single frame.
QString WriteEndlessFlac(media::Scratch& scratch) {
    std::string head("fLaC\x80\x00\x00\x22\x10\x00\x10\x00\x00\x00\x00\x00\x00\x00", 18);
    head += std::string("\x0a\xc4\x42\xff\xff\xff\xff\xff", 8);
    return WriteSparse(scratch, "endless.flac", head, kTenGigabytes);
}

// Reading the used CPU time costs the test time, so a tenth of a second replaces five.
OpeningLimits Brief() {
    OpeningLimits limits;
    limits.work = milliseconds(100);
    limits.looks = 1'000'000;
    limits.lookEvery = milliseconds(1);
    return limits;
}

TEST(Opening, AHeaderOverHoursOfNothingIsGivenUpByItsWork) {
    media::Scratch scratch;
    const QString path = WriteEndlessFlac(scratch);
    const nanoseconds before = ProcessWork();
    EXPECT_EQ(AudioStream::Open(path, true, Brief()), nullptr);
    QString reason;
    EXPECT_EQ(Decoder::OpenWithin(Brief(), path, reason), nullptr);
    EXPECT_EQ(reason, OpeningTookTooLong());
    EXPECT_LT(ProcessWork() - before, seconds(2));
}

TEST(Opening, EveryWayInHasTheSameLimit) {
    media::Scratch scratch;
    const QString path = WriteEndlessFlac(scratch);
    const nanoseconds before = ProcessWork();
    EXPECT_FALSE(ProbeMedia(path));
    // Reading the streams and measuring the length share one limit.
    EXPECT_LT(ProcessWork() - before, seconds(7));
}

constexpr auto kStarted = static_cast<GstMessageType>(GST_MESSAGE_ASYNC_DONE | GST_MESSAGE_ERROR);

// A demuxer that finds nothing may end without a message. Then there is nothing to wait for.
TEST(Opening, APipelineWithoutARunningThreadHasNoVerdict) {
    ASSERT_TRUE(StartGStreamer());
    const PipelineHandle pipeline(gst_parse_launch("identity ! fakesink", nullptr));
    ASSERT_NE(gst_element_set_state(pipeline.get(), GST_STATE_PAUSED), GST_STATE_CHANGE_FAILURE);
    const std::atomic<bool> never{false};
    EXPECT_EQ(WaitForVerdict(pipeline.get(), kStarted, never), nullptr);
}

TEST(Opening, ASourceThatNeverGivesAnythingIsWaitedForUntilTheStop) {
    ASSERT_TRUE(StartGStreamer());
    const PipelineHandle pipeline(gst_parse_launch("appsrc ! fakesink", nullptr));
    ASSERT_NE(gst_element_set_state(pipeline.get(), GST_STATE_PAUSED), GST_STATE_CHANGE_FAILURE);
    OpeningLimits limits;
    limits.looks = 5;
    const auto ended = std::make_shared<Gate>();
    EXPECT_FALSE(WithinLimits<bool>(limits, [&pipeline, ended](const std::atomic<bool>& abandoned) {
        const bool none = WaitForVerdict(pipeline.get(), kStarted, abandoned) == nullptr;
        ended->Open();
        return none;
    }));
    ended->Pass();
}

} // namespace

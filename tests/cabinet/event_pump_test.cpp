// The event pump: order, bounds, nesting, waits, signals.
#include "platform/qt/qt_event_pump.h"

#include "core/run_time_error.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <csignal>
#include <vector>

namespace {

class EventPumpTest : public testing::Test {
protected:
    EventPumpTest() {
        pump.SetSink([this](const InputEvent& event) {
            handed.push_back(event);
            if (onEvent) {
                onEvent(event);
            }
        });
    }

    void PostKey(int code) { pump.Post({.kind = InputKind::kKeyDown, .code = code}); }
    std::vector<int> HandedCodes() const {
        std::vector<int> codes;
        for (const InputEvent& event : handed) {
            codes.push_back(event.code);
        }
        return codes;
    }
    int CountOf(InputKind kind) const {
        return static_cast<int>(std::count_if(handed.begin(), handed.end(),
                                              [&](const InputEvent& event) { return event.kind == kind; }));
    }

    // A hang-up that whoever started the tests ignores would stay ignored.
    const sighandler_t hangUp = std::signal(SIGHUP, SIG_DFL);
    QtEventPump pump;
    std::vector<InputEvent> handed;
    EventSink onEvent;
};

} // namespace

TEST_F(EventPumpTest, HandsKeysOnInTheirOrder) {
    PostKey(1);
    PostKey(2);
    EXPECT_TRUE(handed.empty()) << "nothing is handed on under the toolkit";
    pump.DoEvents();
    EXPECT_EQ(HandedCodes(), (std::vector{1, 2}));
}

TEST_F(EventPumpTest, WhatArrivesMeanwhileWaitsForTheNextCall) {
    onEvent = [this](const InputEvent& event) { PostKey(event.code + 1); };
    PostKey(1);
    pump.DoEvents();
    EXPECT_EQ(HandedCodes(), (std::vector{1}));
    pump.DoEvents();
    EXPECT_EQ(HandedCodes(), (std::vector{1, 2}));
}

TEST_F(EventPumpTest, ANestedCallTakesWhatIsPendingAndNothingIsHandedTwice) {
    onEvent = [this](const InputEvent& event) {
        if (event.code == 1) {
            pump.DoEvents();
            handed.push_back({.code = -1});
        }
    };
    PostKey(1);
    PostKey(2);
    PostKey(3);
    pump.DoEvents();
    EXPECT_EQ(HandedCodes(), (std::vector{1, 2, 3, -1}));
}

TEST_F(EventPumpTest, TicksAndMovesAreMerged) {
    for (int i = 0; i < 5; ++i) {
        pump.Post({.kind = InputKind::kTimer1});
        pump.Post({.kind = InputKind::kTmrSpectrum});
    }
    for (int i = 0; i < 5; ++i) {
        pump.Post({.kind = InputKind::kMouseMove, .button = 1, .x = 10.0 + i, .y = 3});
    }
    pump.Post({.kind = InputKind::kMouseMove, .button = 0, .x = 99, .y = 3});
    pump.DoEvents();
    EXPECT_EQ(CountOf(InputKind::kTimer1), 1);
    EXPECT_EQ(CountOf(InputKind::kTmrSpectrum), 1);
    ASSERT_EQ(CountOf(InputKind::kMouseMove), 2);
    EXPECT_EQ(handed[2].x, 14);
    EXPECT_EQ(handed[3].x, 99);
}

TEST_F(EventPumpTest, AMoveBehindAPressIsKeptApart) {
    pump.Post({.kind = InputKind::kMouseMove, .x = 1});
    pump.Post({.kind = InputKind::kMouseDown, .button = 1, .x = 2});
    pump.Post({.kind = InputKind::kMouseMove, .x = 3});
    pump.DoEvents();
    EXPECT_EQ(handed.size(), 3U);
}

TEST_F(EventPumpTest, TheLightShowDoesNotNestInItselfAndItsTickIsNotLost) {
    int depth = 0;
    int deepest = 0;
    onEvent = [&](const InputEvent& event) {
        deepest = std::max(deepest, ++depth);
        if (event.kind == InputKind::kTmrSpectrum && handed.size() < 3) {
            pump.Post({.kind = InputKind::kTmrSpectrum});
            PostKey(7);
            pump.DoEvents();
        }
        --depth;
    };
    pump.Post({.kind = InputKind::kTmrSpectrum});
    pump.DoEvents();
    EXPECT_EQ(CountOf(InputKind::kTmrSpectrum), 1);
    EXPECT_EQ(CountOf(InputKind::kKeyDown), 1) << "keys still reach a handler that waits";
    pump.DoEvents();
    EXPECT_EQ(CountOf(InputKind::kTmrSpectrum), 2);
    EXPECT_EQ(deepest, 2);
}

TEST_F(EventPumpTest, ErrorsPassThroughNestedCallsAndThePumpGoesOn) {
    onEvent = [this](const InputEvent& event) {
        if (event.code == 1) {
            pump.DoEvents();
        }
        if (event.kind == InputKind::kClose) {
            throw ProgramEnd(4);
        }
    };
    PostKey(1);
    pump.Post({.kind = InputKind::kClose});
    PostKey(2);
    EXPECT_THROW(pump.DoEvents(), ProgramEnd);
    pump.DoEvents();
    EXPECT_EQ(handed.back().code, 2);
    pump.Post({.kind = InputKind::kClose});
    EXPECT_THROW(pump.DoEvents(), ProgramEnd) << "a close that ended by an error does not block the next one";
}

TEST_F(EventPumpTest, AFloodOfKeysIsCutButTheWishToCloseIsHeard) {
    for (int i = 0; i < 5000; ++i) {
        PostKey(i);
    }
    pump.Post({.kind = InputKind::kClose});
    pump.DoEvents();
    EXPECT_EQ(CountOf(InputKind::kKeyDown), 1000);
    EXPECT_EQ(CountOf(InputKind::kClose), 1);
}

TEST_F(EventPumpTest, AWaitLastsItsTimeAndLetsEventsRun) {
    QElapsedTimer time;
    time.start();
    PostKey(1);
    pump.Wait(30);
    EXPECT_GE(time.nsecsElapsed(), 30'000'000);
    EXPECT_EQ(HandedCodes(), (std::vector{1}));
}

TEST_F(EventPumpTest, AWaitOfNothingStillLetsEventsRunOnce) {
    PostKey(1);
    pump.Wait(0);
    PostKey(2);
    pump.Wait(-5);
    EXPECT_EQ(HandedCodes(), (std::vector{1, 2}));
}

TEST_F(EventPumpTest, RunTicksAndFollowsTheLightShow) {
    bool wanted = false;
    int ticks = 0;
    pump.SetIntervals(5, 2);
    pump.SetSpectrumWanted([&] { return wanted; });
    onEvent = [&](const InputEvent& event) {
        if (event.kind == InputKind::kTimer1 && ++ticks == 4) {
            EXPECT_EQ(CountOf(InputKind::kTmrSpectrum), 0);
            wanted = true;
        }
        if (CountOf(InputKind::kTmrSpectrum) == 3) {
            throw ProgramEnd(0);
        }
    };
    EXPECT_THROW(pump.Run(), ProgramEnd);
    EXPECT_GE(CountOf(InputKind::kTimer1), 4);
}

TEST_F(EventPumpTest, WaitingForInputGivesTheNextKeyAndDropsTheRest) {
    pump.Post({.kind = InputKind::kTimer1});
    pump.Post({.kind = InputKind::kMouseUp, .button = 1});
    PostKey(65);
    const auto input = pump.WaitForInput(1000);
    ASSERT_TRUE(input);
    EXPECT_EQ(input->code, 65);
    pump.DoEvents();
    EXPECT_TRUE(handed.empty());
}

TEST_F(EventPumpTest, WaitingForInputEndsByTimeAndByTheWishToClose) {
    QElapsedTimer time;
    time.start();
    EXPECT_FALSE(pump.WaitForInput(20));
    EXPECT_GE(time.elapsed(), 19);
    pump.Post({.kind = InputKind::kClose});
    time.restart();
    EXPECT_FALSE(pump.WaitForInput(60'000));
    EXPECT_LT(time.elapsed(), 30'000);
    pump.DoEvents();
    EXPECT_EQ(CountOf(InputKind::kClose), 1) << "the wish stays for the jukebox";
}

TEST_F(EventPumpTest, EachTerminationSignalAsksForTheEnd) {
    int expected = 0;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        ASSERT_EQ(std::raise(signal), 0);
        QElapsedTimer time;
        time.start();
        ++expected;
        while (CountOf(InputKind::kClose) < expected && time.elapsed() < 10'000) {
            pump.DoEvents();
        }
        EXPECT_EQ(CountOf(InputKind::kClose), expected)
            << "and it was answered, so that the next one asks again";
    }
}

TEST(TerminationSignalsTest, AnIgnoredHangUpStaysIgnored) {
    std::signal(SIGHUP, SIG_IGN);
    {
        const TerminationSignals signals([] {});
        struct sigaction now = {};
        sigaction(SIGHUP, nullptr, &now);
        EXPECT_EQ(now.sa_handler, SIG_IGN);
        sigaction(SIGTERM, nullptr, &now);
        EXPECT_NE(now.sa_handler, SIG_DFL);
    }
    struct sigaction after = {};
    sigaction(SIGTERM, nullptr, &after);
    EXPECT_EQ(after.sa_handler, SIG_DFL) << "everything is put back";
}

TEST_F(EventPumpTest, ASecondSignalEndsTheProcessAtOnce) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            std::raise(SIGTERM);
            std::raise(SIGTERM);
        },
        testing::ExitedWithCode(128 + SIGTERM), "");
}

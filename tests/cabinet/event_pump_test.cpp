// Tests of the event pump: order, limits, nesting, waits, signals.
#include "platform/qt/qt_event_pump.h"

#include "core/run_time_error.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <csignal>
#include <unistd.h>
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

TEST_F(EventPumpTest, ATickOfTheLightShowThatComesDuringATickIsDropped) {
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
    EXPECT_EQ(CountOf(InputKind::kTmrSpectrum), 1) << "it does not come later either";
    EXPECT_EQ(deepest, 2);
    pump.Post({.kind = InputKind::kTmrSpectrum});
    pump.DoEvents();
    EXPECT_EQ(CountOf(InputKind::kTmrSpectrum), 2);
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

// A process can start watching signals only once, so each of these tests is a process of its own.
class TerminationSignalsTest : public testing::Test {
protected:
    TerminationSignalsTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    static void Send(int number) { kill(getpid(), number); }
    [[noreturn]] static void Hang() {
        for (;;) {
            pause();
        }
    }
};

TEST_F(TerminationSignalsTest, EachSignalAsksForTheEnd) {
    const auto askedForEach = [] {
        std::signal(SIGHUP, SIG_DFL);
        WatchTerminationSignals();
        QtEventPump pump;
        int asked = 0;
        pump.SetSink([&asked](const InputEvent& event) { asked += event.kind == InputKind::kClose ? 1 : 0; });
        int expected = 0;
        for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
            Send(number);
            ++expected; // it was answered, so the next signal is passed on
            while (asked < expected) {
                pump.DoEvents();
            }
        }
        _exit(asked == expected ? 3 : 4);
    };
    EXPECT_EXIT(askedForEach(), testing::ExitedWithCode(3), "");
}

TEST_F(TerminationSignalsTest, ASignalBeforeTheEventLoopIsPassedOn) {
    const auto askedLater = [] {
        WatchTerminationSignals();
        Send(SIGTERM);
        while (!TerminationWish::HasCome()) {
        }
        QtEventPump pump;
        pump.SetSink([](const InputEvent&) { _exit(3); });
        for (;;) {
            pump.DoEvents();
        }
    };
    EXPECT_EXIT(askedLater(), testing::ExitedWithCode(3), "");
}

TEST_F(TerminationSignalsTest, ASecondSignalEndsTheProcessAtOnce) {
    const auto second = [] {
        WatchTerminationSignals();
        Send(SIGTERM);
        while (!TerminationWish::HasCome()) {
        }
        Send(SIGINT);
        Hang();
    };
    EXPECT_EXIT(second(), testing::ExitedWithCode(128 + SIGINT), "");
}

TEST_F(TerminationSignalsTest, AnEventThreadThatHangsIsEndedByOneSignal) {
    const auto hung = [] {
        std::signal(SIGHUP, SIG_DFL);
        WatchTerminationSignals();
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_BLOCK, &all, nullptr);
        Send(SIGHUP);
        Hang();
    };
    EXPECT_EXIT(hung(), testing::ExitedWithCode(128 + SIGHUP), "");
}

TEST_F(TerminationSignalsTest, AnIgnoredHangUpStaysIgnored) {
    const auto ignored = [] {
        std::signal(SIGHUP, SIG_IGN);
        WatchTerminationSignals();
        struct sigaction hangUp = {};
        struct sigaction end = {};
        sigaction(SIGHUP, nullptr, &hangUp);
        sigaction(SIGTERM, nullptr, &end);
        _exit(hangUp.sa_handler == SIG_IGN && end.sa_handler != SIG_DFL ? 3 : 4);
    };
    EXPECT_EXIT(ignored(), testing::ExitedWithCode(3), "");
}

TEST_F(TerminationSignalsTest, OnlyTheseSignalsAreBlockedInTheEventThread) {
    const auto unblocked = [] {
        WatchTerminationSignals();
        sigset_t here;
        pthread_sigmask(SIG_BLOCK, nullptr, &here);
        _exit(sigismember(&here, SIGTERM) == 1 && sigismember(&here, SIGCHLD) == 0 ? 3 : 4);
    };
    EXPECT_EXIT(unblocked(), testing::ExitedWithCode(3), "");
}

// Tests of the strip, the wire's speed and the controller's answers.
#include "app/leds/controller.h"
#include "app/leds/pacer.h"
#include "app/leds/strip.h"
#include "app/leds/terminal_view.h"

#include <gtest/gtest.h>

namespace {

using std::chrono::milliseconds;

const Time kStart = Time() + std::chrono::hours(1);

ColourMessage Led(int led, std::uint8_t red, bool isLast) {
    return {led, {red, 0, 0}, isLast};
}

} // namespace

TEST(Strip, ShowsAFrameWhenItIsComplete) {
    Strip strip;
    EXPECT_EQ(strip.Mode(), StripMode::kUnknown);
    strip.Take(Command::kNormal, kStart);
    strip.Take(Led(0, 9, false), kStart);
    EXPECT_TRUE(strip.Shown(kStart).empty());
    strip.Take(Led(1, 8, true), kStart);
    EXPECT_EQ(strip.Shown(kStart), (std::vector<Colour>{{9, 0, 0}, {8, 0, 0}}));
    strip.Take(Led(0, 7, false), kStart);
    EXPECT_EQ(strip.Shown(kStart)[0].red, 9);
    strip.Take(Refusal{"x"}, kStart);
    EXPECT_STREQ(NameOf(strip.Mode()), "normal");
}

TEST(Strip, RunsARainbowByItself) {
    Strip strip;
    strip.Take(Command::kNormal, kStart);
    strip.Take(Led(2, 0, true), kStart);
    strip.Take(Command::kFreeRunning, kStart);
    const std::vector<Colour> first = strip.Shown(kStart);
    EXPECT_EQ(first.size(), 3U);
    EXPECT_NE(first[0], first[1]);
    EXPECT_NE(first, strip.Shown(kStart + milliseconds(1000)));
}

TEST(Strip, CountsTheFramesOfTwoSeconds) {
    Strip strip;
    strip.Take(Command::kNormal, kStart);
    Time now = kStart;
    for (int i = 0; i < 100; ++i) {
        now += milliseconds(i == 50 ? 250 : 100);
        strip.Take(Led(0, 0, true), now);
    }
    EXPECT_NEAR(strip.Rate(now), 10, 0.6);
    EXPECT_EQ(strip.Rate(now + milliseconds(2001)), 0);
    EXPECT_EQ(strip.LongestGap(), 250);
}

TEST(Strip, ThePauseBetweenTwoTracksIsNoGap) {
    Strip strip;
    strip.Take(Command::kNormal, kStart);
    strip.Take(Led(0, 0, true), kStart);
    strip.Take(Command::kNormal, kStart);
    strip.Take(Led(0, 0, true), kStart + milliseconds(5000));
    EXPECT_EQ(strip.LongestGap(), 0);
}

TEST(Pacer, CarriesTenBitsAByte) {
    Pacer pacer(115200);
    Time now = kStart;
    std::size_t bytes = 0;
    pacer.Take(100000, now);
    for (int i = 0; i < 1000; ++i) {
        now += milliseconds(1);
        bytes += pacer.Take(100000, now);
    }
    EXPECT_NEAR(static_cast<double>(bytes), 11520, 60);
}

TEST(Pacer, DoesNotCatchUpAfterARest) {
    Pacer pacer(115200);
    pacer.Take(100000, kStart);
    EXPECT_EQ(pacer.Take(100000, kStart + milliseconds(5000)), 57U);
    EXPECT_EQ(pacer.Take(100000, kStart + milliseconds(5000)), 0U);
}

TEST(Pacer, WhatWasNotThereIsGivenBack) {
    Pacer pacer(115200);
    pacer.Take(100000, kStart);
    EXPECT_EQ(pacer.Take(20, kStart + milliseconds(4)), 20U);
    pacer.Return(15);
    EXPECT_EQ(pacer.Take(100, kStart + milliseconds(4)), 41U);
}

TEST(Pacer, AVerySlowLineStillMoves) {
    Pacer pacer(10);
    std::size_t bytes = 0;
    for (int i = 0; i <= 1000; ++i) {
        bytes += pacer.Take(100, kStart + milliseconds(10 * i));
    }
    EXPECT_NEAR(static_cast<double>(bytes), 10, 1);
}

TEST(Pacer, WithoutASpeedThereIsNoLimit) {
    EXPECT_EQ(Pacer(0).Take(4096, kStart), 4096U);
}

TEST(Controller, AnswersTheCommandForNormalModeOnly) {
    Controller controller({});
    controller.Take(Command::kFreeRunning, kStart);
    controller.Take(Command::kButton1, kStart);
    controller.Take(ColourMessage(), kStart);
    EXPECT_EQ(controller.Due(kStart), "");
    controller.Take(Command::kNormal, kStart);
    EXPECT_EQ(controller.Due(kStart), "Mode Normal\nOK\n");
    EXPECT_EQ(controller.Due(kStart), "");
}

TEST(Controller, BadMannersAreActedOut) {
    Controller silent({.isSilent = true});
    silent.Take(Command::kNormal, kStart);
    EXPECT_EQ(silent.Due(kStart + milliseconds(9999)), "");
    Controller returns({.carriageReturns = true});
    returns.Take(Command::kNormal, kStart);
    EXPECT_EQ(returns.Due(kStart), "Mode Normal\r\nOK\r\n");
    Controller slow({.delay = milliseconds(300)});
    slow.Take(Command::kNormal, kStart);
    EXPECT_EQ(slow.Due(kStart + milliseconds(299)), "");
    EXPECT_EQ(slow.Due(kStart + milliseconds(300)), "Mode Normal\nOK\n");
}

TEST(TerminalPicture, FitsTheTerminal) {
    const std::vector<Colour> lamps(7, Colour{1, 2, 3});
    const std::string wide = TerminalPicture("one\ntwo", "status", lamps, 80, 24);
    EXPECT_NE(wide.find("status"), std::string::npos);
    EXPECT_NE(wide.find("\x1b[38;2;1;2;3m"), std::string::npos);
    const auto lines = [](const std::string& picture) {
        return std::count(picture.begin(), picture.end(), '\n') + 1;
    };
    EXPECT_EQ(lines(wide), 5);
    EXPECT_EQ(lines(TerminalPicture("one\ntwo", "status", lamps, 6, 24)), 7) << "three lamps in a row";
    EXPECT_EQ(lines(TerminalPicture("one\ntwo", "status", lamps, 6, 3)), 3);
    EXPECT_EQ(TerminalPicture("one", "status", lamps, 2, 24).find("status"), std::string::npos);
    EXPECT_FALSE(TerminalPicture("", "", lamps, 0, 0).empty());
}

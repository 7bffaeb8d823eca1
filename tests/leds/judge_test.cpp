// Tests of the judge of the wire.
#include "app/leds/judge.h"
#include "app/leds/strip.h"
#include "app/leds/wire_reader.h"

#include <gtest/gtest.h>

#include <random>

namespace {

ColourMessage Led(int led, bool isLast = false) {
    return {led % 256, {}, isLast};
}

// Sends the LEDs as one frame and returns the first fault.
std::string Frame(Judge& judge, const std::vector<int>& leds) {
    for (std::size_t i = 0; i < leds.size(); ++i) {
        if (const auto fault = judge.Take(Led(leds[i], i + 1 == leds.size()))) {
            return *fault;
        }
    }
    return "";
}

std::vector<int> Plain(int count) {
    std::vector<int> leds;
    for (int i = 0; i < count; ++i) {
        leds.push_back(i);
    }
    return leds;
}

std::vector<int> Halves(int half) {
    std::vector<int> leds;
    for (int i = 0; i < half; ++i) {
        leds.push_back(i);
        leds.push_back(i + half);
    }
    return leds;
}

class JudgeTest : public testing::Test {
protected:
    JudgeTest() { judge.Take(Command::kNormal); }
    Judge judge{true};
};

} // namespace

TEST_F(JudgeTest, PlainStripsOfEveryLengthAreGood) {
    for (const int count : {1, 2, 3, 30, 255, 256, 257, 258, 512, 1023}) {
        EXPECT_EQ(Frame(judge, Plain(count)), "") << count;
        EXPECT_EQ(judge.FrameSize(), static_cast<std::size_t>(count));
    }
    EXPECT_EQ(judge.Frames(), 10U);
}

TEST_F(JudgeTest, StripsOfTwoHalvesOfEveryLengthAreGood) {
    for (const int half : {1, 2, 15, 128, 255, 256, 257, 300, 512, 1023}) {
        EXPECT_EQ(Frame(judge, Halves(half)), "") << half;
    }
    EXPECT_EQ(judge.Frames(), 10U);
}

TEST_F(JudgeTest, AMissingMessageIsFound) {
    EXPECT_EQ(Frame(judge, {0, 1, 3}), "LED 3 is out of order, as message 3 of its frame");
    EXPECT_EQ(Frame(judge, {1}), "LED 1 is out of order, as message 1 of its frame");
    EXPECT_EQ(Frame(judge, {0, 15, 1, 17}), "LED 17 is out of order, as message 4 of its frame");
    EXPECT_EQ(Frame(judge, {0, 15, 15}), "LED 15 is out of order, as message 3 of its frame");
    EXPECT_EQ(Frame(judge, {0, 15, 1, 16}), "a frame of two halves ends too early or too late");
    EXPECT_EQ(Frame(judge, {0, 2, 1}), "a frame of two halves ends too early or too late");
    EXPECT_EQ(judge.Frames(), 0U);
    EXPECT_EQ(Frame(judge, {0, 1}), "") << "the next frame is judged by itself";
}

TEST_F(JudgeTest, AFrameWithoutAnEndIsFound) {
    std::string fault;
    for (int i = 0; i < 3000 && fault.empty(); ++i) {
        fault = judge.Take(Led(i)).value_or("");
    }
    EXPECT_EQ(fault, "a frame does not end");
}

TEST_F(JudgeTest, RefusedLinesAreFaults) {
    EXPECT_EQ(judge.Take(Refusal{"because"}), "because");
}

TEST_F(JudgeTest, FramesBelongToNormalMode) {
    judge.Take(Command::kFreeRunning);
    EXPECT_EQ(Frame(judge, {0}), "a frame begins outside normal mode");
    judge.Take(Command::kButton1);
    EXPECT_EQ(Frame(judge, {0}), "a frame begins outside normal mode");
    judge.Take(Command::kNormal);
    EXPECT_EQ(Frame(judge, {0}), "");
}

TEST(Judge, TheFirstFrameNeedsACommandIfTheStartWasSeen) {
    Judge fromStart(true);
    EXPECT_EQ(Frame(fromStart, {0}), "a frame begins outside normal mode");
    Judge later(false);
    EXPECT_EQ(Frame(later, {0}), "");
}

TEST_F(JudgeTest, CommandsMayComeInsideAFrame) {
    judge.Take(Led(0));
    judge.Take(Command::kFreeRunning);
    EXPECT_FALSE(judge.Take(Led(1)));
    judge.Take(Command::kNormal);
    EXPECT_FALSE(judge.Take(Led(2, true)));
    EXPECT_EQ(judge.Frames(), 1U);
}

// Random bytes, most of them from the messages' own characters, never crash and never count as a frame by
// accident.
TEST(Judge, AnyBytesAreTaken) {
    constexpr std::string_view kCharacters = "AT+BR-IT0123456789ABCDEF0000\r\n";
    std::minstd_rand dice(11);
    Judge judge(true);
    Strip strip;
    std::uint64_t lines = 0;
    WireReader reader([&](std::string_view line, std::uint64_t) {
        const Message message = ReadMessage(line);
        judge.Take(message);
        strip.Take(message, Time());
        std::string back;
        EXPECT_TRUE(Unescape(Escaped(line), back));
        EXPECT_EQ(back, line);
        ++lines;
    });
    for (int i = 0; i < 300'000; ++i) {
        const auto number = dice();
        const char c = number % 50 == 0 ? static_cast<char>(number >> 8)
                                        : kCharacters[(number >> 8) % kCharacters.size()];
        reader.Take(std::string_view(&c, 1));
    }
    EXPECT_GT(lines, 1000U);
    EXPECT_LE(strip.Shown(Time()).size(), 256U);
}

TEST_F(JudgeTest, TheWireMayBeClosedInsideAFrameOnlyInFreeRunningMode) {
    judge.Take(Led(0));
    EXPECT_EQ(judge.Close(), "the wire was closed inside a frame");
    judge.Take(Command::kNormal);
    judge.Take(Led(0));
    judge.Take(Command::kFreeRunning);
    EXPECT_FALSE(judge.Close());
    EXPECT_EQ(Frame(judge, {0}), "a frame begins outside normal mode") << "a new jukebox has to ask again";
}

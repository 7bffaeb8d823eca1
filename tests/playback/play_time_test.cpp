// The remaining time as text, and the part of a count of bytes that is kept.
#include "playback/play_time.h"

#include <gtest/gtest.h>

namespace {

TEST(Remain, TheHeartbeatCutsToWholeSeconds) {
    EXPECT_EQ(RemainOfHeartbeat(0), QStringLiteral("00:00"));
    EXPECT_EQ(RemainOfHeartbeat(0.999), QStringLiteral("00:00"));
    EXPECT_EQ(RemainOfHeartbeat(59.7), QStringLiteral("00:59"));
    EXPECT_EQ(RemainOfHeartbeat(60), QStringLiteral("01:00"));
    EXPECT_EQ(RemainOfHeartbeat(3599.5), QStringLiteral("59:59"));
}

TEST(Remain, TheFrameRoundsSecondsHalfAwayFromZero) {
    EXPECT_EQ(RemainOfFrame(0.4), QStringLiteral("00:00"));
    EXPECT_EQ(RemainOfFrame(0.5), QStringLiteral("00:01"));
    EXPECT_EQ(RemainOfFrame(2.5), QStringLiteral("00:03"));
    EXPECT_EQ(RemainOfFrame(59.7), QStringLiteral("00:60"));
    EXPECT_EQ(RemainOfFrame(119.5), QStringLiteral("01:60"));
}

TEST(Remain, LongTracksTakeMoreDigits) {
    EXPECT_EQ(RemainOfHeartbeat(6000), QStringLiteral("100:00"));
    EXPECT_EQ(RemainOfFrame(61 * 3600), QStringLiteral("3660:00"));
}

TEST(LowWord, KeepsASongWhole) {
    EXPECT_EQ(LowWord(240LL * 176400), 240LL * 176400);
    EXPECT_EQ(LowWord(0xFFFFFFFFLL), 0xFFFFFFFFLL);
}

// Deliberate D-30.
TEST(LowWord, DropsWhatPassesFourGigabytes) {
    EXPECT_EQ(LowWord(0x100000000LL + 176400), 176400);
}

} // namespace

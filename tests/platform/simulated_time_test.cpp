// Tests of the simulated clock and the positions that move with it.
#include "platform/simulated/simulated_time.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

QDateTime Start() {
    return QDateTime(QDate(2024, 5, 6), QTime(7, 8, 9), Qt::UTC);
}

TEST(SimulatedClock, StandsUntilItIsMoved) {
    SimulatedClock clock(Start());
    EXPECT_EQ(clock.timeGetTime(), clock.timeGetTime());
    EXPECT_EQ(clock.LocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")),
              QStringLiteral("2024-05-06 07:08:09"));
}

TEST(SimulatedClock, MovesBothTimesTogether) {
    SimulatedClock clock(Start());
    clock.Advance(61'500);
    EXPECT_EQ(clock.timeGetTime(), 61'500);
    EXPECT_EQ(clock.LocalTime().toString(QStringLiteral("HH:mm:ss.zzz")), QStringLiteral("07:09:10.500"));
}

TEST(SimulatedClock, KeepsPartsOfAMillisecond) {
    SimulatedClock clock(Start());
    for (int i = 0; i < 10; ++i) {
        clock.Advance(0.3);
    }
    EXPECT_EQ(clock.Microseconds(), 3000);
}

TEST(SimulatedClock, NeverGoesBackAndNeverOverflows) {
    SimulatedClock clock(Start());
    clock.Advance(-5);
    clock.Advance(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(clock.Microseconds(), 0);
    for (int i = 0; i < 3; ++i) {
        clock.Advance(std::numeric_limits<double>::infinity());
    }
    EXPECT_GT(clock.Microseconds(), 0);
    EXPECT_TRUE(clock.LocalTime().isValid());
}

// Daylight saving removes an hour from that night in most of Europe; the simulated clock ignores it.
TEST(SimulatedClock, KnowsNoDaylightSaving) {
    const QByteArray zone = qgetenv("TZ");
    qputenv("TZ", "Europe/Paris");
    SimulatedClock clock(QDateTime(QDate(2024, 3, 31), QTime(1, 59, 59), Qt::UTC));
    clock.Advance(1000);
    EXPECT_EQ(clock.LocalTime().toString(QStringLiteral("HH:mm:ss")), QStringLiteral("02:00:00"));
    zone.isNull() ? qunsetenv("TZ") : qputenv("TZ", zone);
}

TEST(PlayHead, StandsUntilItRuns) {
    SimulatedClock clock(Start());
    PlayHead head(clock, 44100, 88200, AtEnd::kWraps);
    clock.Advance(500);
    EXPECT_EQ(head.Position(), 0);
    head.Run();
    clock.Advance(500);
    EXPECT_EQ(head.Position(), 22050);
    head.Halt();
    clock.Advance(500);
    EXPECT_EQ(head.Position(), 22050);
}

TEST(PlayHead, WrapsAtItsEnd) {
    SimulatedClock clock(Start());
    PlayHead head(clock, 44100, 88200, AtEnd::kWraps);
    head.Run();
    clock.Advance(2000);
    EXPECT_EQ(head.Position(), 0);
    clock.Advance(4500);
    EXPECT_EQ(head.Position(), 22050);
}

TEST(PlayHead, StandsAtItsEnd) {
    SimulatedClock clock(Start());
    PlayHead head(clock, 1'000'000, 2'000'000, AtEnd::kStands);
    head.Run();
    clock.Advance(5000);
    EXPECT_EQ(head.Position(), 2'000'000);
    head.MoveTo(1'500'000);
    clock.Advance(100);
    EXPECT_EQ(head.Position(), 1'600'000);
}

// 399 ms are 17595.9 frames. However often the position is read, ten such steps are 175959.
TEST(PlayHead, LosesNoPartOfAUnit) {
    SimulatedClock clock(Start());
    PlayHead head(clock, 44100, 10'000'000, AtEnd::kWraps);
    head.Run();
    for (int i = 0; i < 10; ++i) {
        clock.Advance(399);
        head.Run();
    }
    EXPECT_EQ(head.Position(), 175959);
}

TEST(PlayHead, MovesAPositionOutsideToTheNearerEnd) {
    SimulatedClock clock(Start());
    PlayHead wrapping(clock, 44100, 100, AtEnd::kWraps);
    wrapping.MoveTo(1000);
    EXPECT_EQ(wrapping.Position(), 99);
    wrapping.MoveTo(-1);
    EXPECT_EQ(wrapping.Position(), 0);
}

TEST(PlayHead, OutlivesTenThousandYears) {
    SimulatedClock clock(Start());
    PlayHead head(clock, 1'000'000, std::int64_t{1} << 50, AtEnd::kWraps);
    head.Run();
    clock.Advance(1e30);
    EXPECT_GE(head.Position(), 0);
    EXPECT_LT(head.Position(), head.Length());
}

} // namespace

// Tests of the monitors' places after the primary one has changed its size.
#include "core/monitor_layout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

namespace {

using ::testing::ElementsAre;

using Monitors = std::vector<QRect>;

TEST(MonitorLayout, ANeighbourOnTheRightStaysBesideThePrimaryMonitor) {
    const Monitors two = {{0, 0, 1920, 1080}, {1920, 0, 800, 600}};
    EXPECT_THAT(LayoutWithPrimary(two, {1280, 720}),
                ElementsAre(QRect(0, 0, 1280, 720), QRect(1280, 0, 800, 600)));
    EXPECT_THAT(LayoutWithPrimary(two, {2560, 1440}),
                ElementsAre(QRect(0, 0, 2560, 1440), QRect(2560, 0, 800, 600)));
}

TEST(MonitorLayout, MonitorsBelowAndDiagonallyMoveToo) {
    const Monitors three = {{0, 0, 1024, 768}, {0, 768, 1024, 768}, {1024, 768, 640, 480}};
    EXPECT_THAT(LayoutWithPrimary(three, {1920, 1080}),
                ElementsAre(QRect(0, 0, 1920, 1080), QRect(0, 1080, 1024, 768), QRect(1920, 1080, 640, 480)));
}

TEST(MonitorLayout, MonitorsLeftOfItAndAboveItStay) {
    const Monitors three = {{800, 600, 1024, 768}, {0, 600, 800, 600}, {800, 0, 800, 600}};
    EXPECT_THAT(LayoutWithPrimary(three, {1920, 1080}),
                ElementsAre(QRect(800, 600, 1920, 1080), three[1], three[2]));
}

TEST(MonitorLayout, AMirrorStaysWhereItIs) {
    const Monitors two = {{0, 0, 1024, 768}, {0, 0, 1024, 768}};
    EXPECT_THAT(LayoutWithPrimary(two, {800, 600}), ElementsAre(QRect(0, 0, 800, 600), two[1]));
}

// The wide monitor below would move up into the one on the right, which is higher than the primary one.
TEST(MonitorLayout, AGapStaysWhereClosingItWouldOverlap) {
    const Monitors three = {{0, 0, 1920, 1080}, {1920, 0, 1920, 1080}, {0, 1080, 3840, 1080}};
    EXPECT_THAT(LayoutWithPrimary(three, {1280, 720}),
                ElementsAre(QRect(0, 0, 1280, 720), QRect(1280, 0, 1920, 1080), three[2]));
}

TEST(MonitorLayout, NothingIsDoneWithoutAMonitor) {
    EXPECT_TRUE(LayoutWithPrimary({}, {800, 600}).empty());
}

// Every arrangement of three monitors on a coarse grid, and every change of size.
TEST(MonitorLayout, NothingEverOverlapsOrLeavesTheDesktop) {
    constexpr std::array kPlaces = {0, 400, 800, 1200};
    constexpr std::array kSizes = {400, 800, 1600};
    constexpr int kOthers = 4 * 4 * 3 * 3;
    int arrangements = 0;
    for (int place = 0; place < 16; ++place) {
        for (int code = 0; code < kOthers * kOthers; ++code) {
            const auto other = [&](int part) {
                return QRect(kPlaces[part % 4], kPlaces[part / 4 % 4], kSizes[part / 16 % 3],
                             kSizes[part / 48 % 3]);
            };
            const QRect primary(kPlaces[place % 4], kPlaces[place / 4], 800, 800);
            const Monitors before = {primary, other(code % kOthers), other(code / kOthers)};
            if (before[0].intersects(before[1]) || before[0].intersects(before[2]) ||
                before[1].intersects(before[2])) {
                continue;
            }
            ++arrangements;
            for (const QSize size :
                 {QSize(400, 400), QSize(1600, 400), QSize(400, 1600), QSize(1600, 1600)}) {
                const Monitors after = LayoutWithPrimary(before, size);
                ASSERT_EQ(after[0], QRect(primary.topLeft(), size));
                ASSERT_FALSE(after[0].intersects(after[1]) || after[0].intersects(after[2]) ||
                             after[1].intersects(after[2]))
                    << place << ' ' << code << ' ' << size.width() << 'x' << size.height();
                ASSERT_TRUE(after[1].left() >= 0 && after[1].top() >= 0);
            }
        }
    }
    EXPECT_GT(arrangements, 1000);
}

} // namespace

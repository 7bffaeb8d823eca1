// Tests of monitors, modes and fonts without an X server.
#include "platform/qt/qt_display.h"
#include "platform/qt/qt_fonts.h"
#include "platform/qt/system_clock.h"

#include "platform/posix/posix_files.h"

#include <QStringList>

#include <gtest/gtest.h>

TEST(DisplayTest, ReportsTheScreenAndLogsThatThereAreNoModes) {
    QStringList log;
    QtDisplay display(nullptr, [&](const QString& text) { log += text; });
    ASSERT_FALSE(display.EnumDisplayMonitors().empty());
    const DisplayMode mode = display.CurrentMode();
    EXPECT_EQ(QSize(mode.width, mode.height), display.EnumDisplayMonitors().front().size());
    EXPECT_EQ(mode.bits, 32);
    EXPECT_EQ(display.TestDisplaySettings(mode), DisplayChange::kNoModes);
    EXPECT_EQ(display.ChangeDisplaySettings(mode), DisplayChange::kNoModes);
    ASSERT_EQ(log.size(), 2);
    EXPECT_TRUE(log[0].contains(QStringLiteral("offscreen")));
}

TEST(FontsTest, AddsAFontAndRefusesWhatIsNone) {
    PosixFiles files;
    QtFonts fonts(files);
    EXPECT_EQ(fonts.AddFontResource(QStringLiteral(TESTS_FOLDER "/fonts/vantorix_test.ttf")), 1);
    EXPECT_EQ(fonts.AddFontResource(QStringLiteral(TESTS_FOLDER "/fonts/none.ttf")), 0);
    EXPECT_EQ(fonts.AddFontResource(QStringLiteral(TESTS_FOLDER "/CMakeLists.txt")), 0);
    EXPECT_EQ(fonts.AddFontResource(QStringLiteral(TESTS_FOLDER)), 0);
}

TEST(ClockTest, RunsForward) {
    SystemClock clock;
    const std::int64_t before = clock.timeGetTime();
    EXPECT_GE(clock.timeGetTime(), before);
    EXPECT_LE(qAbs(clock.LocalTime().secsTo(QDateTime::currentDateTime())), 1);
}

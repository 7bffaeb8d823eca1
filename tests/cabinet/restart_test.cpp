// The note that one start of the program leaves for the next one.
#include "app/cabinet/restart.h"

#include <gtest/gtest.h>

namespace {

TEST(RestartNote, SurvivesTheEnvironment) {
    const RestartNote note{
        .reason = QStringLiteral("bloqué;\nerreur 5: \"a,b\""), .stops = {3, 70, 200}, .mayLoseLines = true};
    EXPECT_FALSE(BytesOf(note).contains('\n'));
    const RestartNote read = NoteOf(BytesOf(note));
    EXPECT_EQ(read.reason, note.reason);
    EXPECT_EQ(read.stops, note.stops);
    EXPECT_TRUE(read.mayLoseLines);
}

TEST(RestartNote, IsEmptyWhenItMakesNoSense) {
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray(";"), QByteArray("1,2"), QByteArray("a;b;c;d")}) {
        const RestartNote note = NoteOf(bytes);
        EXPECT_TRUE(note.reason.isEmpty() && note.stops.empty() && !note.mayLoseLines) << bytes.constData();
    }
    EXPECT_EQ(NoteOf("1,x,-5,99999999999999999999,2,3,4;keep;").stops, (std::vector<std::int64_t>{1, 2, 3}));
}

TEST(RestartNote, IsTakenOutOfTheEnvironment) {
    qputenv("VANTORIX_RESTART",
            BytesOf({.reason = QStringLiteral("again"), .stops = {}, .mayLoseLines = false}));
    EXPECT_EQ(TakeRestartNote().reason, QStringLiteral("again"));
    EXPECT_TRUE(TakeRestartNote().reason.isEmpty());
}

TEST(StopsTooOften, AtTheThirdStopWithinFiveMinutes) {
    RestartNote note;
    EXPECT_FALSE(StopsTooOften(note, 1000));
    EXPECT_FALSE(StopsTooOften(note, 1100));
    EXPECT_TRUE(StopsTooOften(note, 1300));
}

TEST(StopsTooOften, ForgetsStopsOfMoreThanFiveMinutesAgo) {
    RestartNote note;
    EXPECT_FALSE(StopsTooOften(note, 1000));
    EXPECT_FALSE(StopsTooOften(note, 1100));
    EXPECT_FALSE(StopsTooOften(note, 1301));
    EXPECT_TRUE(StopsTooOften(note, 1302));
}

TEST(StopsTooOften, ForgetsStopsBeforeARestartOfTheSystem) {
    RestartNote note{.reason = {}, .stops = {5000, 5001}, .mayLoseLines = false};
    EXPECT_FALSE(StopsTooOften(note, 10));
}

} // namespace

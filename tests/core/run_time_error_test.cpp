// Run-time errors, and the routines that catch or convert them.
#include "core/run_time_error.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <new>
#include <system_error>

namespace {

TEST(RunTimeErrorText, KnowsTheCustomaryNumbers) {
    EXPECT_EQ(RunTimeErrorText(6), QStringLiteral("Overflow"));
    EXPECT_EQ(RunTimeErrorText(13), QStringLiteral("Type mismatch"));
    EXPECT_EQ(RunTimeErrorText(8018), QStringLiteral("Operation valid only when the port is open"));
    EXPECT_EQ(RunTimeErrorText(4711), QStringLiteral("Application-defined or object-defined error"));
}

TEST(EndsProgram, TurnsARunTimeErrorIntoAProgramStop) {
    try {
        EndsProgram("Routine", [] { throw RunTimeError(kTypeMismatch, QStringLiteral("why")); });
        FAIL();
    } catch (const ProgramStop& stop) {
        EXPECT_EQ(stop.error.number, kTypeMismatch);
        EXPECT_EQ(stop.error.detail, QStringLiteral("why"));
        EXPECT_EQ(stop.routine, QStringLiteral("Routine"));
    }
}

TEST(EndsProgram, LetsTheProgramsEndPass) {
    EXPECT_THROW(EndsProgram("Routine", [] { throw ProgramEnd(0); }), ProgramEnd);
}

TEST(PassOver, DropsARunTimeErrorAlone) {
    EXPECT_NO_THROW(PassOver([] { throw RunTimeError(kOverflow, QString()); }));
    EXPECT_THROW(PassOver([] { throw ProgramEnd(0); }), ProgramEnd);
}

TEST(TellingWhere, PutsThePlaceInFrontOfTheDetail) {
    const auto where = [] { return QStringLiteral("file, [section] key"); };
    try {
        TellingWhere(where, [] { throw RunTimeError(kTypeMismatch, QStringLiteral("\"x\"")); });
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.detail, QStringLiteral("file, [section] key: \"x\""));
    }
}

TEST(RunTimeErrorOf, EveryExceptionHasANumber) {
    const RunTimeError known = RunTimeErrorOf(RunTimeError(13, QStringLiteral("key")));
    EXPECT_EQ(known.number, 13);
    EXPECT_EQ(known.detail, QStringLiteral("key"));
    EXPECT_EQ(RunTimeErrorOf(std::bad_alloc()).number, kOutOfMemory);
    EXPECT_EQ(RunTimeErrorOf(std::bad_array_new_length()).number, kOutOfMemory);
    const RunTimeError other = RunTimeErrorOf(std::system_error(EAGAIN, std::generic_category(), "thread"));
    EXPECT_EQ(other.number, kInternalError);
    EXPECT_TRUE(other.detail.startsWith(QStringLiteral("thread"))) << other.detail.toStdString();
}

} // namespace

// Conversions between text and numbers.
#include "core/conversions.h"
#include "support/error_of.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

Integer16 I16(const char* text) {
    return CInt16(QString::fromLatin1(text));
}

TEST(CInt16, TakesSignsBlanksDecimalsAndExponents) {
    EXPECT_EQ(I16("  12 "), 12);
    EXPECT_EQ(I16("+7"), 7);
    EXPECT_EQ(I16("-32768"), -32768);
    EXPECT_EQ(I16("1.5e2"), 150);
    EXPECT_EQ(I16(".5e1"), 5);
    EXPECT_EQ(I16("3."), 3);
}

TEST(CInt16, RoundsHalvesToEven) {
    EXPECT_EQ(I16("0.5"), 0);
    EXPECT_EQ(I16("1.5"), 2);
    EXPECT_EQ(I16("2.5"), 2);
    EXPECT_EQ(I16("-0.5"), 0);
    EXPECT_EQ(I16("-1.5"), -2);
}

TEST(CInt16, NoNumberRaises13) {
    for (const char* text :
         {"", "   ", "abc", "12x", "1 2", "--1", "e5", ".", "0x10", "1e", "1,5", "nan", "inf"}) {
        EXPECT_EQ(ErrorOf([&] { I16(text); }), kTypeMismatch) << text;
    }
}

TEST(CInt16, OutsideTheWidthRaises6) {
    for (const char* text : {"32768", "-32769", "32767.5", "1e300", "1e999", "99999999999999999999"}) {
        EXPECT_EQ(ErrorOf([&] { I16(text); }), kOverflow) << text;
    }
}

TEST(CInt32, TakesTheWiderWidth) {
    EXPECT_EQ(CInt32(QStringLiteral("2147483647")), 2147483647);
    EXPECT_EQ(ErrorOf([] { CInt32(QStringLiteral("2147483648")); }), kOverflow);
    EXPECT_EQ(ErrorOf([] { CInt32(std::nan("")); }), kOverflow);
}

TEST(Val, TakesTheLongestNumericPrefix) {
    EXPECT_EQ(Val(QStringLiteral("12abc")), 12);
    EXPECT_EQ(Val(QStringLiteral(" -3.5e")), -3.5);
    EXPECT_EQ(Val(QStringLiteral("abc")), 0);
    EXPECT_EQ(Val(QString()), 0);
    EXPECT_GT(Val(QStringLiteral("1e999")), 1e300);
}

TEST(IsNumeric, TakesWholeTextsOnly) {
    EXPECT_TRUE(IsNumeric(QStringLiteral("07")));
    EXPECT_TRUE(IsNumeric(QStringLiteral(" -1.5e3 ")));
    EXPECT_FALSE(IsNumeric(QStringLiteral("7 a")));
    EXPECT_FALSE(IsNumeric(QString()));
}

TEST(FormatZeros, PadsAndRoundsHalfAwayFromZero) {
    EXPECT_EQ(FormatZeros(7, 2), QStringLiteral("07"));
    EXPECT_EQ(FormatZeros(59.5, 2), QStringLiteral("60"));
    EXPECT_EQ(FormatZeros(123, 2), QStringLiteral("123"));
    EXPECT_EQ(FormatZeros(999995, 7), QStringLiteral("0999995"));
    EXPECT_EQ(FormatZeros(-5, 7), QStringLiteral("-0000005"));
    EXPECT_EQ(FormatZeros(-0.2, 2), QStringLiteral("00"));
}

TEST(NumberText, WritesWholeNumbersPlainly) {
    EXPECT_EQ(NumberText(7), QStringLiteral("7"));
    EXPECT_EQ(NumberText(100000), QStringLiteral("100000"));
    EXPECT_EQ(NumberText(1.5), QStringLiteral("1.5"));
}

TEST(Trim, CutsBlanksOnly) {
    EXPECT_EQ(Trim(QStringLiteral("  a b  ")), QStringLiteral("a b"));
    EXPECT_EQ(Trim(QStringLiteral("\ta\n")), QStringLiteral("\ta\n"));
    EXPECT_TRUE(Trim(QStringLiteral("   ")).isEmpty());
}

} // namespace

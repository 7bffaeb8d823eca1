// Checked integers: a result outside the width raises error 6.
#include "core/integer.h"
#include "support/error_of.h"

#include <gtest/gtest.h>

namespace {

TEST(Integer16, AddsAndSubtractsWithinItsWidth) {
    Integer16 a = 32766;
    a += 1;
    EXPECT_EQ(a, 32767);
    EXPECT_EQ(Integer16(-32768) + 1, -32767);
    EXPECT_EQ(-Integer16(5), -5);
    EXPECT_EQ(Integer16(7) * 6, 42);
}

TEST(Integer16, OverflowRaises6AndLeavesTheOperand) {
    Integer16 a = 32767;
    EXPECT_EQ(ErrorOf([&] { a += 1; }), kOverflow);
    EXPECT_EQ(a, 32767);
    EXPECT_EQ(ErrorOf([] { return Integer16(-32768) - 1; }), kOverflow);
    EXPECT_EQ(ErrorOf([] { return Integer16(256) * 128; }), kOverflow);
    EXPECT_EQ(ErrorOf([] { return -Integer16(-32768); }), kOverflow);
    EXPECT_EQ(ErrorOf([] { return Integer16(40000); }), kOverflow);
}

TEST(Integer32, OverflowRaises6) {
    EXPECT_EQ(ErrorOf([] { return Integer32(2147483647) + 1; }), kOverflow);
    EXPECT_EQ(ErrorOf([] { return Integer32(65536) * 65536; }), kOverflow);
    EXPECT_EQ(Integer32(2147483647) - 1, 2147483646);
}

TEST(IntegerDivide, CutsTowardsZero) {
    EXPECT_EQ(IntegerDivide(Integer16(7), Integer16(2)), 3);
    EXPECT_EQ(IntegerDivide(Integer16(-7), Integer16(2)), -3);
}

TEST(IntegerDivide, ByZeroRaises11AndTheOneOverflowRaises6) {
    EXPECT_EQ(ErrorOf([] { return IntegerDivide(Integer16(1), Integer16(0)); }), kDivisionByZero);
    EXPECT_EQ(ErrorOf([] { return IntegerDivide(Integer16(-32768), Integer16(-1)); }), kOverflow);
}

} // namespace

// Bounded arrays: a subscript outside the bounds raises error 9.
#include "core/bounded_array.h"
#include "support/error_of.h"

#include <gtest/gtest.h>

namespace {

TEST(BoundedArray, ReachesBothEnds) {
    BoundedArray<int, 10> array;
    array(0) = 1;
    array(10) = 2;
    EXPECT_EQ(array(0) + array(10), 3);
    EXPECT_EQ(array(Integer16(5)), 0);
}

TEST(BoundedArray, OutsideRaises9WithTheSubscript) {
    const BoundedArray<int, 10> array;
    try {
        array(11);
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number, kSubscriptOutOfRange);
        EXPECT_EQ(error.detail, QStringLiteral("11 is not between 0 and 10"));
    }
    EXPECT_EQ(ErrorOf([&] { array(-1); }), kSubscriptOutOfRange);
}

TEST(BoundedTable, KeepsRowsApart) {
    BoundedTable<int, 2, 100> table;
    table(1, 100) = 7;
    table(2, 0) = 8;
    EXPECT_EQ(table(1, 100), 7);
    EXPECT_EQ(table(2, 0), 8);
    EXPECT_EQ(ErrorOf([&] { table(3, 0); }), kSubscriptOutOfRange);
    EXPECT_EQ(ErrorOf([&] { table(0, 101); }), kSubscriptOutOfRange);
}

TEST(SparseCube, UnwrittenCellsReadEmpty) {
    SparseCube<QString, 100> cube;
    cube.Set(1, 2, 3, QStringLiteral("x"));
    EXPECT_EQ(cube(1, 2, 3), QStringLiteral("x"));
    EXPECT_TRUE(cube(100, 100, 100).isEmpty());
    EXPECT_EQ(ErrorOf([&] { cube(1, 101, 1); }), kSubscriptOutOfRange);
}

} // namespace

// What is kept of a length or position in bytes.
#include "playback/low_word.h"

#include <gtest/gtest.h>

namespace {

TEST(LowWord, KeepsASongWhole) {
    EXPECT_EQ(LowWord(240LL * 176400), 240LL * 176400);
    EXPECT_EQ(LowWord(0xFFFFFFFFLL), 0xFFFFFFFFLL);
}

// Deliberate D-30.
TEST(LowWord, DropsWhatPassesFourGigabytes) {
    EXPECT_EQ(LowWord(0x100000000LL + 176400), 176400);
}

} // namespace

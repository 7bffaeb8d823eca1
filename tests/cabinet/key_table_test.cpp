// Tests of keys and their virtual-key codes.
#include "platform/qt/key_table.h"

#include <gtest/gtest.h>

#include <array>
#include <set>

namespace {

int CodeOf(int key, bool keypad = false, quint32 scanCode = 0) {
    return VirtualKeyOf({key, keypad, scanCode}).value_or(-1);
}

// clang-format off
constexpr std::array kNamedCodes = {
    107, 8, 3, 20, 12, 17, 110, 46, 111, 40, 35, 27, 43, 112, 113, 114, 115, 116, 117, 118, 119, 120, 121, 122, 123, 124,
    125, 126, 127, 47, 36, 45, 37, 18, 106, 144, 96, 97, 98, 99, 100, 101, 102, 103, 104, 105, 34, 33, 19, 42, 13, 39,
    145, 41, 16, 44, 32, 109, 9, 38, 186, 187, 188, 189, 190, 191, 192, 219, 220, 221, 222, 223};
// clang-format on

// The codes of all keys, both of characters and of named keys.
std::set<int> SentCodes() {
    std::set<int> codes;
    for (const int first : {0, 0x01000000, 0x01010000, 0x01020000}) {
        for (int key = first; key < first + 0x1200; ++key) {
            codes.insert({CodeOf(key, false), CodeOf(key, true)});
        }
    }
    for (quint32 place = 1; place < 256; ++place) {
        codes.insert(CodeOf(Qt::Key_unknown, false, place));
    }
    return codes;
}

} // namespace

TEST(KeyTable, SomeKeySendsEachNamedCodeAndNoneThatOfAMouseButton) {
    const std::set<int> sent = SentCodes();
    for (const int code : kNamedCodes) {
        EXPECT_TRUE(sent.contains(code)) << code;
    }
    for (const int code : {0, 1, 2, 4, 5}) {
        EXPECT_FALSE(sent.contains(code)) << code;
    }
}

TEST(KeyTable, LettersAndDigitsAreTheirOwnCharacters) {
    for (int code = 'A'; code <= 'Z'; ++code) {
        EXPECT_EQ(CodeOf(Qt::Key_A + code - 'A'), code);
    }
    for (int code = '0'; code <= '9'; ++code) {
        EXPECT_EQ(CodeOf(Qt::Key_0 + code - '0'), code);
    }
}

TEST(KeyTable, KeypadKeysAreApartFromTheOthers) {
    EXPECT_EQ(CodeOf(Qt::Key_5, true), 101);
    EXPECT_EQ(CodeOf(Qt::Key_5, false), 53);
    EXPECT_EQ(CodeOf(Qt::Key_Minus, true), 109);
    EXPECT_EQ(CodeOf(Qt::Key_Minus, false), 189);
    EXPECT_EQ(CodeOf(Qt::Key_Period, true), 110);
    EXPECT_EQ(CodeOf(Qt::Key_Comma, true), 110);
    EXPECT_EQ(CodeOf(Qt::Key_Slash, true), 111);
}

TEST(KeyTable, KeypadWithoutNumLockSendsTheArrowsAndEnterIsEnter) {
    EXPECT_EQ(CodeOf(Qt::Key_Left, true), 37);
    EXPECT_EQ(CodeOf(Qt::Key_PageUp, true), 33);
    EXPECT_EQ(CodeOf(Qt::Key_Clear, true), 12);
    EXPECT_EQ(CodeOf(Qt::Key_Enter, true), 13);
    EXPECT_EQ(CodeOf(Qt::Key_Backtab), 9);
}

TEST(KeyTable, TheDigitRowGoesByPlace) {
    EXPECT_EQ(CodeOf(Qt::Key_Exclam, false, 10), '1') << "Shift and 1 of an English board";
    EXPECT_EQ(CodeOf(Qt::Key_Eacute, false, 11), '2') << "2 of a French board without Shift";
    EXPECT_EQ(CodeOf(Qt::Key_Agrave, false, 19), '0');
    EXPECT_EQ(CodeOf(Qt::Key_Exclam, false, 61), 223) << "the key of the exclamation mark of a French board";
}

TEST(KeyTable, KeysOfForeignAlphabetsGoByPlaceAndLettersByWhatTheyAre) {
    EXPECT_EQ(CodeOf(0x0424, false, 38), 'A') << "a Cyrillic letter at the place of A";
    EXPECT_EQ(CodeOf(Qt::Key_Q, false, 38), 'Q') << "a French board has Q at the place of A";
    EXPECT_EQ(CodeOf(Qt::Key_Colon, false, 47), 186);
}

TEST(KeyTable, UnknownKeysHaveNoCode) {
    EXPECT_EQ(CodeOf(Qt::Key_unknown), -1);
    EXPECT_EQ(CodeOf(0), -1);
    EXPECT_EQ(CodeOf(Qt::Key_MediaPlay, false, 172), -1);
}

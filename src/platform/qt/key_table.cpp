// The key table: virtual-key codes and the toolkit's keys.
#include "platform/qt/key_table.h"

#include "core/virtual_keys.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace {

// A row without a key is a code that no key of a keyboard sends. `scanCode` is the position on the keyboard,
// for keys that print a character.
struct KeyRow {
    int code;
    int key;
    bool keypad;
    quint32 scanCode;
};

constexpr int kNoKey = Qt::Key_unknown;

// clang-format off
constexpr std::array kKeyRows = {
    // The named keys, in the order of the list of key names.
    KeyRow{107, Qt::Key_Plus,         true,  0},
    KeyRow{  8, Qt::Key_Backspace,    false, 0},
    KeyRow{  3, Qt::Key_Cancel,       false, 0},
    KeyRow{ 20, Qt::Key_CapsLock,     false, 0},
    KeyRow{ 12, Qt::Key_Clear,        false, 0},
    KeyRow{ 17, Qt::Key_Control,      false, 0},
    KeyRow{110, Qt::Key_Period,       true,  0},
    KeyRow{ 46, Qt::Key_Delete,       false, 0},
    KeyRow{111, Qt::Key_Slash,        true,  0},
    KeyRow{ 40, Qt::Key_Down,         false, 0},
    KeyRow{ 35, Qt::Key_End,          false, 0},
    KeyRow{ 27, Qt::Key_Escape,       false, 0},
    KeyRow{ 43, Qt::Key_Execute,      false, 0},
    KeyRow{112, Qt::Key_F1,           false, 0},
    KeyRow{113, Qt::Key_F2,           false, 0},
    KeyRow{114, Qt::Key_F3,           false, 0},
    KeyRow{115, Qt::Key_F4,           false, 0},
    KeyRow{116, Qt::Key_F5,           false, 0},
    KeyRow{117, Qt::Key_F6,           false, 0},
    KeyRow{118, Qt::Key_F7,           false, 0},
    KeyRow{119, Qt::Key_F8,           false, 0},
    KeyRow{120, Qt::Key_F9,           false, 0},
    KeyRow{121, Qt::Key_F10,          false, 0},
    KeyRow{122, Qt::Key_F11,          false, 0},
    KeyRow{123, Qt::Key_F12,          false, 0},
    KeyRow{124, Qt::Key_F13,          false, 0},
    KeyRow{125, Qt::Key_F14,          false, 0},
    KeyRow{126, Qt::Key_F15,          false, 0},
    KeyRow{127, Qt::Key_F16,          false, 0},
    KeyRow{ 47, Qt::Key_Help,         false, 0},
    KeyRow{ 36, Qt::Key_Home,         false, 0},
    KeyRow{ 45, Qt::Key_Insert,       false, 0},
    KeyRow{  1, kNoKey,               false, 0}, // left mouse button
    KeyRow{ 37, Qt::Key_Left,         false, 0},
    KeyRow{  4, kNoKey,               false, 0}, // middle mouse button
    KeyRow{ 18, Qt::Key_Alt,          false, 0},
    KeyRow{106, Qt::Key_Asterisk,     true,  0},
    KeyRow{144, Qt::Key_NumLock,      false, 0},
    KeyRow{ 96, Qt::Key_0,            true,  0},
    KeyRow{ 97, Qt::Key_1,            true,  0},
    KeyRow{ 98, Qt::Key_2,            true,  0},
    KeyRow{ 99, Qt::Key_3,            true,  0},
    KeyRow{100, Qt::Key_4,            true,  0},
    KeyRow{101, Qt::Key_5,            true,  0},
    KeyRow{102, Qt::Key_6,            true,  0},
    KeyRow{103, Qt::Key_7,            true,  0},
    KeyRow{104, Qt::Key_8,            true,  0},
    KeyRow{105, Qt::Key_9,            true,  0},
    KeyRow{ 34, Qt::Key_PageDown,     false, 0},
    KeyRow{ 33, Qt::Key_PageUp,       false, 0},
    KeyRow{ 19, Qt::Key_Pause,        false, 0},
    KeyRow{ 42, Qt::Key_Printer,      false, 0},
    KeyRow{  2, kNoKey,               false, 0}, // right mouse button
    KeyRow{ 13, Qt::Key_Return,       false, 0},
    KeyRow{ 39, Qt::Key_Right,        false, 0},
    KeyRow{145, Qt::Key_ScrollLock,   false, 0},
    KeyRow{ 41, Qt::Key_Select,       false, 0},
    KeyRow{  0, kNoKey,               false, 0}, // named after the keypad's Enter, which arrives as 13
    KeyRow{ 16, Qt::Key_Shift,        false, 0},
    KeyRow{ 44, Qt::Key_Print,        false, 0},
    KeyRow{ 32, Qt::Key_Space,        false, 0},
    KeyRow{109, Qt::Key_Minus,        true,  0},
    KeyRow{  9, Qt::Key_Tab,          false, 0},
    KeyRow{ 38, Qt::Key_Up,           false, 0},
    KeyRow{186, Qt::Key_Semicolon,    false, 47},
    KeyRow{187, Qt::Key_Equal,        false, 21},
    KeyRow{188, Qt::Key_Comma,        false, 59},
    KeyRow{189, Qt::Key_Minus,        false, 20},
    KeyRow{190, Qt::Key_Period,       false, 60},
    KeyRow{191, Qt::Key_Slash,        false, 61},
    KeyRow{192, Qt::Key_QuoteLeft,    false, 49},
    KeyRow{219, Qt::Key_BracketLeft,  false, 34},
    KeyRow{220, Qt::Key_Backslash,    false, 51},
    KeyRow{221, Qt::Key_BracketRight, false, 35},
    KeyRow{222, Qt::Key_Apostrophe,   false, 48},
    KeyRow{223, Qt::Key_Exclam,       false, 0},
    // The keys that are named after their character.
    KeyRow{ 48, Qt::Key_0,            false, 19},
    KeyRow{ 49, Qt::Key_1,            false, 10},
    KeyRow{ 50, Qt::Key_2,            false, 11},
    KeyRow{ 51, Qt::Key_3,            false, 12},
    KeyRow{ 52, Qt::Key_4,            false, 13},
    KeyRow{ 53, Qt::Key_5,            false, 14},
    KeyRow{ 54, Qt::Key_6,            false, 15},
    KeyRow{ 55, Qt::Key_7,            false, 16},
    KeyRow{ 56, Qt::Key_8,            false, 17},
    KeyRow{ 57, Qt::Key_9,            false, 18},
    KeyRow{ 65, Qt::Key_A,            false, 38},
    KeyRow{ 66, Qt::Key_B,            false, 56},
    KeyRow{ 67, Qt::Key_C,            false, 54},
    KeyRow{ 68, Qt::Key_D,            false, 40},
    KeyRow{ 69, Qt::Key_E,            false, 26},
    KeyRow{ 70, Qt::Key_F,            false, 41},
    KeyRow{ 71, Qt::Key_G,            false, 42},
    KeyRow{ 72, Qt::Key_H,            false, 43},
    KeyRow{ 73, Qt::Key_I,            false, 31},
    KeyRow{ 74, Qt::Key_J,            false, 44},
    KeyRow{ 75, Qt::Key_K,            false, 45},
    KeyRow{ 76, Qt::Key_L,            false, 46},
    KeyRow{ 77, Qt::Key_M,            false, 58},
    KeyRow{ 78, Qt::Key_N,            false, 57},
    KeyRow{ 79, Qt::Key_O,            false, 32},
    KeyRow{ 80, Qt::Key_P,            false, 33},
    KeyRow{ 81, Qt::Key_Q,            false, 24},
    KeyRow{ 82, Qt::Key_R,            false, 27},
    KeyRow{ 83, Qt::Key_S,            false, 39},
    KeyRow{ 84, Qt::Key_T,            false, 28},
    KeyRow{ 85, Qt::Key_U,            false, 30},
    KeyRow{ 86, Qt::Key_V,            false, 55},
    KeyRow{ 87, Qt::Key_W,            false, 25},
    KeyRow{ 88, Qt::Key_X,            false, 53},
    KeyRow{ 89, Qt::Key_Y,            false, 29},
    KeyRow{ 90, Qt::Key_Z,            false, 52},
    // Second ways to send a code.
    KeyRow{ 13, Qt::Key_Enter,        true,  0},
    KeyRow{  9, Qt::Key_Backtab,      false, 0},
    KeyRow{ 18, Qt::Key_AltGr,        false, 0},
    KeyRow{ 44, Qt::Key_SysReq,       false, 0},
    KeyRow{110, Qt::Key_Comma,        true,  0},
};
// clang-format on

constexpr std::size_t kNamedKeys = 76;
constexpr std::size_t kCharacterKeys = 36;
constexpr std::size_t kSecondWays = 5;
static_assert(kKeyRows.size() == kNamedKeys + kCharacterKeys + kSecondWays);
// Every named key can be sent or is known not to be, and every row has the code of its name.
static_assert(kVirtualKeyNames.size() == kNamedKeys);
static_assert(std::equal(kVirtualKeyNames.begin(), kVirtualKeyNames.end(), kKeyRows.begin(),
                         [](const VirtualKeyName& name, const KeyRow& row) {
                             return name.code == row.code;
                         }));

// The digit row of the keyboard. Its keys count as digits by their position: many keyboards print accented
// letters there, and digits only with Shift.
constexpr quint32 kFirstDigitPlace = 10;
constexpr quint32 kLastDigitPlace = 19;

template <typename Matches>
const KeyRow* FindRow(Matches matches) {
    const auto* row = std::find_if(kKeyRows.begin(), kKeyRows.end(), matches);
    return row == kKeyRows.end() ? nullptr : row;
}

const KeyRow* RowAtPlace(quint32 scanCode) {
    return scanCode == 0 ? nullptr : FindRow([&](const KeyRow& row) { return row.scanCode == scanCode; });
}

const KeyRow* RowOfKey(int key, bool keypad) {
    return key == kNoKey || key == 0
               ? nullptr
               : FindRow([&](const KeyRow& row) { return row.key == key && row.keypad == keypad; });
}

// Without NumLock the keypad's arrows and the like are the same keys as those next to it.
const KeyRow* RowOf(const SystemKey& pressed) {
    if (pressed.scanCode >= kFirstDigitPlace && pressed.scanCode <= kLastDigitPlace) {
        return RowAtPlace(pressed.scanCode);
    }
    if (const KeyRow* row = RowOfKey(pressed.key, pressed.keypad)) {
        return row;
    }
    if (const KeyRow* row = RowOfKey(pressed.key, false)) {
        return row;
    }
    return RowAtPlace(pressed.scanCode);
}

} // namespace

std::optional<int> VirtualKeyOf(const SystemKey& pressed) {
    const KeyRow* row = RowOf(pressed);
    return row == nullptr ? std::nullopt : std::optional(row->code);
}

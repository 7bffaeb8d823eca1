// The names of the virtual-key codes.
#pragma once

#include <array>

// A virtual-key code, as config.ini and the themes contain them (the numbers of Windows), and its name.
struct VirtualKeyName {
    int code;
    const char* name;
};

// The keys that are not named after a character, in the order in which a code is looked up.
// Deliberate D-142: the page-up key is named "[AP]". One would expect "PAGE UP"; in the keys of a slot, its
// code represents the letter of the page, and operators enter it under this name.
// Deliberate D-143: code 0 is named "ENTER (KEYPAD)", so this name is never shown. One would expect the
// keypad's Enter to have a code of its own; it sends the code of "ENTER".
// clang-format off
inline constexpr std::array kVirtualKeyNames = {
    VirtualKeyName{107, "+ (KEYPAD)"},
    VirtualKeyName{  8, "BACKSPACE"},
    VirtualKeyName{  3, "CANCEL"},
    VirtualKeyName{ 20, "CAPSLOCK"},
    VirtualKeyName{ 12, "CLEAR"},
    VirtualKeyName{ 17, "CONTROL"},
    VirtualKeyName{110, ". (KEYPAD)"},
    VirtualKeyName{ 46, "DELETE"},
    VirtualKeyName{111, "/ (KEYPAD)"},
    VirtualKeyName{ 40, "DOWN ARROW"},
    VirtualKeyName{ 35, "END"},
    VirtualKeyName{ 27, "ESCAPE"},
    VirtualKeyName{ 43, "EXECUTE"},
    VirtualKeyName{112, "F1"},
    VirtualKeyName{113, "F2"},
    VirtualKeyName{114, "F3"},
    VirtualKeyName{115, "F4"},
    VirtualKeyName{116, "F5"},
    VirtualKeyName{117, "F6"},
    VirtualKeyName{118, "F7"},
    VirtualKeyName{119, "F8"},
    VirtualKeyName{120, "F9"},
    VirtualKeyName{121, "F10"},
    VirtualKeyName{122, "F11"},
    VirtualKeyName{123, "F12"},
    VirtualKeyName{124, "F13"},
    VirtualKeyName{125, "F14"},
    VirtualKeyName{126, "F15"},
    VirtualKeyName{127, "F16"},
    VirtualKeyName{ 47, "HELP"},
    VirtualKeyName{ 36, "HOME"},
    VirtualKeyName{ 45, "INSERT"},
    VirtualKeyName{  1, "LEFT MOUSE"},
    VirtualKeyName{ 37, "LEFT ARROW"},
    VirtualKeyName{  4, "MIDDLE MOUSE"},
    VirtualKeyName{ 18, "ALT"},
    VirtualKeyName{106, "* (KP)"},
    VirtualKeyName{144, "NUMLOCK"},
    VirtualKeyName{ 96, "0 (KP)"},
    VirtualKeyName{ 97, "1 (KP)"},
    VirtualKeyName{ 98, "2 (KP)"},
    VirtualKeyName{ 99, "3 (KP)"},
    VirtualKeyName{100, "4 (KP)"},
    VirtualKeyName{101, "5 (KP)"},
    VirtualKeyName{102, "6 (KP)"},
    VirtualKeyName{103, "7 (KP)"},
    VirtualKeyName{104, "8 (KP)"},
    VirtualKeyName{105, "9 (KP)"},
    VirtualKeyName{ 34, "PAGE DOWN"},
    VirtualKeyName{ 33, "[AP]"},
    VirtualKeyName{ 19, "PAUSE"},
    VirtualKeyName{ 42, "PRINT SCREEN"},
    VirtualKeyName{  2, "RIGHT MOUSE"},
    VirtualKeyName{ 13, "ENTER"},
    VirtualKeyName{ 39, "RIGHT ARROW"},
    VirtualKeyName{145, "SCROLL LOCK"},
    VirtualKeyName{ 41, "SELECT"},
    VirtualKeyName{  0, "ENTER (KEYPAD)"},
    VirtualKeyName{ 16, "SHIFT"},
    VirtualKeyName{ 44, "SNAPSHOT"},
    VirtualKeyName{ 32, "SPACE"},
    VirtualKeyName{109, "- (KEYPAD)"},
    VirtualKeyName{  9, "TAB"},
    VirtualKeyName{ 38, "UP ARROW"},
    VirtualKeyName{186, "SEMICOLON"},
    VirtualKeyName{187, "="},
    VirtualKeyName{188, "COMMA"},
    VirtualKeyName{189, "-"},
    VirtualKeyName{190, "DOT (.)"},
    VirtualKeyName{191, "/"},
    VirtualKeyName{192, "`"},
    VirtualKeyName{219, "["},
    VirtualKeyName{220, "\\"},
    VirtualKeyName{221, "]"},
    VirtualKeyName{222, "'"},
    VirtualKeyName{223, "ANY"},
};
// clang-format on

static_assert(kVirtualKeyNames.size() == 76);

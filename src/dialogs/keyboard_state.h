// State of the on-screen keyboard: its theme, its pictures, the text and the selected key.
#pragma once

#include "core/bounded_array.h"
#include "core/integer.h"
#include "imaging/c32bppdib.h"
#include "imaging/surface.h"

#include <QString>

// The keys of the section "keyboard" of theme.ini that stand once, in reading order. INTEGER(key) is a 16-bit
// number, TEXT(key) a font's name or a colour.

// clang-format off
#define KEYBOARD_KEYS(INTEGER, TEXT) \
    INTEGER(TitleX) \
    INTEGER(TitleY) \
    INTEGER(TitleW) \
    INTEGER(TitleH) \
    TEXT(TitleFont) \
    INTEGER(TitleFontSize) \
    TEXT(TitleFontColor) \
    INTEGER(TexteX) \
    INTEGER(TexteY) \
    INTEGER(TexteW) \
    INTEGER(TexteH) \
    TEXT(TexteFont) \
    INTEGER(TexteFontSize) \
    TEXT(TexteFontColor) \
    INTEGER(BtnTexteX) \
    INTEGER(BtnTexteY) \
    INTEGER(BtnTexteW) \
    INTEGER(BtnTexteH) \
    TEXT(BtnTexteFont) \
    INTEGER(BtnTexteFontSize) \
    TEXT(BtnTexteFontColor) \
    TEXT(BtnTexteFontHilight) \
    INTEGER(BtnTexteFontSizeHilight) \
    TEXT(BtnTexteFontColorHilight) \
    INTEGER(KeyNbLines)

// The keys of each key of the board, by line and column, both from 1: its rectangle in pixels of
// "keyboard.png", and its code: 8 deletes, 13 accepts, any other number is the character's.
#define KEYBOARD_TABLES(TABLE) \
    TABLE(KeyX) \
    TABLE(KeyY) \
    TABLE(KeyW) \
    TABLE(KeyH) \
    TABLE(KeyKey)
// clang-format on

#define KEYBOARD_MEMBER_INTEGER(key) Integer16 key;
#define KEYBOARD_MEMBER_TEXT(key) QString key;
#define KEYBOARD_MEMBER_TABLE(key) BoundedTable<Integer16, 100, 100> key;

struct KeyboardState {
    // What its callers see: width of the picture area at start, heading, text in and out, word on the accept
    // button, 1 when the text was accepted.
    Integer16 KeyboardMainWidth;
    QString KeyboardTitle;
    QString KeyboardText;
    QString KeyboardButton;
    Integer16 KeyboardResult;

    KEYBOARD_KEYS(KEYBOARD_MEMBER_INTEGER, KEYBOARD_MEMBER_TEXT)
    // Keys of each line, from line 1.
    BoundedArray<Integer16, 100> KeyNbCols;
    KEYBOARD_TABLES(KEYBOARD_MEMBER_TABLE)

    // The keys as they rest and all of them lit; loaded while the keyboard is open.
    c32bppDIB ImgKeyboard;
    c32bppDIB ImgKeyboardHilight;
    // What the form shows, and its size as a share of the picture's: 1 or less.
    Surface Picture_Keyboard;
    double KeyboardScale = 1.0;
    // The selected key.
    Integer16 KeyboardSelLine;
    Integer16 KeyboardSelCol;
    // Non-zero while one of its keys is handled.
    Integer16 KeyboardBusy;
};

#undef KEYBOARD_MEMBER_INTEGER
#undef KEYBOARD_MEMBER_TEXT
#undef KEYBOARD_MEMBER_TABLE

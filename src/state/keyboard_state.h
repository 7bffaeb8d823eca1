// State of the on-screen keyboard: its theme, its pictures, the text and the selected key.
#pragma once

#include "core/bounded_array.h"
#include "core/integer.h"
#include "imaging/picture/c32bppdib.h"
#include "imaging/picture/surface.h"

#include "state/box.h"
#include "state/theme_keys.h"

#include <QString>

// The single keys of the section "keyboard" of theme.ini, in reading order. The kinds are those of
// state/theme_keys.h.

// clang-format off
#define KEYBOARD_KEYS(ROW) \
    ROW(RECT,         Title) \
    ROW(LOOK,         Title) \
    ROW(RECT,         Texte) \
    ROW(LOOK,         Texte) \
    ROW(RECT,         BtnTexte) \
    ROW(LOOK,         BtnTexte) \
    ROW(HILIGHT_LOOK, BtnTexte) \
    ROW(INTEGER,      KeyNbLines)

// The tables that describe each key of the keyboard, by line and column, both from 1: its rectangle in pixels
// of "keyboard.png" and its code. Code 8 deletes, 13 accepts, any other code is a character.
#define KEYBOARD_TABLES(TABLE) \
    TABLE(KeyX) \
    TABLE(KeyY) \
    TABLE(KeyW) \
    TABLE(KeyH) \
    TABLE(KeyKey)
// clang-format on

#define KEYBOARD_MEMBER(kind, name) MEMBER_OF_##kind(name)
#define KEYBOARD_MEMBER_TABLE(key) BoundedTable<Integer16, 100, 100> key;

struct KeyboardState {
    // Shared with the callers: the width of the picture area at start, the title, the text in and out, the
    // label of the accept button, and 1 when the text was accepted.
    Integer16 KeyboardMainWidth;
    QString KeyboardTitle;
    QString KeyboardText;
    QString KeyboardButton;
    Integer16 KeyboardResult;

    KEYBOARD_KEYS(KEYBOARD_MEMBER)
    // The number of keys of each line, from line 1.
    BoundedArray<Integer16, 100> KeyNbCols;
    KEYBOARD_TABLES(KEYBOARD_MEMBER_TABLE)

    // The keyboard with no key highlighted and with all keys highlighted; loaded while it is open.
    c32bppDIB ImgKeyboard;
    c32bppDIB ImgKeyboardHilight;
    // The content of the form, and its size relative to the picture: 1 or less.
    Surface Picture_Keyboard;
    double KeyboardScale = 1.0;
    // The selected key.
    Integer16 KeyboardSelLine;
    Integer16 KeyboardSelCol;
    // Non-zero while a key is being handled.
    Integer16 KeyboardBusy;
};

#undef KEYBOARD_MEMBER
#undef KEYBOARD_MEMBER_TABLE

// The keys that the jukebox reads from theme.ini, as a list.
#pragma once

#include <QString>

#include <vector>

struct ThemeKey {
    QString section;
    QString key;
    // A 16-bit number; otherwise a text.
    bool isNumber = false;
};

// Every key with a fixed name, in reading order: both orientations, the 20 slots, the on-screen keyboard. The
// keys of the keyboard's lines are not among them, because the theme decides how many there are.
const std::vector<ThemeKey>& ThemeKeys();

// The number of rows of slots in each column that the file has.
inline constexpr int kSlotRows = 10;

// Returns the section of a slot. Columns and rows count from 1.
QString SlotSection(int column, int row);

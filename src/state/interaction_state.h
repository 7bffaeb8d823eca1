// State of the interaction: cursor, focus, typed track number, touch, coins.
#pragma once

#include "core/bounded_array.h"
#include "core/integer.h"

#include <QString>

struct CursorState {
    // Cursor column (1 left, 2 right) and row; whole numbers kept as floats.
    float SelX = 0;
    float SelY = 0;
    // The focused zone: "list", "main", "playlist" or "command".
    QString ActiveZone;
    // The focused button in "main" or "playlist", "config" in "command", empty in "list".
    QString ActiveBtn;
    // Key codes typed so far for a direct selection, joined by "|".
    QString TrackNumberInput;
    // The row of each menu from which it was last left.
    BoundedArray<Integer16, 100> CommandLastRow;
};

// The drag of the queue by touch, and the last position of the pointer.
struct TouchState {
    Integer16 TouchDragging;
    Integer16 TouchStartY;
    Integer16 TouchDeltaY;
    Integer16 TouchScrollOffset;
    Integer16 TouchLastX;
    Integer16 TouchLastY;
};

struct CoinState {
    Integer16 Credits;
};

// State of the interaction: cursor, focus, typed track number, touch.
#pragma once

#include "core/bounded_array.h"
#include "core/integer.h"

#include <QString>

struct InteractionState {
    // Cursor column (1 left, 2 right) and row; whole numbers kept as floats.
    float SelX = 0;
    float SelY = 0;
    // The zone that has the focus: "list", "main", "playlist" or "command".
    QString ActiveZone;
    // The focused button in "main" or "playlist", "config" in "command", empty in "list".
    QString ActiveBtn;
    // Key codes typed so far for a direct selection, joined by "|".
    QString TrackNumberInput;

    // The drag of the queue by touch.
    Integer16 TouchDragging;
    Integer16 TouchStartY;
    Integer16 TouchDeltaY;
    Integer16 TouchScrollOffset;
    Integer16 TouchLastX;
    Integer16 TouchLastY;
    // For each menu the row from which it was left last.
    BoundedArray<Integer16, 100> CommandLastRow;
};

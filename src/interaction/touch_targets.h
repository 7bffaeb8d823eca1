// What a point of the frame hits.
#pragma once

#include "core/integer.h"

struct Form_Main;

// A rectangle of the theme, its block's corner included, in design pixels.
struct Target {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

// Whether the point, in pixels of the frame, lies inside the scaled rectangle: left and top edge included.
bool Hits(const Form_Main& form, const Target& target, double x, double y);

// The area of the queue's rows.
bool OnQueue(const Form_Main& form, double x, double y);

// Rectangles and text looks of the theme, and places of windows and videos.
#pragma once

#include "core/integer.h"

#include <QRect>
#include <QString>

#include <algorithm>

// The top left corner of a block of the theme.
struct Corner16 {
    Integer16 X;
    Integer16 Y;
};

// A rectangle of the theme or the box of a text, in 16-bit numbers: a value out of range raises 6.
struct Box16 {
    Integer16 X;
    Integer16 Y;
    Integer16 W;
    Integer16 H;
};

// The font of a text, its size in points at 96 dots per inch, and its colour as "red,green,blue".
struct TextLook {
    QString Font;
    Integer16 Size;
    QString Color;
};

// The position and size of a window or a video, in screen pixels.
struct WindowPlace {
    int Left = 0;
    int Top = 0;
    int Width = 0;
    int Height = 0;
    bool Visible = false;

    // The place as a rectangle. The toolkit computes the far edges of one in 32 bits, so what is further away
    // than any screen is moved nearer.
    QRect Rectangle() const {
        static constexpr int kFurthest = 1 << 28;
        const auto near = [](int value) { return std::clamp(value, -kFurthest, kFurthest); };
        return {near(Left), near(Top), near(Width), near(Height)};
    }
};

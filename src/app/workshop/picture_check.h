// Checking the pictures of a theme: that they can be read, their sizes, and their transparency.
#pragma once

#include <QImage>
#include <QRect>

#include <cstdint>

struct CheckedTheme;

// Loads every picture and reports those that are missing or broken.
void LoadPictures(CheckedTheme& theme);

// Reports pictures that are cut by the same rectangles and differ in size.
void CheckSizes(CheckedTheme& theme);

// Reports transparent pixels that come out black, or show what was drawn before.
void CheckTransparency(CheckedTheme& theme);

// The number of pixels in a rectangle that are not opaque. The part outside the picture does not count.
std::int64_t ClearPixels(const QImage& picture, const QRect& box);

// The screens as the toolkit knows them. They stand apart because the toolkit's own header claims the name
// Display.
#pragma once

#include <QRect>
#include <QString>

#include <vector>

// The places of all screens on the desktop, the primary one first.
std::vector<QRect> ScreenPlaces();

// Bits of a pixel that carry colour, on the primary screen.
int ScreenDepth();

// The window system: "xcb", "wayland", "offscreen", "linuxfb" ...
QString WindowSystem();

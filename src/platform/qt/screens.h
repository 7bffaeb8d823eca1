// The toolkit's screens. Separate from QtDisplay because the toolkit's header also declares a name Display.
#pragma once

#include <QRect>
#include <QString>

#include <vector>

// The rectangles of all screens on the desktop, primary screen first.
std::vector<QRect> ScreenPlaces();

// Bits of colour in a pixel of the primary screen.
int ScreenDepth();

// The window system: "xcb", "wayland", "offscreen", "linuxfb" ...
QString WindowSystem();

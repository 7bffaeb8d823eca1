// The monitors of an X server, for a program without windows.
#pragma once

#include <QRect>
#include <QSize>

#include <chrono>
#include <optional>
#include <vector>

// What X11Screen reports. The jukebox places its windows and sets modes with the same values.
struct X11Monitors {
    // Primary monitor first. Empty without XRandR.
    std::vector<QRect> places;
    // Of the primary monitor.
    std::vector<QSize> modes;
    int bitsPerPixel = 0;
};

// Reads the monitors of the server that DISPLAY names. Returns nothing when it refuses the connection, closes
// it, or takes longer than `patience`; a thread may stay blocked in it then. Sets handlers with which errors
// of X connections no longer end the process.
std::optional<X11Monitors> ReadMonitors(std::chrono::milliseconds patience);

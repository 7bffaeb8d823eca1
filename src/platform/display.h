// Port: monitors and display modes.
#pragma once

#include <QRect>

#include <vector>

struct DisplayMode {
    int width = 0;
    int height = 0;
    int bits = 0;
};

// What ChangeDisplaySettings answers.
enum class DisplayChange : int { kSuccessful = 0, kRestart = 1, kRefused = -2 };

// Event thread only.
struct Display {
    virtual ~Display() = default;

    // The rectangles of all monitors in pixels, the primary one first.
    virtual std::vector<QRect> EnumDisplayMonitors() = 0;
    // The primary screen's size and colour depth now.
    virtual DisplayMode CurrentMode() = 0;
    // Whether the mode could be set, without setting it.
    virtual DisplayChange TestDisplaySettings(const DisplayMode& mode) = 0;
    virtual DisplayChange ChangeDisplaySettings(const DisplayMode& mode) = 0;
};

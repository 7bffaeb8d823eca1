// Port: monitors and display modes.
#pragma once

#include <QRect>

#include <vector>

struct DisplayMode {
    int width = 0;
    int height = 0;
    int bits = 0;
};

// Result of testing or setting a mode. kNoModes: this window system cannot change modes at all.
enum class DisplayChange : int { kSuccessful = 0, kRestart = 1, kRefused = -2, kNoModes = -3 };

// Event thread only.
struct Display {
    virtual ~Display() = default;

    // The rectangles of all monitors in pixels, primary monitor first.
    virtual std::vector<QRect> EnumDisplayMonitors() = 0;
    // The current size and colour depth of the primary screen.
    virtual DisplayMode CurrentMode() = 0;
    // Tests whether the mode could be set, without setting it.
    virtual DisplayChange TestDisplaySettings(const DisplayMode& mode) = 0;
    // Sets the mode. The neighbours of the primary monitor move with its edges. Setting the current mode
    // changes nothing and succeeds.
    virtual DisplayChange ChangeDisplaySettings(const DisplayMode& mode) = 0;
};

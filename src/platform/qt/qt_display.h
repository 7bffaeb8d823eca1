// Monitors and display modes of the cabinet.
#pragma once

#include "platform/display.h"

#include <QString>

#include <functional>

class X11Screen;

// Changes modes through XRandR on X11. Elsewhere there are no modes; each attempt is logged.
class QtDisplay : public Display {
public:
    // `x11` is null when the windows are not on X11.
    QtDisplay(X11Screen* x11, std::function<void(const QString&)> log) : x11_(x11), log_(std::move(log)) {}

    std::vector<QRect> EnumDisplayMonitors() override;
    DisplayMode CurrentMode() override;
    // X11 cannot change the depth of a running screen, so only the current depth is accepted; 24 and 32 bits
    // count as equal.
    DisplayChange TestDisplaySettings(const DisplayMode& mode) override;
    DisplayChange ChangeDisplaySettings(const DisplayMode& mode) override;

private:
    bool IsCurrent(const DisplayMode& mode);

    X11Screen* x11_;
    std::function<void(const QString&)> log_;
};

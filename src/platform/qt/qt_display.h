// Monitors and display modes of the cabinet.
#pragma once

#include "platform/display.h"

#include <QString>

#include <functional>

class X11Screen;

// Modes are changed through XRandR on X11. Elsewhere every change is refused, and the log says so.
class QtDisplay : public Display {
public:
    // `x11` is null where the windows are not on X11.
    QtDisplay(X11Screen* x11, std::function<void(const QString&)> log) : x11_(x11), log_(std::move(log)) {}

    std::vector<QRect> EnumDisplayMonitors() override;
    DisplayMode CurrentMode() override;
    // X11 cannot change the depth of a running screen: only the present one is accepted, 24 and 32 bits being
    // the same.
    DisplayChange TestDisplaySettings(const DisplayMode& mode) override;
    DisplayChange ChangeDisplaySettings(const DisplayMode& mode) override;

private:
    X11Screen* x11_;
    std::function<void(const QString&)> log_;
};

// The simulated monitors and their modes.
#pragma once

#include "platform/display.h"

class CallRecord;
class Failures;

// Monitors of given rectangles, the primary one first, which can show every mode of a positive size and
// depth.
class SimulatedDisplay : public Display {
public:
    // Record and failures outlive the display. At least one monitor.
    SimulatedDisplay(std::vector<QRect> monitors, CallRecord& record, const Failures& failures);

    std::vector<QRect> EnumDisplayMonitors() override;
    DisplayMode CurrentMode() override;
    DisplayChange TestDisplaySettings(const DisplayMode& mode) override;
    DisplayChange ChangeDisplaySettings(const DisplayMode& mode) override;

private:
    std::vector<QRect> monitors_;
    int bits_ = 32;
    CallRecord& record_;
    const Failures& failures_;
};

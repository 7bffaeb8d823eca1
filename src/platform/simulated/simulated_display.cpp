// The simulated monitors.
#include "platform/simulated/simulated_display.h"

#include "platform/simulated/call_record.h"
#include "platform/simulated/failures.h"

#include <utility>

SimulatedDisplay::SimulatedDisplay(std::vector<QRect> monitors, CallRecord& record, const Failures& failures)
    : monitors_(std::move(monitors)), record_(record), failures_(failures) {}

std::vector<QRect> SimulatedDisplay::EnumDisplayMonitors() {
    return failures_.Has("EnumDisplayMonitors") ? std::vector<QRect>() : monitors_;
}

DisplayMode SimulatedDisplay::CurrentMode() {
    return {monitors_.front().width(), monitors_.front().height(), bits_};
}

// Testing a mode and setting it are one operation of the system, told apart by a flag, and so they fail
// together.
DisplayChange SimulatedDisplay::TestDisplaySettings(const DisplayMode& mode) {
    const bool failing = failures_.Has("ChangeDisplaySettings") || failures_.Has("TestDisplaySettings");
    const bool possible = mode.width > 0 && mode.height > 0 && mode.bits > 0;
    return possible && !failing ? DisplayChange::kSuccessful : DisplayChange::kRefused;
}

DisplayChange SimulatedDisplay::ChangeDisplaySettings(const DisplayMode& mode) {
    record_.Add({QStringLiteral("ChangeDisplaySettings"), mode.width, mode.height, mode.bits});
    const DisplayChange result = TestDisplaySettings(mode);
    if (result == DisplayChange::kSuccessful) {
        monitors_.front().setSize(QSize(mode.width, mode.height));
        bits_ = mode.bits;
    }
    return result;
}

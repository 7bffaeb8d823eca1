// The strip in a window, as a row or a ring of lamps.
#pragma once

#include "app/leds/simulator.h"

// Shows the window until it is closed, the simulator is over, or `isEnded` is true. Returns false when there
// is no display.
bool RunWindow(int argc, char** argv, Simulator& simulator, bool ring, const std::function<bool()>& isEnded,
               const std::function<void()>& afterStep);

// State of the light show, and the commands of its LED controller.
#pragma once

#include "core/integer.h"

// Lets the controller run by itself.
inline constexpr const char* kFreeRunningMode = "AT+R-1";
// Makes the controller show the colours that we send; it answers "Mode Normal" and "OK".
inline constexpr const char* kNormalMode = "AT+R-0";
// The captions of the two service buttons, which are also the commands that they send.
inline constexpr const char* kButton1 = "AT+I";
inline constexpr const char* kButton2 = "AT+T";

struct LightShowState {
    // Only sizes a scratch buffer.
    Integer32 SpectrumWidth;
    // Full scale of a band.
    Integer32 SpectrumHeight;
    // Phase added to each lamp's hue; nothing changes it.
    Integer16 SpectrumHueOffset;
    // A tick is being sent; its event points drop further ticks.
    bool tickRuns = false;
};

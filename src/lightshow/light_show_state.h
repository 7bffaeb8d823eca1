// State of the light show.
#pragma once

#include "core/integer.h"

struct LightShowState {
    // Only sizes a scratch buffer.
    Integer32 SpectrumWidth;
    // Full scale of a band.
    Integer32 SpectrumHeight;
    // Phase added to each lamp's hue; nothing moves it.
    Integer16 SpectrumHueOffset;
};

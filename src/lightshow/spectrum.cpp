// The spectrum of the running track as colours of the LED strip.
#include "lightshow/spectrum.h"

#include "shell/form_main.h"

// The light show comes with its own change; until then a tick sends nothing.
void UpdateSpectrum(Form_Main& /*form*/) {}

// The spectrum of the running track as colours of the LED strip.
#include "lightshow/spectrum.h"

#include "state/form_main.h"

// The light show is not implemented yet: a tick sends nothing.
void UpdateSpectrum(Form_Main& /*form*/) {}

// The spectrum of the running track as colours of the LED strip.
#pragma once

struct Form_Main;

// One tick of the light show.
void UpdateSpectrum(Form_Main& form);

// The spectrum of the running track as colours of the LED strip.
#pragma once

struct Form_Main;

// One tick of the light show: reads the spectrum of what is audible now and sends every LED its colour. Lets
// pending events run after each message. A run-time error in it ends the program: 13 or 6 for an NbLeds that
// is no number or out of range, 6 for a strip without a band, 9 for more than 1023 bands, 8018 for a port
// that is not open or whose device has gone.
void UpdateSpectrum(Form_Main& form);

// The event of tmrSpectrum. The tick is dropped while another one runs, and while the line has not sent the
// messages of the last one.
void tmrSpectrum_Timer(Form_Main& form);

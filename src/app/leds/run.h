// Running vantorix-leds.
#pragma once

// Returns the exit code.
int RunLeds(int argc, char** argv);

// The cabinet: the jukebox on a real screen, sound card and serial port.
#pragma once

#include "app/start/command_line.h"

// Runs the jukebox and returns the program's exit code: 0 ended on request, 1 stopped by an error, 2 no
// jukebox in the folder of --home, or another jukebox uses the application folder.
int RunCabinet(const CommandLine& line, char** argv);

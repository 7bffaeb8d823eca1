// The cabinet: the jukebox on a real screen, sound card and serial port.
#pragma once

// Runs the whole program and returns its exit code: 0 ended on request, 1 stopped by an error, 2 wrong
// command line.
int RunCabinet(int argc, char** argv);

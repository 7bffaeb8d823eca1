// The time from the start of the program to its first frame on the screen, beside a bare window with one
// picture.
#pragma once

// Needs an X display; prints that the row is left out when there is none. `cabinet` and `bareWindow` are the
// programs to start, `homeFolder` the delivered home, `demoFolder` the music.
void BenchStart(const char* cabinet, const char* bareWindow, const char* homeFolder, const char* demoFolder);

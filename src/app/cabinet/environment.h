// The environment of the process, set before the toolkit starts, and the toolkit's life.
#pragma once

#include <QString>

#include <functional>

// Keeps large blocks out of the heaps, so that their memory returns to the system when they are freed. Call
// it before other threads start.
void TuneAllocator();

// Draws at 96 dots per inch and scale factor 1, whatever the desktop says; sets a private folder for
// XDG_RUNTIME_DIR when it is not set; does not search for a session bus when none is named; does not end the
// program when standard error is closed. Call it before the application object is made.
void PinEnvironment();

// Uses the user's locale, except for numbers, which keep the format of the files. Changing the locale is not
// safe while other threads read it, so call this before any thread is started; the toolkit does not change it
// later.
void PinLocale(char** argv);

// The reason why no window can be shown, for a person; empty when none is known.
QString MissingDisplay();

// Runs the program while the toolkit is up. A fatal error inside the toolkit is one line on standard error
// and exit code 1, without a core dump.
int RunWithToolkit(char** argv, const std::function<int()>& program);

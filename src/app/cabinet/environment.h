// What the toolkit reads from the environment, pinned before it starts, and the toolkit's own life.
#pragma once

#include <QString>

#include <functional>

// Drawing at 96 dots per inch and scale factor 1, whatever the desktop says; a private folder for
// XDG_RUNTIME_DIR when it is not set; no search for a session bus where none is named; no end of the program
// by a closed standard error. Before the application object is made.
void PinEnvironment();

// Takes over the user's locale, but for numbers, which stay as they are written in the files. Changing the
// locale is not safe beside other threads that read it, so this is called before any of those is made; the
// toolkit does not change it later.
void PinLocale(char** argv);

// Why no window can be shown, for a person; empty when nothing is known to be in the way.
QString MissingDisplay();

// Runs the program while the toolkit is up. A fatal fault inside the toolkit is one line on standard error
// and exit code 1, without a core dump.
int RunWithToolkit(char** argv, const std::function<int()>& program);

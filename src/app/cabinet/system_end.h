// Telling a shutdown of the system from an end of the program alone.
#pragma once

// Returns true when the system is shutting down or restarting, as its service manager says. On a system
// without systemd it is always true: there, a signal at the program is the end of the evening. Takes at most
// a second.
bool SystemIsEnding();

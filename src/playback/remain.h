// The remaining time as text.
#pragma once

#include <QString>

// Whole minutes, ":", the rest in seconds, each with at least two digits.
// The heartbeat cuts the time to whole seconds first; the frame does not, so that 59.7 reads "00:60" there.
QString RemainOfHeartbeat(double seconds);
QString RemainOfFrame(double seconds);

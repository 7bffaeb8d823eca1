// Formatting the remaining time.
#include "playback/remain.h"

#include "core/conversions.h"

#include <cmath>

QString RemainOfFrame(double seconds) {
    const double minutes = std::trunc(seconds / 60);
    return FormatZeros(minutes, 2) + u':' + FormatZeros(seconds - minutes * 60, 2);
}

QString RemainOfHeartbeat(double seconds) {
    return RemainOfFrame(std::trunc(seconds));
}

// The wait used by every animation and blink.
#include "state/pause.h"

#include "platform/event_pump.h"
#include "state/form_main.h"

namespace {

// Deliberate D-02: the duration is divided by 50, so 6000 waits 120 ms. One would expect milliseconds; all
// animations and blinks are tuned with the divided values.
constexpr double kDurationDivisor = 50;

} // namespace

void Pause(Form_Main& form, double Duration) {
    form.pump.Wait(Duration / kDurationDivisor);
}

// The wait that every animation and blink is built on.
#include "shell/pause.h"

#include "platform/event_pump.h"
#include "shell/form_main.h"

namespace {

// Deliberate D-02: the duration is divided by 50, so that 6000 waits 120 ms. Milliseconds as they stand look
// right; all animations and blinks are tuned with the divided values.
constexpr double kDurationDivisor = 50;

} // namespace

void Pause(Form_Main& form, double Duration) {
    form.pump.Wait(Duration / kDurationDivisor);
}

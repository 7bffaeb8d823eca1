// The exit routine.
#include "shell/exit.h"

#include "core/run_time_error.h"
#include "lightshow/led_link.h"
#include "platform/audio_library.h"
#include "platform/event_pump.h"
#include "platform/serial_port.h"
#include "state/form_main.h"

void ExitJukebox(Form_Main& form) {
    form.shell.tmrSpectrum.Enabled = false;
    form.audio.BASS_Free();
    if (form.settings.RGBLedsActive == u"true") {
        SendToController(form, kFreeRunningMode);
        for (int turn = 0; turn < 3; ++turn) {
            form.pump.DoEvents();
        }
        form.MSComm1.Close();
    }
    throw ProgramEnd(0);
}

// The window of the video on a second monitor.
#include "rendering/video_form.h"

#include "platform/display.h"
#include "settings/config.h"
#include "state/form_main.h"

bool VideoLiesBeyondScreen(const Form_Main& form) {
    return !form.settings.VideoPositionLeft.isEmpty() &&
           form.display.CurrentMode().width <
               ConfigNumber(form, u"VideoPositionLeft", form.settings.VideoPositionLeft);
}

void ShowVideoForm(Form_Main& form) {
    form.shell.Form_Video.Visible = true;
}

void UnloadVideoForm(Form_Main& form) {
    form.shell.Form_Video.Visible = false;
}

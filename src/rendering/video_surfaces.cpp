// Where a running video is shown.
#include "rendering/video_surfaces.h"

#include "platform/display.h"
#include "settings/config.h"
#include "state/form_main.h"

// Both do nothing: the platform's video graph refuses every file, so there is no picture to place.
void DrawMiniVideo(Form_Main& /*form*/) {}
void PlaceRunningVideo(Form_Main& /*form*/) {}

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

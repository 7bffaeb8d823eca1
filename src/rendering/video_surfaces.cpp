// The homes of a running video.
#include "rendering/video_surfaces.h"

#include "platform/display.h"
#include "settings/config_values.h"
#include "shell/form_main.h"

// Videos are placed by the video surfaces' own change; until then no video runs.
void DrawMiniVideo(Form_Main& /*form*/) {}
void PlaceRunningVideo(Form_Main& /*form*/) {}

bool VideoLiesBeyondScreen(const Form_Main& form) {
    return !form.VideoPositionLeft.isEmpty() &&
           form.display.CurrentMode().width <
               ConfigNumber(form, u"VideoPositionLeft", form.VideoPositionLeft);
}

void ShowVideoForm(Form_Main& form) {
    form.Form_Video.Visible = true;
}

void UnloadVideoForm(Form_Main& form) {
    form.Form_Video.Visible = false;
}

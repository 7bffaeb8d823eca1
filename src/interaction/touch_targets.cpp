// What a point of the frame hits.
#include "interaction/touch_targets.h"

#include "shell/form_main.h"

bool Hits(const Form_Main& form, const Target& target, double x, double y) {
    const double left = target.x * form.ZoneScaleX;
    const double top = target.y * form.ZoneScaleY;
    return x >= left && x < left + target.width * form.ZoneScaleX && y >= top &&
           y < top + target.height * form.ZoneScaleY;
}

bool OnQueue(const Form_Main& form, double x, double y) {
    const Target queue{form.BlockPlaylistX.value() + form.BlockPlaylistPlaylistX.value(),
                       form.BlockPlaylistY.value() + form.BlockPlaylistPlaylistY.value(),
                       form.BlockPlaylistPlaylistW.value(), form.BlockPlaylistPlaylistH.value()};
    return Hits(form, queue, x, y);
}

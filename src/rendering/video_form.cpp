// Placing, showing and unloading the window of the video.
#include "rendering/video_form.h"

#include "core/run_time_error.h"
#include "platform/display.h"
#include "platform/windows.h"
#include "settings/config.h"
#include "state/form_main.h"
#include "state/log.h"

#include <algorithm>

namespace {

QRect PrimaryScreen(const Form_Main& form) {
    const DisplayMode mode = form.display.CurrentMode();
    return {0, 0, mode.width, mode.height};
}

// The monitor that shows the point, otherwise the first one whose columns include it.
QRect MonitorAt(const Form_Main& form, int left, int top) {
    QRect inColumn;
    for (const QRect& monitor : form.display.EnumDisplayMonitors()) {
        if (monitor.contains(left, top)) {
            return monitor;
        }
        if (inColumn.isNull() && left >= monitor.left() && left <= monitor.right()) {
            inColumn = monitor;
        }
    }
    return inColumn;
}

int PlaceOr(const Form_Main& form, QStringView key, const QString& value, int otherwise) {
    return value.isEmpty() ? otherwise : ConfigPixels(form, key, value);
}

// What is left from a position on of a monitor that begins at `start`; `otherwise` if it does not hold the
// position.
int Rest(int start, int length, int position, int otherwise) {
    const bool held = position >= start && position - start < length;
    return held ? length - (position - start) : otherwise;
}

WindowPlace ConfiguredPlace(const Form_Main& form) {
    const SettingsState& settings = form.settings;
    const QRect primary = PrimaryScreen(form);
    const int left = ConfigPixels(form, u"VideoPositionLeft", settings.VideoPositionLeft);
    const QString& givenTop = settings.VideoPositionTop;
    const QRect monitor = MonitorAt(form, left, PlaceOr(form, u"VideoPositionTop", givenTop, -1));
    const int top = PlaceOr(form, u"VideoPositionTop", givenTop, monitor.top());
    const int width = PlaceOr(form, u"VideoPositionWidth", settings.VideoPositionWidth,
                              Rest(monitor.left(), monitor.width(), left, primary.width()));
    const int height = PlaceOr(form, u"VideoPositionHeight", settings.VideoPositionHeight,
                               Rest(monitor.top(), monitor.height(), top, primary.height()));
    return {left, top, std::max(width, 0), std::max(height, 0), false};
}

// Deliberate D-160: a video at the exact width of the screen plays in a window that is not shown. One would
// expect to see it; but the window is shown only for larger positions, while the video goes to it from this
// one on.
void LogUnseenPlace(Form_Main& form, int left) {
    if (left == form.display.CurrentMode().width) {
        WriteLog(form, QStringLiteral(" : Vidéo invisible, VideoPositionLeft doit valoir au moins %1")
                           .arg(qint64{left} + 1));
    }
}

} // namespace

// Deliberate D-163: the position is compared with the screen's width, although it counts from the left edge
// of the desktop. One would expect the screen's right edge, which is the same only for the leftmost screen;
// cabinets have the first screen there.
bool VideoLiesBeyondScreen(const Form_Main& form) {
    return !form.settings.VideoPositionLeft.isEmpty() &&
           form.display.CurrentMode().width <
               ConfigNumber(form, u"VideoPositionLeft", form.settings.VideoPositionLeft);
}

// Deliberate D-161: a change of the configured place does not move a window that is loaded. One would expect
// it to follow; the place is read when the window is loaded.
void LoadVideoForm(Form_Main& form) {
    if (form.shell.videoFormLoaded) {
        return;
    }
    const WindowPlace place = ConfiguredPlace(form);
    const auto where = [&] {
        return ConfigPlace(form, u"Main", u"VideoPositionWidth") + QStringLiteral(" and VideoPositionHeight");
    };
    TellingWhere(where, [&] { Resize(form.frame.Picture_Video, place.Width, place.Height); });
    form.shell.Form_Video = place;
    form.shell.videoFormLoaded = true;
    LogUnseenPlace(form, place.Left);
}

void ShowVideoForm(Form_Main& form) {
    LoadVideoForm(form);
    WindowPlace& place = form.shell.Form_Video;
    place.Visible = true;
    form.windows.ShowVideoWindow(true, place.Rectangle());
}

// Deliberate D-162: after this, videos on the second monitor play unseen until the program starts again or
// the menu's dialog is closed. One would expect the next video to bring the window back; it only loads it.
void UnloadVideoForm(Form_Main& form) {
    form.windows.ShowVideoWindow(false, QRect());
    form.shell.Form_Video = {};
    form.shell.videoFormLoaded = false;
    Resize(form.frame.Picture_Video, 0, 0);
}

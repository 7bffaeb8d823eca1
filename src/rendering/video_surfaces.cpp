// Placing a running video: small in the command block, over the whole surface, or in the second window.
#include "rendering/video_surfaces.h"

#include "core/conversions.h"
#include "core/run_time_error.h"
#include "platform/display.h"
#include "rendering/geometry.h"
#include "rendering/redraw_jukebox.h"
#include "rendering/video_form.h"
#include "state/form_main.h"

namespace {

// The border of the command block, in design pixels.
constexpr int kBorder = 7;
// The idle ticks below which a video is small, and between which it grows.
constexpr int kSmallBelow = 20;
constexpr int kGrowsBelow = 30;

// A position equal to the screen's width counts as beyond it here, but not where the window is shown (see
// D-160).
bool BelongsToVideoForm(const Form_Main& form) {
    return form.display.CurrentMode().width <= Val(form.settings.VideoPositionLeft);
}

void PlaceInVideoForm(Form_Main& form) {
    LoadVideoForm(form);
    form.player.VideoWindow->Place(QStringLiteral("Picture_Video"), 0, 0, form.frame.Picture_Video.Width(),
                                   form.frame.Picture_Video.Height());
}

void PlaceFull(Form_Main& form) {
    const WindowPlace& surface = form.frame.Picture_MainVideo;
    form.player.VideoWindow->Place(QStringLiteral("Picture_MainVideo"), 0, 0, surface.Width, surface.Height);
}

// Deliberate D-172: the place has the size of all rows of the menu, so it may be higher than the block. One
// would expect the size of the block; a long menu gives a large picture. What the picture's shape leaves of
// the height is halved, so that the picture is in the middle of it.
void PlaceSmall(Form_Main& form) {
    const QString owner = QStringLiteral("Picture_Main");
    MediaGraph& video = *form.player.VideoWindow;
    const Box place = ScaledBox(
        form, form.theme.BlockCommand.X.value() + kBorder, form.theme.BlockCommand.Y.value() + kBorder,
        form.frame.Picture_Command.Width() - 2 * kBorder, form.frame.Picture_Command.Height() - 2 * kBorder);
    video.Place(owner, place.x, place.y, place.width, place.height);
    const int down = CInt32((place.height - video.Height()) / 2.0).value();
    video.Place(owner, place.x, place.y + down, place.width, place.height);
}

void ClearCommandBlock(Form_Main& form) {
    const Box block = ScaledBox(form, form.theme.BlockCommand.X.value(), form.theme.BlockCommand.Y.value(),
                                form.assets.ImgCommand.Width(), form.assets.ImgCommand.Height());
    form.assets.ImgCommand.Render(form.frame.Picture_Main, block.x, block.y, block.width, block.height);
    RefreshMain(form);
}

// Deliberate D-170: in the zone "command" the picture covers the rows of the menu, where they cannot be read.
// One would expect the video to make room; a menu that is used while a video runs is used by its owner.
void Shrink(Form_Main& form, bool coverHoldsBlock) {
    form.frame.Picture_MainVideo.Visible = false;
    if (!form.player.VideoWindow) {
        return;
    }
    if (BelongsToVideoForm(form)) {
        PlaceInVideoForm(form);
        return;
    }
    PlaceSmall(form);
    form.player.VideoWindow->SetVisible(form.cursor.ActiveZone == u"command" || !coverHoldsBlock);
}

void Grow(Form_Main& form) {
    if (form.player.VideoWindow && form.cursor.ActiveZone != u"command" && !BelongsToVideoForm(form)) {
        form.frame.Picture_MainVideo.Visible = true;
        PlaceFull(form);
        form.player.VideoWindow->SetVisible(true);
    }
}

} // namespace

void DrawMiniVideo(Form_Main& form) {
    EndsProgram("DrawMiniVideo", [&] {
        const bool isFull = form.frame.Picture_MainVideo.Visible;
        if (!isFull) {
            ClearCommandBlock(form);
        }
        if (BelongsToVideoForm(form)) {
            PlaceInVideoForm(form);
        } else if (isFull) {
            PlaceFull(form);
        } else {
            PlaceSmall(form);
        }
    });
}

void HideMiniVideo(Form_Main& /*form*/) {}

void PlaceRunningVideo(Form_Main& form, bool coverHoldsBlock) {
    EndsProgram("PlaceRunningVideo", [&] {
        if (form.shell.IdleTicks < kSmallBelow) {
            Shrink(form, coverHoldsBlock);
        } else if (form.shell.IdleTicks > kSmallBelow && form.shell.IdleTicks < kGrowsBelow) {
            Grow(form);
        }
    });
}

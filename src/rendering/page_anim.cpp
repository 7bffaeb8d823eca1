// Turning the page: the old leaf folds into the spine, the new one opens out of it.
#include "rendering/page_anim.h"

#include "core/run_time_error.h"
#include "platform/event_pump.h"
#include "playback/engine.h"
#include "rendering/geometry.h"
#include "rendering/redraw_jukebox.h"
#include "rendering/track_zone.h"
#include "shell/form_main.h"
#include "shell/log.h"
#include "shell/pause.h"

namespace {

constexpr int kLeft = 0;
constexpr int kRight = 1;

Box PageBox(const Form_Main& form, int page) {
    return {form.ZoneListPageX(page).value() + form.ZoneListX.value(),
            form.ZoneListPageY(page).value() + form.ZoneListY.value(), form.ZoneListPageWidth(page).value(),
            form.ZoneListPageHeight(page).value()};
}

// Where a leaf of the given width stands on its page: the spine is the left page's right edge and the right
// page's left.
Box LeafBox(const Form_Main& form, int page, int width) {
    const Box whole = PageBox(form, page);
    const int x = page == kLeft ? whole.x + whole.width - width : whole.x;
    return {x, whole.y, width, whole.height};
}

void CopyWhole(Surface& target, const Surface& source) {
    BitBlt(target, {0, 0, source.Width(), source.Height()}, source, 0, 0);
}

void CopyPage(Form_Main& form, int page) {
    const Box box = PageBox(form, page);
    BitBlt(form.Picture_CacheTmp2, box, form.Picture_Cache, box.x, box.y);
}

// Assembles one frame: the old zone, the new page under the leaf, the leaf squeezed to its width; and shows
// it.
void ShowLeaf(Form_Main& form, int newPage, const Surface& leafFrom, int leafPage, double width) {
    CopyWhole(form.Picture_CacheTmp2, form.Picture_CacheTmp);
    CopyPage(form, newPage);
    StretchBlt(form.Picture_CacheTmp2, LeafBox(form, leafPage, width > 0 ? static_cast<int>(width) : 0),
               leafFrom, PageBox(form, leafPage));
    const Surface& frame = form.Picture_CacheTmp2;
    StretchBlt(form.Picture_Main, ScaledBox(form, 0, 0, frame.Width(), frame.Height()), frame,
               {0, 0, frame.Width(), frame.Height()});
    RefreshMain(form);
}

void EndFrame(Form_Main& form) {
    Pause(form, 300);
    form.pump.DoEvents();
}

// The old leaf of `page` folds into the spine, then the new one of the other page opens.
// Deliberate D-20: the second half runs to the left page's width in both directions, and its speed falls
// below zero when that is much wider than the first half's page, so that the turn never ends. One expects a
// limit; themes have pages of about the same width.
void Fold(Form_Main& form, int page) {
    const int other = page == kLeft ? kRight : kLeft;
    const double newWidth = form.ZoneListPageWidth(kLeft).value();
    double Width = form.ZoneListPageWidth(page).value();
    double Speed = 1;
    const double Accel = 1;
    while (Width > 0) {
        ShowLeaf(form, page, form.Picture_CacheTmp, page, Width);
        Width -= Speed;
        Speed += Accel;
        EndFrame(form);
    }
    Width = 0;
    while (Width < newWidth) {
        ShowLeaf(form, page, form.Picture_Cache, other, Width);
        Width += Speed;
        Speed -= Accel;
        EndFrame(form);
    }
}

} // namespace

void PageAnim(Form_Main& form, const QString& Direction) {
    ShowWait(form);
    RefreshMain(form);
    form.pump.DoEvents();
    WriteLog(form, QStringLiteral(" : PageAnim"));
    form.LastDrawnSlot = -1;
    form.CoverKind = 0;
    form.IdleTicks = 1;
    Resize(form.Picture_CacheTmp, form.Picture_Cache.Width(), form.Picture_Cache.Height());
    Resize(form.Picture_CacheTmp2, form.Picture_Cache.Width(), form.Picture_Cache.Height());
    CopyWhole(form.Picture_CacheTmp, form.Picture_Cache);
    DrawZoneList(form);
    if (form.ZoneScaleX != 1.0) {
        form.Picture_Main.stretchMode = kStretchFast;
    }
    if (form.PlaylistCount == 0 && form.PlayTransitionSound == u"true") {
        PlaySound(form, ThemeSound::kPageTurn);
    }
    Fold(form, Direction == u"+" ? kRight : kLeft);
    // Deliberate D-138: folder 101 inside one another raises 9, which leaves InputBusy set. One expects the
    // folder not to be entered. The history has a fixed size.
    const auto where = [&] {
        return form.Dir1.Path + QStringLiteral(" (expected at most 100 folders inside one another)");
    };
    TellingWhere(where, [&] {
        form.DirHistoryPage(form.DirLevel) = form.CurrentPage;
        form.DirHistoryPath(form.DirLevel) = form.Dir1.Path;
    });
    if (form.ZoneScaleX != 1.0) {
        form.Picture_Main.stretchMode = kStretchHalftone;
    }
    RedrawJukebox(form);
}

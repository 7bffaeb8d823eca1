// The page turn: the old leaf folds into the spine, then the new one unfolds from it.
#include "rendering/page_anim.h"

#include "core/run_time_error.h"
#include "platform/event_pump.h"
#include "playback/engine.h"
#include "rendering/geometry.h"
#include "rendering/redraw_jukebox.h"
#include "rendering/track_zone.h"
#include "state/form_main.h"
#include "state/log.h"
#include "state/pause.h"

namespace {

constexpr int kLeft = 0;
constexpr int kRight = 1;

Box PageBox(const Form_Main& form, int page) {
    return InZone(form, form.theme.ZoneListPage(page));
}

// Returns the rectangle of a leaf of the given width. The spine is the right edge of the left page and the
// left edge of the right page.
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
    BitBlt(form.frame.Picture_CacheTmp2, box, form.frame.Picture_Cache, box.x, box.y);
}

// Assembles and shows one frame: the old zone, the new page under the leaf, and the leaf squeezed to its
// width.
void ShowLeaf(Form_Main& form, int newPage, const Surface& leafFrom, int leafPage, double width) {
    CopyWhole(form.frame.Picture_CacheTmp2, form.frame.Picture_CacheTmp);
    CopyPage(form, newPage);
    StretchBlt(form.frame.Picture_CacheTmp2, LeafBox(form, leafPage, width > 0 ? static_cast<int>(width) : 0),
               leafFrom, PageBox(form, leafPage));
    const Surface& frame = form.frame.Picture_CacheTmp2;
    StretchBlt(form.frame.Picture_Main, ScaledBox(form, {0, 0, frame.Width(), frame.Height()}), frame,
               {0, 0, frame.Width(), frame.Height()});
    RefreshMain(form);
}

void EndFrame(Form_Main& form) {
    Pause(form, 300);
    form.pump.DoEvents();
}

// Folds the old leaf of `page` into the spine, then unfolds the new leaf of the other page.
// Deliberate D-20: the second half runs to the left page's width in both directions, and its speed falls
// below zero when that is much wider than the first half's page, so the turn never ends. One would expect a
// limit; themes have pages of about the same width.
void Fold(Form_Main& form, int page) {
    const int other = page == kLeft ? kRight : kLeft;
    const double newWidth = form.theme.ZoneListPage(kLeft).W.value();
    double Width = form.theme.ZoneListPage(page).W.value();
    double Speed = 1;
    const double Accel = 1;
    while (Width > 0) {
        ShowLeaf(form, page, form.frame.Picture_CacheTmp, page, Width);
        Width -= Speed;
        Speed += Accel;
        EndFrame(form);
    }
    Width = 0;
    while (Width < newWidth) {
        ShowLeaf(form, page, form.frame.Picture_Cache, other, Width);
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
    form.frame.LastDrawnSlot = -1;
    form.frame.CoverKind = 0;
    form.shell.IdleTicks = 1;
    Resize(form.frame.Picture_CacheTmp, form.frame.Picture_Cache.Width(), form.frame.Picture_Cache.Height());
    Resize(form.frame.Picture_CacheTmp2, form.frame.Picture_Cache.Width(), form.frame.Picture_Cache.Height());
    CopyWhole(form.frame.Picture_CacheTmp, form.frame.Picture_Cache);
    DrawZoneList(form);
    if (form.frame.ZoneScaleX != 1.0) {
        form.frame.Picture_Main.stretchMode = kStretchFast;
    }
    if (form.queue.PlaylistCount == 0 && form.settings.PlayTransitionSound == u"true") {
        PlaySound(form, ThemeSound::kPageTurn);
    }
    Fold(form, Direction == u"+" ? kRight : kLeft);
    // Deliberate D-138: the 101st nested folder raises 9, which leaves InputBusy set. One would expect the
    // folder not to be entered; the history has a fixed size.
    const auto where = [&] {
        return form.library.Dir1.Path + QStringLiteral(" (expected at most 100 folders inside one another)");
    };
    TellingWhere(where, [&] {
        form.library.DirHistoryPage(form.library.DirLevel) = form.library.CurrentPage;
        form.library.DirHistoryPath(form.library.DirLevel) = form.library.Dir1.Path;
    });
    if (form.frame.ZoneScaleX != 1.0) {
        form.frame.Picture_Main.stretchMode = kStretchHalftone;
    }
    RedrawJukebox(form);
}

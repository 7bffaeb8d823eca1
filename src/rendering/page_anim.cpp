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

#include <algorithm>

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

Box WholeOf(const Surface& surface) {
    return {0, 0, surface.Width(), surface.Height()};
}

void CopyPart(Surface& target, const Surface& source, const Box& part) {
    BitBlt(target, part, source, part.x, part.y);
}

Box Common(const Box& a, const Box& b) {
    const int left = std::max(a.x, b.x);
    const int top = std::max(a.y, b.y);
    return {left, top, std::min(a.x + a.width, b.x + b.width) - left,
            std::min(a.y + a.height, b.y + b.height) - top};
}

// The moving leaf of one half of the turn.
struct Leaf {
    // The page that is already new.
    int newPage = kLeft;
    // The zone and the page that the leaf shows.
    const Surface& from;
    int page = kLeft;
    // The width in the last frame; -1 before the first one.
    int lastWidth = -1;
};

// Assembles and shows one frame: the old zone, the new page under the leaf, and the leaf squeezed to its
// width. Frames of one half differ only where the wider one of two successive leaves is, because InputBusy
// keeps everything else from drawing.
void ShowLeaf(Form_Main& form, Leaf& leaf, double Width) {
    const int width = Width > 0 ? static_cast<int>(Width) : 0;
    Surface& frame = form.frame.Picture_CacheTmp2;
    const Box changed =
        leaf.lastWidth < 0 ? WholeOf(frame) : LeafBox(form, leaf.page, std::max(width, leaf.lastWidth));
    CopyPart(frame, form.frame.Picture_CacheTmp, changed);
    CopyPart(frame, form.frame.Picture_Cache, Common(PageBox(form, leaf.newPage), changed));
    StretchBlt(frame, LeafBox(form, leaf.page, width), leaf.from, PageBox(form, leaf.page));
    StretchBltPart(form.frame.Picture_Main, ScaledBox(form, WholeOf(frame)), frame, WholeOf(frame), changed);
    RefreshMain(form);
    leaf.lastWidth = width;
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
    Leaf folding{page, form.frame.Picture_CacheTmp, page};
    while (Width > 0) {
        ShowLeaf(form, folding, Width);
        Width -= Speed;
        Speed += Accel;
        EndFrame(form);
    }
    Width = 0;
    Leaf opening{page, form.frame.Picture_Cache, other};
    while (Width < newWidth) {
        ShowLeaf(form, opening, Width);
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
    CopyPart(form.frame.Picture_CacheTmp, form.frame.Picture_Cache, WholeOf(form.frame.Picture_Cache));
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

// A press on the frame in the touch mode, test by test.
#include "interaction/touch_press.h"

#include "core/conversions.h"
#include "core/path_text.h"
#include "interaction/cursor.h"
#include "interaction/folder_moves.h"
#include "interaction/menu_choices.h"
#include "interaction/touch_targets.h"
#include "interaction/valider.h"
#include "interaction/valider_command.h"
#include "interaction/valider_main.h"
#include "interaction/valider_playlist.h"
#include "platform/event_pump.h"
#include "playback/credits.h"
#include "rendering/geometry.h"
#include "rendering/page_anim.h"
#include "rendering/redraw_jukebox.h"
#include "shell/form_main.h"

#include <array>

namespace {

struct Point {
    double x = 0;
    double y = 0;
};

bool HitsBlock(const Form_Main& form, Integer16 blockX, Integer16 blockY, const Target& inBlock,
               const Point& point) {
    const Target target{blockX.value() + inBlock.x, blockY.value() + inBlock.y, inBlock.width,
                        inBlock.height};
    return Hits(form, target, point.x, point.y);
}

void PressSlots(Form_Main& form, const Point& point) {
    for (int column = 1; column <= 2; ++column) {
        for (int row = 1; row <= form.ZoneListNbTracksParColonne.value(); ++row) {
            const Target slot{form.ZoneListPisteHilightX(column, row).value(),
                              form.ZoneListPisteHilightY(column, row).value(),
                              form.ZoneListPisteHilightW(column, row).value(),
                              form.ZoneListPisteHilightH(column, row).value()};
            if (HitsBlock(form, form.ZoneListX, form.ZoneListY, slot, point)) {
                form.SelX = static_cast<float>(column);
                form.SelY = static_cast<float>(row);
                RedrawJukebox(form);
                form.NumTrack = SlotUnderCursor(form);
                Valider(form, form.NumTrack);
                RedrawJukebox(form);
            }
        }
    }
}

void PressQueue(Form_Main& form, const Point& point) {
    form.TouchDragging = 0;
    if (OnQueue(form, point.x, point.y)) {
        form.TouchStartY = CInt16(point.y);
        form.TouchDragging = 1;
    }
}

void PressCoinBox(Form_Main& form, const Point& point) {
    const Target box{form.BlockMainInsertCoinX.value(), form.BlockMainInsertCoinY.value(),
                     form.BlockMainInsertCoinW.value(), form.BlockMainInsertCoinH.value()};
    if (form.ManageCoin == u"true" && HitsBlock(form, form.BlockMainX, form.BlockMainY, box, point)) {
        InsertCoin(form);
    }
}

struct ButtonRow {
    const char* word;
    Integer16 ThemeRecord::*blockX;
    Integer16 ThemeRecord::*blockY;
    Integer16 ThemeRecord::*x;
    Integer16 ThemeRecord::*y;
    Integer16 ThemeRecord::*width;
    Integer16 ThemeRecord::*height;
};

using T = ThemeRecord;

#define BUTTON(word, block, prefix)                                                                          \
    ButtonRow {                                                                                              \
        word, &T::block##X, &T::block##Y, &T::prefix##X, &T::prefix##Y, &T::prefix##W, &T::prefix##H         \
    }

// clang-format off
constexpr std::array kButtons = {
    BUTTON("preview", BlockMain,     BlockMainBtnPreview),
    BUTTON("stop",    BlockMain,     BlockMainBtnStop),
    BUTTON("play",    BlockMain,     BlockMainBtnPlay),
    BUTTON("pause",   BlockMain,     BlockMainBtnPause),
    BUTTON("next",    BlockMain,     BlockMainBtnNext),
    BUTTON("down",    BlockPlaylist, BlockPlaylistBtnDown),
    BUTTON("up",      BlockPlaylist, BlockPlaylistBtnUp),
    BUTTON("remove",  BlockPlaylist, BlockPlaylistBtnRemove),
    BUTTON("load",    BlockPlaylist, BlockPlaylistBtnLoad),
    BUTTON("save",    BlockPlaylist, BlockPlaylistBtnSave),
};
// clang-format on

#undef BUTTON

void PressButtons(Form_Main& form, const Point& point) {
    form.ActiveBtn.clear();
    for (const ButtonRow& row : kButtons) {
        const Target target{(form.*row.x).value(), (form.*row.y).value(), (form.*row.width).value(),
                            (form.*row.height).value()};
        if (HitsBlock(form, form.*row.blockX, form.*row.blockY, target, point)) {
            form.ActiveBtn = QString::fromLatin1(row.word);
        }
    }
}

bool HitsNavigation(const Form_Main& form, Integer16 x, Integer16 y, Integer16 width, Integer16 height,
                    const Point& point) {
    return HitsBlock(form, form.ZoneListX, form.ZoneListY,
                     {x.value(), y.value(), width.value(), height.value()}, point);
}

void PressNavigation(Form_Main& form, const Point& point) {
    if (HitsNavigation(form, form.ZoneListNavigationBackx, form.ZoneListNavigationBackY,
                       form.ZoneListNavigationBackWidth, form.ZoneListNavigationBackHeight, point) &&
        (form.DirLevel > 0 || form.Dir1.Path == PathIn(form.AppFolder, QStringLiteral("playlists")))) {
        Retour(form);
    }
    if (HitsNavigation(form, form.ZoneListNavigationPreviewPagex, form.ZoneListNavigationPreviewPageY,
                       form.ZoneListNavigationPreviewPageWidth, form.ZoneListNavigationPreviewPageHeight,
                       point) &&
        form.NbPages > 1) {
        form.CurrentPage = PageBefore(form);
        PageAnim(form, QStringLiteral("-"));
    }
    if (HitsNavigation(form, form.ZoneListNavigationNextPagex, form.ZoneListNavigationNextPageY,
                       form.ZoneListNavigationNextPageWidth, form.ZoneListNavigationNextPageHeight, point) &&
        form.NbPages > 1) {
        form.CurrentPage = PageAfter(form);
        PageAnim(form, QStringLiteral("+"));
    }
}

// The text rectangle of a menu's row, by its kind.
Target RowText(const Form_Main& form, int row) {
    const int down = form.ImgCommandListbox.Height() * (row - 1);
    if (form.CommandType(form.CommandCurrentMenu, row) == u"listbox") {
        return {form.BlockCommandListBoxTexteX.value(), form.BlockCommandListBoxTexteY.value() + down,
                form.BlockCommandListBoxTexteW.value(), form.BlockCommandListBoxTexteH.value()};
    }
    return {form.BlockCommandBtnTexteX.value(), form.BlockCommandBtnTexteY.value() + down,
            form.BlockCommandBtnTexteW.value(), form.BlockCommandBtnTexteH.value()};
}

void PressMenu(Form_Main& form, const Point& point) {
    const Integer16 menu = form.CommandCurrentMenu;
    for (int row = 1; menu == form.CommandCurrentMenu && row <= form.CommandRowCount(menu).value(); ++row) {
        if (!HitsBlock(form, form.BlockCommandX, form.BlockCommandY, RowText(form, row), point)) {
            continue;
        }
        form.CommandCurrentId = row;
        if (form.CommandType(menu, row) == u"listbox") {
            StepChoiceForward(form);
            ValiderCommand(form);
        } else if (form.CommandType(menu, row) == u"btn") {
            RefreshMain(form);
            ValiderCommand(form);
        }
    }
}

void ActOnButton(Form_Main& form) {
    if (form.ActiveBtn.isEmpty()) {
        return;
    }
    RedrawJukebox(form);
    form.pump.DoEvents();
    RefreshMain(form);
    form.pump.DoEvents();
    ValiderMain(form);
    ValiderPlaylist(form);
}

} // namespace

void PressAt(Form_Main& form, float X, float Y) {
    const Point point{static_cast<double>(X), static_cast<double>(Y)};
    PressSlots(form, point);
    PressQueue(form, point);
    PressCoinBox(form, point);
    PressButtons(form, point);
    PressNavigation(form, point);
    PressMenu(form, point);
    ActOnButton(form);
}

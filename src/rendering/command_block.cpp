// Drawing the menu's rows and copying the visible ones to the frame.
#include "rendering/command_block.h"

#include "core/run_time_error.h"
#include "rendering/geometry.h"
#include "rendering/text.h"
#include "state/form_main.h"
#include "state/log.h"

#include <algorithm>

namespace {

// The border of the block around the rows, in design pixels.
constexpr int kBorder = 7;
// The highest number of a choice in a row.
constexpr int kMostChoices = 20;

int RowHeight(const Form_Main& form) {
    return form.assets.ImgCommandListbox.Height();
}

struct MirrorRow {
    int menu;
    int row;
    QString SettingsState::*setting;
};

using S = SettingsState;

// clang-format off
constexpr MirrorRow kMirrors[] = {
    {1, 2, &S::ShowBigtitle},
    {1, 3, &S::ShowCover},
    {1, 4, &S::ShowTrackNum},
    {2, 1, &S::ManageCoin},
    {2, 2, &S::PlayTransitionSound},
    {2, 4, &S::ShowFolderCover},
    {2, 5, &S::ShowFileCover},
    {2, 6, &S::ShowCover},
    {2, 7, &S::ShowBigCoverDefault},
    {2, 8, &S::ShowMp3CoverTag},
    {2, 9, &S::ShowTrackNum},
};
// clang-format on

// Sets the current choice of each row that mirrors a setting. An order other than "alpha" and "playcount"
// does not change its row.
void RefreshChoices(Form_Main& form) {
    if (form.library.Order == u"alpha") {
        form.menu.CommandChoice(1, 1) = 1;
    } else if (form.library.Order == u"playcount") {
        form.menu.CommandChoice(1, 1) = 2;
    }
    for (const MirrorRow& mirror : kMirrors) {
        form.menu.CommandChoice(mirror.menu, mirror.row) = form.settings.*mirror.setting == u"true" ? 1 : 2;
    }
}

QString ChoiceLabel(const Form_Main& form, int row) {
    const Integer16 choice = form.menu.CommandChoice(form.menu.CommandCurrentMenu, row);
    if (choice < 0 || choice > kMostChoices) {
        throw RunTimeError(kSubscriptOutOfRange,
                           QStringLiteral("the menu's row %1, choice %2 (expected 0 to %3)")
                               .arg(row)
                               .arg(choice.value())
                               .arg(kMostChoices));
    }
    return form.menu.CommandChoiceLabel(form.menu.CommandCurrentMenu, row, choice);
}

Box16 Below(const Box16& box, int down) {
    return {box.X, box.Y + down, box.W, box.H};
}

void DrawLabel(Form_Main& form, Surface& strip, const QString& label, const Box16& box,
               const TextLook& style) {
    DrawText(form, strip, label, box, style, QStringLiteral("left"), QStringLiteral("center"));
}

void DrawListboxRow(Form_Main& form, int row, int y) {
    form.assets.ImgCommandListbox.Render(form.frame.Picture_Command, 0, y);
    form.assets.ImgCommandListboxHilight.Render(form.frame.Picture_CommandHilight, 0, y);
    const QString label = form.menu.CommandLabel(form.menu.CommandCurrentMenu, row).toUpper();
    const QString choice = ChoiceLabel(form, row).toUpper();
    const Box16 labelBox = Below(form.theme.BlockCommandListBoxTexte, y);
    const Box16 choiceBox = Below(form.theme.BlockCommandListBoxChoiceTexte, y);
    DrawLabel(form, form.frame.Picture_Command, label, labelBox, form.theme.BlockCommandListBoxTexteFont);
    DrawCentred(form, form.frame.Picture_Command, choice, choiceBox,
                form.theme.BlockCommandListBoxChoiceTexteFont);
    DrawLabel(form, form.frame.Picture_CommandHilight, label, labelBox,
              form.theme.BlockCommandListBoxTexteFontHilight);
    DrawCentred(form, form.frame.Picture_CommandHilight, choice, choiceBox,
                form.theme.BlockCommandListBoxChoiceTexteFontHilight);
}

void DrawButtonRow(Form_Main& form, int row, int y) {
    form.assets.ImgCommandBtn.Render(form.frame.Picture_Command, 0, y);
    form.assets.ImgCommandBtnHilight.Render(form.frame.Picture_CommandHilight, 0, y);
    const QString label = form.menu.CommandLabel(form.menu.CommandCurrentMenu, row).toUpper();
    const Box16 box = Below(form.theme.BlockCommandBtnTexte, y);
    DrawCentred(form, form.frame.Picture_Command, label, box, form.theme.BlockCommandBtnTexteFont);
    DrawCentred(form, form.frame.Picture_CommandHilight, label, box,
                form.theme.BlockCommandBtnTexteFontHilight);
}

void DrawRow(Form_Main& form, int row) {
    const int y = (row - 1) * RowHeight(form);
    const QString& type = form.menu.CommandType(form.menu.CommandCurrentMenu, row);
    if (type == u"listbox") {
        DrawListboxRow(form, row, y);
    } else if (type.startsWith(u"btn")) {
        DrawButtonRow(form, row, y);
    }
}

void CopyRows(Form_Main& form, const Surface& strip, int down, int from, int height) {
    const Box to = ScaledBox(form, form.theme.BlockCommand.X.value() + kBorder,
                             form.theme.BlockCommand.Y.value() + kBorder + down, strip.Width(), height);
    StretchBlt(form.frame.Picture_Main, to, strip, {0, from, strip.Width(), height});
}

} // namespace

void DrawCommand(Form_Main& form) {
    WriteLog(form, QStringLiteral(" : DrawCommand"));
    const int rows = form.menu.CommandRowCount(form.menu.CommandCurrentMenu).value();
    for (Surface* strip : {&form.frame.Picture_Command, &form.frame.Picture_CommandHilight}) {
        Resize(*strip, form.assets.ImgCommandListbox.Width(), rows * RowHeight(form));
    }
    RefreshChoices(form);
    for (int row = 1; row <= rows; ++row) {
        DrawRow(form, row);
    }
}

void ShowCommandRows(Form_Main& form) {
    const int rowHeight = RowHeight(form);
    const int room = form.assets.ImgCommand.Height() - 2 * kBorder;
    const int current = form.menu.CommandCurrentId.value();
    int from = 0;
    int cursor = (current - 1) * rowHeight;
    if (cursor >= room - rowHeight) {
        from = current * rowHeight - room;
        cursor = room - rowHeight;
    }
    CopyRows(form, form.frame.Picture_Command, 0, from, std::min(room, form.frame.Picture_Command.Height()));
    if (form.cursor.ActiveZone == u"command") {
        CopyRows(form, form.frame.Picture_CommandHilight, cursor, (current - 1) * rowHeight, rowHeight);
    }
}

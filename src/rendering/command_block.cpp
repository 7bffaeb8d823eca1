// Drawing the menu's rows and showing a window of them.
#include "rendering/command_block.h"

#include "core/run_time_error.h"
#include "rendering/geometry.h"
#include "rendering/text.h"
#include "shell/form_main.h"
#include "shell/log.h"

#include <algorithm>

namespace {

// The border of the block around the rows, in design pixels.
constexpr int kBorder = 7;
// A row shows at most this many choices.
constexpr int kMostChoices = 20;

int RowHeight(const Form_Main& form) {
    return form.ImgCommandListbox.Height();
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

// Gives the rows that mirror a setting the choice of its value. An order that is neither word leaves its row.
void RefreshChoices(Form_Main& form) {
    if (form.Order == u"alpha") {
        form.CommandChoice(1, 1) = 1;
    } else if (form.Order == u"playcount") {
        form.CommandChoice(1, 1) = 2;
    }
    for (const MirrorRow& mirror : kMirrors) {
        form.CommandChoice(mirror.menu, mirror.row) = form.*mirror.setting == u"true" ? 1 : 2;
    }
}

QString ChoiceLabel(const Form_Main& form, int row) {
    const Integer16 choice = form.CommandChoice(form.CommandCurrentMenu, row);
    if (choice < 0 || choice > kMostChoices) {
        throw RunTimeError(kSubscriptOutOfRange,
                           QStringLiteral("the menu's row %1, choice %2 (expected 0 to %3)")
                               .arg(row)
                               .arg(choice.value())
                               .arg(kMostChoices));
    }
    return form.CommandChoiceLabel(form.CommandCurrentMenu, row, choice);
}

TextBox Below(Integer16 x, Integer16 y, Integer16 width, Integer16 height, int down) {
    return {x, y + down, width, height};
}

void DrawLabel(Form_Main& form, Surface& strip, const QString& label, const TextBox& box,
               const TextStyle& style) {
    DrawText(form, strip, label, box, style, QStringLiteral("left"), QStringLiteral("center"));
}

void DrawListboxRow(Form_Main& form, int row, int y) {
    form.ImgCommandListbox.Render(form.Picture_Command, 0, y);
    form.ImgCommandListboxHilight.Render(form.Picture_CommandHilight, 0, y);
    const QString label = form.CommandLabel(form.CommandCurrentMenu, row).toUpper();
    const QString choice = ChoiceLabel(form, row).toUpper();
    const TextBox labelBox = Below(form.BlockCommandListBoxTexteX, form.BlockCommandListBoxTexteY,
                                   form.BlockCommandListBoxTexteW, form.BlockCommandListBoxTexteH, y);
    const TextBox choiceBox =
        Below(form.BlockCommandListBoxChoiceTexteX, form.BlockCommandListBoxChoiceTexteY,
              form.BlockCommandListBoxChoiceTexteW, form.BlockCommandListBoxChoiceTexteH, y);
    DrawLabel(form, form.Picture_Command, label, labelBox,
              {form.BlockCommandListBoxTexteFont, form.BlockCommandListBoxTexteFontSize,
               form.BlockCommandListBoxTexteFontColor});
    DrawCentred(form, form.Picture_Command, choice, choiceBox,
                {form.BlockCommandListBoxChoiceTexteFont, form.BlockCommandListBoxChoiceTexteFontSize,
                 form.BlockCommandListBoxChoiceTexteFontColor});
    DrawLabel(form, form.Picture_CommandHilight, label, labelBox,
              {form.BlockCommandListBoxTexteFontHilight, form.BlockCommandListBoxTexteFontSizeHilight,
               form.BlockCommandListBoxTexteFontColorHilight});
    DrawCentred(form, form.Picture_CommandHilight, choice, choiceBox,
                {form.BlockCommandListBoxChoiceTexteFontHilight,
                 form.BlockCommandListBoxChoiceTexteFontSizeHilight,
                 form.BlockCommandListBoxChoiceTexteFontColorHilight});
}

void DrawButtonRow(Form_Main& form, int row, int y) {
    form.ImgCommandBtn.Render(form.Picture_Command, 0, y);
    form.ImgCommandBtnHilight.Render(form.Picture_CommandHilight, 0, y);
    const QString label = form.CommandLabel(form.CommandCurrentMenu, row).toUpper();
    const TextBox box = Below(form.BlockCommandBtnTexteX, form.BlockCommandBtnTexteY,
                              form.BlockCommandBtnTexteW, form.BlockCommandBtnTexteH, y);
    DrawCentred(form, form.Picture_Command, label, box,
                {form.BlockCommandBtnTexteFont, form.BlockCommandBtnTexteFontSize,
                 form.BlockCommandBtnTexteFontColor});
    DrawCentred(form, form.Picture_CommandHilight, label, box,
                {form.BlockCommandBtnTexteFontHilight, form.BlockCommandBtnTexteFontSizeHilight,
                 form.BlockCommandBtnTexteFontColorHilight});
}

void DrawRow(Form_Main& form, int row) {
    const int y = (row - 1) * RowHeight(form);
    const QString& type = form.CommandType(form.CommandCurrentMenu, row);
    if (type == u"listbox") {
        DrawListboxRow(form, row, y);
    } else if (type.startsWith(u"btn")) {
        DrawButtonRow(form, row, y);
    }
}

void CopyRows(Form_Main& form, const Surface& strip, int down, int from, int height) {
    const Box to = ScaledBox(form, form.BlockCommandX.value() + kBorder,
                             form.BlockCommandY.value() + kBorder + down, strip.Width(), height);
    StretchBlt(form.Picture_Main, to, strip, {0, from, strip.Width(), height});
}

} // namespace

void DrawCommand(Form_Main& form) {
    WriteLog(form, QStringLiteral(" : DrawCommand"));
    const int rows = form.CommandRowCount(form.CommandCurrentMenu).value();
    for (Surface* strip : {&form.Picture_Command, &form.Picture_CommandHilight}) {
        Resize(*strip, form.ImgCommandListbox.Width(), rows * RowHeight(form));
    }
    RefreshChoices(form);
    for (int row = 1; row <= rows; ++row) {
        DrawRow(form, row);
    }
}

void ShowCommandRows(Form_Main& form) {
    const int rowHeight = RowHeight(form);
    const int room = form.ImgCommand.Height() - 2 * kBorder;
    const int current = form.CommandCurrentId.value();
    int from = 0;
    int cursor = (current - 1) * rowHeight;
    if (cursor >= room - rowHeight) {
        from = current * rowHeight - room;
        cursor = room - rowHeight;
    }
    CopyRows(form, form.Picture_Command, 0, from, std::min(room, form.Picture_Command.Height()));
    if (form.ActiveZone == u"command") {
        CopyRows(form, form.Picture_CommandHilight, cursor, (current - 1) * rowHeight, rowHeight);
    }
}

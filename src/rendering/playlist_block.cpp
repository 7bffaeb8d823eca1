// Drawing the queue's rows and showing a window of them.
#include "rendering/playlist_block.h"

#include "core/conversions.h"
#include "rendering/geometry.h"
#include "rendering/text.h"
#include "rendering/titles.h"
#include "shell/form_main.h"
#include "shell/log.h"

#include <algorithm>

namespace {

// Blank rows behind the last entry.
constexpr int kTailRows = 7;

// What a title loses here: the same endings as elsewhere, in an order of their own.
const QStringList kEndingsOfRows = {QStringLiteral(".mp3"),  QStringLiteral(".flac"), QStringLiteral(".avi"),
                                    QStringLiteral(".mpg"),  QStringLiteral(".mp4"),  QStringLiteral(".wma"),
                                    QStringLiteral(".vtxpl")};

int RowHeight(const Form_Main& form) {
    return form.ImgPlaylistPlaylistHilight.Height();
}

// The block's texture on both strips, the bar of the selected look on one.
void DrawGround(Form_Main& form, int y) {
    const int x = form.BlockPlaylistPlaylistX.value();
    const int top = form.BlockPlaylistPlaylistY.value();
    const int width = form.ImgPlaylistPlaylistHilight.Width();
    const int height = RowHeight(form);
    form.ImgPlaylist.Render(form.Picture_Playlist, 0, y, width, height, x, top, width, height);
    form.ImgPlaylist.Render(form.Picture_PlaylistHilight, 0, y, width, height, x, top, width, height);
    form.ImgPlaylistPlaylistHilight.Render(form.Picture_PlaylistHilight, 0, y);
}

// Title and artist of a row; the artist stands half a row below.
void WriteRow(Form_Main& form, Surface& strip, int y, const TitleParts& parts, const TextStyle& style,
              Integer16 decal) {
    constexpr int kLeft = 5;
    const QString left = QStringLiteral("left");
    const QString center = QStringLiteral("center");
    // The width as the theme has it: without a picture of the bar a row has no height, and the strip no
    // pixel.
    const Integer16 width = form.BlockPlaylistPlaylistW - kLeft;
    const double half = RowHeight(form) / 2.0;
    const Integer16 titleTop = CInt16(static_cast<double>(y) + decal.value() + 1);
    const Integer16 artistTop = CInt16(y + half + decal.value() - 1);
    DrawText(form, strip, parts.Titre, {kLeft, titleTop, width, CInt16(half)}, style, left, center);
    DrawText(form, strip, parts.Interprete, {kLeft, artistTop, width, CInt16(half)}, style, left, center);
}

void DrawRow(Form_Main& form, int row) {
    const int y = row * RowHeight(form);
    DrawGround(form, y);
    const TitleParts parts = BlockTitle(form.PlaylistTitre(row + 1), kEndingsOfRows);
    WriteRow(form, form.Picture_Playlist, y, parts,
             {form.BlockPlaylistPlaylistFont, form.BlockPlaylistPlaylistFontSize,
              form.BlockPlaylistPlaylistFontColor},
             form.BlockPlaylistPlaylistFontDecal);
    WriteRow(form, form.Picture_PlaylistHilight, y, parts,
             {form.BlockPlaylistPlaylistFontHilight, form.BlockPlaylistPlaylistFontSizeHilight,
              form.BlockPlaylistPlaylistFontColorHilight},
             form.BlockPlaylistPlaylistFontDecalHilight);
}

// An offset of the touch mode's window, kept between 0 and `most`; a short queue stays put.
double Clamped(double offset, double most) {
    return std::max(0.0, std::min(std::max(0.0, offset), most));
}

double RowsWithoutTail(const Form_Main& form) {
    return form.Picture_Playlist.Height() - kTailRows * RowHeight(form);
}

double DraggedOffset(const Form_Main& form) {
    return form.TouchDeltaY.value() / form.ZoneScaleY + form.TouchScrollOffset.value();
}

void ShowTouchRows(Form_Main& form) {
    if (form.TouchDragging == 1) {
        ShowDraggedRows(form);
        return;
    }
    const int height = form.BlockPlaylistPlaylistH.value();
    const double offset = Clamped(form.TouchScrollOffset.value(), RowsWithoutTail(form) - height);
    form.TouchScrollOffset = CInt16(offset);
    CopyPlaylistRows(form, form.Picture_PlaylistTmp, offset, height);
}

} // namespace

void DrawPlaylist(Form_Main& form) {
    WriteLog(form, QStringLiteral(" : DrawPlaylist"));
    const int count = form.PlaylistCount.value();
    for (Surface* strip : {&form.Picture_Playlist, &form.Picture_PlaylistHilight}) {
        Resize(*strip, form.BlockPlaylistPlaylistW.value(), (count + kTailRows) * RowHeight(form));
    }
    for (int row = 0; row < count; ++row) {
        DrawRow(form, row);
    }
    for (int row = count; row <= count + kTailRows; ++row) {
        DrawGround(form, row * RowHeight(form));
    }
    if (form.TactileMode == u"true") {
        CopyPlaylistForTouch(form);
    }
}

void CopyPlaylistForTouch(Form_Main& form) {
    const Surface& rows = form.Picture_Playlist;
    Resize(form.Picture_PlaylistTmp, rows.Width(), rows.Height());
    BitBlt(form.Picture_PlaylistTmp, {0, 0, rows.Width(), rows.Height()}, rows, 0, 0);
    const int y = (form.PlaylistSelected.value() - 1) * RowHeight(form);
    BitBlt(form.Picture_PlaylistTmp, {0, y, rows.Width(), RowHeight(form)}, form.Picture_PlaylistHilight, 0,
           y);
}

void CopyPlaylistRows(Form_Main& form, const Surface& strip, double top, double height) {
    const int width = form.BlockPlaylistPlaylistW.value();
    const Box to =
        ScaledBox(form, form.BlockPlaylistX.value() + form.BlockPlaylistPlaylistX.value(),
                  form.BlockPlaylistY.value() + form.BlockPlaylistPlaylistY.value(), width, height);
    StretchBlt(form.Picture_Main, to, strip, {0, CInt32(top).value(), width, CInt32(height).value()});
}

void CopyPlaylistWindow(Form_Main& form, double top) {
    const double all = static_cast<double>(form.PlaylistCount.value()) * RowHeight(form);
    CopyPlaylistRows(form, form.Picture_Playlist, top,
                     std::min(all - top, static_cast<double>(form.BlockPlaylistPlaylistH.value())));
}

void CopyPlaylistHilightRow(Form_Main& form, Integer16 row) {
    CopyPlaylistRows(form, form.Picture_PlaylistHilight, (row.value() - 1.0) * RowHeight(form),
                     RowHeight(form));
}

void ShowDraggedRows(Form_Main& form) {
    const int height = form.BlockPlaylistPlaylistH.value();
    CopyPlaylistRows(form, form.Picture_PlaylistTmp,
                     Clamped(DraggedOffset(form), RowsWithoutTail(form) - height), height);
}

// Deliberate D-24: the limit at release leaves out the height of the area. One expects the limit of the
// frame, which is applied a moment later anyway.
double ReleaseOffset(const Form_Main& form) {
    return Clamped(DraggedOffset(form), RowsWithoutTail(form));
}

void ShowPlaylistRows(Form_Main& form) {
    if (form.TactileMode == u"true") {
        ShowTouchRows(form);
        return;
    }
    if (form.PlaylistCount <= 0) {
        return;
    }
    CopyPlaylistWindow(form, (form.PlaylistSelected.value() - 1.0) * RowHeight(form));
    if (form.PlaylistSelected > 0) {
        CopyPlaylistHilightRow(form, form.PlaylistSelected);
    }
}

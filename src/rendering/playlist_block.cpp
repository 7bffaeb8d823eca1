// Drawing the queue's rows and showing a window of them.
#include "rendering/playlist_block.h"

#include "core/conversions.h"
#include "core/run_time_error.h"
#include "rendering/geometry.h"
#include "rendering/text.h"
#include "rendering/titles.h"
#include "shell/form_main.h"
#include "shell/log.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace {

// Blank rows after the last entry.
constexpr int kTailRows = 7;
constexpr int kTextsLeft = 5;

// What a title loses here: the same endings as elsewhere, in an order of their own.
const QStringList kEndingsOfRows = {QStringLiteral(".mp3"),  QStringLiteral(".flac"), QStringLiteral(".avi"),
                                    QStringLiteral(".mpg"),  QStringLiteral(".mp4"),  QStringLiteral(".wma"),
                                    QStringLiteral(".vtxpl")};

int RowHeight(const Form_Main& form) {
    return form.ImgPlaylistPlaylistHilight.Height();
}

// One look of the queue while it is drawn.
struct Look {
    Strip& strip;
    StripTexts& before;
    TextStyle style;
    Integer16 decal;
    // Measures texts in the look's font.
    Surface ruler;
    // The texts of the rows drawn so far.
    StripTexts texts;
};

Look MakeLook(Strip& strip, StripTexts& before, const TextStyle& style, Integer16 decal,
              Integer16 stripWidth) {
    Look look{strip, before, style, decal, {}, {style.Typo, style.TypoSize, stripWidth, {}}};
    look.ruler.FontName = style.Typo;
    look.ruler.FontSize = style.TypoSize;
    const StripTexts& texts = look.texts;
    if (before.fontName != texts.fontName || before.fontSize != texts.fontSize ||
        before.stripWidth != stripWidth) {
        before = {};
    }
    return look;
}

Look NormalLook(Form_Main& form) {
    const TextStyle style = {form.BlockPlaylistPlaylistFont, form.BlockPlaylistPlaylistFontSize,
                             form.BlockPlaylistPlaylistFontColor};
    return MakeLook(form.Picture_Playlist, form.playlistTexts, style, form.BlockPlaylistPlaylistFontDecal,
                    form.BlockPlaylistPlaylistW);
}

Look SelectedLook(Form_Main& form) {
    const TextStyle style = {form.BlockPlaylistPlaylistFontHilight, form.BlockPlaylistPlaylistFontSizeHilight,
                             form.BlockPlaylistPlaylistFontColorHilight};
    return MakeLook(form.Picture_PlaylistHilight, form.playlistHilightTexts, style,
                    form.BlockPlaylistPlaylistFontDecalHilight, form.BlockPlaylistPlaylistW);
}

// Sizes a look's strip and gives it the pictures of its rows: the block's texture, and the bar of the
// selected look. A row further than the strip is drawn as well.
void BeginStrip(Form_Main& form, Look& look) {
    const LatePicture& bar = form.ImgPlaylistPlaylistHilight;
    ResizeStrip(look.strip, form.BlockPlaylistPlaylistW.value(),
                (form.PlaylistCount.value() + kTailRows) * RowHeight(form), RowHeight(form));
    StripDrawing& drawing = *look.strip.drawing;
    drawing.fontName = look.style.Typo;
    drawing.fontSize = look.style.TypoSize;
    const Box texture{form.BlockPlaylistPlaylistX.value(), form.BlockPlaylistPlaylistY.value(), bar.Width(),
                      bar.Height()};
    drawing.ground.push_back({form.ImgPlaylist.Shared(), texture});
    if (&look.strip == &form.Picture_PlaylistHilight) {
        drawing.ground.push_back({bar.Shared(), {}});
    }
}

std::shared_ptr<const StripLetters> LettersOf(Form_Main& form, Look& look, const QString& text,
                                              const TextBox& box) {
    std::shared_ptr<const StripLetters>& letters = look.texts.letters[text];
    if (!letters) {
        letters = look.before.letters.value(text);
    }
    if (!letters) {
        const QString shortened = ShortenedText(form, look.ruler, text, box, look.style);
        letters =
            std::make_shared<const StripLetters>(StripLetters{shortened, ReachOfText(look.ruler, shortened)});
    }
    return letters;
}

void WriteText(Form_Main& form, LogBatch& log, Look& look, int row, const QString& text, const TextBox& box) {
    const QString left = QStringLiteral("left");
    const QString center = QStringLiteral("center");
    log.Add(DrawTextLine(text, box, look.style, left, center));
    EndsProgram("DrawText", [&] {
        const auto letters = LettersOf(form, look, text, box);
        const PlacedText placed = PlaceText(form, look.ruler, letters->text, box, look.style, left, center);
        look.strip.drawing->foreColor = placed.colour;
        AddStripText(look.strip, {row, placed.x, placed.y, letters});
    });
}

// Title and artist of a row; the artist is half a row below.
void WriteRow(Form_Main& form, LogBatch& log, Look& look, int row, const TitleParts& parts) {
    const double y = row * RowHeight(form);
    const double half = RowHeight(form) / 2.0;
    // The width as the theme has it: without a picture of the bar a row has no height, and the strip no
    // pixel.
    const Integer16 width = form.BlockPlaylistPlaylistW - kTextsLeft;
    // Deliberate D-125: a row beyond 16 bits of pixels raises 6, so the height of the bar limits the queue.
    // One expects 1000 entries whatever the height. Text boxes have 16 bits, here as in theme.ini.
    const Integer16 titleTop = CInt16(y + look.decal.value() + 1);
    const Integer16 artistTop = CInt16(y + half + look.decal.value() - 1);
    WriteText(form, log, look, row, parts.Titre, {kTextsLeft, titleTop, width, CInt16(half)});
    WriteText(form, log, look, row, parts.Interprete, {kTextsLeft, artistTop, width, CInt16(half)});
}

void SetGroundRows(Look& normal, Look& selected, int rows) {
    normal.strip.drawing->groundRows = rows;
    selected.strip.drawing->groundRows = rows;
}

// An error leaves the rows before it drawn, and its own row as far as it came.
void DrawRows(Form_Main& form, Look& normal, Look& selected) {
    LogBatch log(form);
    for (int row = 0; row < form.PlaylistCount.value(); ++row) {
        SetGroundRows(normal, selected, row + 1);
        const TitleParts parts = BlockTitle(form.PlaylistTitre(row + 1), kEndingsOfRows);
        WriteRow(form, log, normal, row, parts);
        WriteRow(form, log, selected, row, parts);
    }
    EndsProgram("DrawText", [&] { log.Close(); });
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
    Look normal = NormalLook(form);
    Look selected = SelectedLook(form);
    BeginStrip(form, normal);
    BeginStrip(form, selected);
    DrawRows(form, normal, selected);
    SetGroundRows(normal, selected, form.PlaylistCount.value() + kTailRows + 1);
    form.playlistTexts = std::move(normal.texts);
    form.playlistHilightTexts = std::move(selected.texts);
    if (form.TactileMode == u"true") {
        CopyPlaylistForTouch(form);
    }
}

void ForgetPlaylistTexts(Form_Main& form) {
    form.playlistTexts = {};
    form.playlistHilightTexts = {};
}

void CopyPlaylistForTouch(Form_Main& form) {
    CopyStrip(form.Picture_PlaylistTmp, form.Picture_Playlist);
    PasteStripLines(form.Picture_PlaylistTmp, form.Picture_PlaylistHilight,
                    (form.PlaylistSelected.value() - 1) * RowHeight(form), RowHeight(form));
}

void CopyPlaylistRows(Form_Main& form, const Strip& strip, double top, double height) {
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

// Drawing the queue's rows and copying the visible ones to the frame.
#include "rendering/playlist_block.h"

#include "core/conversions.h"
#include "core/run_time_error.h"
#include "rendering/geometry.h"
#include "rendering/text.h"
#include "rendering/titles.h"
#include "state/form_main.h"
#include "state/log.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace {

// Blank rows after the last entry.
constexpr int kTailRows = 7;
constexpr int kTextsLeft = 5;

// The endings that are removed from titles here: the same as elsewhere, in a different order.
const QStringList kEndingsOfRows = {QStringLiteral(".mp3"),  QStringLiteral(".flac"), QStringLiteral(".avi"),
                                    QStringLiteral(".mpg"),  QStringLiteral(".mp4"),  QStringLiteral(".wma"),
                                    QStringLiteral(".vtxpl")};

int RowHeight(const Form_Main& form) {
    return form.assets.ImgPlaylistPlaylistHilight.Height();
}

// One look of the queue while it is drawn.
struct Look {
    Strip& strip;
    StripTexts& before;
    TextLook style;
    Integer16 decal;
    // Measures texts in the look's font.
    Surface ruler;
    // The texts of the rows drawn so far.
    StripTexts texts;
};

Look MakeLook(Strip& strip, StripTexts& before, const TextLook& style, Integer16 decal,
              Integer16 stripWidth) {
    Look look{strip, before, style, decal, {}, {style.Font, style.Size, stripWidth, {}}};
    look.ruler.FontName = style.Font;
    look.ruler.FontSize = style.Size;
    const StripTexts& texts = look.texts;
    if (before.fontName != texts.fontName || before.fontSize != texts.fontSize ||
        before.stripWidth != stripWidth) {
        before = {};
    }
    return look;
}

Look NormalLook(Form_Main& form) {
    return MakeLook(form.frame.Picture_Playlist, form.frame.playlistTexts,
                    form.theme.BlockPlaylistPlaylistFont, form.theme.BlockPlaylistPlaylistFontDecal,
                    form.theme.BlockPlaylistPlaylist.W);
}

Look SelectedLook(Form_Main& form) {
    return MakeLook(form.frame.Picture_PlaylistHilight, form.frame.playlistHilightTexts,
                    form.theme.BlockPlaylistPlaylistFontHilight,
                    form.theme.BlockPlaylistPlaylistFontDecalHilight, form.theme.BlockPlaylistPlaylist.W);
}

// Sizes a look's strip and sets the background of its rows: the block's texture and, for the selected look,
// the bar. DrawPlaylist draws the background of one row beyond the strip as well.
void BeginStrip(Form_Main& form, Look& look) {
    const LatePicture& bar = form.assets.ImgPlaylistPlaylistHilight;
    ResizeStrip(look.strip, form.theme.BlockPlaylistPlaylist.W.value(),
                (form.queue.PlaylistCount.value() + kTailRows) * RowHeight(form), RowHeight(form));
    StripDrawing& drawing = *look.strip.drawing;
    drawing.fontName = look.style.Font;
    drawing.fontSize = look.style.Size;
    const Box texture{form.theme.BlockPlaylistPlaylist.X.value(), form.theme.BlockPlaylistPlaylist.Y.value(),
                      bar.Width(), bar.Height()};
    drawing.ground.push_back({form.assets.ImgPlaylist.Shared(), texture});
    if (&look.strip == &form.frame.Picture_PlaylistHilight) {
        drawing.ground.push_back({bar.Shared(), {}});
    }
}

std::shared_ptr<const StripLetters> LettersOf(Form_Main& form, Look& look, const QString& text,
                                              const Box16& box) {
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

void WriteText(Form_Main& form, LogBatch& log, Look& look, int row, const QString& text, const Box16& box) {
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

// Writes title and artist of a row; the artist is half a row below the title.
void WriteRow(Form_Main& form, LogBatch& log, Look& look, int row, const TitleParts& parts) {
    const double y = row * RowHeight(form);
    const double half = RowHeight(form) / 2.0;
    // The theme's width, not the strip's: without the picture of the bar rows have no height, and the strip
    // has no pixels.
    const Integer16 width = form.theme.BlockPlaylistPlaylist.W - kTextsLeft;
    // Deliberate D-125: a row beyond 16 bits of pixels raises 6, so the height of the bar limits the queue.
    // One would expect 1000 entries for every height; text boxes have 16 bits, here as in theme.ini.
    const Integer16 titleTop = CInt16(y + look.decal.value() + 1);
    const Integer16 artistTop = CInt16(y + half + look.decal.value() - 1);
    WriteText(form, log, look, row, parts.Titre, {kTextsLeft, titleTop, width, CInt16(half)});
    WriteText(form, log, look, row, parts.Interprete, {kTextsLeft, artistTop, width, CInt16(half)});
}

void SetGroundRows(Look& normal, Look& selected, int rows) {
    normal.strip.drawing->groundRows = rows;
    selected.strip.drawing->groundRows = rows;
}

// After an error the rows before it are drawn, and its own row up to the text that failed.
void DrawRows(Form_Main& form, Look& normal, Look& selected) {
    LogBatch log(form);
    for (int row = 0; row < form.queue.PlaylistCount.value(); ++row) {
        SetGroundRows(normal, selected, row + 1);
        const TitleParts parts = BlockTitle(form.queue.PlaylistTitre(row + 1), kEndingsOfRows);
        WriteRow(form, log, normal, row, parts);
        WriteRow(form, log, selected, row, parts);
    }
    EndsProgram("DrawText", [&] { log.Close(); });
}

// Limits a scroll offset of the touch mode to 0 to `most`. Returns 0 when `most` is below 0, as for a short
// queue.
double Clamped(double offset, double most) {
    return std::max(0.0, std::min(std::max(0.0, offset), most));
}

double RowsWithoutTail(const Form_Main& form) {
    return form.frame.Picture_Playlist.Height() - kTailRows * RowHeight(form);
}

double DraggedOffset(const Form_Main& form) {
    return form.touch.TouchDeltaY.value() / form.frame.ZoneScaleY + form.touch.TouchScrollOffset.value();
}

void ShowTouchRows(Form_Main& form) {
    if (form.touch.TouchDragging == 1) {
        ShowDraggedRows(form);
        return;
    }
    const int height = form.theme.BlockPlaylistPlaylist.H.value();
    const double offset = Clamped(form.touch.TouchScrollOffset.value(), RowsWithoutTail(form) - height);
    form.touch.TouchScrollOffset = CInt16(offset);
    CopyPlaylistRows(form, form.frame.Picture_PlaylistTmp, offset, height);
}

} // namespace

void DrawPlaylist(Form_Main& form) {
    WriteLog(form, QStringLiteral(" : DrawPlaylist"));
    Look normal = NormalLook(form);
    Look selected = SelectedLook(form);
    BeginStrip(form, normal);
    BeginStrip(form, selected);
    DrawRows(form, normal, selected);
    SetGroundRows(normal, selected, form.queue.PlaylistCount.value() + kTailRows + 1);
    form.frame.playlistTexts = std::move(normal.texts);
    form.frame.playlistHilightTexts = std::move(selected.texts);
    if (form.settings.TactileMode == u"true") {
        CopyPlaylistForTouch(form);
    }
}

void ForgetPlaylistTexts(Form_Main& form) {
    form.frame.playlistTexts = {};
    form.frame.playlistHilightTexts = {};
}

void CopyPlaylistForTouch(Form_Main& form) {
    CopyStrip(form.frame.Picture_PlaylistTmp, form.frame.Picture_Playlist);
    PasteStripLines(form.frame.Picture_PlaylistTmp, form.frame.Picture_PlaylistHilight,
                    (form.queue.PlaylistSelected.value() - 1) * RowHeight(form), RowHeight(form));
}

void CopyPlaylistRows(Form_Main& form, const Strip& strip, double top, double height) {
    const int width = form.theme.BlockPlaylistPlaylist.W.value();
    const Box rows = InBlock(form.theme.BlockPlaylist, form.theme.BlockPlaylistPlaylist);
    const Box to = ScaledBox(form, rows.x, rows.y, width, height);
    StretchBlt(form.frame.Picture_Main, to, strip, {0, CInt32(top).value(), width, CInt32(height).value()});
}

void CopyPlaylistWindow(Form_Main& form, double top) {
    const double all = static_cast<double>(form.queue.PlaylistCount.value()) * RowHeight(form);
    CopyPlaylistRows(form, form.frame.Picture_Playlist, top,
                     std::min(all - top, static_cast<double>(form.theme.BlockPlaylistPlaylist.H.value())));
}

void CopyPlaylistHilightRow(Form_Main& form, Integer16 row) {
    CopyPlaylistRows(form, form.frame.Picture_PlaylistHilight, (row.value() - 1.0) * RowHeight(form),
                     RowHeight(form));
}

void ShowDraggedRows(Form_Main& form) {
    const int height = form.theme.BlockPlaylistPlaylist.H.value();
    CopyPlaylistRows(form, form.frame.Picture_PlaylistTmp,
                     Clamped(DraggedOffset(form), RowsWithoutTail(form) - height), height);
}

// Deliberate D-24: the limit at release leaves out the height of the area. One would expect the limit of the
// frame, which is applied a moment later anyway.
double ReleaseOffset(const Form_Main& form) {
    return Clamped(DraggedOffset(form), RowsWithoutTail(form));
}

void ShowPlaylistRows(Form_Main& form) {
    if (form.settings.TactileMode == u"true") {
        ShowTouchRows(form);
        return;
    }
    if (form.queue.PlaylistCount <= 0) {
        return;
    }
    CopyPlaylistWindow(form, (form.queue.PlaylistSelected.value() - 1.0) * RowHeight(form));
    if (form.queue.PlaylistSelected > 0) {
        CopyPlaylistHilightRow(form, form.queue.PlaylistSelected);
    }
}

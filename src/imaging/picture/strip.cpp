// Strips: they record what is drawn and paint only the lines that are copied.
#include "imaging/picture/strip.h"

#include "imaging/picture/c32bppdib.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace {

// The most pixels of painted lines that are kept for the next copy.
constexpr std::int64_t kMostKeptPixels = std::int64_t{1} << 20;

// Lines first..end of a strip.
struct Lines {
    int first = 0;
    int end = 0;

    bool IsEmpty() const { return first >= end; }
    int Count() const { return end - first; }
};

Lines Common(const Lines& a, const Lines& b) {
    return {std::max(a.first, b.first), std::min(a.end, b.end)};
}

// The rows that are visible in these lines. Letters of rows above and below can reach into them.
Lines RowsSeen(const StripDrawing& drawing, const Lines& lines) {
    const int first = std::max(0, lines.first - drawing.reachBelow) / drawing.rowHeight;
    const int last = (lines.end - 1 + drawing.reachAbove) / drawing.rowHeight;
    return {first, last + 1};
}

void PaintGround(const StripDrawing& drawing, Surface& window, int y) {
    for (const StripPicture& picture : drawing.ground) {
        const Box& from = picture.from;
        picture.picture->Render(window, 0, y, from.width, from.height, from.x, from.y, from.width,
                                from.height);
    }
}

// Paints lines of a drawing onto a window of exactly these lines, in the order in which they were drawn.
void PaintLines(const StripDrawing& drawing, Surface& window, const Lines& lines) {
    window.FontName = drawing.fontName;
    window.FontSize = drawing.fontSize;
    window.ForeColor = drawing.foreColor;
    const Lines rows = RowsSeen(drawing, lines);
    auto text = std::lower_bound(drawing.texts.begin(), drawing.texts.end(), rows.first,
                                 [](const StripText& some, int row) { return some.row < row; });
    for (int row = rows.first; row < rows.end; ++row) {
        if (row < drawing.groundRows) {
            PaintGround(drawing, window, row * drawing.rowHeight - lines.first);
        }
        for (; text != drawing.texts.end() && text->row == row; ++text) {
            const TextReach& reach = text->letters->reach;
            if (text->y + reach.top < lines.end && text->y + reach.bottom > lines.first) {
                TextOutA(window, text->x, text->y - lines.first, text->letters->text);
            }
        }
    }
}

void PaintPaste(const StripPaste& paste, Surface& window, const Lines& lines) {
    const Lines pasted = Common(Common({paste.y, paste.y + paste.height}, {0, paste.drawing->height}), lines);
    if (pasted.IsEmpty()) {
        return;
    }
    Surface part;
    Resize(part, paste.drawing->width, pasted.Count());
    PaintLines(*paste.drawing, part, pasted);
    BitBlt(window, {0, pasted.first - lines.first, part.Width(), part.Height()}, part, 0, 0);
}

Surface Painted(const Strip& strip, const Lines& lines) {
    Surface window;
    Resize(window, strip.Width(), lines.Count());
    PaintLines(*strip.drawing, window, lines);
    if (strip.paste) {
        PaintPaste(*strip.paste, window, lines);
    }
    return window;
}

// Adds some lines, because the next copy mostly needs lines near these.
Lines WithNeighbours(const Strip& strip, const Lines& lines) {
    const int more = lines.Count() / 2;
    const Lines all = Common({lines.first - more, lines.end + more}, {0, strip.Height()});
    return std::int64_t{all.Count()} * strip.Width() <= kMostKeptPixels ? all : lines;
}

bool IsPainted(const Strip& strip, const Lines& lines) {
    return lines.first >= strip.paintedTop && lines.end <= strip.paintedTop + strip.painted.Height();
}

void ForgetPainted(const Strip& strip) {
    strip.painted = Surface();
    strip.paintedTop = 0;
}

} // namespace

void ResizeStrip(Strip& strip, int width, int height, int rowHeight) {
    const QSize size = SurfaceSize(width, height);
    strip.drawing = std::make_shared<StripDrawing>();
    strip.drawing->width = size.width();
    strip.drawing->height = size.height();
    strip.drawing->rowHeight = rowHeight;
    strip.paste.reset();
    ForgetPainted(strip);
}

void AddStripText(Strip& strip, const StripText& text) {
    StripDrawing& drawing = *strip.drawing;
    const int top = text.row * drawing.rowHeight;
    const TextReach& reach = text.letters->reach;
    drawing.reachAbove = std::max(drawing.reachAbove, top - (text.y + reach.top));
    drawing.reachBelow = std::max(drawing.reachBelow, text.y + reach.bottom - (top + drawing.rowHeight));
    drawing.texts.push_back(text);
    ForgetPainted(strip);
}

void CopyStrip(Strip& to, const Strip& from) {
    to.drawing = from.drawing;
    to.paste = from.paste;
    ForgetPainted(to);
}

void PasteStripLines(Strip& to, const Strip& from, int y, int height) {
    to.paste.reset();
    if (from.drawing) {
        to.paste = StripPaste{from.drawing, y, height};
    }
    ForgetPainted(to);
}

void StretchBlt(Surface& target, const Box& to, const Strip& source, const Box& from) {
    const auto bottom =
        static_cast<int>(std::min<std::int64_t>(std::int64_t{from.y} + from.height, source.Height()));
    const Lines lines{std::max(0, from.y), bottom};
    if (lines.IsEmpty()) {
        return;
    }
    if (!IsPainted(source, lines)) {
        const Lines kept = WithNeighbours(source, lines);
        source.painted = Painted(source, kept);
        source.paintedTop = kept.first;
    }
    StretchBltLines(target, to, source.painted, source.paintedTop, source.Height(), from);
    if (std::int64_t{source.painted.Height()} * source.Width() > kMostKeptPixels) {
        ForgetPainted(source);
    }
}

QImage PictureOf(const Strip& strip) {
    if (strip.Height() == 0) {
        return {};
    }
    return Painted(strip, {0, strip.Height()}).picture;
}

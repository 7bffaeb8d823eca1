// Surfaces: size, scaled copies and text, drawn with QPainter.
#include "imaging/picture/surface.h"

#include "imaging/picture/scaling.h"
#include "platform/pixel_memory.h"

#include <QFont>
#include <QFontMetrics>
#include <QGlyphRun>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <vector>

struct SurfaceFont {
    QString name;
    int points = 0;
    QFont font;
    QFontMetrics metrics;
};

namespace {

constexpr QRgb kBlack = 0xFF000000;
constexpr std::int64_t kMostPixels = (std::int64_t{1} << 30) / 4;
// 96 dots per inch.
constexpr int kDotsPerMeter = 3780;
// Above this height in pixels the calculations of the font engine overflow.
constexpr int kLargestFont = 4096;

QString SizeText(int width, int height) {
    return QStringLiteral("a picture of %1 x %2 pixels").arg(width).arg(height);
}

// Each target pixel shows the source pixel under its middle.
void StretchFast(QImage& target, const QImage& source, const Stretch& across, const Stretch& down) {
    std::vector<std::int64_t> columns;
    columns.reserve(static_cast<std::size_t>(across.end - across.first));
    for (int x = across.first; x < across.end; ++x) {
        columns.push_back(across.SourceOf(x));
    }
    std::int64_t drawnRow = -1;
    QRgb* drawn = nullptr;
    for (int y = down.first; y < down.end; ++y) {
        QRgb* const to = reinterpret_cast<QRgb*>(target.scanLine(y)) + across.first;
        const std::int64_t row = down.SourceOf(y);
        if (row == drawnRow) {
            std::copy_n(drawn, columns.size(), to);
        } else {
            const auto* const from =
                reinterpret_cast<const QRgb*>(source.constScanLine(static_cast<int>(row)));
            std::transform(columns.begin(), columns.end(), to,
                           [from](std::int64_t column) { return from[column]; });
        }
        drawnRow = row;
        drawn = to;
    }
}

SurfaceFont MakeFont(const QString& name, int points) {
    QFont font(name);
    font.setPixelSize(std::clamp(qRound(points * 96 / 72.0), 1, kLargestFont));
    // Grey antialiasing and vertical hinting only, independent of the desktop's settings.
    font.setStyleStrategy(
        static_cast<QFont::StyleStrategy>(QFont::PreferAntialias | QFont::NoSubpixelAntialias));
    font.setHintingPreference(QFont::PreferVerticalHinting);
    QImage device(1, 1, QImage::Format_RGB32);
    device.setDotsPerMeterX(kDotsPerMeter);
    device.setDotsPerMeterY(kDotsPerMeter);
    return {name, points, font, QFontMetrics(font, &device)};
}

const SurfaceFont& FontOf(const Surface& surface) {
    const int points = surface.FontSize.value();
    const SurfaceFont* const last = surface.lastFont.get();
    if (last == nullptr || last->points != points || last->name != surface.FontName) {
        surface.lastFont = std::make_shared<const SurfaceFont>(MakeFont(surface.FontName, points));
    }
    return *surface.lastFont;
}

QImage NewPicture(int width, int height) {
    constexpr qsizetype kPixelBytes = 4;
    if (width == 0 || height == 0) {
        return {};
    }
    const qsizetype line = width * kPixelBytes;
    auto* const pixels = static_cast<uchar*>(AllocatePixels(static_cast<std::size_t>(line * height)));
    return pixels != nullptr ? QImage(pixels, width, height, line, QImage::Format_RGB32, std::free, pixels)
                             : QImage();
}

// The rectangle of the glyphs of a text with combining marks, relative to its base line; empty for plain
// letters. The metrics of the font contain the size of a mark, but not how high it is stacked.
QRectF InkOfGlyphs(const QFont& font, const QString& text) {
    constexpr char16_t kFirstMark = 0x300;
    if (std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < kFirstMark; })) {
        return {};
    }
    QTextLayout layout(text, font);
    layout.beginLayout();
    // The layout breaks the text at line ends, which are drawn like any other character.
    while (layout.createLine().isValid()) {
    }
    layout.endLayout();
    QRectF ink;
    for (int i = 0; i < layout.lineCount(); ++i) {
        const QTextLine line = layout.lineAt(i);
        const QList<QGlyphRun> runs = line.glyphRuns();
        for (const QGlyphRun& run : runs) {
            ink |= run.boundingRect().translated(0, -line.ascent());
        }
    }
    return ink;
}

// Whether no letter of the text touches the surface. Letters extend a little beyond their boxes, so a text
// within one line height of the surface is always drawn.
bool IsBeside(const Surface& surface, const SurfaceFont& font, int x, int y, const QString& text) {
    const std::int64_t line = font.metrics.height();
    if (x > surface.Width() + line ||
        (x < 0 && std::int64_t{x} + font.metrics.horizontalAdvance(text) + line < 0)) {
        return true;
    }
    if (y <= surface.Height() + line && y + 2 * line >= 0) {
        return false;
    }
    const TextReach reach = ReachOfText(surface, text);
    return std::int64_t{y} + reach.top >= surface.Height() || std::int64_t{y} + reach.bottom <= 0;
}

// Copies the visible pixels from a picture, in the quality of the target's stretch mode.
void CopyVisible(Surface& target, const QImage& lines, const Stretch& across, const Stretch& down) {
    if (across.IsEmpty() || down.IsEmpty()) {
        return;
    }
    if (across.IsCopy() && down.IsCopy()) {
        CopyRows(target.picture, lines, across, down);
        return;
    }
    // If a surface is copied onto itself, this keeps its old pixels until the end, because writing makes new
    // ones.
    const QImage original = lines; // NOLINT(performance-unnecessary-copy-initialization)
    if (target.stretchMode == kStretchHalftone) {
        QPainter painter(&target.picture);
        PaintSmooth(painter, original, across, down);
    } else {
        StretchFast(target.picture, original, across, down);
    }
}

} // namespace

QSize SurfaceSize(int width, int height) {
    width = std::max(0, width);
    height = std::max(0, height);
    if (std::int64_t{width} * height > kMostPixels) {
        throw RunTimeError(kOutOfMemory, SizeText(width, height));
    }
    return width == 0 || height == 0 ? QSize(0, 0) : QSize(width, height);
}

void Resize(Surface& surface, int width, int height) {
    const QSize size = SurfaceSize(width, height);
    width = size.width();
    height = size.height();
    if (surface.picture.size() != size) {
        surface.picture = NewPicture(width, height);
        if (surface.picture.isNull() && width != 0 && height != 0) {
            throw RunTimeError(kOutOfMemory, SizeText(width, height));
        }
        surface.picture.setDotsPerMeterX(kDotsPerMeter);
        surface.picture.setDotsPerMeterY(kDotsPerMeter);
    }
    Cls(surface);
}

void Cls(Surface& surface) {
    if (!surface.picture.isNull()) {
        surface.picture.fill(kBlack);
    }
}

void StretchBlt(Surface& target, const Box& to, const Surface& source, const Box& from) {
    CopyVisible(target, source.picture,
                VisibleStretch(to.x, to.width, from.x, from.width, target.Width(), source.Width()),
                VisibleStretch(to.y, to.height, from.y, from.height, target.Height(), source.Height()));
}

void StretchBltPart(Surface& target, const Box& to, const Surface& source, const Box& from, const Box& part) {
    Stretch across = VisibleStretch(to.x, to.width, from.x, from.width, target.Width(), source.Width());
    Stretch down = VisibleStretch(to.y, to.height, from.y, from.height, target.Height(), source.Height());
    // A smoothly scaled pixel shows more than the source pixel under its middle.
    if (target.stretchMode != kStretchHalftone || (across.IsCopy() && down.IsCopy())) {
        across.ShowOnly(part.x, part.width);
        down.ShowOnly(part.y, part.height);
    }
    CopyVisible(target, source.picture, across, down);
}

void StretchBltLines(Surface& target, const Box& to, const Surface& lines, int top, int height,
                     const Box& from) {
    const Stretch across = VisibleStretch(to.x, to.width, from.x, from.width, target.Width(), lines.Width());
    Stretch down = VisibleStretch(to.y, to.height, from.y, from.height, target.Height(), height);
    down.from -= top;
    down.sourceSize = lines.Height();
    CopyVisible(target, lines.picture, across, down);
}

void BitBlt(Surface& target, const Box& to, const Surface& source, int fromX, int fromY) {
    StretchBlt(target, to, source, {fromX, fromY, to.width, to.height});
}

int TextWidth(const Surface& surface, const QString& text) {
    return text.isEmpty() ? 0 : FontOf(surface).metrics.horizontalAdvance(text);
}

bool HasGlyph(const Surface& surface, char32_t character) {
    return FontOf(surface).metrics.inFontUcs4(character);
}

int BeginningWidth(const Surface& surface, const QString& text, qsizetype length) {
    return length == 0 ? 0 : FontOf(surface).metrics.horizontalAdvance(text, static_cast<int>(length));
}

int TextHeight(const Surface& surface, const QString& /*text*/) {
    return FontOf(surface).metrics.height();
}

TextReach ReachOfText(const Surface& surface, const QString& text) {
    const SurfaceFont& font = FontOf(surface);
    const QFontMetrics& metrics = font.metrics;
    const QRectF ink = QRectF(metrics.tightBoundingRect(text)) | InkOfGlyphs(font.font, text);
    // Antialiased edges extend slightly beyond the metrics of the letters.
    const int margin = 2 + metrics.height() / 4;
    const double top = metrics.ascent() + ink.top() - margin;
    const double bottom = metrics.ascent() + ink.bottom() + margin;
    return {std::min(0, static_cast<int>(std::floor(top))),
            std::max(metrics.height(), static_cast<int>(std::ceil(bottom)))};
}

void TextOutA(Surface& surface, int x, int y, const QString& text) {
    if (text.isEmpty() || surface.picture.isNull()) {
        return;
    }
    const SurfaceFont& font = FontOf(surface);
    if (IsBeside(surface, font, x, y, text)) {
        return;
    }
    QPainter painter(&surface.picture);
    painter.setRenderHint(QPainter::TextAntialiasing);
    painter.setFont(font.font);
    painter.setPen(QColor::fromRgb(surface.ForeColor));
    painter.drawText(QPoint(x, y + font.metrics.ascent()), text);
}

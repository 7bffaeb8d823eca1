// Painting a notice page.
#include "platform/qt/notice.h"

#include <QColor>
#include <QFont>
#include <QPainter>
#include <QTextOption>

#include <algorithm>

namespace {

constexpr int kLongestLine = 800; // characters

struct Style {
    int pixels;
    int weight;
    QColor color;
};

int Share(int length, int divisor, int least) {
    return std::max(length / divisor, least);
}

// Writes a paragraph at the top of `column` and returns the rest of the column below it.
QRect Paragraph(QPainter& painter, const QRect& column, const QString& text, const Style& style) {
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(style.pixels);
    font.setWeight(static_cast<QFont::Weight>(style.weight));
    painter.setFont(font);
    painter.setPen(style.color);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    const QString shown = text.left(kLongestLine);
    const int height = qRound(painter.boundingRect(QRectF(column), shown, option).height());
    painter.drawText(QRectF(column), shown, option);
    return column.adjusted(0, height + style.pixels / 2, 0, 0);
}

void PaintChoices(QPainter& painter, const QRect& area, const Notice& notice, int pixels) {
    const std::vector<QRect> places = ChoicePlaces(area, static_cast<int>(notice.choices.size()));
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(pixels);
    painter.setFont(font);
    for (std::size_t i = 0; i < places.size(); ++i) {
        const bool chosen = static_cast<int>(i) == notice.chosen;
        painter.fillRect(places[i], chosen ? QColor(0x3d, 0x7e, 0xb8) : QColor(0x2a, 0x33, 0x3c));
        painter.setPen(chosen ? QColor(0xff, 0xff, 0xff) : QColor(0xa8, 0xb4, 0xc0));
        painter.drawText(places[i], Qt::AlignCenter, notice.choices.at(static_cast<qsizetype>(i)));
    }
}

} // namespace

std::vector<QRect> ChoicePlaces(const QRect& area, int count) {
    std::vector<QRect> places;
    places.reserve(static_cast<std::size_t>(count));
    const int width = Share(area.width(), 6, 60);
    const int height = Share(area.height(), 14, 24);
    for (int i = 0; i < count; ++i) {
        places.emplace_back(area.left() + area.width() / 6 + i * (width + width / 4),
                            area.top() + area.height() * 3 / 4, width, height);
    }
    return places;
}

void PaintNotice(QPainter& painter, const QRect& area, const Notice& notice) {
    const int text = Share(area.height(), 40, 12);
    painter.fillRect(area, QColor(0x14, 0x19, 0x1f));
    painter.fillRect(QRect(area.left() + area.width() / 6 - text, area.top() + area.height() / 4,
                           std::max(text / 6, 2), area.height() / 2),
                     QColor(0x3d, 0x7e, 0xb8));
    QRect column(area.left() + area.width() / 6, area.top() + area.height() / 4, area.width() * 2 / 3,
                 area.height() * 3 / 4);
    column =
        Paragraph(painter, column, notice.title, {text * 7 / 4, QFont::DemiBold, QColor(0xf2, 0xf5, 0xf8)});
    for (const QString& line : notice.lines) {
        column = Paragraph(painter, column, line, {text, QFont::Normal, QColor(0xd5, 0xdc, 0xe3)});
    }
    Paragraph(painter, column, notice.hint, {text * 4 / 5, QFont::Normal, QColor(0x8a, 0x97, 0xa4)});
    PaintChoices(painter, area, notice, text);
}

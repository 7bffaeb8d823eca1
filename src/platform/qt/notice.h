// A full-screen notice page: what happened, what to do, how to continue.
#pragma once

#include <QRect>
#include <QString>
#include <QStringList>

#include <vector>

class QPainter;

struct Notice {
    QString title;
    QStringList lines;
    QString hint;
    // The answers to choose from, and the selected one. Empty for a page that any key closes.
    QStringList choices;
    int chosen = 0;
};

// Paints the page over an area of at least 1x1 pixels. Breaks long words; cuts what does not fit at the
// bottom.
void PaintNotice(QPainter& painter, const QRect& area, const Notice& notice);

// The rectangles of the choices on the page, left to right.
std::vector<QRect> ChoicePlaces(const QRect& area, int count);

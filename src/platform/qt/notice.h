// A full-screen page of words: what happened, what to do, how to go on.
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
    // The answers to choose from, none for a page that any key closes, and the one that is chosen.
    QStringList choices;
    int chosen = 0;
};

// Paints the page over an area of at least 1x1 pixels. Long words are broken; what does not fit is cut at the
// bottom.
void PaintNotice(QPainter& painter, const QRect& area, const Notice& notice);

// The places of the choices on the page, left to right.
std::vector<QRect> ChoicePlaces(const QRect& area, int count);

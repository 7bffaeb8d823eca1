// Comparing pictures pixel by pixel inside and outside the rectangles that are cut from them.
#include "app/workshop/look_check.h"

#include "app/workshop/picture_check.h"
#include "app/workshop/place_check.h"

#include <QPainter>

#include <utility>

namespace {

struct NamedBox {
    ThemePlace place;
    QRect box;
};
using Boxes = std::vector<NamedBox>;

// Whether two pictures are the same in the part of a rectangle that both have.
bool Same(const QImage& one, const QImage& other, const QRect& box) {
    const QRect part = box.intersected(one.rect()).intersected(other.rect());
    return !part.isEmpty() && one.copy(part) == other.copy(part);
}

// A copy with the rectangles blanked, for comparing the rest.
QImage Outside(QImage picture, const Boxes& boxes) {
    QPainter painter(&picture);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    for (const NamedBox& each : boxes) {
        painter.fillRect(each.box, Qt::transparent);
    }
    return picture;
}

bool IsClear(const QImage& picture, const QRect& box) {
    const QRect part = box.intersected(picture.rect());
    for (int y = part.top(); y <= part.bottom(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        for (int x = part.left(); x <= part.right(); ++x) {
            if (qAlpha(line[x]) != 0) {
                return false;
            }
        }
    }
    return true;
}

Boxes BoxesOf(const CheckedTheme& theme, const QString& section, const QStringList& prefixes,
              const BoxEndings& endings = {}) {
    Boxes boxes;
    for (const QString& prefix : prefixes) {
        const auto box = BoxAt(theme, {section, prefix}, endings);
        if (box && !box->isEmpty()) {
            boxes.push_back({{section, prefix}, *box});
        }
    }
    return boxes;
}

Boxes SlotBoxes(const CheckedTheme& theme) {
    Boxes boxes;
    for (const SlotNumber& slot : ShownSlots(theme)) {
        const auto box = BoxAt(theme, SlotPart(slot, "Hilight"));
        if (box && !box->isEmpty()) {
            boxes.push_back({SlotPart(slot, "Hilight"), *box});
        }
    }
    return boxes;
}

void TellSame(CheckedTheme& theme, const NamedBox& place, const QString& one, const QString& other) {
    TellFile(
        theme, Level::kWarning, other,
        QStringLiteral("The rectangle of [%1] %2 looks the same as in %3, so nobody sees the difference.")
            .arg(place.place.section, place.place.prefix, one),
        QStringLiteral("Draw the two states differently."));
}

void CompareLooks(CheckedTheme& theme, const QString& one, const QString& other, const Boxes& boxes) {
    const QImage first = PictureOf(theme, one);
    const QImage second = PictureOf(theme, other);
    if (first.isNull() || second.isNull()) {
        return;
    }
    for (const NamedBox& place : boxes) {
        if (Same(first, second, place.box)) {
            TellSame(theme, place, one, other);
        }
    }
}

// What changes between two looks outside the rectangles is a drawing or a rectangle in the wrong place. A
// picture of buttons only is transparent around them, or smaller than its block.
void CompareRests(CheckedTheme& theme, const QString& one, const QString& other, const Boxes& boxes) {
    const QImage first = PictureOf(theme, one);
    const QImage second = PictureOf(theme, other);
    if (first.isNull() || first.size() != second.size()) {
        return;
    }
    const QImage restOfFirst = Outside(first, boxes);
    const QImage restOfSecond = Outside(second, boxes);
    if (!IsClear(restOfFirst, first.rect()) && !IsClear(restOfSecond, first.rect()) &&
        restOfFirst != restOfSecond) {
        TellFile(
            theme, Level::kNote, other,
            QStringLiteral("The picture differs from %1 outside the rectangles that are cut from it, where "
                           "the difference is never visible.")
                .arg(one),
            QStringLiteral("Move the drawing into the rectangles, or the rectangles to the drawing."));
    }
}

void CheckButtons(CheckedTheme& theme, const QString& block, const Boxes& boxes) {
    const QStringList looks = {block + QStringLiteral("_active_selected.png"),
                               block + QStringLiteral("_active_selected_hilight.png"),
                               block + QStringLiteral("_active_unselected.png"),
                               block + QStringLiteral("_active_unselected_hilight.png")};
    for (qsizetype one = 0; one < looks.size(); ++one) {
        for (qsizetype other = one + 1; other < looks.size(); ++other) {
            CompareLooks(theme, looks[one], looks[other], boxes);
        }
    }
    for (qsizetype other = 1; other < looks.size(); ++other) {
        CompareRests(theme, looks.front(), looks[other], boxes);
    }
}

void CheckSameGround(CheckedTheme& theme, const QString& picture, const QString& focused, const Boxes& boxes,
                     const QString& effect) {
    const QImage first = PictureOf(theme, picture);
    const QImage second = PictureOf(theme, focused);
    if (first.isNull() || second.isNull()) {
        return;
    }
    for (const NamedBox& place : boxes) {
        if (first.rect().contains(place.box) && second.rect().contains(place.box) &&
            !Same(first, second, place.box)) {
            TellFile(theme, Level::kWarning, focused,
                     QStringLiteral("The background in [%1] %2 differs from %3: %4")
                         .arg(place.place.section, place.place.prefix, picture, effect),
                     QStringLiteral("Copy this rectangle from %1.").arg(picture));
        }
    }
}

// Marks are copied in the rectangles only.
void CheckMark(CheckedTheme& theme, const QString& name, const Boxes& boxes) {
    const QImage picture = PictureOf(theme, name);
    if (picture.isNull() || boxes.empty()) {
        return;
    }
    for (const NamedBox& place : boxes) {
        if (IsClear(picture, place.box)) {
            TellFile(theme, Level::kWarning, name,
                     QStringLiteral("Nothing is visible in the rectangle of [%1] %2.")
                         .arg(place.place.section, place.place.prefix),
                     QStringLiteral("Draw into this rectangle."));
        }
    }
    if (ClearPixels(picture, picture.rect()) > 0 && !IsClear(Outside(picture, boxes), picture.rect())) {
        TellFile(theme, Level::kNote, name,
                 QStringLiteral("Pixels outside the rectangles that are copied from it are never visible."),
                 QStringLiteral("Move them into the rectangles."));
    }
}

void CheckZoneLooks(CheckedTheme& theme) {
    const Boxes slots = SlotBoxes(theme);
    for (const char* mark : {"zonelist_nowplaying.png", "zonelist_comingnext.png", "zonelist_video.png",
                             "zonelistWithNumTrack.png", "zonelistWithNumTrack_hilight.png"}) {
        CheckMark(theme, QString::fromLatin1(mark), slots);
    }
    CheckMark(theme, QStringLiteral("zonelist_navigation.png"),
              BoxesOf(theme, QStringLiteral("zonelist"), NavigationButtons(), kNavigationEndings));
    const std::pair<const char*, const char*> looks[] = {
        {"zonelist.png", "zonelist_hilight.png"},
        {"zonelistWithNumTrack.png", "zonelistWithNumTrack_hilight.png"}};
    for (const auto& [plain, lit] : looks) {
        const QImage first = PictureOf(theme, QString::fromLatin1(plain));
        const QImage second = PictureOf(theme, QString::fromLatin1(lit));
        for (const NamedBox& slot : slots) {
            if (!first.isNull() && !second.isNull() && Same(first, second, slot.box)) {
                TellSame(theme, slot, QString::fromLatin1(plain), QString::fromLatin1(lit));
            }
        }
    }
}

void CheckBoardLooks(CheckedTheme& theme) {
    Boxes boxes;
    for (const BoardKey& key : BoardKeys(theme)) {
        boxes.push_back({{QStringLiteral("keyboard"), BoardKeyName("KeyX", key.line, key.column)}, key.box});
    }
    CompareLooks(theme, QStringLiteral("keyboard.png"), QStringLiteral("keyboard_hilight.png"), boxes);
    CompareRests(theme, QStringLiteral("keyboard.png"), QStringLiteral("keyboard_hilight.png"), boxes);
}

} // namespace

void CheckLooks(CheckedTheme& theme) {
    const QString main = QStringLiteral("BlockMain");
    const QString playlist = QStringLiteral("BlockPlaylist");
    CheckButtons(theme, QStringLiteral("main"), BoxesOf(theme, main, TransportButtons()));
    CheckButtons(theme, QStringLiteral("playlist"), BoxesOf(theme, playlist, QueueButtons()));
    CheckSameGround(theme, QStringLiteral("main.png"), QStringLiteral("main_active_selected.png"),
                    BoxesOf(theme, main, MainTexts()),
                    QStringLiteral("a patch is visible behind the text while the block has the focus."));
    CheckSameGround(theme, QStringLiteral("playlist.png"), QStringLiteral("playlist_active_selected.png"),
                    BoxesOf(theme, playlist, {QStringLiteral("BlockPlaylistPlaylist")}),
                    QStringLiteral("the rows of the queue keep the look without the focus."));
    CheckZoneLooks(theme);
    CheckBoardLooks(theme);
}

// Checking the rectangles of a theme.
#include "app/workshop/place_check.h"

#include <algorithm>
#include <array>

namespace {

const QString kZone = QStringLiteral("zonelist");
const QString kMain = QStringLiteral("BlockMain");
const QString kPlaylist = QStringLiteral("BlockPlaylist");
const QString kMenu = QStringLiteral("zonecommand");
const QString kBoard = QStringLiteral("keyboard");

// The border of the Command block around the rows of the menu, and how many rows the menu has.
constexpr int kBorder = 7;
constexpr int kMenuRows = 7;

// A rectangle and where its keys are.
struct Placed {
    ThemePlace place;
    QRect box;
};
using Boxes = std::vector<Placed>;

bool Contains(const QRect& frame, const QRect& box) {
    return box.x() >= frame.x() && box.y() >= frame.y() &&
           box.x() + box.width() <= frame.x() + frame.width() &&
           box.y() + box.height() <= frame.y() + frame.height();
}

// `frame` is described by `name`. An empty frame belongs to something that cannot be read.
void CheckInside(CheckedTheme& theme, const Placed& placed, const QRect& frame, const QString& name) {
    if (placed.box.isEmpty()) {
        TellKey(
            theme, Level::kWarning, placed.place,
            QStringLiteral("the rectangle %1 has no area, so nothing is drawn.").arg(WordsOfBox(placed.box)),
            QStringLiteral("Write a width and a height of 1 or more."));
    } else if (!frame.isEmpty() && !Contains(frame, placed.box)) {
        TellKey(theme, Level::kWarning, placed.place,
                QStringLiteral("the rectangle %1 is not inside %2, %3.")
                    .arg(WordsOfBox(placed.box), name, WordsOfBox(frame)),
                QStringLiteral("Move it, or make it smaller."));
    }
}

void CheckApart(CheckedTheme& theme, const Boxes& boxes) {
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        for (std::size_t other = i + 1; other < boxes.size(); ++other) {
            if (boxes[i].box.intersects(boxes[other].box)) {
                TellKey(theme, Level::kWarning, boxes[other].place,
                        QStringLiteral("the rectangle %1 overlaps [%2] %3, %4.")
                            .arg(WordsOfBox(boxes[other].box), boxes[i].place.section, boxes[i].place.prefix,
                                 WordsOfBox(boxes[i].box)),
                        QStringLiteral("Move one of them."));
            }
        }
    }
}

// Adds a rectangle and checks that it is inside a frame.
void Place(CheckedTheme& theme, Boxes& boxes, const ThemePlace& place, const QRect& frame,
           const QString& frameName, const BoxEndings& endings = {}) {
    if (const auto box = BoxAt(theme, place, endings)) {
        boxes.push_back({place, *box});
        CheckInside(theme, boxes.back(), frame, frameName);
    }
}

QRect RectOf(const CheckedTheme& theme, const QString& picture) {
    return PictureOf(theme, picture).rect();
}

void CheckSlotCodes(CheckedTheme& theme) {
    QHash<QString, QString> owners;
    for (const SlotNumber& slot : ShownSlots(theme)) {
        const ThemePlace place = SlotPart(slot, "NumSaisieKeys");
        const QString codes = TextOf(theme, place.section, place.prefix);
        const QString name = QString::number(slot.column) + u' ' + codes;
        if (!codes.isEmpty() && owners.contains(name)) {
            TellKey(theme, Level::kWarning, place,
                    QStringLiteral("the codes %1 already pick the slot [%2].").arg(codes, owners.value(name)),
                    QStringLiteral("Give each slot of a column codes of its own."));
        }
        owners.insert(name, place.section);
    }
}

void CheckSlots(CheckedTheme& theme, Boxes& boxes, const QRect& zone) {
    for (const SlotNumber& slot : ShownSlots(theme)) {
        const ThemePlace whole = SlotPart(slot, "Hilight");
        Place(theme, boxes, whole, zone, QStringLiteral("zonelist.png"));
        const auto frame = BoxAt(theme, whole);
        Boxes parts;
        for (const char* part : {"NumSaisie", "NumPiste", "Cover", "Titre"}) {
            Place(theme, parts, SlotPart(slot, part), frame.value_or(QRect()),
                  QStringLiteral("ZoneListPisteHilight"));
        }
    }
}

void CheckRows(CheckedTheme& theme) {
    const QString key = QStringLiteral("ZoneListNbTracksParColonne");
    const auto rows = NumberOf(theme, kZone, key);
    if (rows && (*rows < 1 || *rows > 10)) {
        TellKey(theme, Level::kError, {kZone, key},
                QStringLiteral("%1 rows are not possible, and the jukebox stops.").arg(*rows),
                QStringLiteral("Write a number from 1 to 10."));
    }
}

void CheckZone(CheckedTheme& theme) {
    const QRect zone = RectOf(theme, QStringLiteral("zonelist.png"));
    Boxes pages;
    for (const char* page : {"ZoneListPageGauche", "ZoneListPageDroite"}) {
        Place(theme, pages, {kZone, QString::fromLatin1(page)}, zone, QStringLiteral("zonelist.png"),
              kLongEndings);
    }
    Boxes boxes;
    for (const QString& button : NavigationButtons()) {
        Place(theme, boxes, {kZone, button}, zone, QStringLiteral("zonelist.png"), kNavigationEndings);
    }
    CheckRows(theme);
    CheckSlots(theme, boxes, zone);
    CheckApart(theme, boxes);
    CheckSlotCodes(theme);
}

// Whether the page turn ends. It unfolds the second page at the speed at which the first one was folded.
bool FoldEnds(int first, int second) {
    int speed = 1;
    for (int width = first; width > 0; ++speed) {
        width -= speed;
    }
    for (int width = 0; width < second; --speed) {
        if (speed <= 0) {
            return false;
        }
        width += speed;
    }
    return true;
}

void CheckFold(CheckedTheme& theme) {
    const QString key = QStringLiteral("ZoneListPageGaucheWidth");
    const auto left = NumberOf(theme, kZone, key);
    const auto right = NumberOf(theme, kZone, QStringLiteral("ZoneListPageDroiteWidth"));
    if (left && right && !(FoldEnds(*right, *left) && FoldEnds(*left, *left))) {
        TellKey(theme, Level::kError, {kZone, key},
                QStringLiteral("the pages are %1 and %2 wide, so the page turn never ends and the jukebox "
                               "accepts no more keys.")
                    .arg(*left)
                    .arg(*right),
                QStringLiteral("Make both pages equally wide."));
    }
}

// The used part of the Playlist block. Its picture may be larger, with a front around the blocks.
QSize PlaylistExtent(const CheckedTheme& theme) {
    QSize extent(0, 0);
    for (const QString& prefix : QStringList{QStringLiteral("BlockPlaylistPlaylist")} + QueueButtons()) {
        if (const auto box = BoxAt(theme, {kPlaylist, prefix})) {
            extent = extent.expandedTo({box->x() + box->width(), box->y() + box->height()});
        }
    }
    return extent;
}

// A block that is wholly to the right of the theme is never visible: the picture area ends there.
bool IsBeyondRightEdge(const QRect& block, const QRect& whole) {
    return block.x() >= whole.width();
}

// Themes for bars keep the menu away from patrons in this way.
void TellMenuBeyondEdge(CheckedTheme& theme, const Placed& menu, const QRect& whole) {
    TellKey(
        theme, Level::kNote, menu.place,
        QStringLiteral("the menu at %1 is beyond the right edge of the theme, %2: nobody sees or touches it, "
                       "and the big cover and the small video are not visible either.")
            .arg(WordsOfBox(menu.box), WordsOfBox(whole)),
        QStringLiteral("Keys still reach it: set ActiveCommandZone=false in config.ini if patrons have keys. "
                       "If the menu should be visible, move it inside."));
}

void CheckOrientation(CheckedTheme& theme, const QString& section) {
    const QSize main = RectOf(theme, QStringLiteral("main.png")).size();
    const auto corner = [&](const char* key) { return NumberOf(theme, section, QString::fromLatin1(key)); };
    const auto width = corner("BlockMainX");
    const auto height = corner("BlockCommandY");
    const auto zone = BoxAt(theme, {kZone, QStringLiteral("ZoneList")}, kLongEndings);
    if (main.isEmpty() || !width || !height || !zone) {
        return;
    }
    const QRect whole(0, 0, *width + main.width(), *height + main.height());
    Boxes boxes = {{{kZone, QStringLiteral("ZoneList")}, QRect(QPoint(0, 0), zone->size())}};
    // The zone may continue below the theme: a screen that is taller than the theme shows that part.
    CheckInside(theme, boxes.front(), whole.united(QRect(0, 0, whole.width(), zone->height())),
                QStringLiteral("the theme as [%1] places it").arg(section));
    const std::pair<const char*, QSize> blocks[] = {
        {"BlockMain", main},
        {"BlockPlaylist", PlaylistExtent(theme)},
        {"BlockCommand", RectOf(theme, QStringLiteral("command.png")).size()}};
    for (const auto& [name, size] : blocks) {
        const QString prefix = QString::fromLatin1(name);
        const auto x = NumberOf(theme, section, prefix + u'X');
        const auto y = NumberOf(theme, section, prefix + u'Y');
        if (x && y && !size.isEmpty()) {
            boxes.push_back({{section, prefix}, QRect(QPoint(*x, *y), size)});
            if (prefix == u"BlockCommand" && IsBeyondRightEdge(boxes.back().box, whole)) {
                TellMenuBeyondEdge(theme, boxes.back(), whole);
                continue;
            }
            CheckInside(
                theme, boxes.back(), whole,
                QStringLiteral("the theme, which ends at BlockMainX and BlockCommandY plus the size of "
                               "main.png"));
        }
    }
    CheckApart(theme, boxes);
}

void CheckMain(CheckedTheme& theme) {
    const QRect frame = RectOf(theme, QStringLiteral("main.png"));
    Boxes boxes;
    for (const QString& prefix : MainTexts() + TransportButtons()) {
        Place(theme, boxes, {kMain, prefix}, frame, QStringLiteral("main.png"));
    }
    CheckApart(theme, boxes);
}

constexpr std::array kQueueLooks = {"playlist.png", "playlist_active_selected.png",
                                    "playlist_active_selected_hilight.png", "playlist_active_unselected.png",
                                    "playlist_active_unselected_hilight.png"};

void CheckPlaylist(CheckedTheme& theme) {
    const ThemePlace list{kPlaylist, QStringLiteral("BlockPlaylistPlaylist")};
    const QRect frame = RectOf(theme, QStringLiteral("playlist.png"));
    Boxes boxes;
    Place(theme, boxes, list, frame, QStringLiteral("playlist.png"));
    const QSize row = RectOf(theme, QStringLiteral("playlist_playlisthilight.png")).size();
    if (!boxes.empty() && !row.isEmpty() && row.height() > boxes.front().box.height()) {
        TellKey(theme, Level::kWarning, list,
                QStringLiteral("the list is %1 high, lower than a row of %2, the height of "
                               "playlist_playlisthilight.png.")
                    .arg(boxes.front().box.height())
                    .arg(row.height()),
                QStringLiteral("Choose a height of whole rows."));
    }
    for (const QString& prefix : QueueButtons()) {
        Place(theme, boxes, {kPlaylist, prefix}, frame, QStringLiteral("playlist.png"));
        const auto box = BoxAt(theme, {kPlaylist, prefix});
        for (const char* look : kQueueLooks) {
            const QRect picture = RectOf(theme, QString::fromLatin1(look));
            if (box && !picture.isEmpty() && picture != frame && !Contains(picture, *box)) {
                CheckInside(theme, {{kPlaylist, prefix}, *box}, picture, QString::fromLatin1(look));
            }
        }
    }
    CheckApart(theme, boxes);
}

void CheckMenu(CheckedTheme& theme) {
    const QRect block = RectOf(theme, QStringLiteral("command.png"));
    const QString rowName = QStringLiteral("command_listbox.png");
    const QRect row = RectOf(theme, rowName);
    if (!block.isEmpty() && !row.isEmpty() && row.width() > block.width() - 2 * kBorder) {
        TellFile(
            theme, Level::kWarning, rowName,
            QStringLiteral("A row of the menu is %1 wide, but command.png has room for %2 inside its border "
                           "of 7 pixels.")
                .arg(row.width())
                .arg(block.width() - 2 * kBorder),
            QStringLiteral("Make the rows narrower, or the block wider."));
    }
    if (!block.isEmpty() && row.height() * kMenuRows > block.height() - 2 * kBorder) {
        TellFile(
            theme, Level::kNote, rowName,
            QStringLiteral("The %1 rows of the menu are higher than command.png, so the menu scrolls, and a "
                           "small video is higher than the block.")
                .arg(kMenuRows),
            QStringLiteral("Make the rows lower, or the block higher."));
    }
    Boxes texts;
    Place(theme, texts, {kMenu, QStringLiteral("BlockCommandListBoxTexte")}, row, rowName);
    Place(theme, texts, {kMenu, QStringLiteral("BlockCommandListBoxChoiceTexte")}, row, rowName);
    CheckApart(theme, texts);
    Place(theme, texts, {kMenu, QStringLiteral("BlockCommandBtnTexte")}, row, rowName);
}

void CheckCode(CheckedTheme& theme, const std::vector<BoardKey>& keys, int code, const QString& what) {
    const auto count =
        std::count_if(keys.begin(), keys.end(), [&](const BoardKey& key) { return key.code == code; });
    if (count != 1) {
        TellKey(theme, Level::kWarning, {kBoard, QStringLiteral("KeyKey")},
                QStringLiteral("%1 keys have the code %2, which %3.").arg(count).arg(code).arg(what),
                QStringLiteral("Give exactly one key this code."));
    }
}

void CheckBoard(CheckedTheme& theme) {
    const QRect frame = RectOf(theme, QStringLiteral("keyboard.png"));
    const std::vector<BoardKey> keys = BoardKeys(theme);
    Boxes boxes;
    Place(theme, boxes, {kBoard, QStringLiteral("Title")}, frame, QStringLiteral("keyboard.png"));
    Place(theme, boxes, {kBoard, QStringLiteral("Texte")}, frame, QStringLiteral("keyboard.png"));
    for (const BoardKey& key : keys) {
        boxes.push_back({{kBoard, BoardKeyName("KeyX", key.line, key.column)}, key.box});
        CheckInside(theme, boxes.back(), frame, QStringLiteral("keyboard.png"));
        if (key.code == 13) {
            Boxes label;
            Place(theme, label, {kBoard, QStringLiteral("BtnTexte")}, key.box,
                  QStringLiteral("the key that accepts"));
        }
    }
    CheckApart(theme, boxes);
    CheckCode(theme, keys, 13, QStringLiteral("accepts the text"));
    CheckCode(theme, keys, 8, QStringLiteral("deletes a letter"));
}

} // namespace

QStringList TransportButtons() {
    return {QStringLiteral("BlockMainBtnPreview"), QStringLiteral("BlockMainBtnStop"),
            QStringLiteral("BlockMainBtnPlay"), QStringLiteral("BlockMainBtnPause"),
            QStringLiteral("BlockMainBtnNext")};
}

QStringList QueueButtons() {
    return {QStringLiteral("BlockPlaylistBtnDown"), QStringLiteral("BlockPlaylistBtnUp"),
            QStringLiteral("BlockPlaylistBtnRemove"), QStringLiteral("BlockPlaylistBtnLoad"),
            QStringLiteral("BlockPlaylistBtnSave")};
}

QStringList MainTexts() {
    return {QStringLiteral("BlockMainInsertCoin"), QStringLiteral("BlockMainRemain"),
            QStringLiteral("BlockMainInfosZoneLigne1"), QStringLiteral("BlockMainInfosZoneLigne2")};
}

QStringList NavigationButtons() {
    return {QStringLiteral("ZoneListNavigationBack"), QStringLiteral("ZoneListNavigationPreviewPage"),
            QStringLiteral("ZoneListNavigationNextPage")};
}

void CheckPlaces(CheckedTheme& theme) {
    CheckZone(theme);
    CheckFold(theme);
    CheckOrientation(theme, QStringLiteral("horitontal"));
    CheckOrientation(theme, QStringLiteral("vertical"));
    CheckMain(theme);
    CheckPlaylist(theme);
    CheckMenu(theme);
    CheckBoard(theme);
}

// Loading a theme's pictures with the jukebox's image object, and comparing sizes and transparency.
#include "app/workshop/picture_check.h"

#include "app/workshop/checked_theme.h"
#include "core/path_text.h"
#include "imaging/picture/drawing.h"
#include "platform/event_pump.h"
#include "state/paths.h"
#include "theme/load_assets.h"

#include <QStringList>

#include <array>
#include <cstdint>
#include <utility>

namespace {

// The pictures of a large theme for a 4K screen have about 80 million pixels together.
constexpr std::int64_t kMostPixels = 120'000'000;

// Loading a picture lets events run; here there are none.
class NoEvents : public EventPump {
public:
    void DoEvents() override {}
    void Wait(double /*milliseconds*/) override {}
};

// What happens without a picture, where that is more than an empty place on the screen.
struct Loss {
    const char* name;
    const char16_t* effect;
};

constexpr std::array kLosses = {
    Loss{"main.png", u"the size of the theme is calculated from it, so everything is placed wrongly."},
    Loss{"playlist_playlisthilight.png", u"the rows of the queue have no height: the queue is not shown, and "
                                         u"a tap on it locks up the jukebox."},
    Loss{"keyboard.png", u"the on-screen keyboard does not open, and the jukebox accepts no more keys."},
};

void TellLoss(CheckedTheme& theme, const QString& name, const QString& fault) {
    for (const Loss& loss : kLosses) {
        if (name == QLatin1StringView(loss.name)) {
            TellFile(theme, Level::kError, name,
                     QStringLiteral("%1, and %2").arg(fault, QString::fromUtf16(loss.effect)),
                     QStringLiteral("Save it as a PNG of 8 bits per channel."));
            return;
        }
    }
    TellFile(theme, Level::kWarning, name,
             fault + QStringLiteral(", and its place on the screen stays empty."),
             QStringLiteral("Save it as a PNG of 8 bits per channel."));
}

void Keep(CheckedTheme& theme, const QString& name, const c32bppDIB& picture, std::int64_t& pixels) {
    pixels += std::int64_t{picture.Width()} * picture.Height();
    if (pixels > kMostPixels) {
        TellFile(
            theme, Level::kError, name,
            QStringLiteral("The picture has %1x%2 pixels, and the pictures of the theme have more than %3 "
                           "million together: the jukebox needs more memory than most cabinets have.")
                .arg(picture.Width())
                .arg(picture.Height())
                .arg(kMostPixels / 1'000'000),
            QStringLiteral("Draw the theme for the size of the screen."));
        pixels -= std::int64_t{picture.Width()} * picture.Height();
        return;
    }
    const QImage& view = picture.Drawing().picture;
    const QImage copy = view.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    theme.pictures[name] = copy.constBits() == view.constBits() ? copy.copy() : copy;
    if (picture.ImageType() != kImagePng) {
        TellFile(theme, Level::kNote, name,
                 QStringLiteral("The picture is not a PNG. The jukebox shows it all the same."),
                 QStringLiteral("Save it as a PNG, so that its name is right."));
    }
}

void LoadOne(CheckedTheme& theme, const QString& name, std::int64_t& pixels) {
    NoEvents pump;
    Form_Main& form = theme.form;
    const PicturePorts ports{form.files, form.zlib, pump, form.pictures};
    const QString path = FindFile(form.files, theme.folder, name);
    if (path.isEmpty()) {
        TellLoss(theme, name, QStringLiteral("The picture is missing"));
        return;
    }
    c32bppDIB picture;
    picture.LoadPicture_File(ports, path);
    if (picture.Handle() == 0) {
        TellLoss(theme, name, QStringLiteral("The picture cannot be read"));
    } else {
        Keep(theme, name, picture, pixels);
    }
}

QString WordsOfSize(const QSize& size) {
    return QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
}

// Compares the pictures with the first one.
void CheckSameSize(CheckedTheme& theme, const QStringList& names) {
    const QImage first = PictureOf(theme, names.front());
    for (const QString& name : names) {
        const QImage other = PictureOf(theme, name);
        if (!first.isNull() && !other.isNull() && other.size() != first.size()) {
            TellFile(
                theme, Level::kWarning, name,
                QStringLiteral("The picture is %1, but %2 is %3, and both are cut by the same rectangles.")
                    .arg(WordsOfSize(other.size()), names.front(), WordsOfSize(first.size())),
                QStringLiteral("Make both the same size."));
        }
    }
}

QStringList ZonePictures() {
    QStringList names;
    for (const QString& name : ThemePictures()) {
        if (name.startsWith(QStringLiteral("zonelist"))) {
            names += name;
        }
    }
    return names;
}

void CheckZoneSize(CheckedTheme& theme) {
    const QImage zone = PictureOf(theme, QStringLiteral("zonelist.png"));
    const auto box = BoxAt(theme, {QStringLiteral("zonelist"), QStringLiteral("ZoneList")}, kLongEndings);
    if (zone.isNull() || !box ||
        (zone.width() + box->x() == box->width() && zone.height() + box->y() == box->height())) {
        return;
    }
    TellKey(theme, Level::kWarning, {QStringLiteral("zonelist"), QStringLiteral("ZoneListWidth")},
            QStringLiteral("zonelist.png is %1 at %2,%3 and does not fill the zone of %4x%5.")
                .arg(WordsOfSize(zone.size()))
                .arg(box->x())
                .arg(box->y())
                .arg(box->width())
                .arg(box->height()),
            QStringLiteral("Write the size of zonelist.png, plus ZoneListX and ZoneListY."));
}

void CheckBarSize(CheckedTheme& theme) {
    constexpr int kFarthestRow = 32767;
    constexpr int kFewRows = 200;
    const QString name = QStringLiteral("playlist_playlisthilight.png");
    const QImage bar = PictureOf(theme, name);
    const auto box = BoxAt(theme, {QStringLiteral("BlockPlaylist"), QStringLiteral("BlockPlaylistPlaylist")});
    if (bar.isNull()) {
        return;
    }
    if (box && bar.width() != box->width()) {
        TellFile(theme, Level::kWarning, name,
                 QStringLiteral("The bar is %1 wide, but [BlockPlaylist] BlockPlaylistPlaylistW is %2.")
                     .arg(bar.width())
                     .arg(box->width()),
                 QStringLiteral("Make the bar as wide as the list."));
    }
    if (kFarthestRow / bar.height() < kFewRows) {
        TellFile(
            theme, Level::kWarning, name,
            QStringLiteral("The bar is %1 high. With more than %2 tracks in the queue the jukebox accepts "
                           "no more keys.")
                .arg(bar.height())
                .arg(kFarthestRow / bar.height()),
            QStringLiteral("Make it lower; a bar of 32 pixels allows 1000 tracks."));
    }
}

// What is below a picture, and comes through where the picture is transparent.
struct Ground {
    Level level;
    const char16_t* text;
    const char16_t* advice;
};

// In caches, on the strip of the menu's rows and in the keyboard's window.
constexpr Ground kBlack = {Level::kWarning, u"Nothing is below this picture, so they come out black.",
                           u"Draw the background into the picture, without transparency."};
// The frame is not cleared before the Main block is drawn, and its texts are cleared with main.png.
constexpr Ground kUncleared = {
    Level::kWarning, u"The screen is not cleared below this picture, so they show earlier texts and veils.",
    u"Draw the background into the picture, without transparency."};
// The Command block is drawn last, over the picture of the Playlist block as far as that extends.
constexpr Ground kPlaylist = {
    Level::kNote,
    u"They show playlist.png where that extends below this block, and earlier rows and covers elsewhere.",
    u"Draw the background into the picture, or extend playlist.png below it."};

constexpr std::array kGrounds = {std::pair{"zonelist.png", &kBlack},
                                 std::pair{"zonelist_hilight.png", &kBlack},
                                 std::pair{"command_listbox.png", &kBlack},
                                 std::pair{"command_listbox_hilight.png", &kBlack},
                                 std::pair{"command_btn.png", &kBlack},
                                 std::pair{"command_btn_hilight.png", &kBlack},
                                 std::pair{"keyboard.png", &kBlack},
                                 std::pair{"main.png", &kUncleared},
                                 std::pair{"main_active_selected.png", &kUncleared},
                                 std::pair{"command.png", &kPlaylist},
                                 std::pair{"command_hilight.png", &kPlaylist}};

void CheckGrounds(CheckedTheme& theme) {
    for (const auto& [file, ground] : kGrounds) {
        const QString name = QString::fromLatin1(file);
        const QImage picture = PictureOf(theme, name);
        if (const std::int64_t count = ClearPixels(picture, picture.rect())) {
            TellFile(theme, ground->level, name,
                     QStringLiteral("%1 pixels are transparent. %2")
                         .arg(QString::number(count), QString::fromUtf16(ground->text)),
                     QString::fromUtf16(ground->advice));
        }
    }
}

void CheckQueueGround(CheckedTheme& theme) {
    const ThemePlace list{QStringLiteral("BlockPlaylist"), QStringLiteral("BlockPlaylistPlaylist")};
    const auto box = BoxAt(theme, list);
    const int height = PictureOf(theme, QStringLiteral("playlist_playlisthilight.png")).height();
    const QString name = QStringLiteral("playlist.png");
    if (box && ClearPixels(PictureOf(theme, name), QRect(box->x(), box->y(), box->width(), height)) > 0) {
        TellFile(theme, Level::kWarning, name,
                 QStringLiteral("The first row of the list in [BlockPlaylist] BlockPlaylistPlaylist is "
                                "transparent. It is the background of every row of the queue, and comes out "
                                "black."),
                 QStringLiteral("Draw the background of a row there, without transparency."));
    }
}

} // namespace

std::int64_t ClearPixels(const QImage& picture, const QRect& box) {
    std::int64_t count = 0;
    const QRect part = box.intersected(picture.rect());
    for (int y = part.top(); y <= part.bottom(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        for (int x = part.left(); x <= part.right(); ++x) {
            count += qAlpha(line[x]) != 255 ? 1 : 0;
        }
    }
    return count;
}

void LoadPictures(CheckedTheme& theme) {
    std::int64_t pixels = 0;
    for (const QString& name : ThemePictures()) {
        LoadOne(theme, name, pixels);
    }
    LoadOne(theme, QStringLiteral("keyboard.png"), pixels);
    LoadOne(theme, QStringLiteral("keyboard_hilight.png"), pixels);
}

void CheckSizes(CheckedTheme& theme) {
    const auto looks = [](const QString& block) {
        const QString active = block + QStringLiteral("_active_");
        return QStringList{block + QStringLiteral(".png"), active + QStringLiteral("selected.png"),
                           active + QStringLiteral("selected_hilight.png"),
                           active + QStringLiteral("unselected.png"),
                           active + QStringLiteral("unselected_hilight.png")};
    };
    CheckSameSize(theme, ZonePictures());
    CheckSameSize(theme, looks(QStringLiteral("main")));
    CheckSameSize(theme, looks(QStringLiteral("playlist")).first(2));
    CheckSameSize(theme, {QStringLiteral("command.png"), QStringLiteral("command_hilight.png")});
    CheckSameSize(theme,
                  {QStringLiteral("command_listbox.png"), QStringLiteral("command_listbox_hilight.png"),
                   QStringLiteral("command_btn.png"), QStringLiteral("command_btn_hilight.png")});
    CheckSameSize(theme, {QStringLiteral("keyboard.png"), QStringLiteral("keyboard_hilight.png")});
    CheckZoneSize(theme);
    CheckBarSize(theme);
}

void CheckTransparency(CheckedTheme& theme) {
    CheckGrounds(theme);
    CheckQueueGround(theme);
}

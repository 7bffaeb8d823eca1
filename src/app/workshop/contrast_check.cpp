// Measuring contrast as WCAG 2 defines it: the worst pixel behind a text counts.
#include "app/workshop/contrast_check.h"

#include "app/workshop/place_check.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr double kLeastContrast = 4.5;
// Width of a digit relative to the size of the font in pixels.
constexpr double kDigit = 0.55;
constexpr double kPixelsOfPoint = 96 / 72.0;

// The worst contrast of each look, by the section and the prefix of its keys.
struct Worst {
    ThemePlace key;
    bool isSelected = false;
    double contrast = 99;
    QString pictures;
};

struct Measurement {
    CheckedTheme& theme;
    std::vector<Worst> worst;
};

// The part of a channel in relative luminance.
double Linear(int channel) {
    const double value = channel / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double Luminance(QRgb colour) {
    static const std::array<double, 256> linear = [] {
        std::array<double, 256> table = {};
        for (int i = 0; i < 256; ++i) {
            table[static_cast<std::size_t>(i)] = Linear(i);
        }
        return table;
    }();
    const auto part = [&](int channel) { return linear[static_cast<std::size_t>(channel)]; };
    return 0.2126 * part(qRed(colour)) + 0.7152 * part(qGreen(colour)) + 0.0722 * part(qBlue(colour));
}

double Contrast(double one, double other) {
    return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05);
}

// A part of pictures that are drawn over one another on black. Empty when one of them is missing.
QImage Ground(const CheckedTheme& theme, const QRect& box, const QStringList& names) {
    QRect part = box;
    for (const QString& name : names) {
        part = part.intersected(PictureOf(theme, name).rect());
    }
    if (part.isEmpty()) {
        return {};
    }
    QImage ground(part.size(), QImage::Format_RGB32);
    ground.fill(Qt::black);
    QPainter painter(&ground);
    for (const QString& name : names) {
        painter.drawImage(QPoint(0, 0), PictureOf(theme, name), part);
    }
    return ground;
}

double WorstContrast(const QImage& ground, QRgb colour) {
    const double text = Luminance(colour);
    double worst = 99;
    for (int y = 0; y < ground.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(ground.constScanLine(y));
        for (int x = 0; x < ground.width(); ++x) {
            worst = std::min(worst, Contrast(text, Luminance(line[x])));
        }
    }
    return worst;
}

// The rows of a rectangle that capitals occupy when the first and the last line are that far below its
// middle.
QRect Band(const QRect& box, const ThemeStyle& style, int first = 0, int last = 0) {
    const int half = static_cast<int>(std::lround(CapitalHeight(style) / 2));
    return {box.x(), box.y() + box.height() / 2 + first - half, box.width(), last - first + 2 * half};
}

void Measure(Measurement& all, const ThemePlace& key, bool isSelected, const ThemeStyle& style,
             const QRect& box, const QStringList& pictures) {
    const QImage ground = Ground(all.theme, box, pictures);
    const auto found = std::find_if(all.worst.begin(), all.worst.end(), [&](const Worst& each) {
        return each.key.prefix == key.prefix && each.isSelected == isSelected;
    });
    Worst& worst =
        found != all.worst.end() ? *found : all.worst.emplace_back(Worst{key, isSelected, 99, QString()});
    const double contrast = WorstContrast(ground, style.colour);
    if (contrast < worst.contrast) {
        worst.contrast = contrast;
        worst.pictures = pictures.join(QStringLiteral(" and "));
    }
}

// Measures a text of one line whose look has the same prefix as its rectangle.
void MeasureLine(Measurement& all, const ThemePlace& key, bool isSelected, const QString& picture) {
    const auto style = StyleAt(all.theme, key, isSelected);
    const auto box = BoxAt(all.theme, key);
    if (style && box) {
        Measure(all, key, isSelected, *style, Band(*box, *style), {picture});
    }
}

enum class Part { kLabel, kTitle, kArtist };
struct SlotText {
    Part part;
    const char* style;
    const char* box;
};
constexpr std::array kSlotTexts = {SlotText{Part::kLabel, "NumSaisie", "NumSaisie"},
                                   SlotText{Part::kTitle, "TitreTitre", "Titre"},
                                   SlotText{Part::kArtist, "TitreInterprete", "Titre"}};

// The rows of a part of a slot. A title has one line or two, and the artist is below it. The distance between
// the lines depends on the size of the title alone.
QRect Rows(const QRect& box, Part part, const ThemeStyle& style, int titlePoints) {
    switch (part) {
    case Part::kTitle:
        return Band(box, style, -(titlePoints + 2), 0);
    case Part::kArtist:
        return Band(box, style, (titlePoints + 5) / 2, titlePoints + 2);
    case Part::kLabel:
        break;
    }
    return Band(box, style);
}

void MeasureSlotText(Measurement& all, const SlotNumber& slot, const SlotText& text, bool isSelected) {
    const ThemePlace key{QStringLiteral("zonelist"),
                         QStringLiteral("ZoneListPiste") + QLatin1StringView(text.style)};
    const auto style = StyleAt(all.theme, key, isSelected);
    const auto box = BoxAt(all.theme, SlotPart(slot, text.box));
    const auto cover = BoxAt(all.theme, SlotPart(slot, "Cover"));
    const auto title =
        StyleAt(all.theme, {key.section, QStringLiteral("ZoneListPisteTitreTitre")}, isSelected);
    if (!style || !box || !cover || !title) {
        return;
    }
    QList<QRect> boxes = {*box};
    if (text.part != Part::kLabel) {
        // Without a cover the text begins at its left edge.
        boxes += QRect(cover->x(), box->y(), box->x() + box->width() - cover->x(), box->height());
    }
    const QString zone = isSelected ? QStringLiteral("zonelist_hilight.png") : QStringLiteral("zonelist.png");
    for (const QRect& each : boxes) {
        const QRect band = Rows(each, text.part, *style, title->points);
        Measure(all, key, isSelected, *style, band, {zone});
        for (const char* mark :
             {"zonelist_nowplaying.png", "zonelist_comingnext.png", "zonelist_video.png"}) {
            Measure(all, key, isSelected, *style, band, {zone, QString::fromLatin1(mark)});
        }
    }
}

// A number has at most three digits, centred in its box.
void MeasureNumber(Measurement& all, const SlotNumber& slot, bool isSelected) {
    const ThemePlace key{QStringLiteral("zonelist"), QStringLiteral("ZoneListPisteNumPiste")};
    const auto style = StyleAt(all.theme, key, isSelected);
    const auto box = BoxAt(all.theme, SlotPart(slot, "NumPiste"));
    if (!style || !box) {
        return;
    }
    const QRect band = Band(*box, *style);
    const int width = static_cast<int>(std::lround(style->points * kPixelsOfPoint * kDigit * 3));
    const QRect digits(band.x() + std::max(band.width() - width, 0) / 2, band.y(),
                       std::min(width, band.width()), band.height());
    const QString ending = isSelected ? QStringLiteral("_hilight.png") : QStringLiteral(".png");
    Measure(all, key, isSelected, *style, digits,
            {QStringLiteral("zonelist") + ending, QStringLiteral("zonelistWithNumTrack") + ending});
}

void MeasureSlots(Measurement& all, bool isSelected) {
    for (const SlotNumber& slot : ShownSlots(all.theme)) {
        for (const SlotText& text : kSlotTexts) {
            MeasureSlotText(all, slot, text, isSelected);
        }
        MeasureNumber(all, slot, isSelected);
    }
}

void MeasureQueue(Measurement& all, bool isSelected) {
    constexpr int kLeft = 5;
    constexpr int kTop = 4;
    const ThemePlace key{QStringLiteral("BlockPlaylist"), QStringLiteral("BlockPlaylistPlaylist")};
    const QString bar = QStringLiteral("playlist_playlisthilight.png");
    const auto style = StyleAt(all.theme, key, isSelected);
    const auto list = BoxAt(all.theme, key);
    if (!style || !list) {
        return;
    }
    const QRect box = isSelected ? PictureOf(all.theme, bar).rect() : *list;
    Measure(all, key, isSelected, *style, box.adjusted(kLeft, kTop, -kLeft, -kTop),
            {isSelected ? bar : QStringLiteral("playlist.png")});
}

void MeasureBlocks(Measurement& all, bool isSelected) {
    const QString ending = isSelected ? QStringLiteral("_hilight.png") : QStringLiteral(".png");
    const QString menu = QStringLiteral("zonecommand");
    const QString board = QStringLiteral("keyboard");
    MeasureLine(all, {menu, QStringLiteral("BlockCommandListBoxTexte")}, isSelected,
                QStringLiteral("command_listbox") + ending);
    MeasureLine(all, {menu, QStringLiteral("BlockCommandListBoxChoiceTexte")}, isSelected,
                QStringLiteral("command_listbox") + ending);
    MeasureLine(all, {menu, QStringLiteral("BlockCommandBtnTexte")}, isSelected,
                QStringLiteral("command_btn") + ending);
    MeasureLine(all, {board, QStringLiteral("BtnTexte")}, isSelected, QStringLiteral("keyboard") + ending);
    if (!isSelected) {
        for (const QString& text : MainTexts()) {
            MeasureLine(all, {QStringLiteral("BlockMain"), text}, false, QStringLiteral("main.png"));
        }
        MeasureLine(all, {board, QStringLiteral("Title")}, false, QStringLiteral("keyboard.png"));
        MeasureLine(all, {board, QStringLiteral("Texte")}, false, QStringLiteral("keyboard.png"));
    }
}

} // namespace

void CheckContrast(CheckedTheme& theme) {
    Measurement all{theme, {}};
    for (const bool isSelected : {false, true}) {
        MeasureSlots(all, isSelected);
        MeasureQueue(all, isSelected);
        MeasureBlocks(all, isSelected);
    }
    for (const Worst& worst : all.worst) {
        if (worst.contrast < kLeastContrast) {
            const QString colour = worst.key.prefix + QStringLiteral("FontColor") +
                                   (worst.isSelected ? QStringLiteral("Hilight") : QString());
            TellKey(theme, Level::kWarning, {worst.key.section, colour},
                    QStringLiteral("the contrast to %1 is only %2:1 at the worst pixel.")
                        .arg(worst.pictures, QString::number(worst.contrast, 'f', 1)),
                    QStringLiteral("Choose a colour or a background with a contrast of 4.5:1 or more."));
        }
    }
}

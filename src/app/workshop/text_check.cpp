// Checking fonts, letters and the room for texts, measured with the surfaces that the jukebox draws on.
#include "app/workshop/text_check.h"

#include "app/workshop/place_check.h"
#include "core/path_text.h"
#include "imaging/picture/surface.h"
#include "library/file_pattern.h"
#include "platform/fonts.h"

#include <QFontInfo>
#include <QRawFont>
#include <QSet>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

const QString kDots = QStringLiteral("...");

// A text of the theme: its rectangle, the keys of its look, and texts that the jukebox writes there.
struct TextPlace {
    ThemePlace place;
    QRect box;
    ThemePlace style;
    bool isSelected = false;
    QStringList texts;
};

int WidthOf(const ThemeStyle& style, const QString& text) {
    Surface ruler;
    ruler.FontName = style.font;
    ruler.FontSize = style.points;
    return TextWidth(ruler, text);
}

// The labels of a slot on the first two pairs of pages.
QStringList Labels(const CheckedTheme& theme, const SlotNumber& slot) {
    const ThemePlace key = SlotPart(slot, "NumSaisieLibele");
    const QString label = TextOf(theme, key.section, key.prefix);
    if (label.isEmpty()) {
        return {(slot.column == 1 ? u'A' : u'B') + QString::number(slot.row - 1)};
    }
    QStringList labels;
    for (const char16_t letter : {slot.column == 1 ? u'A' : u'B', slot.column == 1 ? u'C' : u'D'}) {
        labels += QString(label).replace(QStringLiteral("[AP]"), QString(QChar(letter)));
    }
    return labels;
}

void AddSlotTexts(const CheckedTheme& theme, std::vector<TextPlace>& all, bool isSelected) {
    const struct {
        const char* box;
        const char* style;
    } parts[] = {{"NumSaisie", "NumSaisie"},
                 {"NumPiste", "NumPiste"},
                 {"Titre", "TitreTitre"},
                 {"Titre", "TitreInterprete"}};
    for (const SlotNumber& slot : ShownSlots(theme)) {
        for (const auto& part : parts) {
            const QString name = QString::fromLatin1(part.style);
            const QStringList texts = name == u"NumSaisie"  ? Labels(theme, slot)
                                      : name == u"NumPiste" ? QStringList{QStringLiteral("888")}
                                                            : QStringList();
            if (const auto box = BoxAt(theme, SlotPart(slot, part.box))) {
                all.push_back({SlotPart(slot, part.box),
                               *box,
                               {QStringLiteral("zonelist"), QStringLiteral("ZoneListPiste") + name},
                               isSelected,
                               texts});
            }
        }
    }
}

void AddText(const CheckedTheme& theme, std::vector<TextPlace>& all, const ThemePlace& place, bool isSelected,
             const QStringList& texts) {
    if (const auto box = BoxAt(theme, place)) {
        all.push_back({place, *box, place, isSelected, texts});
    }
}

// The words of the menu that is shown: labels of lists, their choices, labels of buttons.
struct MenuWords {
    QStringList labels;
    QStringList choices;
    QStringList buttons;
};

MenuWords WordsOfMenu(CheckedTheme& theme) {
    constexpr int kMostChoices = 20;
    Form_Main& form = theme.form;
    MenuWords words;
    for (int row = 1; row <= form.menu.CommandRowCount(1).value(); ++row) {
        const QString label = form.menu.CommandLabel(1, row).toUpper();
        (form.menu.CommandType(1, row) == u"listbox" ? words.labels : words.buttons) += label;
        for (int choice = 1; choice <= kMostChoices; ++choice) {
            words.choices += form.menu.CommandChoiceLabel(1, row, choice).toUpper();
        }
    }
    words.choices.removeAll(QString());
    return words;
}

void AddMenuTexts(CheckedTheme& theme, std::vector<TextPlace>& all, bool isSelected) {
    const QString section = QStringLiteral("zonecommand");
    const MenuWords words = WordsOfMenu(theme);
    AddText(theme, all, {section, QStringLiteral("BlockCommandListBoxTexte")}, isSelected, words.labels);
    AddText(theme, all, {section, QStringLiteral("BlockCommandListBoxChoiceTexte")}, isSelected,
            words.choices);
    AddText(theme, all, {section, QStringLiteral("BlockCommandBtnTexte")}, isSelected, words.buttons);
}

void AddBlockTexts(const CheckedTheme& theme, std::vector<TextPlace>& all) {
    const QString main = QStringLiteral("BlockMain");
    AddText(theme, all, {main, QStringLiteral("BlockMainInsertCoin")}, false, {QStringLiteral("88")});
    AddText(theme, all, {main, QStringLiteral("BlockMainRemain")}, false, {QStringLiteral("88:88")});
    AddText(
        theme, all, {main, QStringLiteral("BlockMainInfosZoneLigne1")}, false,
        {QStringLiteral("ADD TO PLAYLIST"), QStringLiteral("NOW PLAYING"), QStringLiteral("COMING NEXT")});
    AddText(theme, all, {main, QStringLiteral("BlockMainInfosZoneLigne2")}, false,
            {QStringLiteral("SAVE CURRENT PLAYLIST"), QStringLiteral("PLAY PREVIEW TRACK"),
             QStringLiteral("MOVE TRACK BEFORE")});
    for (const char* name : {"Title", "Texte"}) {
        AddText(theme, all, {QStringLiteral("keyboard"), QString::fromLatin1(name)}, false, {});
    }
}

// Texts of the queue begin 5 pixels from the left, and each has half a row.
void AddQueueTexts(const CheckedTheme& theme, std::vector<TextPlace>& all, bool isSelected) {
    const ThemePlace list{QStringLiteral("BlockPlaylist"), QStringLiteral("BlockPlaylistPlaylist")};
    const int height = PictureOf(theme, QStringLiteral("playlist_playlisthilight.png")).height();
    const auto box = BoxAt(theme, list);
    if (box && height > 0) {
        all.push_back({list, QRect(5, 0, box->width() - 5, height / 2), list, isSelected, {}});
    }
}

std::vector<TextPlace> AllTexts(CheckedTheme& theme) {
    std::vector<TextPlace> all;
    AddBlockTexts(theme, all);
    for (const bool isSelected : {false, true}) {
        AddSlotTexts(theme, all, isSelected);
        AddQueueTexts(theme, all, isSelected);
        AddMenuTexts(theme, all, isSelected);
        AddText(theme, all, {QStringLiteral("keyboard"), QStringLiteral("BtnTexte")}, isSelected,
                {QStringLiteral("SAVE")});
    }
    return all;
}

ThemePlace SizeKey(const TextPlace& text) {
    return {text.style.section, text.style.prefix + QStringLiteral("FontSize") +
                                    (text.isSelected ? QStringLiteral("Hilight") : QString())};
}

void CheckWidth(CheckedTheme& theme, const TextPlace& text, const ThemeStyle& style) {
    const int dots = WidthOf(style, kDots);
    if (text.box.width() < dots) {
        TellKey(theme, Level::kError, {text.place.section, text.place.prefix + u'W'},
                QStringLiteral(
                    "the rectangle is %1 wide, but three dots in [%2] %3 need %4: a text that does not "
                    "fit ends the jukebox.")
                    .arg(text.box.width())
                    .arg(SizeKey(text).section, SizeKey(text).prefix)
                    .arg(dots),
                QStringLiteral("Make it wider, or the font smaller."));
        return;
    }
    const QString* widest = nullptr;
    int width = text.box.width();
    for (const QString& each : text.texts) {
        if (WidthOf(style, each) > width) {
            width = WidthOf(style, each);
            widest = &each;
        }
    }
    if (widest != nullptr) {
        TellKey(
            theme, Level::kWarning, {text.place.section, text.place.prefix + u'W'},
            QStringLiteral("\"%1\" is %2 wide in [%3] %4, but the rectangle is %5, so the text is shortened "
                           "with dots.")
                .arg(*widest)
                .arg(width)
                .arg(SizeKey(text).section, SizeKey(text).prefix)
                .arg(text.box.width()),
            QStringLiteral("Make it wider, or the font smaller."));
    }
}

void CheckHeight(CheckedTheme& theme, const TextPlace& text, const ThemeStyle& style) {
    if (text.box.height() < CapitalHeight(style)) {
        TellKey(
            theme, Level::kWarning, {text.place.section, text.place.prefix + u'H'},
            QStringLiteral("the rectangle is %1 high, but capitals in [%2] %3 are %4, and text that is too "
                           "high is not cut.")
                .arg(text.box.height())
                .arg(SizeKey(text).section, SizeKey(text).prefix)
                .arg(std::lround(CapitalHeight(style))),
            QStringLiteral("Make it higher, or the font smaller."));
    }
}

// Title and artist in three lines have to fit into the slot.
void CheckThreeLines(CheckedTheme& theme, const SlotNumber& slot, bool isSelected) {
    const QString zone = QStringLiteral("zonelist");
    const auto whole = BoxAt(theme, SlotPart(slot, "Hilight"));
    const auto box = BoxAt(theme, SlotPart(slot, "Titre"));
    const auto title = StyleAt(theme, {zone, QStringLiteral("ZoneListPisteTitreTitre")}, isSelected);
    const auto artist = StyleAt(theme, {zone, QStringLiteral("ZoneListPisteTitreInterprete")}, isSelected);
    if (!whole || !box || !title || !artist) {
        return;
    }
    const double middle = box->y() + box->height() / 2.0;
    const double step = title->points + 2;
    const double top = middle - step - CapitalHeight(*title) / 2;
    const double bottom = middle + step + CapitalHeight(*artist) / 2;
    if (top < whole->y() || bottom > whole->y() + whole->height()) {
        TellKey(theme, Level::kWarning, SlotPart(slot, "TitreY"),
                QStringLiteral("a title of two lines and its artist%1 do not fit into the slot.")
                    .arg(isSelected ? QStringLiteral(", when selected,") : QString()),
                QStringLiteral("Make the slot higher, or ZoneListPisteTitreTitreFontSize smaller."));
    }
}

void CheckSize(CheckedTheme& theme, const TextPlace& text, const ThemeStyle& style, QSet<QString>& told) {
    const ThemePlace key = SizeKey(text);
    if (style.points <= 0 && !told.contains(key.section + key.prefix)) {
        told.insert(key.section + key.prefix);
        TellKey(theme, Level::kWarning, key,
                QStringLiteral("the size %1 makes the text invisible.").arg(style.points),
                QStringLiteral("Write points; 24 points are 32 pixels."));
    }
}

// The keys that name each font.
QHash<QString, QList<ThemePlace>> FontKeys(const CheckedTheme& theme, const std::vector<TextPlace>& texts) {
    QHash<QString, QList<ThemePlace>> fonts;
    QSet<QString> seen;
    for (const TextPlace& text : texts) {
        const ThemePlace key{text.style.section,
                             text.style.prefix + QStringLiteral("Font") +
                                 (text.isSelected ? QStringLiteral("Hilight") : QString())};
        const QString name = TextOf(theme, key.section, key.prefix);
        if (!name.isEmpty() && !seen.contains(key.section + key.prefix)) {
            seen.insert(key.section + key.prefix);
            fonts[name] += key;
        }
    }
    return fonts;
}

// Returns the family that is drawn for a name. When several fonts have the same family, the toolkit adds the
// maker of each in brackets.
QString FamilyOf(const QFontInfo& found) {
    const QString family = found.family();
    return family.endsWith(u']') ? family.section(QStringLiteral(" ["), 0, 0) : family;
}

// Whether the system has a font of this name: a family, or a family with the name of its weight.
bool HasFont(const QString& name) {
    const QFontInfo found{QFont(name)};
    const QString style = FamilyOf(found) + u' ' + found.styleName();
    return name.compare(FamilyOf(found), Qt::CaseInsensitive) == 0 ||
           name.compare(style, Qt::CaseInsensitive) == 0;
}

QString MissingLetters(const QString& font, const QString& letters) {
    const QRawFont raw = QRawFont::fromFont(QFont(font));
    QString missing;
    for (const QChar letter : letters) {
        if (raw.isValid() && !raw.supportsCharacter(letter)) {
            missing += letter;
        }
    }
    return missing;
}

void CheckLetters(CheckedTheme& theme, const QString& font, const ThemePlace& key) {
    const QString plain =
        MissingLetters(font, QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789.,:-'()&!?_/"));
    const QString accented = MissingLetters(font, QStringLiteral("ÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÑÒÓÔÕÖØÙÚÛÜÝŒ"));
    if (!plain.isEmpty()) {
        TellKey(
            theme, Level::kWarning, key,
            QStringLiteral("the font \"%1\" lacks \"%2\", which are drawn in another font.").arg(font, plain),
            QStringLiteral("Choose a font that has all capitals, digits and signs."));
    }
    if (!accented.isEmpty()) {
        TellKey(theme, Level::kNote, key,
                QStringLiteral("the font \"%1\" lacks \"%2\"; titles with them are drawn in another font.")
                    .arg(font, accented),
                QStringLiteral("Choose a font that has them if your music needs them."));
    }
}

} // namespace

void InstallFonts(CheckedTheme& theme) {
    const FilePattern fonts(QStringLiteral("*.ttf"));
    const auto entries = theme.form.files.ListFolder(theme.folder).value_or(std::vector<FolderEntry>());
    for (const FolderEntry& entry : entries) {
        if (!entry.isFolder && fonts.Matches(entry.name) &&
            theme.form.fonts.AddFontResource(PathIn(theme.folder, entry.name)) == 0) {
            TellFile(
                theme, Level::kWarning, entry.name,
                QStringLiteral("The font cannot be installed, and the jukebox shows a message about it at "
                               "each start."),
                QStringLiteral("Replace it by a TrueType font that other programs can show."));
        }
    }
}

void CheckFonts(CheckedTheme& theme) {
    const QHash<QString, QList<ThemePlace>> fonts = FontKeys(theme, AllTexts(theme));
    for (auto font = fonts.cbegin(); font != fonts.cend(); ++font) {
        if (HasFont(font.key())) {
            CheckLetters(theme, font.key(), font->front());
            continue;
        }
        for (const ThemePlace& key : *font) {
            TellKey(
                theme, Level::kWarning, key,
                QStringLiteral("the font \"%1\" is neither in the theme nor on this system; \"%2\" is drawn "
                               "instead.")
                    .arg(font.key(), FamilyOf(QFontInfo(QFont(font.key())))),
                QStringLiteral("Put its .ttf file into the theme's folder, or name another font."));
        }
    }
}

void CheckTexts(CheckedTheme& theme) {
    QSet<QString> told;
    for (const TextPlace& text : AllTexts(theme)) {
        const auto style = StyleAt(theme, text.style, text.isSelected);
        if (!style) {
            continue;
        }
        CheckSize(theme, text, *style, told);
        if (style->points > 0) {
            CheckWidth(theme, text, *style);
            CheckHeight(theme, text, *style);
        }
    }
    for (const SlotNumber& slot : ShownSlots(theme)) {
        CheckThreeLines(theme, slot, false);
        CheckThreeLines(theme, slot, true);
    }
}

// Reading every value of theme.ini with the jukebox's reader, and reporting all faults instead of the first.
#include "app/workshop/key_check.h"

#include "app/workshop/checked_theme.h"
#include "app/workshop/theme_key_list.h"
#include "core/path_text.h"
#include "core/run_time_error.h"
#include "rendering/text.h"
#include "settings/text_encoding.h"
#include "state/keyboard_state.h"
#include "state/paths.h"
#include "theme/theme_reader.h"

#include <QRegularExpression>
#include <QSet>
#include <QStringList>

namespace {

const QString kName = QStringLiteral("theme.ini");
const QString kBoard = QStringLiteral("keyboard");
constexpr std::int64_t kLongestFile = std::int64_t{16} * 1024 * 1024;

// The names of the sections of a file, in folded case.
using Sections = QSet<QString>;

Sections SectionsOf(const IniFile& ini) {
    Sections sections;
    for (const IniLine& line : ini.Lines()) {
        sections.insert(line.section.toCaseFolded());
    }
    return sections;
}

QString ReasonOf(const RunTimeError& error, const QString& value) {
    if (value.isEmpty()) {
        return QStringLiteral("the key is missing or empty, and the jukebox stops where it reads it.");
    }
    if (error.number == kOverflow) {
        return QStringLiteral("\"%1\" is outside -32768 to 32767, and the jukebox stops where it reads it.")
            .arg(value);
    }
    return QStringLiteral("\"%1\" is not a whole number, and the jukebox stops where it reads it.")
        .arg(value);
}

// A number with decimals or an exponent is read, but hardly as it was meant.
void CheckSpelling(CheckedTheme& theme, const ThemePlace& place, const QString& value, int number) {
    static const QRegularExpression plain(QStringLiteral("\\A[+-]?[0-9]+\\z"));
    if (!plain.match(value).hasMatch()) {
        TellKey(theme, Level::kWarning, place,
                QStringLiteral("\"%1\" is read as %2.").arg(value, QString::number(number)),
                QStringLiteral("Write a whole number."));
    }
}

void ReadNumber(CheckedTheme& theme, const ThemeReader& reader, const QString& section, const QString& key) {
    const QByteArray name = key.toLatin1();
    const QString value = reader.Text(section, name.constData());
    try {
        const int number = reader.Integer(section, name.constData()).value();
        theme.numbers.insert(NameOfKey(section, key), number);
        CheckSpelling(theme, {section, key}, value, number);
    } catch (const RunTimeError& error) {
        TellKey(theme, Level::kError, {section, key}, ReasonOf(error, value),
                QStringLiteral("Write a whole number from -32768 to 32767."));
    }
}

void CheckColour(CheckedTheme& theme, const ThemePlace& place, const QString& value) {
    try {
        ColourOf(value);
    } catch (const RunTimeError&) {
        TellKey(theme, Level::kError, place,
                QStringLiteral("\"%1\" is not a colour, and the jukebox ends when it first draws this text.")
                    .arg(value),
                QStringLiteral("Write red,green,blue, each from 0 to 255, like 255,210,60."));
        return;
    }
    const QStringList parts = value.split(u',');
    bool isPlain = parts.size() == 3;
    for (const QString& part : parts) {
        bool isNumber = false;
        isPlain = isPlain && part.trimmed().toUInt(&isNumber) <= 255 && isNumber;
    }
    if (!isPlain) {
        TellKey(theme, Level::kWarning, place,
                QStringLiteral("\"%1\" is more than three numbers from 0 to 255; the jukebox uses the first "
                               "three, limited to 255.")
                    .arg(value),
                QStringLiteral("Write red,green,blue, each from 0 to 255."));
    }
}

void CheckSlotKeys(CheckedTheme& theme, const ThemePlace& place, const QString& value) {
    static const QRegularExpression codes(QStringLiteral("\\A([0-9]+(\\|[0-9]+)*)?\\z"));
    if (!codes.match(value).hasMatch()) {
        TellKey(
            theme, Level::kWarning, place,
            QStringLiteral("\"%1\" is not a list of key codes, so typing never picks this slot.").arg(value),
            QStringLiteral("Write key codes joined by \"|\", like 33|49, or leave it empty."));
    }
}

void ReadText(CheckedTheme& theme, const ThemeReader& reader, const QString& section, const QString& key) {
    const QString value = reader.Text(section, key.toLatin1().constData());
    theme.texts.insert(NameOfKey(section, key), value);
    if (key.contains(QStringLiteral("FontColor"))) {
        CheckColour(theme, {section, key}, value);
    } else if (key.contains(QStringLiteral("Font"))) {
        if (value.isEmpty()) {
            TellKey(theme, Level::kWarning, {section, key},
                    QStringLiteral("there is no font name, so the system chooses a font."),
                    QStringLiteral("Write the name of a font, such as that of another key."));
        }
    } else if (key.endsWith(QStringLiteral("Keys"))) {
        CheckSlotKeys(theme, {section, key}, value);
    }
}

void ReadKey(CheckedTheme& theme, const ThemeReader& reader, const ThemeKey& key) {
    key.isNumber ? ReadNumber(theme, reader, key.section, key.key)
                 : ReadText(theme, reader, key.section, key.key);
}

void ReadFixedKeys(CheckedTheme& theme, const ThemeReader& reader, const Sections& sections) {
    QString missing;
    for (const ThemeKey& key : ThemeKeys()) {
        if (sections.contains(key.section.toCaseFolded())) {
            ReadKey(theme, reader, key);
        } else if (missing != key.section) {
            missing = key.section;
            const bool isSpelled =
                missing == u"horitontal" && sections.contains(QStringLiteral("horizontal"));
            TellKey(
                theme, Level::kError, {key.section, QString()},
                QStringLiteral("the section is missing, and the jukebox stops at its key %1.").arg(key.key),
                isSpelled ? QStringLiteral("Rename the section \"horizontal\" to \"horitontal\".")
                          : QStringLiteral("Copy the section from a theme that works."));
        }
    }
}

// Returns the count that a key holds; 0 when it cannot be used.
int ReadCount(CheckedTheme& theme, const QString& key) {
    const int count = NumberOf(theme, kBoard, key).value_or(0);
    if (count > kMostBoardKeys) {
        TellKey(theme, Level::kError, {kBoard, key},
                QStringLiteral("%1 is more than 100, and the keyboard does not open.").arg(count),
                QStringLiteral("Write how many there are in keyboard.png."));
        return 0;
    }
    return count;
}

#define READ_FIELD(field) ReadNumber(theme, reader, kBoard, BoardKeyName(#field, line, column));

void ReadBoard(CheckedTheme& theme, const ThemeReader& reader) {
    const int lines = ReadCount(theme, QStringLiteral("KeyNbLines"));
    for (int line = 1; line <= lines; ++line) {
        const QString count = QStringLiteral("KeyNbCols%1").arg(line);
        ReadNumber(theme, reader, kBoard, count);
        const int columns = ReadCount(theme, count);
        for (int column = 1; column <= columns; ++column) {
            KEYBOARD_TABLES(READ_FIELD)
        }
    }
}

#undef READ_FIELD

// The sections in which a key is read, in the file's spelling, by its folded name.
QHash<QString, QStringList> PlacesOfKeys() {
    QHash<QString, QStringList> places;
    for (const ThemeKey& key : ThemeKeys()) {
        places[key.key.toCaseFolded()] += key.section;
    }
    return places;
}

void TellUnknownKey(CheckedTheme& theme, const IniLine& line) {
    static const QHash<QString, QStringList> places = PlacesOfKeys();
    const QStringList home = places.value(line.key.toCaseFolded());
    const QString where = QStringLiteral("line %1: ").arg(line.number);
    if (home.isEmpty()) {
        TellKey(theme, Level::kNote, {line.section, line.key},
                where + QStringLiteral("nothing reads this key."),
                QStringLiteral("Correct its name, or remove the line."));
    } else {
        TellKey(theme, Level::kWarning, {line.section, line.key},
                where + QStringLiteral("the key is in the wrong section, where nothing reads it."),
                QStringLiteral("Move it to [%1].").arg(home.front()));
    }
}

bool IsRead(const CheckedTheme& theme, const IniLine& line) {
    const QString name = NameOfKey(line.section, line.key);
    static const QSet<QString> fixed = [] {
        QSet<QString> names;
        for (const ThemeKey& key : ThemeKeys()) {
            names.insert(NameOfKey(key.section, key.key));
        }
        return names;
    }();
    return fixed.contains(name) || theme.numbers.contains(name);
}

// A key of the keyboard whose value is invalid was read too.
bool IsBoardField(const IniLine& line) {
    static const QRegularExpression field(
        QStringLiteral("\\AKey(NbCols[0-9]+|(X|Y|W|H|Key)[0-9]+-[0-9]+)\\z"),
        QRegularExpression::CaseInsensitiveOption);
    return line.section.compare(kBoard, Qt::CaseInsensitive) == 0 && field.match(line.key).hasMatch();
}

void CheckKeyLine(CheckedTheme& theme, const IniLine& line, QSet<QString>& seen) {
    const QString name = NameOfKey(line.section, line.key);
    if (seen.contains(name)) {
        TellKey(theme, Level::kWarning, {line.section, line.key},
                QStringLiteral("line %1: the key occurs twice, and the jukebox ignores this one.")
                    .arg(line.number),
                QStringLiteral("Remove one of the two lines."));
    } else if (line.section.isEmpty()) {
        TellKey(theme, Level::kWarning, {line.section, line.key},
                QStringLiteral("line %1: the key is above the first section, where nothing reads it.")
                    .arg(line.number),
                QStringLiteral("Move it below the section that it belongs to."));
    } else if (!IsRead(theme, line)) {
        if (!IsBoardField(line)) {
            TellUnknownKey(theme, line);
        } else if (theme.ini.Value(line.section, line.key).toInt() != 0) {
            TellKey(theme, Level::kNote, {line.section, line.key},
                    QStringLiteral("line %1: the keyboard has fewer lines or columns.").arg(line.number),
                    QStringLiteral("Correct KeyNbLines and KeyNbCols, or remove the line."));
        }
    }
    seen.insert(name);
}

bool IsKnownSection(const QString& section) {
    static const QSet<QString> known = [] {
        QSet<QString> names;
        for (const ThemeKey& key : ThemeKeys()) {
            names.insert(key.section.toCaseFolded());
        }
        return names;
    }();
    return known.contains(section.toCaseFolded());
}

// Returns false when the keys of the section need no findings of their own.
bool CheckSectionLine(CheckedTheme& theme, const IniLine& line, QSet<QString>& seen) {
    const QString name = line.section.toCaseFolded();
    if (seen.contains(name)) {
        TellKey(theme, Level::kWarning, {line.section, QString()},
                QStringLiteral("line %1: the section occurs twice, and the jukebox ignores this one.")
                    .arg(line.number),
                QStringLiteral("Move its keys to the first one."));
        return false;
    }
    seen.insert(name);
    if (!IsKnownSection(line.section)) {
        const bool isHorizontal = name == u"horizontal";
        TellKey(theme, Level::kWarning, {line.section, QString()},
                QStringLiteral("line %1: nothing reads this section.").arg(line.number),
                isHorizontal ? QStringLiteral("The jukebox reads [horitontal]: rename the section.")
                             : QStringLiteral("Correct its name, or remove it."));
        return false;
    }
    return true;
}

void CheckLines(CheckedTheme& theme) {
    QSet<QString> sections;
    QSet<QString> keys;
    bool isCurrent = true;
    for (const IniLine& line : theme.ini.Lines()) {
        if (line.kind == IniLine::kSection) {
            isCurrent = CheckSectionLine(theme, line, sections);
        } else if (line.kind == IniLine::kIgnored) {
            TellKey(
                theme, Level::kWarning, {line.section, line.value.trimmed().left(40)},
                QStringLiteral("line %1: the line is neither a section, a key nor a comment, and is ignored.")
                    .arg(line.number),
                QStringLiteral("Put \";\" in front of a comment and \"=\" between a key and its value."));
        } else if (isCurrent) {
            CheckKeyLine(theme, line, keys);
        }
    }
}

bool IsUtf16(const QByteArray& bytes) {
    return bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF");
}

void CheckEncoding(CheckedTheme& theme, const QByteArray& bytes) {
    const QString name = NameOfPath(theme.file);
    if (HasByteOrderMark(bytes)) {
        TellFile(theme, Level::kNote, name,
                 QStringLiteral("The file begins with a byte order mark, which the jukebox skips."),
                 QStringLiteral("Save it as UTF-8 without a byte order mark."));
    }
    if (EncodingOf(bytes) == TextEncoding::kWindows1252) {
        TellFile(theme, Level::kNote, name,
                 QStringLiteral("The file is not UTF-8; the jukebox reads it as Windows-1252."),
                 QStringLiteral("Save it as UTF-8 if a letter with an accent comes out wrong."));
    }
}

} // namespace

bool OpenThemeFile(CheckedTheme& theme) {
    Files& files = theme.form.files;
    theme.file = FileIn(files, theme.folder, kName);
    const std::optional<QByteArray> bytes = files.ReadWhole(theme.file, kLongestFile);
    if (!bytes) {
        const bool isThere = FileExists(files, theme.file);
        TellFile(theme, Level::kError, kName,
                 isThere ? QStringLiteral("The file cannot be read, or it is longer than 16 MiB.")
                         : QStringLiteral("There is no file theme.ini, so this is not a theme."),
                 isThere ? QStringLiteral("Check its size and its access rights.")
                         : QStringLiteral("Copy a theme that works, and change the copy."));
        return false;
    }
    if (IsUtf16(*bytes)) {
        TellFile(theme, Level::kError, NameOfPath(theme.file),
                 QStringLiteral("The file is UTF-16, in which the jukebox finds no key."),
                 QStringLiteral("Save it as UTF-8."));
        return false;
    }
    CheckEncoding(theme, *bytes);
    theme.ini = IniFile(*bytes);
    return true;
}

void CheckKeys(CheckedTheme& theme) {
    const ThemeReader reader(theme.form, theme.folder);
    const Sections sections = SectionsOf(theme.ini);
    ReadFixedKeys(theme, reader, sections);
    ReadBoard(theme, reader);
    CheckLines(theme);
}

// A theme while it is checked: its values and pictures as the jukebox reads them, and what has been found.
#pragma once

#include "app/findings/finding.h"
#include "platform/simulated/simulated_platform.h"
#include "settings/ini_file.h"
#include "shell/hand_down.h"
#include "state/form_main.h"

#include <QHash>
#include <QImage>
#include <QRect>
#include <QTemporaryDir>

#include <map>
#include <optional>
#include <vector>

// The look of a text.
struct ThemeStyle {
    QString font;
    int points = 0;
    QRgb colour = 0;
};

// Where the keys of an element are: they begin with `prefix`.
struct ThemePlace {
    QString section;
    QString prefix;
};

// The names of the keys of a rectangle end with these.
struct BoxEndings {
    const char* x = "X";
    const char* y = "Y";
    const char* width = "W";
    const char* height = "H";
};
inline constexpr BoxEndings kLongEndings = {"X", "Y", "Width", "Height"};
inline constexpr BoxEndings kNavigationEndings = {"x", "Y", "Width", "Height"};

struct CheckedTheme {
    explicit CheckedTheme(QString themeFolder)
        : folder(std::move(themeFolder)), form(platform.ports(), HandDown()) {
        form.shell.AppFolder = scratch.path();
    }

    QString folder;
    // The application folder, for the log.
    QTemporaryDir scratch;
    SimulatedPlatform platform;
    Form_Main form;

    // The file theme.ini as it is spelled on disk, and its parsed content.
    QString file;
    IniFile ini;
    // The numbers that can be read, and all texts, by NameOfKey.
    QHash<QString, int> numbers;
    QHash<QString, QString> texts;
    // The pictures that can be read, premultiplied, by name.
    std::map<QString, QImage> pictures;

    std::vector<Finding> findings;
};

// The name of a key in the tables of values.
QString NameOfKey(const QString& section, const QString& key);

// Add a finding about theme.ini, or about a file of the theme's folder. The text about theme.ini begins with
// the place in brackets.
void TellKey(CheckedTheme& theme, Level level, const ThemePlace& place, const QString& text,
             const QString& advice);
void TellFile(CheckedTheme& theme, Level level, const QString& name, const QString& text,
              const QString& advice);

// Values; nothing when a key of them cannot be read, which the check of the keys has reported.
std::optional<int> NumberOf(const CheckedTheme& theme, const QString& section, const QString& key);
QString TextOf(const CheckedTheme& theme, const QString& section, const QString& key);
std::optional<QRect> BoxAt(const CheckedTheme& theme, const ThemePlace& place,
                           const BoxEndings& endings = {});
std::optional<ThemeStyle> StyleAt(const CheckedTheme& theme, const ThemePlace& place, bool isSelected);

// The height of a capital in pixels, in the font that is drawn for the style.
double CapitalHeight(const ThemeStyle& style);

// Returns the picture of that name; a null picture when it cannot be read.
QImage PictureOf(const CheckedTheme& theme, const QString& name);

// A slot of the track zone that the theme shows. Columns and rows count from 1.
struct SlotNumber {
    int column = 1;
    int row = 1;
};
std::vector<SlotNumber> ShownSlots(const CheckedTheme& theme);
ThemePlace SlotPart(const SlotNumber& slot, const char* part);

// A key of the on-screen keyboard.
struct BoardKey {
    int line = 1;
    int column = 1;
    QRect box;
    int code = 0;
};
// The most lines, and the most columns of a line, with which the keyboard opens.
inline constexpr int kMostBoardKeys = 100;
std::vector<BoardKey> BoardKeys(const CheckedTheme& theme);
// The name of a field of a key, like "KeyX2-5".
QString BoardKeyName(const char* field, int line, int column);

// "left,top width x height", for messages.
QString WordsOfBox(const QRect& box);

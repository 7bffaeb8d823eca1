// Finding the keys of the theme that define a text style.
#include "theme/style_places.h"

#include "state/form_main.h"
#include "state/paths.h"

#include <QLatin1StringView>
#include <QStringList>

#include <array>

namespace {

// A text key of theme.ini and its value in the theme record.
struct TextKey {
    const char* section;
    const char* key;
    QString (*value)(const Form_Main& form);
};

#define NO_NUMBER(section, key, member, part)
#define THEME_TEXT(section, key, member, part)                                                               \
    TextKey{section, key, [](const Form_Main& form) { return form.theme.member part; }},
#define KEYBOARD_TEXT(section, key, member, part)                                                            \
    TextKey{section, key, [](const Form_Main& form) { return form.keyboard.member part; }},
#define THEME_ROW(kind, section, name) KEYS_OF_##kind(NO_NUMBER, THEME_TEXT, section, name)
#define KEYBOARD_ROW(kind, name) KEYS_OF_##kind(NO_NUMBER, KEYBOARD_TEXT, "keyboard", name)

constexpr std::array kTextKeys = {THEME_PLAYLIST_KEYS(THEME_ROW)   //
                                  THEME_MAIN_KEYS(THEME_ROW)       //
                                  THEME_SLOT_STYLE_KEYS(THEME_ROW) //
                                  THEME_COMMAND_KEYS(THEME_ROW)    //
                                  KEYBOARD_KEYS(KEYBOARD_ROW)};

#undef NO_NUMBER
#undef THEME_TEXT
#undef KEYBOARD_TEXT
#undef THEME_ROW
#undef KEYBOARD_ROW

// Returns the font that belongs to a colour key: "...FontHilight" for "...FontColorHilight".
QString FontBeside(const Form_Main& form, const TextKey& colour) {
    const QString key = QString::fromLatin1(colour.key).remove(QStringLiteral("Color"));
    for (const TextKey& text : kTextKeys) {
        if (key == QLatin1StringView(text.key)) {
            return text.value(form);
        }
    }
    return QString();
}

// The keyboard's keys have no values before the keyboard is first opened.
bool IsColour(const Form_Main& form, const TextKey& text) {
    const bool isRead =
        QLatin1StringView(text.section) != QLatin1StringView("keyboard") || form.keyboard.KeyNbLines > 0;
    return isRead && QLatin1StringView(text.key).contains(QLatin1StringView("FontColor"));
}

} // namespace

QString PlacesOfColour(Form_Main& form, const QString& font, const QString& colour) {
    QStringList keys;
    for (const TextKey& text : kTextKeys) {
        if (IsColour(form, text) && text.value(form) == colour && FontBeside(form, text) == font) {
            keys +=
                QStringLiteral("[%1] %2").arg(QLatin1StringView(text.section), QLatin1StringView(text.key));
        }
    }
    const QString file = ThemeFile(form, QStringLiteral("theme.ini"));
    return keys.isEmpty() ? file : file + QStringLiteral(", ") + keys.join(QStringLiteral(" or "));
}

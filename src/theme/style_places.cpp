// Looking up which keys of the theme hold a text style.
#include "theme/style_places.h"

#include "shell/form_main.h"
#include "theme/load_theme.h"

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

#define NO_INTEGER(section, key)
#define NO_PAGE(section, key, array, index)
#define TEXT_KEY(section, key) TextKey{section, #key, [](const Form_Main& form) { return form.key; }},
#define NO_KEYBOARD_INTEGER(key)
#define KEYBOARD_TEXT_KEY(key) TEXT_KEY("keyboard", key)

constexpr std::array kTextKeys = {THEME_PLAYLIST_KEYS(NO_INTEGER, TEXT_KEY, NO_PAGE)   //
                                  THEME_MAIN_KEYS(NO_INTEGER, TEXT_KEY, NO_PAGE)       //
                                  THEME_SLOT_STYLE_KEYS(NO_INTEGER, TEXT_KEY, NO_PAGE) //
                                  THEME_COMMAND_KEYS(NO_INTEGER, TEXT_KEY, NO_PAGE)    //
                                  KEYBOARD_KEYS(NO_KEYBOARD_INTEGER, KEYBOARD_TEXT_KEY)};

#undef NO_INTEGER
#undef NO_PAGE
#undef TEXT_KEY
#undef NO_KEYBOARD_INTEGER
#undef KEYBOARD_TEXT_KEY

// The value of the font that belongs to a colour: "...FontColorHilight" goes with "...FontHilight".
QString FontBeside(const Form_Main& form, const TextKey& colour) {
    const QString key = QString::fromLatin1(colour.key).remove(QStringLiteral("Color"));
    for (const TextKey& text : kTextKeys) {
        if (key == QLatin1StringView(text.key)) {
            return text.value(form);
        }
    }
    return QString();
}

// The keys of the keyboard have no value before it is opened for the first time.
bool IsColour(const Form_Main& form, const TextKey& text) {
    const bool isRead =
        QLatin1StringView(text.section) != QLatin1StringView("keyboard") || form.KeyNbLines > 0;
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

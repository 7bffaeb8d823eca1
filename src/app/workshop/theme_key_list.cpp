// The list of the keys of theme.ini, made from the tables that the readers use.
#include "app/workshop/theme_key_list.h"

#include "state/keyboard_state.h"
#include "state/theme_keys.h"

namespace {

using Keys = std::vector<ThemeKey>;

#define NUMBER(section, key, member, part)                                                                   \
    keys.push_back({QString::fromLatin1(section), QString::fromLatin1(key), true});
#define TEXT(section, key, member, part)                                                                     \
    keys.push_back({QString::fromLatin1(section), QString::fromLatin1(key), false});
#define ROW(kind, section, name) KEYS_OF_##kind(NUMBER, TEXT, section, name)

void AddRecord(Keys& keys) {
    THEME_ZONE_KEYS(ROW)
    THEME_HORIZONTAL_KEYS(ROW)
    THEME_VERTICAL_KEYS(ROW)
    THEME_NAVIGATION_KEYS(ROW)
    THEME_PLAYLIST_KEYS(ROW)
    THEME_MAIN_KEYS(ROW)
    THEME_PLAYLIST_BUTTON_KEYS(ROW)
    THEME_SLOT_STYLE_KEYS(ROW)
    THEME_COMMAND_KEYS(ROW)
}

#define SLOT_ROW(kind, name) KEYS_OF_##kind(NUMBER, TEXT, slot.constData(), name)

void AddSlots(Keys& keys) {
    for (int column = 1; column <= 2; ++column) {
        for (int row = 1; row <= kSlotRows; ++row) {
            const QByteArray slot = SlotSection(column, row).toLatin1();
            SLOT_KEYS(SLOT_ROW)
        }
    }
}

#define KEYBOARD_ROW(kind, name) KEYS_OF_##kind(NUMBER, TEXT, "keyboard", name)

void AddKeyboard(Keys& keys) {
    KEYBOARD_KEYS(KEYBOARD_ROW)
}

} // namespace

const std::vector<ThemeKey>& ThemeKeys() {
    static const Keys all = [] {
        Keys keys;
        AddRecord(keys);
        AddSlots(keys);
        AddKeyboard(keys);
        return keys;
    }();
    return all;
}

QString SlotSection(int column, int row) {
    return (column == 1 ? QStringLiteral("zonelistGauche") : QStringLiteral("zonelistDroite")) +
           QString::number(row);
}

// Reading theme.ini into the theme record and the slots.
#include "theme/read_theme.h"

#include "core/run_time_error.h"
#include "state/form_main.h"
#include "state/log.h"
#include "theme/theme_reader.h"

namespace {

#define READ_NUMBER(section, key, member, part)                                                              \
    form.theme.member part = reader.Integer(QStringLiteral(section), key);
#define READ_TEXT(section, key, member, part)                                                                \
    form.theme.member part = reader.Text(QStringLiteral(section), key);
#define READ(kind, section, name) KEYS_OF_##kind(READ_NUMBER, READ_TEXT, section, name)

#define ONE(section, key, member, part) +1
#define COUNT(kind, section, name) KEYS_OF_##kind(ONE, ONE, section, name)
static_assert(THEME_ZONE_KEYS(COUNT) THEME_HORIZONTAL_KEYS(COUNT) THEME_VERTICAL_KEYS(COUNT)
                  THEME_NAVIGATION_KEYS(COUNT) THEME_PLAYLIST_KEYS(COUNT) THEME_MAIN_KEYS(COUNT)
                      THEME_PLAYLIST_BUTTON_KEYS(COUNT) THEME_SLOT_STYLE_KEYS(COUNT)
                          THEME_COMMAND_KEYS(COUNT) == 171);
#undef COUNT

void ReadBlockOrigins(Form_Main& form, const ThemeReader& reader) {
    if (form.settings.Orientation == u"horizontal") {
        WriteLog(form, QStringLiteral(" : Mode Horizontal"));
        THEME_HORIZONTAL_KEYS(READ)
    } else {
        WriteLog(form, QStringLiteral(" : Mode Vertical"));
        THEME_VERTICAL_KEYS(READ)
    }
}

constexpr int kRowsInFile = 10;

#define READ_SLOT_NUMBER(section, key, member, part)                                                         \
    form.slots.member(column, row) part = reader.Integer(section, key);
#define READ_SLOT_TEXT(section, key, member, part)                                                           \
    form.slots.member(column, row) part = reader.Text(section, key);
#define READ_SLOT(kind, name) KEYS_OF_##kind(READ_SLOT_NUMBER, READ_SLOT_TEXT, section, name)

#define COUNT(kind, name) KEYS_OF_##kind(ONE, ONE, "", name)
static_assert(SLOT_KEYS(COUNT) == 22);
#undef COUNT
#undef ONE

// Slots have no default values here: a missing number raises 13, a missing text is empty.
void ReadSlot(Form_Main& form, const ThemeReader& reader, const QString& section, int column, int row) {
    SLOT_KEYS(READ_SLOT)
}

#undef READ_SLOT_NUMBER
#undef READ_SLOT_TEXT
#undef READ_SLOT

void ReadSlots(Form_Main& form) {
    WriteLog(form, QStringLiteral(" : LoadThemePositionPistes"));
    const ThemeReader reader(form);
    const QString bases[] = {QStringLiteral("zonelistGauche"), QStringLiteral("zonelistDroite")};
    for (int column = 1; column <= 2; ++column) {
        for (int row = 1; row <= kRowsInFile; ++row) {
            ReadSlot(form, reader, bases[column - 1] + QString::number(row), column, row);
        }
    }
}

} // namespace

void ReadThemeRecord(Form_Main& form) {
    const ThemeReader reader(form);
    THEME_ZONE_KEYS(READ)
    ReadBlockOrigins(form, reader);
    THEME_NAVIGATION_KEYS(READ)
    THEME_PLAYLIST_KEYS(READ)
    THEME_MAIN_KEYS(READ)
    THEME_PLAYLIST_BUTTON_KEYS(READ)
    THEME_SLOT_STYLE_KEYS(READ)
    THEME_COMMAND_KEYS(READ)
}

#undef READ_NUMBER
#undef READ_TEXT
#undef READ

void LoadThemePositionPistes(Form_Main& form) {
    EndsProgram("LoadThemePositionPistes", [&] { ReadSlots(form); });
}

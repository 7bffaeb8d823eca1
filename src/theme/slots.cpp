// Reading the slots of both pages.
#include "core/run_time_error.h"
#include "shell/form_main.h"
#include "shell/log.h"
#include "theme/load_theme.h"
#include "theme/theme_reader.h"

namespace {

constexpr int kRowsInFile = 10;

#define READ_SLOT_INTEGER(field) form.field(column, row) = reader.Integer(section, #field);
#define READ_SLOT_TEXT(field) form.field(column, row) = reader.Text(section, #field);

// A slot's factory values never reach the screen, since each key is read or fails; so none stand here.
void ReadSlot(Form_Main& form, const ThemeReader& reader, const QString& section, int column, int row) {
    SLOT_KEYS(READ_SLOT_INTEGER, READ_SLOT_TEXT)
}

#undef READ_SLOT_INTEGER
#undef READ_SLOT_TEXT

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

void LoadThemePositionPistes(Form_Main& form) {
    EndsProgram("LoadThemePositionPistes", [&] { ReadSlots(form); });
}

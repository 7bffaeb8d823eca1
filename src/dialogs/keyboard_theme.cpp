// Loading the on-screen keyboard's pictures and reading its keys.
#include "dialogs/keyboard_theme.h"

#include "core/run_time_error.h"
#include "state/form_main.h"
#include "state/paths.h"
#include "theme/theme_reader.h"

namespace {

const QString kSection = QStringLiteral("keyboard");

#define READ_NUMBER(section, key, member, part) form.keyboard.member part = reader.Integer(section, key);
#define READ_TEXT(section, key, member, part) form.keyboard.member part = reader.Text(section, key);
#define READ(kind, name) KEYS_OF_##kind(READ_NUMBER, READ_TEXT, kSection, name)
#define READ_TABLE(key)                                                                                      \
    form.keyboard.key(line, column) =                                                                        \
        reader.Integer(kSection, QStringLiteral(#key "%1-%2").arg(line).arg(column).toLatin1().constData());

// Places and codes have no default values here: each is read from the theme, or reading fails.
void ReadKey(Form_Main& form, const ThemeReader& reader, int line, int column) {
    KEYBOARD_TABLES(READ_TABLE)
}

// Accesses a table. A count of lines or columns beyond its size raises 9; the detail names the count's key.
template <typename Access>
void CheckRoom(const ThemeReader& reader, const QString& key, const Access& access) {
    TellingWhere([&] { return reader.Place(kSection, key, QStringLiteral("up to 100")); }, access);
}

void ReadLine(Form_Main& form, const ThemeReader& reader, int line) {
    const QString key = QStringLiteral("KeyNbCols%1").arg(line);
    CheckRoom(reader, QStringLiteral("KeyNbLines"), [&] { form.keyboard.KeyNbCols(line) = 0; });
    form.keyboard.KeyNbCols(line) = reader.Integer(kSection, key.toLatin1().constData());
    for (int column = 1; column <= form.keyboard.KeyNbCols(line).value(); ++column) {
        CheckRoom(reader, key, [&] { form.keyboard.KeyX(line, column) = 0; });
        ReadKey(form, reader, line, column);
    }
}

} // namespace

void LoadKeyboardPictures(Form_Main& form) {
    const PicturePorts ports{form.files, form.zlib, form.pump, form.pictures};
    form.keyboard.ImgKeyboard.LoadPicture_File(ports, ThemeFile(form, QStringLiteral("keyboard.png")));
    form.keyboard.ImgKeyboardHilight.LoadPicture_File(
        ports, ThemeFile(form, QStringLiteral("keyboard_hilight.png")));
}

void ReadKeyboardTheme(Form_Main& form) {
    const ThemeReader reader(form);
    KEYBOARD_KEYS(READ)
    for (int line = 1; line <= form.keyboard.KeyNbLines.value(); ++line) {
        ReadLine(form, reader, line);
    }
}

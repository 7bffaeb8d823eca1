// Loading the on-screen keyboard's pictures and reading its keys.
#include "dialogs/keyboard_theme.h"

#include "core/run_time_error.h"
#include "shell/form_main.h"
#include "theme/load_theme.h"
#include "theme/theme_reader.h"

namespace {

const QString kSection = QStringLiteral("keyboard");

#define READ_INTEGER(key) form.key = reader.Integer(kSection, #key);
#define READ_TEXT(key) form.key = reader.Text(kSection, #key);
#define READ_TABLE(key)                                                                                      \
    form.key(line, column) =                                                                                 \
        reader.Integer(kSection, QStringLiteral(#key "%1-%2").arg(line).arg(column).toLatin1().constData());

// A key's factory place and code never reach the screen, since each is read or fails; so none stand here.
void ReadKey(Form_Main& form, const ThemeReader& reader, int line, int column) {
    KEYBOARD_TABLES(READ_TABLE)
}

// A count of lines or columns beyond the tables raises 9; the detail names the count's key.
template <typename Access>
void CheckRoom(const ThemeReader& reader, const QString& key, const Access& access) {
    TellingWhere([&] { return reader.Place(kSection, key, QStringLiteral("up to 100")); }, access);
}

void ReadLine(Form_Main& form, const ThemeReader& reader, int line) {
    const QString key = QStringLiteral("KeyNbCols%1").arg(line);
    CheckRoom(reader, QStringLiteral("KeyNbLines"), [&] { form.KeyNbCols(line) = 0; });
    form.KeyNbCols(line) = reader.Integer(kSection, key.toLatin1().constData());
    for (int column = 1; column <= form.KeyNbCols(line).value(); ++column) {
        CheckRoom(reader, key, [&] { form.KeyX(line, column) = 0; });
        ReadKey(form, reader, line, column);
    }
}

} // namespace

void LoadKeyboardPictures(Form_Main& form) {
    const PicturePorts ports{form.files, form.zlib, form.pump, form.pictures};
    form.ImgKeyboard.LoadPicture_File(ports, ThemeFile(form, QStringLiteral("keyboard.png")));
    form.ImgKeyboardHilight.LoadPicture_File(ports, ThemeFile(form, QStringLiteral("keyboard_hilight.png")));
}

void ReadKeyboardTheme(Form_Main& form) {
    const ThemeReader reader(form);
    KEYBOARD_KEYS(READ_INTEGER, READ_TEXT)
    for (int line = 1; line <= form.KeyNbLines.value(); ++line) {
        ReadLine(form, reader, line);
    }
}

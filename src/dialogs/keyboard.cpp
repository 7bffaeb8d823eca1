// Keys and touches on the on-screen keyboard, from opening it to closing it.
#include "dialogs/keyboard.h"

#include "core/conversions.h"
#include "core/run_time_error.h"
#include "core/text_file.h"
#include "dialogs/keyboard_drawing.h"
#include "dialogs/keyboard_theme.h"
#include "platform/display.h"
#include "settings/config.h"
#include "state/form_main.h"
#include "state/log.h"
#include "state/paths.h"

#include <algorithm>
#include <array>
#include <optional>

namespace {

// The codes of keys that are not characters.
constexpr int kDelete = 8;
constexpr int kAccept = 13;

void Close(Form_Main& form) {
    WriteLog(form, QStringLiteral(" : Quitter fenetre clavier"));
    form.shell.Form_KeyBoard.Visible = false;
    form.keyboard.ImgKeyboard.DestroyDIB();
    form.keyboard.ImgKeyboardHilight.DestroyDIB();
}

void Leave(Form_Main& form) {
    form.keyboard.KeyboardResult = 0;
    Close(form);
}

void Accept(Form_Main& form) {
    form.keyboard.KeyboardResult = 1;
    WriteLog(form, QStringLiteral(" : Saisie ") + form.keyboard.KeyboardText);
    Close(form);
}

// Returns the character of a code: up to 255 from Windows-1252, for which the themes of older cabinets were
// made, above that from Unicode.
// Deliberate D-139: a code below 0 raises 5, which leaves KeyboardBusy set. One would expect the key to do
// nothing; no error restores anything, see D-25.
QString CharacterOf(Integer16 code) {
    constexpr int kBytes = 256;
    if (code < 0) {
        throw RunTimeError(kInvalidProcedureCall, QStringLiteral("%1 is below 0").arg(code.value()));
    }
    return code < kBytes ? DecodeWindows1252(QByteArray(1, static_cast<char>(code.value())))
                         : QString(QChar(code.value()));
}

// Performs the action of the selected key.
void ActOnSelected(Form_Main& form) {
    const Integer16 code = form.keyboard.KeyKey(form.keyboard.KeyboardSelLine, form.keyboard.KeyboardSelCol);
    if (code == kDelete) {
        form.keyboard.KeyboardText.chop(1);
    } else if (code == kAccept) {
        Accept(form);
    } else {
        const auto where = [&] {
            return QStringLiteral("%1, [keyboard] KeyKey%2-%3 (expected a character's code)")
                .arg(ThemeFile(form, QStringLiteral("theme.ini")),
                     QString::number(form.keyboard.KeyboardSelLine.value()),
                     QString::number(form.keyboard.KeyboardSelCol.value()));
        };
        form.keyboard.KeyboardText += TellingWhere(where, [&] { return CharacterOf(code); });
    }
}

Integer16 LineBefore(const Form_Main& form) {
    const Integer16 line = form.keyboard.KeyboardSelLine - 1;
    return line < 1 ? form.keyboard.KeyNbLines : line;
}

Integer16 LineAfter(const Form_Main& form) {
    const Integer16 line = form.keyboard.KeyboardSelLine + 1;
    return line > form.keyboard.KeyNbLines ? Integer16(1) : line;
}

void MoveLeft(Form_Main& form) {
    form.keyboard.KeyboardSelCol -= 1;
    if (form.keyboard.KeyboardSelCol < 1) {
        form.keyboard.KeyboardSelLine = LineBefore(form);
        form.keyboard.KeyboardSelCol = form.keyboard.KeyNbCols(form.keyboard.KeyboardSelLine);
    }
}

void MoveRight(Form_Main& form) {
    form.keyboard.KeyboardSelCol += 1;
    if (form.keyboard.KeyboardSelCol > form.keyboard.KeyNbCols(form.keyboard.KeyboardSelLine)) {
        form.keyboard.KeyboardSelLine = LineAfter(form);
        form.keyboard.KeyboardSelCol = 1;
    }
}

// Lines differ in length: a column beyond the end of the new line becomes its last column.
void MoveToLine(Form_Main& form, Integer16 line) {
    form.keyboard.KeyboardSelLine = line;
    form.keyboard.KeyboardSelCol = std::min(form.keyboard.KeyboardSelCol, form.keyboard.KeyNbCols(line));
}

void MoveUp(Form_Main& form) {
    MoveToLine(form, LineBefore(form));
}

void MoveDown(Form_Main& form) {
    MoveToLine(form, LineAfter(form));
}

struct KeyRow {
    QString SettingsState::*binding;
    const char* name;
    void (*action)(Form_Main& form);
};

using S = SettingsState;

// The back key is not in the table: only the quit key, the accept key or a press next to the picture closes
// the form.
// clang-format off
constexpr std::array kKeys = {
    KeyRow{&S::KeyQuitter, "Quitter", Leave},
    KeyRow{&S::KeyValider, "Valider", ActOnSelected},
    KeyRow{&S::KeyGauche,  "gauche",  MoveLeft},
    KeyRow{&S::KeyDroite,  "droite",  MoveRight},
    KeyRow{&S::KeyHaut,    "haut",    MoveUp},
    KeyRow{&S::KeyBas,     "bas",     MoveDown},
};
// clang-format on

// Returns the row that a key code is bound to, or nullptr when there is none. A binding that is not a number
// raises 13 when it is compared.
const KeyRow* RowOf(const Form_Main& form, Integer16 code) {
    for (const KeyRow& row : kKeys) {
        const QString& binding = form.settings.*row.binding;
        const auto where = [&] {
            return ConfigPlace(form, u"Key", QString::fromLatin1(row.name)) +
                   QStringLiteral(" (expected a key code)");
        };
        if (TellingWhere(where, [&] { return CInt16(binding); }) == code) {
            return &row;
        }
    }
    return nullptr;
}

void DrawWhileOpen(Form_Main& form) {
    if (form.shell.Form_KeyBoard.Visible) {
        DrawKeyboard(form);
    }
}

struct KeyPlace {
    int line = 0;
    int column = 0;
};

// Returns the first key whose rectangle contains the point.
// Deliberate D-51: the rectangles are those of the picture in its original size, even on a screen for which
// it was made smaller. One would expect them to shrink with the picture; cabinets with small screens are
// operated by keys.
std::optional<KeyPlace> KeyAt(const Form_Main& form, double x, double y) {
    for (int line = 1; line <= form.keyboard.KeyNbLines.value(); ++line) {
        for (int column = 1; column <= form.keyboard.KeyNbCols(line).value(); ++column) {
            const int left = form.keyboard.KeyX(line, column).value();
            const int top = form.keyboard.KeyY(line, column).value();
            if (x >= left && x < left + form.keyboard.KeyW(line, column).value() && y >= top &&
                y < top + form.keyboard.KeyH(line, column).value()) {
                return KeyPlace{line, column};
            }
        }
    }
    return std::nullopt;
}

// The picture is at most as wide as the screen's picture area and keeps its proportions.
void PlacePicture(Form_Main& form) {
    const int own = form.keyboard.ImgKeyboard.Width();
    if (own == 0) {
        throw RunTimeError(
            kDivisionByZero,
            ThemeFile(form, QStringLiteral("keyboard.png")) +
                QStringLiteral(": missing, or no picture (expected the keyboard): its width is 0"));
    }
    const Integer16 width = std::min(form.keyboard.KeyboardMainWidth, Integer16(own));
    form.keyboard.KeyboardScale = static_cast<double>(width) / own;
    const DisplayMode screen = form.display.CurrentMode();
    form.shell.Form_KeyBoard = {0, 0, screen.width, screen.height, false};
    Resize(form.keyboard.Picture_Keyboard, width.value(),
           CInt32(form.keyboard.ImgKeyboard.Height() * form.keyboard.KeyboardScale).value());
    form.keyboard.Picture_Keyboard.Left =
        CInt32(form.shell.Form_KeyBoard.Width / 2.0 - form.keyboard.Picture_Keyboard.Width() / 2.0).value();
    form.keyboard.Picture_Keyboard.Top =
        CInt32(form.shell.Form_KeyBoard.Height / 2.0 - form.keyboard.Picture_Keyboard.Height() / 2.0).value();
}

void Load(Form_Main& form) {
    WriteLog(form, QStringLiteral(" : Fenetre Clavier"));
    form.keyboard.KeyboardResult = 0;
    form.keyboard.KeyboardSelLine = 1;
    form.keyboard.KeyboardSelCol = 1;
    form.keyboard.KeyboardBusy = 0;
    LoadKeyboardPictures(form);
    PlacePicture(form);
    ReadKeyboardTheme(form);
    DrawKeyboard(form);
    form.shell.Form_KeyBoard.Visible = true;
}

} // namespace

void Form_KeyBoard_Load(Form_Main& form) {
    EndsProgram("Form_KeyBoard", [&] { Load(form); });
}

// A binding that is not a number leaves the keyboard busy, as it does in the main form, see D-25.
void Form_KeyBoard_KeyDown(Form_Main& form, Integer16 KeyCode, Integer16 /*Shift*/) {
    if (form.keyboard.KeyboardBusy != 0) {
        return;
    }
    form.keyboard.KeyboardBusy = 1;
    if (const KeyRow* const row = RowOf(form, KeyCode)) {
        row->action(form);
        DrawWhileOpen(form);
    }
    form.keyboard.KeyboardBusy = 0;
}

void Form_KeyBoard_MouseDown(Form_Main& form) {
    Leave(form);
}

void Picture_Keyboard_MouseDown(Form_Main& form, Integer16 /*Button*/, Integer16 /*Shift*/, float X,
                                float Y) {
    if (const auto key = KeyAt(form, static_cast<double>(X), static_cast<double>(Y))) {
        form.keyboard.KeyboardSelLine = key->line;
        form.keyboard.KeyboardSelCol = key->column;
        ActOnSelected(form);
        DrawWhileOpen(form);
    }
}

void Picture_Keyboard_MouseUp(Form_Main& form, Integer16 /*Button*/, Integer16 /*Shift*/, float /*X*/,
                              float /*Y*/) {
    DrawWhileOpen(form);
}

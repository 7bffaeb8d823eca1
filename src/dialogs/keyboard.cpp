// What keys and touches do on the on-screen keyboard, from its opening to its end.
#include "dialogs/keyboard.h"

#include "core/conversions.h"
#include "core/run_time_error.h"
#include "core/text_file.h"
#include "dialogs/keyboard_drawing.h"
#include "dialogs/keyboard_theme.h"
#include "platform/display.h"
#include "settings/config_values.h"
#include "shell/form_main.h"
#include "shell/log.h"
#include "theme/load_theme.h"

#include <algorithm>
#include <array>
#include <optional>

namespace {

// The codes of keys that are no characters.
constexpr int kDelete = 8;
constexpr int kAccept = 13;

void Close(Form_Main& form) {
    WriteLog(form, QStringLiteral(" : Quitter fenetre clavier"));
    form.Form_KeyBoard.Visible = false;
    form.ImgKeyboard.DestroyDIB();
    form.ImgKeyboardHilight.DestroyDIB();
}

void Leave(Form_Main& form) {
    form.KeyboardResult = 0;
    Close(form);
}

void Accept(Form_Main& form) {
    form.KeyboardResult = 1;
    WriteLog(form, QStringLiteral(" : Saisie ") + form.KeyboardText);
    Close(form);
}

// The character of a code: up to 255 that of the Windows-1252 set, for which the themes of older cabinets
// were made, above that Unicode's.
// Deliberate D-139: a code below 0 raises 5, which leaves KeyboardBusy set. One expects the key to do
// nothing. No error restores anything, see D-25.
QString CharacterOf(Integer16 code) {
    constexpr int kBytes = 256;
    if (code < 0) {
        throw RunTimeError(kInvalidProcedureCall, QStringLiteral("%1 is below 0").arg(code.value()));
    }
    return code < kBytes ? DecodeWindows1252(QByteArray(1, static_cast<char>(code.value())))
                         : QString(QChar(code.value()));
}

// Does what the selected key says.
void ActOnSelected(Form_Main& form) {
    const Integer16 code = form.KeyKey(form.KeyboardSelLine, form.KeyboardSelCol);
    if (code == kDelete) {
        form.KeyboardText.chop(1);
    } else if (code == kAccept) {
        Accept(form);
    } else {
        const auto where = [&] {
            return QStringLiteral("%1, [keyboard] KeyKey%2-%3 (expected a character's code)")
                .arg(ThemeFile(form, QStringLiteral("theme.ini")),
                     QString::number(form.KeyboardSelLine.value()),
                     QString::number(form.KeyboardSelCol.value()));
        };
        form.KeyboardText += TellingWhere(where, [&] { return CharacterOf(code); });
    }
}

Integer16 LineBefore(const Form_Main& form) {
    const Integer16 line = form.KeyboardSelLine - 1;
    return line < 1 ? form.KeyNbLines : line;
}

Integer16 LineAfter(const Form_Main& form) {
    const Integer16 line = form.KeyboardSelLine + 1;
    return line > form.KeyNbLines ? Integer16(1) : line;
}

void MoveLeft(Form_Main& form) {
    form.KeyboardSelCol -= 1;
    if (form.KeyboardSelCol < 1) {
        form.KeyboardSelLine = LineBefore(form);
        form.KeyboardSelCol = form.KeyNbCols(form.KeyboardSelLine);
    }
}

void MoveRight(Form_Main& form) {
    form.KeyboardSelCol += 1;
    if (form.KeyboardSelCol > form.KeyNbCols(form.KeyboardSelLine)) {
        form.KeyboardSelLine = LineAfter(form);
        form.KeyboardSelCol = 1;
    }
}

// Lines differ in length: a column beyond the new line's last one becomes that.
void MoveToLine(Form_Main& form, Integer16 line) {
    form.KeyboardSelLine = line;
    form.KeyboardSelCol = std::min(form.KeyboardSelCol, form.KeyNbCols(line));
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

// The back key is not among them: the form is left by the quit key, the accept key or a press beside it.
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

// What a key code does here; nothing when it is bound to none of the keys. A binding that is no number raises
// 13 at the moment of its test.
const KeyRow* RowOf(const Form_Main& form, Integer16 code) {
    for (const KeyRow& row : kKeys) {
        const QString& binding = form.*row.binding;
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
    if (form.Form_KeyBoard.Visible) {
        DrawKeyboard(form);
    }
}

struct KeyPlace {
    int line = 0;
    int column = 0;
};

// The first key whose rectangle holds the point.
// Deliberate D-51: the rectangles are those of the picture in its own size, also on a screen that it has been
// made smaller for. One expects them to shrink with the picture; cabinets with small screens are used by
// keys.
std::optional<KeyPlace> KeyAt(const Form_Main& form, double x, double y) {
    for (int line = 1; line <= form.KeyNbLines.value(); ++line) {
        for (int column = 1; column <= form.KeyNbCols(line).value(); ++column) {
            const int left = form.KeyX(line, column).value();
            const int top = form.KeyY(line, column).value();
            if (x >= left && x < left + form.KeyW(line, column).value() && y >= top &&
                y < top + form.KeyH(line, column).value()) {
                return KeyPlace{line, column};
            }
        }
    }
    return std::nullopt;
}

// The picture fits the width of the screen's picture area, and keeps its shape.
void PlacePicture(Form_Main& form) {
    const int own = form.ImgKeyboard.Width();
    if (own == 0) {
        throw RunTimeError(
            kDivisionByZero,
            ThemeFile(form, QStringLiteral("keyboard.png")) +
                QStringLiteral(": missing, or no picture (expected the keyboard): its width is 0"));
    }
    const Integer16 width = std::min(form.KeyboardMainWidth, Integer16(own));
    form.KeyboardScale = static_cast<double>(width) / own;
    const DisplayMode screen = form.display.CurrentMode();
    form.Form_KeyBoard = {0, 0, screen.width, screen.height, false};
    Resize(form.Picture_Keyboard, width.value(),
           CInt32(form.ImgKeyboard.Height() * form.KeyboardScale).value());
    form.Picture_Keyboard.Left =
        CInt32(form.Form_KeyBoard.Width / 2.0 - form.Picture_Keyboard.Width() / 2.0).value();
    form.Picture_Keyboard.Top =
        CInt32(form.Form_KeyBoard.Height / 2.0 - form.Picture_Keyboard.Height() / 2.0).value();
}

void Load(Form_Main& form) {
    WriteLog(form, QStringLiteral(" : Fenetre Clavier"));
    form.KeyboardResult = 0;
    form.KeyboardSelLine = 1;
    form.KeyboardSelCol = 1;
    form.KeyboardBusy = 0;
    LoadKeyboardPictures(form);
    PlacePicture(form);
    ReadKeyboardTheme(form);
    DrawKeyboard(form);
    form.Form_KeyBoard.Visible = true;
}

} // namespace

void Form_KeyBoard_Load(Form_Main& form) {
    EndsProgram("Form_KeyBoard", [&] { Load(form); });
}

// A binding that is no number leaves the keyboard busy, as it does the main form, see D-25.
void Form_KeyBoard_KeyDown(Form_Main& form, Integer16 KeyCode, Integer16 /*Shift*/) {
    if (form.KeyboardBusy != 0) {
        return;
    }
    form.KeyboardBusy = 1;
    if (const KeyRow* const row = RowOf(form, KeyCode)) {
        row->action(form);
        DrawWhileOpen(form);
    }
    form.KeyboardBusy = 0;
}

void Form_KeyBoard_MouseDown(Form_Main& form) {
    Leave(form);
}

void Picture_Keyboard_MouseDown(Form_Main& form, Integer16 /*Button*/, Integer16 /*Shift*/, float X,
                                float Y) {
    if (const auto key = KeyAt(form, static_cast<double>(X), static_cast<double>(Y))) {
        form.KeyboardSelLine = key->line;
        form.KeyboardSelCol = key->column;
        ActOnSelected(form);
        DrawWhileOpen(form);
    }
}

void Picture_Keyboard_MouseUp(Form_Main& form, Integer16 /*Button*/, Integer16 /*Shift*/, float /*X*/,
                              float /*Y*/) {
    DrawWhileOpen(form);
}

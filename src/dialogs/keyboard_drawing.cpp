// Painting the on-screen keyboard.
#include "dialogs/keyboard_drawing.h"

#include "core/conversions.h"
#include "platform/windows.h"
#include "rendering/text.h"
#include "shell/form_main.h"

namespace {

constexpr int kAccept = 13;

// A rectangle of the theme as it lies on the picture.
Box Scaled(const Form_Main& form, Integer16 x, Integer16 y, Integer16 width, Integer16 height) {
    const auto pixels = [&](Integer16 length) { return CInt32(length.value() * form.KeyboardScale).value(); };
    return {pixels(x), pixels(y), pixels(width), pixels(height)};
}

TextBox ScaledText(const Form_Main& form, Integer16 x, Integer16 y, Integer16 width, Integer16 height) {
    const Box box = Scaled(form, x, y, width, height);
    return {box.x, box.y, box.width, box.height};
}

void Write(Form_Main& form, const QString& text, const TextBox& box, const TextStyle& style,
           const QString& align) {
    DrawTextUnlogged(form, form.Picture_Keyboard, text.toUpper(), box,
                     {style.Typo, CInt16(style.TypoSize.value() * form.KeyboardScale), style.TypoColor},
                     align, QStringLiteral("center"));
}

bool HasSelection(const Form_Main& form) {
    return form.KeyboardSelLine >= 0 && form.KeyboardSelCol >= 0;
}

void DrawKeys(Form_Main& form) {
    Surface& picture = form.Picture_Keyboard;
    form.ImgKeyboard.Render(picture, 0, 0, picture.Width(), picture.Height());
    if (!HasSelection(form)) {
        return;
    }
    const Integer16 line = form.KeyboardSelLine;
    const Integer16 column = form.KeyboardSelCol;
    const Box to = Scaled(form, form.KeyX(line, column), form.KeyY(line, column), form.KeyW(line, column),
                          form.KeyH(line, column));
    form.ImgKeyboardHilight.Render(picture, to.x, to.y, to.width, to.height, form.KeyX(line, column).value(),
                                   form.KeyY(line, column).value(), form.KeyW(line, column).value(),
                                   form.KeyH(line, column).value());
}

TextStyle ButtonStyle(const Form_Main& form) {
    const bool selected =
        HasSelection(form) && form.KeyKey(form.KeyboardSelLine, form.KeyboardSelCol) == kAccept;
    return selected ? TextStyle{form.BtnTexteFontHilight, form.BtnTexteFontSizeHilight,
                                form.BtnTexteFontColorHilight}
                    : TextStyle{form.BtnTexteFont, form.BtnTexteFontSize, form.BtnTexteFontColor};
}

} // namespace

void DrawKeyboard(Form_Main& form) {
    const QString left = QStringLiteral("left");
    const Surface& picture = form.Picture_Keyboard;
    Cls(form.Picture_Keyboard);
    DrawKeys(form);
    Write(form, form.KeyboardTitle, ScaledText(form, form.TitleX, form.TitleY, form.TitleW, form.TitleH),
          {form.TitleFont, form.TitleFontSize, form.TitleFontColor}, left);
    Write(form, form.KeyboardText + u'_',
          ScaledText(form, form.TexteX, form.TexteY, form.TexteW, form.TexteH),
          {form.TexteFont, form.TexteFontSize, form.TexteFontColor}, left);
    Write(form, form.KeyboardButton,
          ScaledText(form, form.BtnTexteX, form.BtnTexteY, form.BtnTexteW, form.BtnTexteH), ButtonStyle(form),
          QStringLiteral("center"));
    form.windows.RefreshKeyboard(picture.picture, picture.Left, picture.Top);
}

// Painting the on-screen keyboard.
#include "dialogs/keyboard_drawing.h"

#include "core/conversions.h"
#include "platform/windows.h"
#include "rendering/geometry.h"
#include "rendering/text.h"
#include "state/form_main.h"

namespace {

constexpr int kAccept = 13;

// A rectangle of the theme as it is on the picture.
Box Scaled(const Form_Main& form, const Box& box) {
    const auto pixels = [&](int length) { return CInt32(length * form.keyboard.KeyboardScale).value(); };
    return {pixels(box.x), pixels(box.y), pixels(box.width), pixels(box.height)};
}

Box16 ScaledText(const Form_Main& form, const Box16& box) {
    const Box scaled = Scaled(form, BoxOf(box));
    return {scaled.x, scaled.y, scaled.width, scaled.height};
}

void Write(Form_Main& form, const QString& text, const Box16& box, const TextLook& style,
           const QString& align) {
    DrawTextUnlogged(form, form.keyboard.Picture_Keyboard, text.toUpper(), box,
                     {style.Font, CInt16(style.Size.value() * form.keyboard.KeyboardScale), style.Color},
                     align, QStringLiteral("center"));
}

bool HasSelection(const Form_Main& form) {
    return form.keyboard.KeyboardSelLine >= 0 && form.keyboard.KeyboardSelCol >= 0;
}

void DrawKeys(Form_Main& form) {
    Surface& picture = form.keyboard.Picture_Keyboard;
    form.keyboard.ImgKeyboard.Render(picture, 0, 0, picture.Width(), picture.Height());
    if (!HasSelection(form)) {
        return;
    }
    const Integer16 line = form.keyboard.KeyboardSelLine;
    const Integer16 column = form.keyboard.KeyboardSelCol;
    const Box key{form.keyboard.KeyX(line, column).value(), form.keyboard.KeyY(line, column).value(),
                  form.keyboard.KeyW(line, column).value(), form.keyboard.KeyH(line, column).value()};
    const Box to = Scaled(form, key);
    form.keyboard.ImgKeyboardHilight.Render(picture, to.x, to.y, to.width, to.height, key.x, key.y, key.width,
                                            key.height);
}

TextLook ButtonStyle(const Form_Main& form) {
    const bool selected = HasSelection(form) && form.keyboard.KeyKey(form.keyboard.KeyboardSelLine,
                                                                     form.keyboard.KeyboardSelCol) == kAccept;
    return selected ? form.keyboard.BtnTexteFontHilight : form.keyboard.BtnTexteFont;
}

} // namespace

void DrawKeyboard(Form_Main& form) {
    const QString left = QStringLiteral("left");
    const Surface& picture = form.keyboard.Picture_Keyboard;
    Cls(form.keyboard.Picture_Keyboard);
    DrawKeys(form);
    Write(form, form.keyboard.KeyboardTitle, ScaledText(form, form.keyboard.Title), form.keyboard.TitleFont,
          left);
    Write(form, form.keyboard.KeyboardText + u'_', ScaledText(form, form.keyboard.Texte),
          form.keyboard.TexteFont, left);
    Write(form, form.keyboard.KeyboardButton, ScaledText(form, form.keyboard.BtnTexte), ButtonStyle(form),
          QStringLiteral("center"));
    form.windows.RefreshKeyboard(picture.picture, picture.Left, picture.Top);
}

// From design pixels of the theme to pixels of the screen.
#include "rendering/geometry.h"

#include "core/conversions.h"
#include "shell/form_main.h"

Box ScaledBox(const Form_Main& form, double x, double y, double width, double height) {
    return {CInt32(x * form.ZoneScaleX).value(), CInt32(y * form.ZoneScaleY).value(),
            CInt32(width * form.ZoneScaleX).value(), CInt32(height * form.ZoneScaleY).value()};
}

TextBox ScaledTextBox(const Form_Main& form, double x, double y, double width, double height) {
    return {CInt16(x * form.ZoneScaleX), CInt16(y * form.ZoneScaleY), CInt16(width * form.ZoneScaleX),
            CInt16(height * form.ZoneScaleY)};
}

TextStyle ScaledStyle(const Form_Main& form, const QString& font, Integer16 size, const QString& colour) {
    return {font, CInt16(size.value() * form.ZoneScaleX), colour};
}

Integer16 SlotUnderCursor(const Form_Main& form) {
    const double rows = form.ZoneListNbTracksParColonne.value();
    return CInt16((static_cast<double>(form.SelX) - 1) * rows + (static_cast<double>(form.SelY) - 1));
}

SlotPlace PlaceOfSlot(const Form_Main& form, Integer16 slot) {
    const int rows = form.ZoneListNbTracksParColonne.value();
    const int number = slot.value() + 1;
    return number > rows ? SlotPlace{2, number - rows} : SlotPlace{1, number};
}

Box SlotInCache(const Form_Main& form, const SlotPlace& place) {
    const auto [column, row] = place;
    return {form.ZoneListPisteHilightX(column, row).value() + form.ZoneListX.value(),
            form.ZoneListPisteHilightY(column, row).value() + form.ZoneListY.value(),
            form.ZoneListPisteHilightW(column, row).value(), form.ZoneListPisteHilightH(column, row).value()};
}

// Deliberate D-14: the zone's corner is added unscaled to the scaled slot. One expects it to be scaled as
// well; themes are placed with it as it is.
Box SlotOnScreen(const Form_Main& form, const SlotPlace& place) {
    const auto [column, row] = place;
    return {CInt32(form.ZoneListPisteHilightX(column, row).value() * form.ZoneScaleX + form.ZoneListX.value())
                .value(),
            CInt32(form.ZoneListPisteHilightY(column, row).value() * form.ZoneScaleY + form.ZoneListY.value())
                .value(),
            CInt32(form.ZoneListPisteHilightW(column, row).value() * form.ZoneScaleX).value(),
            CInt32(form.ZoneListPisteHilightH(column, row).value() * form.ZoneScaleY).value()};
}

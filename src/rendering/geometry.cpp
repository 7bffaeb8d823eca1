// Converting design pixels of the theme to screen pixels.
#include "rendering/geometry.h"

#include "core/conversions.h"
#include "state/form_main.h"

Box BoxOf(const Box16& box) {
    return {box.X.value(), box.Y.value(), box.W.value(), box.H.value()};
}

Box InBlock(const Corner16& corner, const Box16& box) {
    return {corner.X.value() + box.X.value(), corner.Y.value() + box.Y.value(), box.W.value(), box.H.value()};
}

Box InZone(const Form_Main& form, const Box16& box) {
    return InBlock({form.theme.ZoneList.X, form.theme.ZoneList.Y}, box);
}

Box ScaledBox(const Form_Main& form, double x, double y, double width, double height) {
    return {CInt32(x * form.frame.ZoneScaleX).value(), CInt32(y * form.frame.ZoneScaleY).value(),
            CInt32(width * form.frame.ZoneScaleX).value(), CInt32(height * form.frame.ZoneScaleY).value()};
}

Box ScaledBox(const Form_Main& form, const Box& box) {
    return ScaledBox(form, box.x, box.y, box.width, box.height);
}

Box16 ScaledTextBox(const Form_Main& form, const Box& box) {
    return {CInt16(box.x * form.frame.ZoneScaleX), CInt16(box.y * form.frame.ZoneScaleY),
            CInt16(box.width * form.frame.ZoneScaleX), CInt16(box.height * form.frame.ZoneScaleY)};
}

TextLook ScaledLook(const Form_Main& form, const TextLook& look) {
    return {look.Font, CInt16(look.Size.value() * form.frame.ZoneScaleX), look.Color};
}

Integer16 SlotUnderCursor(const Form_Main& form) {
    const double rows = form.theme.ZoneListNbTracksParColonne.value();
    return CInt16((static_cast<double>(form.cursor.SelX) - 1) * rows +
                  (static_cast<double>(form.cursor.SelY) - 1));
}

SlotPlace PlaceOfSlot(const Form_Main& form, Integer16 slot) {
    const int rows = form.theme.ZoneListNbTracksParColonne.value();
    const int number = slot.value() + 1;
    return number > rows ? SlotPlace{2, number - rows} : SlotPlace{1, number};
}

Box SlotInCache(const Form_Main& form, const SlotPlace& place) {
    return InZone(form, form.slots.ZoneListPisteHilight(place.column, place.row));
}

// Deliberate D-14: the zone's corner is added unscaled to the scaled slot. One would expect it to be scaled
// as well; themes are placed with this behaviour.
Box SlotOnScreen(const Form_Main& form, const SlotPlace& place) {
    const Box16& slot = form.slots.ZoneListPisteHilight(place.column, place.row);
    const double scaleX = form.frame.ZoneScaleX;
    const double scaleY = form.frame.ZoneScaleY;
    return {CInt32(slot.X.value() * scaleX + form.theme.ZoneList.X.value()).value(),
            CInt32(slot.Y.value() * scaleY + form.theme.ZoneList.Y.value()).value(),
            CInt32(slot.W.value() * scaleX).value(), CInt32(slot.H.value() * scaleY).value()};
}

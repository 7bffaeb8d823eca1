// Cursor and page arithmetic.
#include "interaction/cursor.h"

#include "core/conversions.h"
#include "shell/form_main.h"

Integer16 SlotUnderCursor(const Form_Main& form) {
    const double rows = form.ZoneListNbTracksParColonne.value();
    return CInt16((static_cast<double>(form.SelX) - 1) * rows + (static_cast<double>(form.SelY) - 1));
}

Integer16 PageBefore(const Form_Main& form) {
    const Integer16 page = form.CurrentPage - 1;
    return page < 0 ? form.NbPages - 1 : page;
}

Integer16 PageAfter(const Form_Main& form) {
    const Integer16 page = form.CurrentPage + 1;
    return page >= form.NbPages ? Integer16(0) : page;
}

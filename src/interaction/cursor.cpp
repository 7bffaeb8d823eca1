// Steps from page to page.
#include "interaction/cursor.h"

#include "shell/form_main.h"

Integer16 PageBefore(const Form_Main& form) {
    const Integer16 page = form.CurrentPage - 1;
    return page < 0 ? form.NbPages - 1 : page;
}

Integer16 PageAfter(const Form_Main& form) {
    const Integer16 page = form.CurrentPage + 1;
    return page >= form.NbPages ? Integer16(0) : page;
}

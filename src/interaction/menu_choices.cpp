// Stepping through the choices of the menu's current row.
#include "interaction/menu_choices.h"

#include "shell/form_main.h"

#include <utility>

namespace {

bool HasChoice(const Form_Main& form, Integer16 choice) {
    return !form.CommandChoiceValue(form.CommandCurrentMenu, form.CommandCurrentId, choice).isEmpty();
}

Integer16 LastChoice(const Form_Main& form) {
    constexpr int kMostChoices = 10;
    int choice = 1;
    while (choice <= kMostChoices && HasChoice(form, choice)) {
        ++choice;
    }
    return choice - 1;
}

} // namespace

bool OnListboxRow(const Form_Main& form) {
    return form.ActiveZone == u"command" &&
           form.CommandType(form.CommandCurrentMenu, form.CommandCurrentId) == u"listbox";
}

void StepChoiceBack(Form_Main& form) {
    Integer16& choice = form.CommandChoice(form.CommandCurrentMenu, form.CommandCurrentId);
    choice -= 1;
    if (choice < 1) {
        choice = LastChoice(form);
    }
}

void StepChoiceForward(Form_Main& form) {
    Integer16& choice = form.CommandChoice(form.CommandCurrentMenu, form.CommandCurrentId);
    choice += 1;
    if (!HasChoice(form, choice)) {
        choice = 1;
    }
}

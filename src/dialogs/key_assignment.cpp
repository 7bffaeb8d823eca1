// Binding keys by pressing them.
#include "dialogs/key_assignment.h"

#include "dialogs/key_bindings.h"
#include "dialogs/key_names.h"
#include "platform/dialogs.h"
#include "state/form_main.h"
#include "state/log.h"

namespace {

// Returns the code of the key that the operator presses, or -1.
Integer16 AskKey(Form_Main& form, const QString& title) {
    form.keyAssign.KeyAssignTitle = title;
    form.keyAssign.KeyAssignCode = -1;
    form.dialogs.ShowModal(QStringLiteral("Form_KeyAssign"));
    return form.keyAssign.KeyAssignCode;
}

void AddKey(Form_Main& form, SlotControls& slot) {
    const Integer16 code = AskKey(form, slot.text);
    if (code < 0) {
        return;
    }
    const QString name = KeyName(code);
    const QString number = QString::number(code.value());
    if (slot.Tag.isEmpty()) {
        slot.Caption = name;
        slot.Tag = number;
    } else {
        slot.Caption += QStringLiteral(" + ") + name;
        slot.Tag += u'|' + number;
    }
}

void ClearKeys(SlotControls& slot) {
    slot.Caption.clear();
    slot.Tag.clear();
}

} // namespace

void Form_KeyAssign_Load(Form_Main& form) {
    WriteLog(form, QStringLiteral(" : Fenetre assignation touche"));
    form.keyAssign.Label_Key = form.keyAssign.KeyAssignTitle;
    form.keyAssign.Visible = true;
}

void Form_KeyAssign_KeyDown(Form_Main& form, Integer16 KeyCode) {
    form.keyAssign.KeyAssignCode = KeyCode;
    WriteLog(form, QString::number(KeyCode.value()));
    WriteLog(form, QStringLiteral(" : Quitter la fenetre d'assignation de touche"));
    form.keyAssign.Visible = false;
}

void Form_KeyAssign_Command_Cancel_Click(Form_Main& form) {
    WriteLog(form, QStringLiteral(" : Annulation Fenetre assignation touche "));
    form.keyAssign.Visible = false;
}

// Deliberate D-144: two actions can be bound to the same key. One would expect the second binding to be
// refused; keys are compared in a fixed order, and the first action wins.
void Command_KeyAssign_Click(Form_Main& form, Integer16 Index) {
    constexpr int kEnding = 2; // the blank and the colon
    form.keyAssign.KeyAssignIndex = Index;
    const Integer16 code = AskKey(form, CaptionOfBinding(Index).chopped(kEnding));
    if (code > -1) {
        form.config.Label_KeyValue(Index) = KeyName(code);
        form.config.KeyValues(Index) = QString::number(code.value());
    }
}

void Command_ZoneListGauche_Click(Form_Main& form, Integer16 Index) {
    AddKey(form, form.config.Gauche(Index));
}

void Command_ZoneListDroite_Click(Form_Main& form, Integer16 Index) {
    AddKey(form, form.config.Droite(Index));
}

void Label_ZoneListGauche_DblClick(Form_Main& form, Integer16 Index) {
    ClearKeys(form.config.Gauche(Index));
}

void Label_ZoneListDroite_DblClick(Form_Main& form, Integer16 Index) {
    ClearKeys(form.config.Droite(Index));
}

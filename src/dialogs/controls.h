// The controls of the open dialog by name: what they show, and what a person can do with them.
#pragma once

#include "platform/dialog_controls.h"

#include <QString>

#include <optional>

struct Form_Main;
struct InputEvent;

// Returns the name of the dialog that takes the input, the innermost one; empty when none is open. The
// on-screen keyboard has no controls and is not among them.
QString OpenDialog(const Form_Main& form);

// Returns what a control shows; nothing when the dialog has no such control.
std::optional<ControlLook> LookOf(const Form_Main& form, const ControlName& control);

// Returns why an event cannot be carried out by a control of the open dialog: there is no such control, it
// takes no value, or not this one. Empty when it can.
QString RefusalOf(const Form_Main& form, const InputEvent& event);

// Handles a key, or what a person does with a control of the open dialog. An event for another dialog, for a
// control that is disabled or invisible, or that RefusalOf refuses has no effect.
void HandleDialogEvent(Form_Main& form, const InputEvent& event);

// The dialogs of the cabinet.
#pragma once

#include "platform/dialogs.h"

// No dialog has a window here: every one counts as closed the moment it opens, nothing changed and nothing
// chosen.
struct QtDialogs : Dialogs {
    void ShowModal(const QString& /*dialog*/) override {}
};

// Setting the display mode.
#include "shell/display_mode.h"

#include "platform/display.h"
#include "platform/message_box.h"
#include "state/form_main.h"

namespace {

// The mode needs a restart of the machine. That is left to the operator: the answer changes nothing here.
void AskRestart(Form_Main& form) {
    form.messageBox.AskYesNo(QStringLiteral("Screen Resolution"),
                             QStringLiteral("You Must Restart To Apply These Changes.\r\nRestart Now ¿"));
}

} // namespace

void ChangeRes(Form_Main& form, Integer32 width, Integer32 height, Integer32 bits) {
    const DisplayMode mode{width.value(), height.value(), bits.value()};
    switch (form.display.TestDisplaySettings(mode)) {
    case DisplayChange::kSuccessful:
        form.display.ChangeDisplaySettings(mode);
        break;
    case DisplayChange::kRestart:
        AskRestart(form);
        break;
    case DisplayChange::kRefused:
        form.messageBox.Show(QStringLiteral("Error"), QStringLiteral("Mode Not Supported"));
        break;
    case DisplayChange::kNoModes:
        break;
    }
}

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
        CoverScreen(form);
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

// Centring a window of the screen's size puts it at 0.
void CoverScreen(Form_Main& form) {
    const auto [width, height, bits] = form.display.CurrentMode();
    form.shell.MainWindow.Left = 0;
    form.shell.MainWindow.Top = 0;
    form.shell.MainWindow.Width = width;
    form.shell.MainWindow.Height = height;
}

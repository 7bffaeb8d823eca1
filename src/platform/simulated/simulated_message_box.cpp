// The simulated message boxes.
#include "platform/simulated/simulated_message_box.h"

#include "platform/simulated/call_record.h"

void SimulatedMessageBox::Show(const QString& title, const QString& text) {
    record_.Add({QStringLiteral("MsgBox"), title, text});
}

bool SimulatedMessageBox::AskYesNo(const QString& title, const QString& text) {
    Show(title, text);
    return false;
}

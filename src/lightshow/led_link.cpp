// Commands to the LED controller on the serial line.
#include "lightshow/led_link.h"

#include "core/run_time_error.h"
#include "platform/serial_port.h"
#include "settings/config.h"
#include "state/form_main.h"

void SendMessage(Form_Main& form, const QByteArray& message) {
    const auto where = [&] {
        return ConfigPlace(form, u"RGBLeds", u"Commport") +
               QStringLiteral(" \"%1\"").arg(form.settings.RGBLedsCommport);
    };
    TellingWhere(where, [&] { form.MSComm1.Output(message); });
}

void SendToController(Form_Main& form, const char* command) {
    EndsProgram("SendToController", [&] { SendMessage(form, QByteArray(command) + "\r\n"); });
}

void Command1_Click(Form_Main& form) {
    SendToController(form, kButton1);
}

void Command2_Click(Form_Main& form) {
    SendToController(form, kButton2);
}

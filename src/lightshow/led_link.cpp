// Commands to the LED controller on the serial line.
#include "lightshow/led_link.h"

#include "core/run_time_error.h"
#include "platform/serial_port.h"
#include "state/form_main.h"

void SendToController(Form_Main& form, const char* command) {
    EndsProgram("SendToController", [&] { form.MSComm1.Output(QByteArray(command) + "\r\n"); });
}

void Command1_Click(Form_Main& form) {
    SendToController(form, kButton1);
}

void Command2_Click(Form_Main& form) {
    SendToController(form, kButton2);
}

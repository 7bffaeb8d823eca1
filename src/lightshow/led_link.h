// Commands to the LED controller on the serial line.
#pragma once

#include <QByteArray>

struct Form_Main;

// Sends the bytes of a message. An error names the key of the port.
void SendMessage(Form_Main& form, const QByteArray& message);

// Sends a command followed by carriage return and line feed. A line that is not open, or whose device has
// gone, ends the program.
void SendToController(Form_Main& form, const char* command);

// The two buttons outside the visible area, for testing a controller: each sends its own caption. Replies are
// not read.
void Command1_Click(Form_Main& form);
void Command2_Click(Form_Main& form);

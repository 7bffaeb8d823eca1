// Commands to the LED controller on the serial line.
#pragma once

struct Form_Main;

// Sends a command with its line end, carriage return and line feed. A line that is not open, or whose device
// has gone, ends the program.
void SendToController(Form_Main& form, const char* command);

// The two buttons off the visible area, for whoever tries a controller out: each sends its own caption. The
// replies are not read.
void Command1_Click(Form_Main& form);
void Command2_Click(Form_Main& form);

// Lets the controller run by itself.
inline constexpr const char* kFreeRunningMode = "AT+R-1";
// Puts the controller under our colours; it answers "Mode Normal" and "OK".
inline constexpr const char* kNormalMode = "AT+R-0";
// The captions of the two buttons.
inline constexpr const char* kButton1 = "AT+I";
inline constexpr const char* kButton2 = "AT+T";

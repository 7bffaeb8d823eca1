// Commands to the LED controller on the serial line.
#pragma once

struct Form_Main;

// Sends a command with its line end, carriage return and line feed. A line that is not open, or whose device
// has gone, ends the program.
void SendToController(Form_Main& form, const char* command);

// Lets the controller run by itself.
inline constexpr const char* kFreeRunningMode = "AT+R-1";
// Puts the controller under our colours; it answers "Mode Normal" and "OK".
inline constexpr const char* kNormalMode = "AT+R-0";

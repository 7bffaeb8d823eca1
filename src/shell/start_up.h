// Start-up: from the first log line to the first frame.
#pragma once

struct Form_Main;

// Runs the whole start-up. AppFolder must be set. A run-time error is rethrown as a ProgramStop; a wrong or
// missing audio library and a cancelled first configuration end the program with code 0.
void Form_Load(Form_Main& form);

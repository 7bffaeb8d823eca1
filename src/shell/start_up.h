// Start-up: from the first log line to the first frame.
#pragma once

struct Form_Main;

// Runs the whole start-up. The form's AppFolder is set. Any run-time error in it goes up as a ProgramStop; a
// wrong or missing audio library and a cancelled first configuration end the program with code 0.
void Form_Load(Form_Main& form);

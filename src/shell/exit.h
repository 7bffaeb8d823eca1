// The regular end of the program.
#pragma once

struct Form_Main;

// Stops the light show, frees the audio library, sets the LED controller free and ends the program with code
// 0, without saving anything.
[[noreturn]] void ExitJukebox(Form_Main& form);

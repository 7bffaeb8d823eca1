// The regular end of the program.
#pragma once

struct Form_Main;

// Stops the light show, frees the audio library, switches the LED controller to free-running mode and ends
// the program with code 0. Saves nothing.
[[noreturn]] void ExitJukebox(Form_Main& form);

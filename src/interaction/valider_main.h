// The transport buttons.
#pragma once

struct Form_Main;

// Carries out the transport button named by ActiveBtn; any other word does nothing. "stop", "play" and
// "pause" of a video without a graph raise 91.
void ValiderMain(Form_Main& form);

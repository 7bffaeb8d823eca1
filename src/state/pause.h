// Waiting while pending events are handled.
#pragma once

struct Form_Main;

// Waits Duration / 50 milliseconds while pending events run: 6000 is 120 ms, 300 is 6 ms.
void Pause(Form_Main& form, double Duration);

// A press on the frame in the touch mode.
#pragma once

struct Form_Main;

// Does what the point asks for: slots, queue, coin box, buttons, navigation, menu, in this order; a press may
// do several.
void PressAt(Form_Main& form, float X, float Y);

// The focus' way round the zones.
#pragma once

struct Form_Main;

// Moves the focus to the next zone that is shown and active.
void GoToNextZone(Form_Main& form);

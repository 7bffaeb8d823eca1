// Validation of a slot of the track list.
#pragma once

#include "core/integer.h"

struct Form_Main;

// Enters the folder, loads the playlist or buys the track of a slot; an empty slot does nothing.
void Valider(Form_Main& form, Integer16 NumTrack);

// Counting what is bought.
#include "playback/play_counts.h"

#include "shell/form_main.h"

// Counting comes with the counts' own change.
void CountPick(Form_Main& /*form*/, int /*slot*/) {}

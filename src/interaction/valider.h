// The accept key in the list, the Main block and the queue.
#pragma once

#include "core/integer.h"

struct Form_Main;

// Enters the folder, loads the playlist or buys the track of a slot. Does nothing for an empty slot.
void Valider(Form_Main& form, Integer16 NumTrack);

// Performs the action of the transport button named by ActiveBtn; any other word does nothing. "stop", "play"
// and "pause" raise 91 for a video without a graph.
void ValiderMain(Form_Main& form);

// Performs the action of the queue's button named by ActiveBtn; any other word does nothing.
void ValiderPlaylist(Form_Main& form);

// Sets the information lines to the state of the focused button, "btn" and the button's word.
void SetButtonInfos(Form_Main& form);

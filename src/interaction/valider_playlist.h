// The buttons of the queue.
#pragma once

struct Form_Main;

// Carries out the queue's button named by ActiveBtn; any other word does nothing.
void ValiderPlaylist(Form_Main& form);

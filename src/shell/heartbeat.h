// The heartbeat of the jukebox: idle counters, remaining time, the step from track to track.
#pragma once

struct Form_Main;

// One tick of the heartbeat.
void Timer1_Timer(Form_Main& form);

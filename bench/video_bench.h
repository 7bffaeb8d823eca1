// The work of showing a video, beside other players.
#pragma once

#include <QString>

// Plays clips made by ffmpeg over the whole X display, with our reader and window and with the players that
// are installed. `programs` is the folder of our programs.
void BenchVideos(const QString& programs);

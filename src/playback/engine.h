// The two players behind one pair of operations.
#pragma once

#include <QString>

struct Form_Main;

// Starts a file. An audio file that cannot be opened sounds the refusal and leaves IsPlaying at 0; a video
// that cannot be rendered raises 5. An active LED controller that does not answer holds an audio start for
// ever.
void BassPlayFile(Form_Main& form, const QString& FileName);

// Stops whatever runs; harmless when nothing does.
void BassStopFile(Form_Main& form);

// Seconds of the position and length of what runs now; the audio position is kept in TrackPositionSeconds.
struct PlayTime {
    double position = 0;
    double length = 0;
};
PlayTime ReadPlayTime(Form_Main& form);

// Seeks to ten seconds before the end of what runs; a seek that fails leaves the position.
void SeekNearEnd(Form_Main& form);

// Plays one of the theme's sounds from its start. Raises 91 when the theme has not been loaded.
enum class ThemeSound { kInsertCoin, kNoCredit, kPageTurn };
void PlaySound(Form_Main& form, ThemeSound sound);

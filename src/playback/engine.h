// Playback of audio files, videos and the theme's sounds.
#pragma once

#include <QString>

struct Form_Main;

// Starts a file. For an audio file that cannot be opened it plays the refusal sound and sets IsPlaying to 0;
// for a video that cannot be rendered it raises 5. While an active LED controller does not answer, the start
// of an audio file waits without limit.
void BassPlayFile(Form_Main& form, const QString& FileName);

// Stops the running audio or video; safe to call when nothing runs.
void BassStopFile(Form_Main& form);

// Stop, continue and pause the track that NowPlayingPath names; a stopped one continues from its start. For a
// video without a graph they raise 91.
void RewindPlayback(Form_Main& form);
void ResumePlayback(Form_Main& form);
void PausePlayback(Form_Main& form);

// Seeks to ten seconds before the end of the running audio or video. A failed seek leaves the position
// unchanged.
void SeekNearEnd(Form_Main& form);

// Plays one of the theme's sounds from its start. Raises 91 when the theme has not been loaded.
enum class ThemeSound { kInsertCoin, kNoCredit, kPageTurn };
void PlaySound(Form_Main& form, ThemeSound sound);

// A small music library made of silence, for showing a theme.
#pragma once

#include <QString>

// The names of folders that situations enter.
inline constexpr QStringView kSampleAlbum = u"Saturday Night";
inline constexpr QStringView kSampleLongTitles = u"Titles That Go On";
inline constexpr QStringView kSampleEmpty = u"Nothing Here Yet";
inline constexpr QStringView kSampleVideos = u"Videos";

// Fills an existing folder with folders, tracks, covers and a video. Returns false when something could not
// be written.
bool MakeSampleMusic(const QString& folder);

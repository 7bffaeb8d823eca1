// Checking a whole music library, folder by folder.
#pragma once

#include <QString>

#include <cstdint>
#include <vector>

class FindingReport;
class Progress;
struct Form_Main;

struct LibraryOptions {
    QString folder;
    // Whether titles can be measured.
    bool hasTheme = false;
    // Decodes covers, too.
    bool isDeep = false;
};

// A listed file that is played.
struct MediaFile {
    QString path;
    bool isVideo = false;
};

struct LibrarySummary {
    std::int64_t folders = 0;
    // The files that are listed. Kept for a deep check only.
    std::vector<MediaFile> media;
    std::int64_t files = 0;
};

// Reports titles of saved playlists that stop the program when the playlists are shown. Requires a loaded
// theme.
void CheckPlaylistTitles(Form_Main& form, FindingReport& report);

// Reports what is wrong with the folders below `options.folder`. The form needs the settings of config.ini,
// and the theme when `options.hasTheme`. Throws CheckInterrupted between two folders.
LibrarySummary CheckLibrary(Form_Main& form, FindingReport& report, const LibraryOptions& options,
                            Progress& progress);

// State of the music library: the folder shown, its sorted list, the page on the screen.
#pragma once

#include "core/bounded_array.h"
#include "core/integer.h"
#include "imaging/tags/tagged_images.h"

#include <QString>
#include <QStringList>
#include <QStringView>

#include <vector>

// The files that the file list shows.
// Deliberate D-03: the pattern contains "*.mp44" instead of "*.mp4", so .mp4 files are not listed. One would
// expect "*.mp4"; cabinets keep such files next to the music without showing them.
inline constexpr QStringView kMusicPattern = u"*.mp3;*.wav;*.wma;*.vtxpl;*.avi;*.mpg;*.mp44;*.flac";

// A folder list: its folder and the full paths of the direct sub-folders, in name order.
struct FolderList {
    QString Path;
    QStringList List;
};

// A file list: its folder and pattern, and the names of the matching files without their folder, in name
// order.
struct FileList {
    QString Path;
    QString Pattern;
    QStringList List;
};

// One entry of the sorted list. The line is key "|" type "|" path "|" title; the fields are kept separately,
// because a file name can contain "|".
struct ListLine {
    QString key;
    QString type;
    QString path;
    QString title;

    QString Text() const { return key + u'|' + type + u'|' + path + u'|' + title; }
};

struct LibraryState {
    FolderList Dir1;
    FolderList Dir2;
    FileList File1;
    // The entries of the folder shown, sorted by their lines.
    std::vector<ListLine> List_List;

    QString CurrentPath;
    // The 0-based page of the list, and the number of pages.
    Integer16 CurrentPage;
    Integer16 NbPages;
    // Sort order of the folder shown: "alpha" or "playcount".
    QString Order;
    // The depth below the folder where browsing started, and the place to return to at each depth.
    Integer16 DirLevel;
    BoundedArray<Integer16, 100> DirHistoryPage;
    BoundedArray<QString, 100> DirHistoryPath;
    BoundedArray<Integer16, 100> DirHistorySelX;
    BoundedArray<Integer16, 100> DirHistorySelY;
    // The place to return to from the playlists folder.
    QString SavedPath;
    Integer16 SavedPage;
    Integer16 SavedNbPages;

    // The 0-based slot under the cursor; also the counter while a folder is listed and while a page is
    // filled.
    Integer16 NumTrack;
    // The reader of pictures in tags, one for all files.
    cTaggedImages TaggedImages;
    // Path, kind ("dir", "file", "playlist") and title of each slot of the page shown.
    BoundedArray<QString, 3000> InfoPath;
    BoundedArray<QString, 3000> InfoType;
    BoundedArray<QString, 3000> InfoTitre;
};

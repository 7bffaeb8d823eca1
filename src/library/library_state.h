// State of the music library: the folder shown, its sorted list, the page on the screen.
#pragma once

#include "core/bounded_array.h"
#include "core/integer.h"
#include "imaging/tagged_images.h"

#include <QString>
#include <QStringList>
#include <QStringView>

#include <vector>

// What the file list shows in the folder shown. Deliberate D-03: the pattern says "*.mp44", so that .mp4
// files are not listed. One expects "*.mp4"; cabinets keep such files beside the music without showing them.
inline constexpr QStringView kMusicPattern = u"*.mp3;*.wav;*.wma;*.vtxpl;*.avi;*.mpg;*.mp44;*.flac";

// A folder list: the folder it points at and the full paths of its direct sub-folders, in name order.
struct FolderList {
    QString Path;
    QStringList List;
};

// A file list: the folder and pattern it points at, and the bare names of the files that match, in name
// order.
struct FileList {
    QString Path;
    QString Pattern;
    QStringList List;
};

// One entry of the sorted list. The line is key "|" type "|" path "|" title; the fields are kept apart as
// well, since a name on disk may hold "|".
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
    // The entries of the folder shown, in text order of their lines.
    std::vector<ListLine> List_List;

    QString CurrentPath;
    // 0-based page of the list, and how many there are.
    Integer16 CurrentPage;
    Integer16 NbPages;
    // Sort order of the folder shown: "alpha" or "playcount".
    QString Order;
    // Depth below the folder where browsing started, and where to return to for each depth.
    Integer16 DirLevel;
    BoundedArray<Integer16, 100> DirHistoryPage;
    BoundedArray<QString, 100> DirHistoryPath;
    BoundedArray<Integer16, 100> DirHistorySelX;
    BoundedArray<Integer16, 100> DirHistorySelY;
    // The place put aside while the playlists folder is shown.
    QString SavedPath;
    Integer16 SavedPage;
    Integer16 SavedNbPages;

    // 0-based slot on the page under the cursor; also the counter of the listing and of the page's fill.
    Integer16 NumTrack;
    // The reader of pictures in tags, one for all files.
    cTaggedImages TaggedImages;
    // Path, kind ("dir", "file", "playlist") and title of each slot of the page shown.
    BoundedArray<QString, 3000> InfoPath;
    BoundedArray<QString, 3000> InfoType;
    BoundedArray<QString, 3000> InfoTitre;
};

// Telling audio from video by the file's name.
#pragma once

#include <QString>

// Returns the last three characters of a path in lower case; the whole path when it is shorter.
inline QString LastThree(const QString& path) {
    return path.right(3).toLower();
}

// Whether the path's last three characters are "avi", "mpg" or "mp4" in any case. Everything else is audio.
inline bool IsVideo(const QString& path) {
    const QString ending = LastThree(path);
    return ending == u"avi" || ending == u"mpg" || ending == u"mp4";
}

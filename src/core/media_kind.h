// Audio or video, told from the file's name alone.
#pragma once

#include <QString>

// The last three characters of a path in lower case; the whole of a shorter one.
inline QString LastThree(const QString& path) {
    return path.right(3).toLower();
}

// The path's last three characters are "avi", "mpg" or "mp4" in any case; everything else is audio.
inline bool IsVideo(const QString& path) {
    const QString ending = LastThree(path);
    return ending == u"avi" || ending == u"mpg" || ending == u"mp4";
}

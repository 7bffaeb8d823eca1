// Whether media files can be played, and which decoders are installed.
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

// Opens a file as playing it does: as a video when `isVideo`, else for its sound. Returns the reason when it
// does not open, else an empty text. Opening takes at most five seconds of work and fifteen in all. From any
// thread.
QString FaultOfMedia(const QString& path, bool isVideo);

// A kind of file that cannot be played because a part of GStreamer is not installed.
struct MissingDecoder {
    // The files, for instance ".wma files".
    QString files;
    // The Debian package that brings what is missing.
    QString package;
};

// Returns what is missing of the formats that the jukebox lists. Everything is missing when GStreamer does
// not start.
std::vector<MissingDecoder> MissingDecoders();

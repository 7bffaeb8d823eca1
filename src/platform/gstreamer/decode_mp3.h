// Decodes a short mp3 file to memory without starting a pipeline.
#pragma once

#include "platform/gstreamer/decode_file.h"

// For the theme's sounds, which the first frame has to wait for: some milliseconds, while a pipeline would
// load dozens of libraries first. Takes only what is plainly MPEG audio at 44100 Hz; nothing otherwise, and
// nothing for a file that cannot be read: DecodeFile then decides, and says why. The samples are those of
// DecodeFile, less the silence that an encoder has put in front where the file tells of it. Of the seconds,
// an hour at most counts. From any thread.
std::optional<DecodedSound> DecodeMp3(const QString& path, double maxSeconds);

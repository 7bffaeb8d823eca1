// Decodes a short mp3 file to memory without starting a pipeline.
#pragma once

#include "platform/gstreamer/decode_file.h"

// For the theme's sounds, which the first frame waits for: takes some milliseconds, while a pipeline would
// load dozens of libraries first. Accepts only files that are clearly MPEG audio at 44100 Hz. Returns nothing
// for other files and for files that cannot be read; DecodeFile then decides and gives the reason. The
// samples are those of DecodeFile, without the encoder's leading silence where the file states it.
// `maxSeconds` is limited to an hour. From any thread.
std::optional<DecodedSound> DecodeMp3(const QString& path, double maxSeconds);

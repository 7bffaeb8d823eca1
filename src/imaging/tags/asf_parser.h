// Finds the pictures in ASF headers (Windows Media audio and video).
#pragma once

#include "imaging/tags/tag_buffer.h"

#include <vector>

// The GUID of the ASF Header Object, in the byte order of a file.
extern const std::array<std::uint8_t, 16> kAsfHeader;

// Appends the pictures of the Extended Content Description Object and the Metadata Library Object, in the
// order of the file. The bytes are the header object, from the start of the file. Raises 9 or 6 for a broken
// header. The format is that of "Advanced Systems Format (ASF)", revision 01.20.03; docs/formats/asf.md lists
// the differences.
void ParseASF(const TagBuffer& tag, std::vector<TagImage>& images);

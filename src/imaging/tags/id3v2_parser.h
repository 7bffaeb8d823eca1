// Finds the pictures in ID3v2 tags of versions 2.2, 2.3 and 2.4.
#pragma once

#include "imaging/tags/tag_buffer.h"

#include <vector>

// Each parser appends the pictures in the order of their frames. It can change the bytes, because
// unsynchronisation is removed in place. The bytes are the first ones of the file, as many as the size field
// of the tag says. The formats are those of id3.org's informal standards; docs/formats/id3v2.md lists the
// differences.

// Version 2.2. Raises 9 or 6 for a broken tag.
void ParseID3v22(TagBuffer& tag, std::vector<TagImage>& images);
// Version 2.3. An error ends the parsing; the pictures found before it are kept.
void ParseID3v23(TagBuffer& tag, std::vector<TagImage>& images);
// Version 2.4. Raises 9 or 6 for a broken tag.
void ParseID3v24(TagBuffer& tag, std::vector<TagImage>& images);

// Finding the pictures of ID3v2 tags, versions 2, 3 and 4.
#pragma once

#include "imaging/tag_buffer.h"

#include <vector>

// Each appends the pictures found, in the order of their frames, and may change the bytes: unsynchronisation
// is removed in place. The bytes are the first ones of the file, as many as the tag's size field says. The
// formats are those of id3.org's informal standards; docs/formats/id3v2.md tells what differs.

// Version 2.2. Raises 9 and 6 for a broken tag.
void ParseID3v22(TagBuffer& tag, std::vector<TagImage>& images);
// Version 2.3. A fault ends the parse with what was found so far.
void ParseID3v23(TagBuffer& tag, std::vector<TagImage>& images);
// Version 2.4. Raises 9 and 6 for a broken tag.
void ParseID3v24(TagBuffer& tag, std::vector<TagImage>& images);

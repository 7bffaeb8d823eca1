// The three ID3v2 parsers: header, frames, and the calculation of a picture's position.
#include "imaging/tags/id3v2_parser.h"

#include <algorithm>
#include <optional>

namespace {

// Bytes of the headers of the tag and of a frame.
constexpr int kTagHeader = 10;
constexpr int kFrameHeader = 10;
constexpr int kFrameHeader22 = 6;

// Flags of the tag: unsynchronised, with an extended header (in 2.2: compressed), with a footer.
constexpr int kUnsynchronised = 0x80;
constexpr int kExtended = 0x40;
constexpr int kCompressed22 = 0x40;
constexpr int kFooter = 0x10;

// Flags in the second flag byte of a frame in 2.4.
constexpr int kGrouped = 0x40;
constexpr int kPacked = 0x0C; // compressed or encrypted
constexpr int kFrameUnsynchronised = 0x02;
constexpr int kHasDataLength = 0x01;

// Searches for the ends of strings, one for each kind of string.
struct Searches {
    ZeroSearch mime;
    ZeroSearch description;
    WideZeroSearch wideDescription;
};

bool IsNameByte(int byte) {
    return (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9');
}

// Whether `count` bytes are a frame's name. Names of four characters can contain zeros.
bool IsFrameName(const TagBuffer& tag, Integer32 at, int count) {
    for (int i = 0; i < count; ++i) {
        const int byte = tag.Byte(at + i);
        if (!IsNameByte(byte) && !(count == 4 && byte == 0)) {
            return false;
        }
    }
    return true;
}

bool HasName(const TagBuffer& tag, Integer32 at, const char* name) {
    for (; *name != '\0'; ++name, at += 1) {
        if (tag.Byte(at) != *name) {
            return false;
        }
    }
    return true;
}

void Keep(const TagImage& image, std::vector<TagImage>& images) {
    if (images.size() < kMostTagImages) {
        images.push_back(image);
    }
}

Integer32 ByteDescription(const TagBuffer& tag, Integer32 at, Searches& searches) {
    return tag.StringLength(at, searches.description) + 1;
}

Integer32 WideDescription(const TagBuffer& tag, Integer32 at, Searches& searches) {
    return tag.WideLength(at, searches.wideDescription) * 2 + 2;
}

// --- 2.2 -----------------------------------------------------------------------------------------

void TakePicture22(const TagBuffer& tag, Integer32 pos, Integer32 length, Searches& searches,
                   std::vector<TagImage>& images) {
    if (tag.Byte(pos + 7) == '-' && tag.Byte(pos + 8) == '-') {
        return; // a link
    }
    TagImage image;
    image.MimeOffset = pos + 7;
    image.MimeLength = tag.AnsiLength(pos + 7, 3);
    const int encoding = tag.Byte(pos + 6);
    if (encoding > 1) {
        return;
    }
    const Integer32 description =
        encoding == 0 ? ByteDescription(tag, pos + 11, searches) : WideDescription(tag, pos + 11, searches);
    // Deliberate D-81: the number of the encoding is added to the picture's offset, so the picture begins one
    // byte late after a wide description.
    // One would expect it to begin with its first byte. Decoders that need this byte have always shown
    // nothing.
    image.Offset = pos + 11 + description + encoding;
    image.Category = tag.Byte(pos + 10);
    image.Length = length + kFrameHeader22 - (image.Offset - pos);
    if (image.Offset + image.Length <= pos + length + kFrameHeader22) {
        Keep(image, images);
    }
}

// --- 2.3 and 2.4 ---------------------------------------------------------------------------------

// A frame with a picture, as its header describes it.
struct Frame {
    Integer32 pos;
    Integer32 length;
};

// Reads the MIME type and returns where the description begins. Returns nothing when the picture is a link or
// its MIME type is invalid.
std::optional<Integer32> ReadMime(const TagBuffer& tag, const Frame& frame, Searches& searches,
                                  TagImage& image) {
    const Integer32 mime = frame.pos + 11;
    const Integer32 length = tag.StringLength(mime, searches.mime);
    const bool isLink = length == 3 && tag.Byte(frame.pos + 12) == '-';
    if (isLink || length == 1 || length == 2) {
        return std::nullopt;
    }
    image.MimeOffset = mime;
    image.MimeLength = tag.AnsiLength(mime, std::min<Integer32>(length, kMostMimeBytes));
    const Integer32 description = frame.pos + length + 13;
    image.Category = tag.Byte(description - 1);
    return description;
}

void TakePicture23(const TagBuffer& tag, const Frame& frame, Searches& searches,
                   std::vector<TagImage>& images) {
    TagImage image;
    const auto d = ReadMime(tag, frame, searches, image);
    const int encoding = tag.Byte(frame.pos + 10);
    if (!d || encoding > 1) {
        return;
    }
    image.Offset =
        *d + (encoding == 0 ? ByteDescription(tag, *d, searches) : WideDescription(tag, *d, searches));
    image.Length = frame.length - (image.Offset - frame.pos - kFrameHeader);
    if (image.Offset + image.Length <= frame.pos + frame.length + kFrameHeader) {
        Keep(image, images);
    }
}

// Returns what the flags of a frame subtract from a picture's length. Removes unsynchronisation.
Integer32 AdjustmentOf(TagBuffer& tag, const Frame& frame, int flags, Searches& searches) {
    Integer32 adjustment = 0;
    if ((flags & kFrameUnsynchronised) != 0) {
        adjustment = tag.RemoveUnsync(frame.pos + kFrameHeader, frame.length);
        const Integer32 end = frame.pos + kFrameHeader + frame.length;
        for (ZeroSearch* const search : {&searches.mime, &searches.description, &searches.wideDescription[0],
                                         &searches.wideDescription[1]}) {
            ForgetBefore(*search, end);
        }
    }
    // Deliberate D-82: the byte of a group and the four bytes of a data length are not skipped, and make the
    // picture longer by as many bytes.
    // One would expect them to be skipped. With a data length the picture's bytes begin with the MIME type,
    // so it cannot be decoded; few programs write such frames.
    if ((flags & kGrouped) != 0) {
        adjustment -= 1;
    }
    if ((flags & kHasDataLength) != 0) {
        adjustment -= 4;
    }
    return adjustment;
}

void TakePicture24(TagBuffer& tag, const Frame& frame, int flags, Searches& searches,
                   std::vector<TagImage>& images) {
    const Integer32 adjustment = AdjustmentOf(tag, frame, flags, searches);
    TagImage image;
    const auto d = ReadMime(tag, frame, searches, image);
    const int encoding = tag.Byte(frame.pos + 10);
    if (!d || encoding > 3) {
        return;
    }
    const bool isWide = encoding == 1 || encoding == 2;
    image.Offset = *d + (isWide ? WideDescription(tag, *d, searches) : ByteDescription(tag, *d, searches));
    image.Length = frame.length - (image.Offset - frame.pos - kFrameHeader) - adjustment;
    if (image.Offset + image.Length <= frame.pos + frame.length + kFrameHeader - adjustment) {
        Keep(image, images);
    }
}

bool IsPictureFrame(const TagBuffer& tag, const Frame& frame, Integer32 size) {
    // Deliberate D-83: the ten bytes of the frame's header are not counted here.
    // One would expect a frame that passes the end of the tag to be left out. Because of this rule the last
    // frame of a tag without padding is found.
    return frame.pos + frame.length <= size && HasName(tag, frame.pos, "APIC") && frame.length >= 1;
}

void WalkFrames23(TagBuffer& tag, Integer32 pos, Integer32 size, std::vector<TagImage>& images) {
    Searches searches;
    while (pos < size) {
        if (tag.Byte(pos) == 0 || !IsFrameName(tag, pos, 4)) {
            return;
        }
        const Frame frame{pos, tag.ReadInt32BE(pos + 4)};
        if (frame.length < 0) {
            return;
        }
        // Deliberate D-84: a frame of a group, flag 0x20, is read like any other, with its group byte as the
        // text encoding.
        // One would expect the byte to be skipped. The result cannot be shown, but counts as a picture; few
        // programs write such frames.
        if (IsPictureFrame(tag, frame, size) && tag.Byte(pos + 9) <= 63) {
            TakePicture23(tag, frame, searches, images);
        }
        pos += frame.length + kFrameHeader;
    }
}

void WalkFrames24(TagBuffer& tag, Integer32 pos, Integer32 size, std::vector<TagImage>& images) {
    Searches searches;
    while (pos < size) {
        if (tag.Byte(pos) == 0 || !IsFrameName(tag, pos, 4)) {
            return;
        }
        const Frame frame{pos, tag.ReadSyncSafe(pos + 4)};
        if (IsPictureFrame(tag, frame, size)) {
            const int flags = tag.Byte(pos + 9);
            if ((flags & kPacked) == 0) {
                TakePicture24(tag, frame, flags, searches, images);
            }
        }
        pos += frame.length + kFrameHeader;
    }
}

// Removes the unsynchronisation of a whole tag if its flags say so. Returns the remaining size.
// Deliberate D-85: after an extended header the area passes the end of the tag by the length of that header.
// One would expect it to end with the tag. Such a tag of version 2.3 has no pictures, and one of 2.4 stops
// the program; hardly any program writes extended headers.
Integer32 Synchronised(TagBuffer& tag, int flags, Integer32 pos, Integer32 size) {
    const bool isNeeded = (flags & kUnsynchronised) != 0;
    return isNeeded ? size - tag.RemoveUnsync(pos, size - kTagHeader) : size;
}

void Parse23(TagBuffer& tag, std::vector<TagImage>& images) {
    const int flags = tag.Byte(5);
    Integer32 pos = kTagHeader;
    if ((flags & kExtended) != 0) {
        // Deliberate D-86: the size of the extended header excludes its own four bytes, and they are not
        // added.
        // One would expect the first frame to be found. Instead, parsing starts at the last four bytes of the
        // header, which are mostly zeros, and the tag has no pictures; hardly any program writes extended
        // headers.
        pos += tag.ReadInt32BE(10);
        if (pos < kTagHeader) {
            return;
        }
    }
    const Integer32 size = Synchronised(tag, flags, pos, tag.ReadSyncSafe(6));
    if (size >= pos) {
        WalkFrames23(tag, pos, size, images);
    }
}

} // namespace

void ParseID3v22(TagBuffer& tag, std::vector<TagImage>& images) {
    const int flags = tag.Byte(5);
    if ((flags & kCompressed22) != 0) {
        return;
    }
    Integer32 pos = kTagHeader;
    const Integer32 size = Synchronised(tag, flags, pos, tag.ReadSyncSafe(6));
    if (size < kTagHeader) {
        return;
    }
    Searches searches;
    while (pos < size) {
        if (tag.Byte(pos) == 0 || !IsFrameName(tag, pos, 3)) {
            return;
        }
        const Integer32 length = tag.ReadInt24BE(pos + 3);
        if (HasName(tag, pos, "PIC") && length >= 1 && pos + length <= size) {
            TakePicture22(tag, pos, length, searches, images);
        }
        pos += length + kFrameHeader22;
    }
}

void ParseID3v23(TagBuffer& tag, std::vector<TagImage>& images) {
    PassOver([&] { Parse23(tag, images); });
}

void ParseID3v24(TagBuffer& tag, std::vector<TagImage>& images) {
    const int flags = tag.Byte(5);
    Integer32 pos = kTagHeader;
    Integer32 size = tag.ReadSyncSafe(6);
    if ((flags & kFooter) != 0) {
        size -= kTagHeader;
    }
    if ((flags & kExtended) != 0) {
        pos += tag.ReadSyncSafe(10);
    }
    size = Synchronised(tag, flags, pos, size);
    if (size >= pos) {
        WalkFrames24(tag, pos, size, images);
    }
}

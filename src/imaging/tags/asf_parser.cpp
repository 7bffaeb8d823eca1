// The ASF parser: objects, descriptors, records, picture values.
#include "imaging/tags/asf_parser.h"

#include <algorithm>
#include <string_view>

namespace {

using Guid = std::array<std::uint8_t, 16>;

// clang-format off
// {D2D0A440-E307-11D2-97F0-00A0C95EA850}
constexpr Guid kExtendedContentDescription = {
    0x40, 0xA4, 0xD0, 0xD2, 0x07, 0xE3, 0xD2, 0x11, 0x97, 0xF0, 0x00, 0xA0, 0xC9, 0x5E, 0xA8, 0x50};
// {5FBF03B5-A92E-11CF-8EE3-00C00C205365}
constexpr Guid kHeaderExtension = {
    0xB5, 0x03, 0xBF, 0x5F, 0x2E, 0xA9, 0xCF, 0x11, 0x8E, 0xE3, 0x00, 0xC0, 0x0C, 0x20, 0x53, 0x65};
// {ABD3D211-A9BA-11CF-8EE6-00C00C205365}
constexpr Guid kHeaderExtensionMark = {
    0x11, 0xD2, 0xD3, 0xAB, 0xBA, 0xA9, 0xCF, 0x11, 0x8E, 0xE6, 0x00, 0xC0, 0x0C, 0x20, 0x53, 0x65};
// {44231C94-9498-49D1-A141-1D134E457054}
constexpr Guid kMetadataLibrary = {
    0x94, 0x1C, 0x23, 0x44, 0x98, 0x94, 0xD1, 0x49, 0xA1, 0x41, 0x1D, 0x13, 0x4E, 0x45, 0x70, 0x54};
// clang-format on

// Bytes of an object's GUID and size.
constexpr int kObjectHeader = 24;
constexpr int kByteArray = 1;

// The name of a picture's attribute as stored: 16-bit characters, low byte first, with the final zero.
constexpr std::string_view kPictureName("W\0M\0/\0P\0i\0c\0t\0u\0r\0e\0\0\0", 22);

bool IsAt(const TagBuffer& tag, Integer32 pos, const Guid& guid) {
    return std::ranges::equal(tag.Bytes(pos, static_cast<int>(guid.size())), guid);
}

bool IsPictureName(const TagBuffer& tag, Integer32 pos, int length) {
    const auto name = tag.Bytes(pos, length);
    return std::ranges::equal(name, kPictureName,
                              [](std::uint8_t a, char b) { return a == static_cast<std::uint8_t>(b); });
}

// Whether parsing found an error.
enum class Outcome { kGood, kBad };

class AsfParser {
public:
    AsfParser(const TagBuffer& tag, std::vector<TagImage>& images) : tag_(tag), images_(images) {}

    void ParseHeader();

private:
    Outcome ParseContentDescriptors(Integer32 pos, Integer32 end);
    Outcome ParseHeaderExtension(Integer32 pos, Integer32 end);
    Outcome ParseMetadataLibrary(Integer32& pos, Integer32 end);
    // Each moves `pos` past what it reads. A picture that passes `end` is dropped.
    void ReadDescriptor(Integer32& pos, Integer32 end);
    void ReadRecord(Integer32& pos, Integer32 end);
    void ReadPicture(Integer32& pos, Integer32 end);

    // The high half of the size of the object at `pos` is not 0.
    bool IsTooLarge(Integer32 pos) const { return tag_.ReadInt32LE(pos + 20) != 0; }
    Integer32 ObjectEnd(Integer32 pos) const { return pos + tag_.ReadInt32LE(pos + 16); }

    const TagBuffer& tag_;
    std::vector<TagImage>& images_;
    WideZeroSearch mime_;
    WideZeroSearch description_;
};

void AsfParser::ParseHeader() {
    const Integer32 limit = tag_.Size() - kObjectHeader;
    const Integer32 count = tag_.ReadInt32LE(24);
    Integer32 pos = 30;
    for (Integer32 object = 0; object < count; object += 1) {
        if (IsTooLarge(pos)) {
            return;
        }
        const Integer32 end = ObjectEnd(pos);
        if (IsAt(tag_, pos, kExtendedContentDescription) &&
            ParseContentDescriptors(pos + kObjectHeader, end) == Outcome::kBad) {
            return;
        }
        // Deliberate D-87: objects after the Header Extension Object are ignored.
        // One would expect all objects to be read. Files are known by the picture before it or in it.
        if (IsAt(tag_, pos, kHeaderExtension)) {
            ParseHeaderExtension(pos + kObjectHeader, end);
            return;
        }
        // An object with a size of 0 or less would be read endlessly.
        if (end > limit || end <= pos) {
            return;
        }
        pos = end;
    }
}

Outcome AsfParser::ParseContentDescriptors(Integer32 pos, Integer32 end) {
    const int count = tag_.ReadInt16LE(pos);
    pos += 2;
    for (int i = 0; i < count; ++i) {
        const Integer32 before = pos;
        ReadDescriptor(pos, end);
        if (pos > end || pos <= before) {
            return Outcome::kBad;
        }
    }
    return Outcome::kGood;
}

void AsfParser::ReadDescriptor(Integer32& pos, Integer32 end) {
    const int nameLength = tag_.ReadInt16LE(pos);
    const bool isPicture = IsPictureName(tag_, pos + 2, nameLength);
    pos += Integer32(nameLength) + 2;
    if (isPicture && tag_.ReadInt16LE(pos) == kByteArray) {
        pos += 4;
        ReadPicture(pos, end);
    } else {
        pos += Integer32(tag_.ReadInt16LE(pos + 2)) + 4;
    }
}

// A negative length moves `pos` back. The callers stop if `pos` has not moved forward.
void AsfParser::ReadPicture(Integer32& pos, Integer32 end) {
    TagImage image;
    image.Category = tag_.Byte(pos);
    image.Length = tag_.ReadInt32LE(pos + 1);
    image.MimeOffset = pos + 5;
    const Integer32 units = tag_.WideLength(image.MimeOffset, mime_);
    image.MimeLength = std::min<Integer32>(units * 2, kMostMimeBytes);
    image.MimeIsWide = true;
    const Integer32 description = image.MimeOffset + units * 2 + 2;
    image.Offset = description + tag_.WideLength(description, description_) * 2 + 2;
    pos = image.Offset + image.Length;
    if (pos <= end && images_.size() < kMostTagImages) {
        images_.push_back(image);
    }
}

Outcome AsfParser::ParseHeaderExtension(Integer32 pos, Integer32 end) {
    if (!IsAt(tag_, pos, kHeaderExtensionMark)) {
        return Outcome::kBad;
    }
    const Integer32 limit = pos + 22 + tag_.ReadInt32LE(pos + 18);
    pos += 22;
    while (pos < limit) {
        if (IsTooLarge(pos)) {
            return Outcome::kBad;
        }
        const Integer32 before = pos;
        if (IsAt(tag_, pos, kMetadataLibrary)) {
            if (ParseMetadataLibrary(pos, ObjectEnd(pos)) == Outcome::kBad) {
                return Outcome::kBad;
            }
        } else {
            pos = ObjectEnd(pos);
            if (IsAt(tag_, before, kExtendedContentDescription) &&
                ParseContentDescriptors(before + kObjectHeader, pos) == Outcome::kBad) {
                return Outcome::kBad;
            }
        }
        if (pos > end || pos <= before) {
            return Outcome::kBad;
        }
    }
    return Outcome::kGood;
}

// Deliberate D-88: the next object is read where the last record ends, not where this object ends.
// One would expect the object's end to count. Files have nothing between the two.
Outcome AsfParser::ParseMetadataLibrary(Integer32& pos, Integer32 end) {
    const int count = tag_.ReadInt16LE(pos + kObjectHeader);
    if (count == 0) {
        return Outcome::kBad;
    }
    pos += 26;
    for (int i = 0; i < count; ++i) {
        const Integer32 before = pos;
        ReadRecord(pos, end);
        if (pos > end || pos <= before) {
            return Outcome::kBad;
        }
    }
    return Outcome::kGood;
}

void AsfParser::ReadRecord(Integer32& pos, Integer32 end) {
    const int nameLength = tag_.ReadInt16LE(pos + 4);
    const int type = tag_.ReadInt16LE(pos + 6);
    const Integer32 dataLength = tag_.ReadInt32LE(pos + 8);
    const bool isPicture = IsPictureName(tag_, pos + 12, nameLength) && type == kByteArray;
    pos += Integer32(nameLength) + 12;
    if (isPicture) {
        ReadPicture(pos, end);
    } else {
        pos += dataLength;
    }
}

} // namespace

// {75B22630-668E-11CF-A6D9-00AA0062CE6C}
const std::array<std::uint8_t, 16> kAsfHeader = {0x30, 0x26, 0xB2, 0x75, 0x8E, 0x66, 0xCF, 0x11,
                                                 0xA6, 0xD9, 0x00, 0xAA, 0x00, 0x62, 0xCE, 0x6C};

void ParseASF(const TagBuffer& tag, std::vector<TagImage>& images) {
    AsfParser(tag, images).ParseHeader();
}

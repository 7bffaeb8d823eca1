// The pictures stored in the tag of a media file, and how to decode them.
#pragma once

#include "imaging/tags/tag_buffer.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

class c32bppDIB;
struct Files;
struct SystemPictures;

// Reads ID3v2 tags of versions 2.2, 2.3 and 2.4 and ASF headers, only at the very start of a file. Other
// files have no pictures. An object is used for one file after another: it keeps the bytes of the last tag
// until the next load, and the pictures are ranges of them.
class cTaggedImages {
public:
    // Forgets the previous file, parses the new one and returns the number of pictures. Returns 0 for a file
    // that is missing, shorter than 30 bytes, without such a tag, or with a tag larger than the file or than
    // 256 MiB. A broken tag of version 2.2 or 2.4, a broken ASF header, and an ID3v2 tag of any version with
    // a size below 4 stop the program (9 or 6); the error's detail names the file.
    int LoadTagged_Images(Files& files, const QString& FileName);

    int ImageCount() const { return static_cast<int>(images_.size()); }
    // The MIME type or format as stored, for instance "image/jpeg" or "JPG". Empty when there is no picture
    // with this number. Numbers start at 1.
    QString ImageType(int Index) const;
    // The picture type, 0 to 255; 0 when there is no picture with this number.
    int ImageCategory(int Index) const;
    // The bytes of a picture, valid until the next load. Bytes that the tag claims after its own end are
    // missing. Returns nothing when there is no picture with this number, or when none of its bytes is in the
    // tag.
    std::optional<std::span<const std::uint8_t>> ExtractImageData(int Index) const;

private:
    void ReadTag(Files& files, const QString& FileName);
    void ParseTag(const QString& FileName);
    const TagImage* Image(int Index) const;

    // Keeps its capacity from file to file, unless a tag was very large.
    QByteArray tag_;
    std::vector<TagImage> images_;
};

// Decodes a picture from a tag with the system's loader: bitmaps, JPEG and GIF. The result is opaque, even if
// the picture has alpha or a transparent colour. Returns false and leaves the object empty for all other
// formats, PNG included.
bool PictureFromStream(SystemPictures& pictures, std::span<const std::uint8_t> bytes, c32bppDIB& picture);

// The pictures stored inside a media file's tag, and making pictures of them.
#pragma once

#include "imaging/tag_buffer.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

class c32bppDIB;
struct Files;
struct SystemPictures;

// Reads ID3v2 tags of versions 2, 3 and 4 and ASF headers, both at the very start of a file. A file with any
// other start has no pictures. One object is used for file after file: the bytes of the last tag stay until
// the next load, and its pictures are ranges of them.
class cTaggedImages {
public:
    // Forgets the former file and parses the new one; the number of pictures found. 0 for a file that is
    // missing, shorter than 30 bytes, without such a tag, or whose tag is larger than the file or than 256
    // MiB. A broken tag of version 2.2 or 2.4, a broken ASF header, and an ID3v2 tag of any version whose
    // size is below 4 stop the program (9 or 6); the error's detail names the file.
    int LoadTagged_Images(Files& files, const QString& FileName);

    int ImageCount() const { return static_cast<int>(images_.size()); }
    // The format as stored, for instance "JPG" or "image/jpeg"; empty when there is no picture of this
    // number. Numbers begin with 1.
    QString ImageType(int Index) const;
    // The picture type, 0 to 255; 0 when there is no picture of this number.
    int ImageCategory(int Index) const;
    // The bytes of a picture; they stay until the next load. Bytes that the tag claims behind its own end are
    // missing. Nothing when there is no picture of this number, or none of its bytes lies in the tag.
    std::optional<std::span<const std::uint8_t>> ExtractImageData(int Index) const;

private:
    void ReadTag(Files& files, const QString& FileName);
    void ParseTag(const QString& FileName);
    const TagImage* Image(int Index) const;

    // The buffer keeps its room from file to file, unless a tag was very large.
    QByteArray tag_;
    std::vector<TagImage> images_;
};

// Decodes a picture from a tag by the system's loader alone: bitmaps, JPEG and GIF, all of them opaque,
// whatever alpha or transparent colour they have. False, and an empty object, for anything else, PNG among
// it.
bool PictureFromStream(SystemPictures& pictures, std::span<const std::uint8_t> bytes, c32bppDIB& picture);

// Finding the picture of a track or a folder: files next to the music, then the pictures in its tags.
#pragma once

#include <QString>

#include <cstdint>
#include <optional>
#include <span>

class FolderNames;
struct Form_Main;

// Return the path, as spelled on disk, of a folder's picture, "folder.jpg" or "folder.png", and of its big
// picture, "bigcover.jpg" or "bigcover.png". Empty when there is none. `names` belongs to the folder.
QString FolderPicture(const FolderNames& names, const QString& folder);
QString BigPicture(const FolderNames& names, const QString& folder);

// Returns the picture next to a track; empty when there is none. `names` belongs to the track's folder.
QString PictureBeside(const FolderNames& names, const QString& path);

// A cover in a tag, valid as long as the tag stays loaded.
struct TagCover {
    std::span<const std::uint8_t> bytes;
    // Whether its format can be decoded.
    bool isDecoded = false;
};

// Returns the first picture of type 0 or 3 in a file's tag; nothing when there is none or its bytes cannot be
// read. A broken tag stops the program (9, 6); a tag of fewer than 4 bytes raises 9.
std::optional<TagCover> SearchTag(Form_Main& form, const QString& path);

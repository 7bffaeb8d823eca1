// Pictures kept in the size in which they are drawn, so that a page that is shown again needs no decoding.
#pragma once

#include "platform/files.h"

#include <QHash>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <list>
#include <memory>

class c32bppDIB;
struct PictureDrawing;
struct Surface;

// The origin of a picture. The two are separate because one file can have both.
enum class PictureSource { kFile, kTag };

// A picture in one size: its file and the state of that file, its origin, and the size in pixels.
struct ReadyKey {
    QString path;
    FileIdentity identity;
    PictureSource source = PictureSource::kFile;
    int width = 0;
    int height = 0;

    bool operator==(const ReadyKey&) const = default;
};

// A picture in the size of its key.
struct ReadyPicture {
    // There is a picture, whether it can be decoded or not.
    bool isFound = false;
    // Null when the picture could not be decoded.
    std::shared_ptr<PictureDrawing> drawing;
};

// Keeps the most recently used pictures within a number of bytes. A changed file has a new key, and its old
// pictures are dropped when they become the oldest.
class ReadyPictures {
public:
    static constexpr std::int64_t kMostBytes = std::int64_t{64} << 20;

    explicit ReadyPictures(std::int64_t mostBytes = kMostBytes) : mostBytes_(mostBytes) {}
    ReadyPictures(const ReadyPictures&) = delete;
    ReadyPictures& operator=(const ReadyPictures&) = delete;

    // Returns the picture and makes it the most recently used. Null when it is not kept. The pointer is valid
    // until the next Put.
    const ReadyPicture* Find(const ReadyKey& key);
    // Keeps a picture, unless it is larger than the whole memory. Drops the oldest pictures to make room.
    void Put(const ReadyKey& key, const ReadyPicture& picture);

    std::int64_t Bytes() const { return bytes_; }
    std::size_t Count() const { return entries_.size(); }

private:
    struct Entry {
        ReadyKey key;
        ReadyPicture picture;
        std::int64_t bytes = 0;
    };
    using Place = std::list<Entry>::iterator;

    void Drop(Place place);

    std::int64_t mostBytes_;
    std::int64_t bytes_ = 0;
    // The most recently used entry is first.
    std::list<Entry> entries_;
    QHash<ReadyKey, Place> places_;
};

std::size_t qHash(const ReadyKey& key, std::size_t seed = 0);

// Whether a picture of this size may be kept: at least one pixel in each direction, and not too many in
// total.
bool MayBeReady(int width, int height);

// The whole picture in another size, as Render would draw it. Null for an empty picture.
std::shared_ptr<PictureDrawing> MakeReady(const c32bppDIB& picture, int width, int height);

// Draws such a picture with its alpha; its top left corner is at (x, y).
void DrawReady(const ReadyPicture& picture, Surface& target, int x, int y);

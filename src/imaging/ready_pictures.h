// Pictures kept in the size in which they are drawn, so that a page that is seen again is not decoded again.
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

// What a picture comes from. The two are kept apart, as one file may have both.
enum class PictureSource { kFile, kTag };

// A picture in one size: its file, in one state of that file, what of it, and the size in pixels.
struct ReadyKey {
    QString path;
    FileIdentity identity;
    PictureSource source = PictureSource::kFile;
    int width = 0;
    int height = 0;

    bool operator==(const ReadyKey&) const = default;
};

// A picture of the size of its key.
struct ReadyPicture {
    // There is a picture to be shown, decodable or not.
    bool isFound = false;
    // Null when nothing could be decoded.
    std::shared_ptr<PictureDrawing> drawing;
};

// Keeps the pictures used last, within a number of bytes. A file that has changed has another key, and its
// old pictures go as they grow old.
class ReadyPictures {
public:
    static constexpr std::int64_t kMostBytes = std::int64_t{64} << 20;

    explicit ReadyPictures(std::int64_t mostBytes = kMostBytes) : mostBytes_(mostBytes) {}
    ReadyPictures(const ReadyPictures&) = delete;
    ReadyPictures& operator=(const ReadyPictures&) = delete;

    // The picture, which thereby becomes the one used last. Null when it is not kept; the pointer holds until
    // the next Put.
    const ReadyPicture* Find(const ReadyKey& key);
    // Keeps a picture, unless it is larger than all room. The oldest ones go for it.
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
    // The one used last stands first.
    std::list<Entry> entries_;
    QHash<ReadyKey, Place> places_;
};

std::size_t qHash(const ReadyKey& key, std::size_t seed = 0);

// A picture of these sizes may be kept: one pixel or more each way, and not too many.
bool MayBeReady(int width, int height);

// The whole picture in another size, as Render would show it. Null for an empty picture.
std::shared_ptr<PictureDrawing> MakeReady(const c32bppDIB& picture, int width, int height);

// Draws such a picture with its corner at (x, y), with its alpha.
void DrawReady(const ReadyPicture& picture, Surface& target, int x, int y);

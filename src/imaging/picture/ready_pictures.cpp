// Keeps pictures ready, in the order of their use.
#include "imaging/picture/ready_pictures.h"

#include "imaging/picture/c32bppdib.h"
#include "imaging/picture/drawing.h"
#include "imaging/picture/scaling.h"

#include <QHashFunctions>

#include <iterator>
#include <utility>

namespace {

// Approximate size of an entry without its path and pixels.
constexpr std::int64_t kEntryBytes = 512;
// The number of pixels that fill a quarter of the memory.
constexpr std::int64_t kMostPixels = ReadyPictures::kMostBytes / 4 / 4;

std::int64_t BytesOf(const ReadyKey& key, const ReadyPicture& picture) {
    constexpr std::int64_t kCharacterBytes = 2;
    return kEntryBytes + key.path.size() * kCharacterBytes +
           (picture.drawing ? picture.drawing->picture.sizeInBytes() : 0);
}

} // namespace

std::size_t qHash(const ReadyKey& key, std::size_t seed) {
    return qHashMulti(seed, key.path, key.identity.inode, key.identity.modifiedNanoseconds, key.width,
                      key.height);
}

const ReadyPicture* ReadyPictures::Find(const ReadyKey& key) {
    const auto found = places_.constFind(key);
    if (found == places_.constEnd()) {
        return nullptr;
    }
    entries_.splice(entries_.begin(), entries_, *found);
    return &entries_.front().picture;
}

void ReadyPictures::Put(const ReadyKey& key, const ReadyPicture& picture) {
    if (const auto old = places_.constFind(key); old != places_.constEnd()) {
        Drop(*old);
    }
    const std::int64_t bytes = BytesOf(key, picture);
    if (bytes > mostBytes_) {
        return;
    }
    while (bytes_ > mostBytes_ - bytes) {
        Drop(std::prev(entries_.end()));
    }
    entries_.push_front({key, picture, bytes});
    places_.insert(key, entries_.begin());
    bytes_ += bytes;
}

void ReadyPictures::Drop(Place place) {
    bytes_ -= place->bytes;
    places_.remove(place->key);
    entries_.erase(place);
}

bool MayBeReady(int width, int height) {
    return width > 0 && height > 0 && std::int64_t{width} * height <= kMostPixels;
}

std::shared_ptr<PictureDrawing> MakeReady(const c32bppDIB& picture, int width, int height) {
    if (picture.Handle() == 0) {
        return nullptr;
    }
    const QImage& whole = picture.Drawing().picture;
    const QSize size(width, height);
    PictureDrawing ready;
    // Makes a copy, because the object's own drawing is a view of its pixels and ends with them.
    ready.picture = whole.size() == size ? whole.copy() : SmoothPart(whole, whole.rect(), size);
    return ready.picture.isNull() ? nullptr : std::make_shared<PictureDrawing>(std::move(ready));
}

void DrawReady(const ReadyPicture& picture, Surface& target, int x, int y) {
    if (picture.drawing) {
        const QSize size = picture.drawing->picture.size();
        DrawPart(*picture.drawing, {0, 0, size.width(), size.height()}, target,
                 {x, y, size.width(), size.height()}, 1.0, ScalingQuality::kSmooth);
    }
}

// Decodes covers no larger than they are drawn.
#include "imaging/picture/cover_picture.h"

#include "imaging/picture/reduced_jpeg.h"
#include "platform/event_pump.h"
#include "platform/files.h"

namespace {

std::span<const std::uint8_t> SpanOf(const QByteArray& bytes) {
    return {reinterpret_cast<const std::uint8_t*>(bytes.constData()), static_cast<std::size_t>(bytes.size())};
}

// Decodes a picture for a rectangle of this size: a large JPEG at a fraction of its size, other pictures
// whole.
void Decode(const PicturePorts& ports, const QByteArray& bytes, int width, int height, c32bppDIB& picture) {
    if (!LoadReducedJpeg(SpanOf(bytes), width, height, picture)) {
        picture.LoadPicture_Stream(ports, SpanOf(bytes));
    }
}

} // namespace

bool CoverPicture::LoadPicture_File(const PicturePorts& ports, const QString& FileName) {
    source_.reset();
    isWhole_ = false;
    whole_.DestroyDIB();
    const auto identity = ports.files.Identity(FileName);
    if (!identity || !IsPictureFileSize(identity->size)) {
        return false;
    }
    source_.emplace(Source{ports, {FileName, *identity, PictureSource::kFile, 0, 0}});
    ports.pump.DoEvents();
    return true;
}

const c32bppDIB& CoverPicture::Whole() const {
    if (source_ && !isWhole_) {
        isWhole_ = true;
        if (const auto bytes = ReadPictureFile(source_->ports, source_->key.path)) {
            whole_.LoadPicture_Stream(source_->ports, SpanOf(*bytes));
        }
    }
    return whole_;
}

ReadyPicture CoverPicture::Ready(int width, int height) const {
    ReadyKey key = source_->key;
    key.width = width;
    key.height = height;
    if (const ReadyPicture* const kept = ready_.Find(key)) {
        return *kept;
    }
    const auto bytes = ReadPictureFile(source_->ports, key.path);
    if (!bytes) {
        // Not kept, because the disk may answer again at the next attempt.
        return {true, nullptr};
    }
    c32bppDIB picture;
    Decode(source_->ports, *bytes, width, height, picture);
    ReadyPicture made{true, MakeReady(picture, width, height)};
    ready_.Put(key, made);
    return made;
}

bool CoverPicture::Render(Surface& destinationDC, int destX, int destY, int destWidth, int destHeight) const {
    if (!source_ || !MayBeReady(destWidth, destHeight)) {
        return Whole().Render(destinationDC, destX, destY, destWidth, destHeight);
    }
    const ReadyPicture picture = Ready(destWidth, destHeight);
    DrawReady(picture, destinationDC, destX, destY);
    return picture.drawing != nullptr;
}

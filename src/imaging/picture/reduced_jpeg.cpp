// Decodes a large JPEG at a fraction of its size, with the toolkit's reader.
#include "imaging/picture/reduced_jpeg.h"

#include "imaging/picture/c32bppdib.h"
#include "platform/jpeg_limits.h"
#include "platform/picture_limits.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace {

constexpr std::array<std::uint8_t, 3> kJpeg = {0xFF, 0xD8, 0xFF};
// The decoder can scale by eighths of the size.
constexpr std::int64_t kEighths = 8;

// The lowest number of eighths of `whole` that is at least twice `shown`.
std::int64_t EighthsFor(std::int64_t whole, std::int64_t shown) {
    return (2 * shown * kEighths + whole - 1) / whole;
}

// Whether the rounding of the decoder remains invisible. It rounds the size up to whole pixels, so the last
// pixel extends past the picture's edge and the edge moves inwards. A fifth of a pixel, as shown, is the
// limit.
bool KeepsEdge(std::int64_t whole, std::int64_t shown, std::int64_t eighths) {
    const std::int64_t past = (kEighths - whole * eighths % kEighths) % kEighths;
    return past * shown * 5 <= whole * eighths;
}

bool TakeImage(const QImage& image, c32bppDIB& picture) {
    PicturePixels pixels;
    if (image.isNull() || !pixels.InitializeUnset(image.width(), image.height())) {
        return false;
    }
    for (int y = 0; y < image.height(); ++y) {
        std::memcpy(pixels.Line(y).data(), image.constScanLine(y), pixels.ScanWidth());
    }
    pixels.ImageType = kImageBitmap;
    picture.TakePixels(std::move(pixels));
    return true;
}

} // namespace

bool LoadReducedJpeg(std::span<const std::uint8_t> bytes, int width, int height, c32bppDIB& picture) {
    picture.DestroyDIB();
    if (bytes.size() < kJpeg.size() || !std::ranges::equal(bytes.first(kJpeg.size()), kJpeg)) {
        return false;
    }
    QByteArray file = QByteArray::fromRawData(reinterpret_cast<const char*>(bytes.data()),
                                              static_cast<qsizetype>(bytes.size()));
    QBuffer buffer(&file);
    QImageReader reader(&buffer, "jpeg");
    reader.setAutoTransform(false);
    const QSize size = reader.size();
    if (!IsPictureSize(size.width(), size.height())) {
        return false;
    }
    std::int64_t eighths = std::max(EighthsFor(size.width(), width), EighthsFor(size.height(), height));
    while (eighths < kEighths &&
           !(KeepsEdge(size.width(), width, eighths) && KeepsEdge(size.height(), height, eighths))) {
        ++eighths;
    }
    if (eighths >= kEighths) {
        return false;
    }
    const QSize scaled(static_cast<int>(size.width() * eighths / kEighths),
                       static_cast<int>(size.height() * eighths / kEighths));
    // Four bytes per pixel in the toolkit's picture and four in the image object.
    if (!IsJpegAffordable(bytes, std::int64_t{scaled.width()} * scaled.height() * 8)) {
        return false;
    }
    reader.setScaledSize(scaled);
    return TakeImage(reader.read().convertToFormat(QImage::Format_RGB32), picture);
}

// Decoding a large JPEG at a fraction of its size, through the toolkit's reader.
#include "imaging/reduced_jpeg.h"

#include "imaging/c32bppdib.h"
#include "platform/jpeg_limits.h"
#include "platform/picture_limits.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>

#include <algorithm>
#include <array>
#include <cstring>

namespace {

constexpr std::array<std::uint8_t, 3> kJpeg = {0xFF, 0xD8, 0xFF};
// The decoder can leave out eighths of the size.
constexpr std::int64_t kEighths = 8;

// The least number of eighths of `whole` that is twice `shown` or more.
std::int64_t EighthsFor(std::int64_t whole, std::int64_t shown) {
    return (2 * shown * kEighths + whole - 1) / whole;
}

// The decoder rounds up to whole pixels, so that its last one reaches past the picture's edge, which lies
// further in for it. Whether that is too little to be seen: a fifth of a pixel of what is shown.
bool KeepsEdge(std::int64_t whole, std::int64_t shown, std::int64_t eighths) {
    const std::int64_t past = (kEighths - whole * eighths % kEighths) % kEighths;
    return past * shown * 5 <= whole * eighths;
}

bool TakePixels(const QImage& image, c32bppDIB& picture) {
    if (image.isNull() || !picture.InitializeDIB(image.width(), image.height())) {
        return false;
    }
    std::uint8_t* to = picture.BitsPointer();
    for (int y = image.height() - 1; y >= 0; --y, to += picture.ScanWidth()) {
        std::memcpy(to, image.constScanLine(y), picture.ScanWidth());
    }
    picture.ImageType = kImageBitmap;
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
    // Four bytes in the toolkit's picture and four in the image object.
    if (!IsJpegAffordable(bytes, std::int64_t{scaled.width()} * scaled.height() * 8)) {
        return false;
    }
    reader.setScaledSize(scaled);
    return TakePixels(reader.read().convertToFormat(QImage::Format_RGB32), picture);
}

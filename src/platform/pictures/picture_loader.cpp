// Recognising a picture file by its first bytes, and reading BMP and JPEG through the toolkit.
#include "platform/pictures/picture_loader.h"

#include "platform/jpeg_limits.h"
#include "platform/picture_limits.h"
#include "platform/pictures/bitmap_file.h"
#include "platform/pictures/colour_picture.h"
#include "platform/pictures/gif_frame.h"
#include "platform/pictures/run_lengths.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace {

constexpr QImage::Format kColours = QImage::Format_RGB32;
constexpr std::int64_t kColourBytes = 4;

// Bytes of a 32-bit picture of this size, plus those of the toolkit's own picture where that has another
// format.
std::int64_t BytesFor(const QSize& size, QImage::Format format) {
    const std::int64_t pixels = std::int64_t{size.width()} * size.height();
    const std::int64_t bits = format == kColours ? 0 : QImage::toPixelFormat(format).bitsPerPixel();
    return pixels * kColourBytes + pixels * bits / 8;
}

// Copies in bands, so that the whole picture is held in two formats once and not three times.
void CopyAsColours(const QImage& image, SystemPicture& picture) {
    constexpr int kBandRows = 64;
    for (int y = 0; y < picture.height; y += kBandRows) {
        const int rows = std::min(kBandRows, picture.height - y);
        const QImage band = image.copy(0, y, picture.width, rows).convertToFormat(kColours);
        for (int i = 0; i < rows; ++i) {
            std::memcpy(picture.memory.get() + static_cast<std::size_t>(y + i) * picture.stride,
                        band.constScanLine(i), picture.stride);
        }
    }
}

// Reads with one of the toolkit's readers. The pixels start as zeros, because a truncated file leaves some of
// them out.
std::unique_ptr<SystemPicture> Read(QImageReader& reader, const QSize& size, QImage::Format format) {
    auto picture = NewColourPicture(size.width(), size.height());
    if (!picture) {
        return nullptr;
    }
    QImage image = format == kColours ? QImage(picture->memory.get(), size.width(), size.height(),
                                               static_cast<qsizetype>(picture->stride), kColours)
                                      : QImage(size, format);
    if (image.isNull()) {
        return nullptr;
    }
    image.fill(0);
    if (!reader.read(&image) || image.size() != size) {
        return nullptr;
    }
    if (image.constBits() != picture->pixels) {
        CopyAsColours(image, *picture);
    }
    return picture;
}

std::unique_ptr<SystemPicture> LoadByToolkit(QByteArray file, const char* format,
                                             bool (*isAffordable)(std::span<const std::uint8_t> file,
                                                                  std::int64_t pictureBytes)) {
    const std::span bytes(reinterpret_cast<const std::uint8_t*>(file.constData()),
                          static_cast<std::size_t>(file.size()));
    QBuffer buffer(&file);
    QImageReader reader(&buffer, format);
    reader.setAutoTransform(false);
    const QSize told = reader.size();
    const QSize size(told.width(), std::abs(told.height()));
    if (!IsPictureSize(size.width(), size.height()) ||
        !isAffordable(bytes, BytesFor(size, reader.imageFormat()))) {
        return nullptr;
    }
    return Read(reader, size, reader.imageFormat());
}

// Only the memory has to be checked: all rows of a bitmap are in its file.
bool IsBitmapAffordable(std::span<const std::uint8_t> /*file*/, std::int64_t pictureBytes) {
    return pictureBytes <= kMostDecodingBytes;
}

std::unique_ptr<SystemPicture> LoadBitmap(const QByteArray& file, std::span<const std::uint8_t> bytes) {
    const auto header = ReadBitmapHeader(bytes);
    if (!header) {
        return nullptr;
    }
    if (header->bitCount == 16) {
        return LoadSixteenBits(bytes, *header);
    }
    if (HasRunLengths(*header)) {
        return LoadRunLengths(bytes, *header);
    }
    return LoadByToolkit(WithKnownHeader(file, *header), "bmp", IsBitmapAffordable);
}

} // namespace

std::unique_ptr<SystemPicture> PictureLoader::OleLoadPicture(std::span<const std::uint8_t> bytes) {
    const QByteArray file = QByteArray::fromRawData(reinterpret_cast<const char*>(bytes.data()),
                                                    static_cast<qsizetype>(bytes.size()));
    if (file.startsWith("BM")) {
        return LoadBitmap(file, bytes);
    }
    if (file.startsWith("\xFF\xD8\xFF")) {
        return LoadByToolkit(file, "jpeg", IsJpegAffordable);
    }
    const QByteArray signature = file.left(6).toLower();
    if (signature == "gif87a" || signature == "gif89a") {
        return LoadGifFrame(bytes);
    }
    return nullptr;
}

void PrepareJpeg() {
    QBuffer empty;
    empty.open(QIODevice::ReadOnly);
    QImageReader(&empty, "jpeg").canRead();
}

// Telling a picture file by its first bytes, and reading BMP and JPEG through the toolkit.
#include "platform/pictures/picture_loader.h"

#include "platform/pictures/bitmap_file.h"
#include "platform/pictures/gif_frame.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>

#include <cstdlib>
#include <utility>

namespace {

// Pixels that a picture may have: what 256 MiB hold at four bytes each, the toolkit's own limit.
constexpr std::int64_t kMostPixels = std::int64_t{1} << 26;

std::unique_ptr<SystemPicture> PictureOf(QImage image) {
    const auto kept = std::make_shared<const QImage>(std::move(image).convertToFormat(QImage::Format_RGB32));
    if (kept->isNull()) {
        return nullptr;
    }
    auto picture = std::make_unique<SystemPicture>();
    picture->width = kept->width();
    picture->height = kept->height();
    picture->bitCount = 32;
    picture->pixels = kept->constBits();
    picture->stride = static_cast<std::size_t>(kept->bytesPerLine());
    picture->owner = kept;
    return picture;
}

// Reads with one of the toolkit's readers, into zeros: a run-length coded bitmap may leave pixels out.
std::unique_ptr<SystemPicture> LoadByToolkit(QByteArray file, const char* format) {
    QBuffer buffer(&file);
    QImageReader reader(&buffer, format);
    reader.setAutoTransform(false);
    const QSize told = reader.size();
    const QSize size(told.width(), std::abs(told.height()));
    if (size.isEmpty() || size.width() > kMostPixels / size.height()) {
        return nullptr;
    }
    QImage image(size, reader.imageFormat());
    if (image.isNull()) {
        return nullptr;
    }
    image.fill(0);
    if (!reader.read(&image)) {
        return nullptr;
    }
    return PictureOf(std::move(image));
}

std::unique_ptr<SystemPicture> LoadBitmap(const QByteArray& file, std::span<const std::uint8_t> bytes) {
    const auto header = ReadBitmapHeader(bytes, kMostPixels);
    if (!header) {
        return nullptr;
    }
    if (header->bitCount == 16) {
        return LoadSixteenBits(bytes, *header);
    }
    return LoadByToolkit(WithKnownHeader(file, *header), "bmp");
}

} // namespace

std::unique_ptr<SystemPicture> PictureLoader::OleLoadPicture(std::span<const std::uint8_t> bytes) {
    const QByteArray file = QByteArray::fromRawData(reinterpret_cast<const char*>(bytes.data()),
                                                    static_cast<qsizetype>(bytes.size()));
    if (file.startsWith("BM")) {
        return LoadBitmap(file, bytes);
    }
    if (file.startsWith("\xFF\xD8\xFF")) {
        return LoadByToolkit(file, "jpeg");
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

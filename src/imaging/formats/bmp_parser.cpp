// The bitmap parser: 32-bit bitmaps row by row, all other pictures through the system's loader.
#include "imaging/formats/bmp_parser.h"

#include "core/byte_reader.h"
#include "imaging/picture_pixels.h"
#include "platform/picture_limits.h"
#include "platform/system_pictures.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <utility>

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::uint16_t kBitmapMark = 19778;
constexpr std::size_t kFileHeader = 14;
constexpr std::uint32_t kLeastHeader = 40;

struct Bitmap {
    int width = 0;
    int height = 0;
    bool isTopDown = false;
    // The rows in the order of the file.
    Bytes rows;
};

// Deliberate D-62: compression and colour masks of a 32-bit bitmap are ignored; its pixels are read as blue,
// green, red, alpha.
// One would expect the masks to be applied. The usual masks mean this order, and files with other masks have
// always been drawn this way.
std::optional<Bitmap> ReadBitmap32(Bytes file) {
    ByteReader reader(file);
    Bitmap bitmap;

    if (reader.ReadLittleEndian16() != kBitmapMark || !reader.Skip(8)) {
        return std::nullopt;
    }
    const auto offset = reader.ReadLittleEndian32();
    const auto header = reader.ReadLittleEndian32();
    if (!header || *header < kLeastHeader || *offset < kFileHeader + std::size_t{*header}) {
        return std::nullopt;
    }
    const auto width = reader.ReadLittleEndian32();
    const auto height = reader.ReadLittleEndian32();
    if (!width || !height || !reader.Skip(2) || reader.ReadLittleEndian16() != 32) {
        return std::nullopt;
    }

    const std::int64_t columns = static_cast<std::int32_t>(*width);
    const std::int64_t signedRows = static_cast<std::int32_t>(*height);
    const std::int64_t rows = std::abs(signedRows);
    if (!IsPictureSize(columns, rows) || *offset > file.size()) {
        return std::nullopt;
    }
    const auto left = static_cast<std::int64_t>(file.size() - *offset);
    const std::int64_t line = columns * std::int64_t{kPixelBytes};
    if (rows > left / line) {
        return std::nullopt;
    }
    bitmap.width = static_cast<int>(columns);
    bitmap.height = static_cast<int>(rows);
    bitmap.isTopDown = signedRows < 0;
    bitmap.rows = file.subspan(*offset, static_cast<std::size_t>(rows * line));
    return bitmap;
}

bool LoadBitmap32(Bytes file, PicturePixels& cHost) {
    const auto bitmap = ReadBitmap32(file);
    if (!bitmap || !cHost.InitializeDIB(bitmap->width, bitmap->height)) {
        return false;
    }
    const std::uint8_t* from = bitmap->rows.data();
    for (int i = 0; i < bitmap->height; ++i, from += cHost.ScanWidth()) {
        const int y = bitmap->isTopDown ? i : bitmap->height - 1 - i;
        std::copy_n(from, cHost.ScanWidth(), cHost.Line(y).data());
    }
    cHost.alpha = SettleAlpha({cHost.BitsPointer(), cHost.ByteCount()});
    cHost.ImageType = kImageBitmap;
    return true;
}

void WriteOpaque(std::uint8_t* to, std::uint8_t blue, std::uint8_t green, std::uint8_t red) {
    to[0] = blue;
    to[1] = green;
    to[2] = red;
    to[3] = 255;
}

bool WriteIndexedRow(const SystemPicture& picture, int y, std::uint8_t* to) {
    for (const std::uint8_t index : picture.Row(y)) {
        const std::size_t at = std::size_t{index} * 3;
        if (at + 3 > picture.palette.size()) {
            return false;
        }
        WriteOpaque(to, picture.palette[at + 2], picture.palette[at + 1], picture.palette[at]);
        to += kPixelBytes;
    }
    return true;
}

void WriteColourRow(const SystemPicture& picture, int y, std::uint8_t* to) {
    const Bytes row = picture.Row(y);
    for (std::size_t i = 0; i < row.size(); i += kPixelBytes) {
        WriteOpaque(to + i, row[i], row[i + 1], row[i + 2]);
    }
}

// Takes the memory over, so that a large picture is not in memory twice.
void TakeOver(SystemPicture& picture, PicturePixels& cHost) {
    cHost.TakePixels(std::move(picture.memory), picture.width, picture.height);
    for (int y = 0; y < picture.height; ++y) {
        const std::span<std::uint8_t> line = cHost.Line(y);
        for (std::size_t i = kPixelBytes - 1; i < line.size(); i += kPixelBytes) {
            line[i] = 255;
        }
    }
    cHost.ImageType = kImageBitmap;
}

} // namespace

bool cBMPparser::LoadStream(std::span<const std::uint8_t> inStream, PicturePixels& cHost,
                            std::size_t streamOffset, std::size_t streamLength, SystemPictures& pictures) {
    cHost.DestroyDIB();
    if (streamOffset > inStream.size() || streamLength > inStream.size() - streamOffset) {
        return false;
    }
    const Bytes file = inStream.subspan(streamOffset, streamLength);
    if (LoadBitmap32(file, cHost)) {
        return true;
    }
    const auto picture = pictures.OleLoadPicture(file);
    return picture && ConvertstdPicTo32bpp(*picture, cHost, picture->bitCount);
}

bool cBMPparser::ConvertstdPicTo32bpp(SystemPicture& stdPic, PicturePixels& cHost, int bitCount) {
    cHost.DestroyDIB();
    if (stdPic.memory && bitCount == 32) {
        TakeOver(stdPic, cHost);
        return true;
    }
    if ((bitCount != 8 && bitCount != 32) || !cHost.InitializeDIB(stdPic.width, stdPic.height)) {
        return false;
    }
    for (int y = 0; y < stdPic.height; ++y) {
        std::uint8_t* const line = cHost.Line(y).data();
        if (bitCount == 32) {
            WriteColourRow(stdPic, y, line);
        } else if (!WriteIndexedRow(stdPic, y, line)) {
            cHost.DestroyDIB();
            return false;
        }
    }
    cHost.ImageType = kImageBitmap;
    return true;
}

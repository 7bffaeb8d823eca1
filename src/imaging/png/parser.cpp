// The PNG decoder: reads the chunks and turns the compressed data into pixels.
#include "imaging/png/parser.h"

#include "core/byte_reader.h"
#include "imaging/picture_pixels.h"
#include "imaging/png/inflate.h"
#include "imaging/png/passes.h"
#include "platform/picture_limits.h"
#include "platform/zlib_library.h"

#include <algorithm>
#include <array>
#include <memory>

namespace {

constexpr std::array<std::uint8_t, 8> kSignature = {0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A};
constexpr std::size_t kTypeBytes = 4;
constexpr std::size_t kPaletteEntries = 256;
constexpr std::uint32_t kLargestSide = 0x7FFFFFFF;

constexpr std::uint32_t TypeOf(const char (&name)[5]) {
    std::uint32_t type = 0;
    for (std::size_t i = 0; i < kTypeBytes; ++i) {
        type = type << 8 | static_cast<std::uint8_t>(name[i]);
    }
    return type;
}
constexpr std::uint32_t kIhdr = TypeOf("IHDR");
constexpr std::uint32_t kPlte = TypeOf("PLTE");
constexpr std::uint32_t kTrns = TypeOf("tRNS");
constexpr std::uint32_t kIdat = TypeOf("IDAT");
constexpr std::uint32_t kIend = TypeOf("IEND");

bool IsRead(std::uint32_t type) {
    return type == kIhdr || type == kPlte || type == kTrns || type == kIdat;
}

template <std::size_t Count>
bool IsOneOf(int value, const std::array<int, Count>& allowed) {
    return std::find(allowed.begin(), allowed.end(), value) != allowed.end();
}

// Reads the contents of IHDR. Returns nothing when they are shorter than 13 bytes or when a field has an
// undefined value.
std::optional<PngHeader> ReadHeader(std::span<const std::uint8_t> data) {
    ByteReader reader(data);
    PngHeader header;

    const auto width = reader.ReadBigEndian32();
    const auto height = reader.ReadBigEndian32();
    if (!width || !height || *width < 1 || *width > kLargestSide || *height < 1 || *height > kLargestSide) {
        return std::nullopt;
    }
    header.width = static_cast<int>(*width);
    header.height = static_cast<int>(*height);

    // Deliberate D-37: depth and colour type are tested separately, so pairs that the format forbids are
    // accepted.
    // One would expect such a file to be refused. It counts as a picture without a single drawn pixel, and no
    // other picture is shown in its place.
    header.bitDepth = reader.ReadByte().value_or(0);
    if (!IsOneOf(header.bitDepth, std::array{1, 2, 4, 8, 16})) {
        return std::nullopt;
    }
    header.colourType = reader.ReadByte().value_or(1);
    if (!IsOneOf(header.colourType,
                 std::array<int, 5>{kPngGrey, kPngColour, kPngPalette, kPngGreyAlpha, kPngColourAlpha})) {
        return std::nullopt;
    }

    const auto compression = reader.ReadByte();
    const auto filter = reader.ReadByte();
    if (compression != 0 || filter != 0) {
        return std::nullopt;
    }

    header.interlace = reader.ReadByte().value_or(2);
    return header.interlace <= 1 ? std::optional(header) : std::nullopt;
}

// Tries our own Inflate first, which is faster than the library. It produces the same bytes from the same
// data, and also accepts data that the library refuses only for their checksum. A fuzzer compares the two.
bool DrawByOwnInflate(std::span<const std::uint8_t> compressed, std::size_t size, PngRows& rows) {
    return InflateInPieces(compressed, size, [&rows](auto piece) { return rows.Take(piece); }) &&
           rows.Finish();
}

// The library needs memory for all inflated data at once, in addition to the pixels.
bool FitsBeside(std::size_t size, const PicturePixels& cHost) {
    return cHost.ByteCount() + size <= static_cast<std::size_t>(kMostDecodingBytes);
}

bool DrawByLibrary(std::span<const std::uint8_t> compressed, std::size_t size, ZlibLibrary& zlib,
                   PngRows& rows) {
    const auto inflated = std::make_unique_for_overwrite<std::uint8_t[]>(size);
    std::size_t written = 0;
    return zlib.Uncompress({inflated.get(), size}, written, compressed) == 0 &&
           rows.Take({inflated.get(), written}) && rows.Finish();
}

} // namespace

bool cPNGparser::LoadStream(std::span<const std::uint8_t> inStream, PicturePixels& cHost,
                            std::size_t streamOffset, std::size_t streamLength, ZlibLibrary& zlib) {
    cHost.DestroyDIB();
    if (streamOffset > inStream.size() || streamLength > inStream.size() - streamOffset) {
        return false;
    }
    const auto file = inStream.subspan(streamOffset, streamLength);
    if (file.size() < kSignature.size() || !std::equal(kSignature.begin(), kSignature.end(), file.begin())) {
        return false;
    }
    if (!ReadChunks(file.subspan(kSignature.size()), zlib) || compressed_.empty()) {
        return false;
    }
    if (!Decode(cHost, zlib)) {
        cHost.DestroyDIB();
        return false;
    }
    cHost.alpha = HasAlpha();
    cHost.ImageType = kImagePng;
    return true;
}

// Deliberate D-38: a chunk that passes the end of the file, or a missing IEND, is an error even when all
// picture data have been read.
// One would expect the part that is there, as in viewers. A file that was cut off while it was copied must
// not look complete.
bool cPNGparser::ReadChunks(std::span<const std::uint8_t> chunks, ZlibLibrary& zlib) {
    const bool testsChecksums = zlib.Has("crc32");
    ByteReader reader(chunks);
    while (true) {
        const auto length = reader.ReadBigEndian32();
        const auto typeAndData = length ? reader.Read(kTypeBytes + std::size_t{*length}) : std::nullopt;
        const auto checksum = typeAndData ? reader.ReadBigEndian32() : std::nullopt;
        if (!checksum) {
            return false;
        }
        const std::uint32_t type = ByteReader(*typeAndData).ReadBigEndian32().value_or(0);
        if (type == kIend) {
            return true;
        }
        if (*length == 0 || !IsRead(type)) {
            continue;
        }
        // Deliberate D-39: checksums are not tested without the compression library, and those of skipped
        // chunks are never tested.
        // One would expect the same result on every machine. A cabinet without the library shows what it can.
        if (testsChecksums && zlib.Crc32(0, *typeAndData) != *checksum) {
            return false;
        }
        if (!TakeChunk(type, typeAndData->subspan(kTypeBytes))) {
            return false;
        }
    }
}

// Deliberate D-40: the order of the chunks is not tested, and gamma and background colour are not applied.
// One would expect an unknown order to be refused and gAMA to change the brightness. Theme pictures are drawn
// with the sample values that are in the file, as their makers saw them.
bool cPNGparser::TakeChunk(std::uint32_t type, std::span<const std::uint8_t> data) {
    switch (type) {
    case kIhdr:
        return TakeHeader(data);
    case kPlte:
        return TakePalette(data);
    case kTrns:
        TakeTransparency(data);
        return true;
    default:
        compressed_.insert(compressed_.end(), data.begin(), data.end());
        return true;
    }
}

bool cPNGparser::TakeHeader(std::span<const std::uint8_t> data) {
    const auto header = ReadHeader(data);
    if (!header || !PngInflatedSize(*header)) {
        return false;
    }
    header_ = *header;
    return true;
}

bool cPNGparser::TakePalette(std::span<const std::uint8_t> data) {
    if (header_.colourType == kPngGrey || header_.colourType == kPngGreyAlpha) {
        return true;
    }
    if (data.size() % 3 != 0) {
        return false;
    }
    colours_.palette.assign(data.begin(), data.end());
    return true;
}

void cPNGparser::TakeTransparency(std::span<const std::uint8_t> data) {
    if (header_.colourType == kPngGreyAlpha || header_.colourType == kPngColourAlpha) {
        return;
    }
    colours_.transparency.assign(data.begin(), data.end());
    colours_.transparentColour = TransparentColour();
    if (header_.colourType == kPngPalette && data.size() < kPaletteEntries) {
        colours_.transparency.resize(kPaletteEntries, 255);
    }
}

// Returns no colour when the contents of tRNS are too short.
int cPNGparser::TransparentColour() const {
    const std::vector<std::uint8_t>& named = colours_.transparency;
    switch (header_.colourType) {
    case kPngPalette:
        return 0;
    case kPngColour:
        return named.size() < 6 ? kPngNoTransparentColour : named[1] << 16 | named[3] << 8 | named[5];
    default:
        break;
    }
    if (named.size() < 2 || header_.bitDepth == 0) {
        return kPngNoTransparentColour;
    }
    return header_.bitDepth >= 8 ? named[1] : named[1] & ((1 << header_.bitDepth) - 1);
}

// Deliberate D-41: missing data count as zeros if the compressed stream ends properly, and surplus data are
// ignored.
// One would expect a wrong amount of data to be refused. The data that arrived are shown. Above 4096 x 4096
// pixels a picture with too few data is refused because of its memory.
bool cPNGparser::Decode(PicturePixels& cHost, ZlibLibrary& zlib) {
    const auto size = header_.width == 0 ? std::nullopt : PngInflatedSize(header_);
    if (!size || !IsPngAffordable(header_, *size, compressed_.size())) {
        return false;
    }
    const PngPixelWriter writer(header_, colours_);
    if (!cHost.InitializeClear(header_.width, header_.height)) {
        return false;
    }
    PngRows rows(header_, writer, cHost);
    if (DrawByOwnInflate(compressed_, *size, rows)) {
        return true;
    }
    if (rows.IsBroken() || !FitsBeside(*size, cHost) || !zlib.Has("uncompress") ||
        !cHost.InitializeClear(header_.width, header_.height)) {
        return false;
    }
    PngRows again(header_, writer, cHost);
    return DrawByLibrary(compressed_, *size, zlib, again);
}

// Deliberate D-42: pictures with colour or with an alpha sample count as transparent, whatever their pixels
// contain.
// One would expect a test of the pixels. The flag says what the file can contain.
bool cPNGparser::HasAlpha() const {
    if (header_.colourType == kPngGrey || header_.colourType == kPngPalette) {
        return colours_.transparentColour != kPngNoTransparentColour || !colours_.transparency.empty();
    }
    return true;
}

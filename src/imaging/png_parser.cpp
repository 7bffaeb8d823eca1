// The chunk loop of PNG and the way from compressed data to the pixels of the host.
#include "imaging/png_parser.h"

#include "core/byte_reader.h"
#include "imaging/c32bppdib.h"
#include "imaging/inflate.h"
#include "imaging/png_passes.h"
#include "platform/picture_limits.h"
#include "platform/zlib_library.h"

#include <algorithm>
#include <array>
#include <memory>

namespace {

constexpr std::array<std::uint8_t, 8> kSignature = {0x89, 'P', 'N', 'G', 0x0D, 0x0A, 0x1A, 0x0A};
constexpr std::size_t kTypeBytes = 4;
constexpr std::size_t kPaletteEntries = 256;

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

// The own Inflate makes the same bytes of all data as the library does, and takes what the library refuses
// for its checksum alone; it is the faster of the two and therefore comes first. A fuzzer holds the two
// together.
bool DrawByOwnInflate(std::span<const std::uint8_t> compressed, std::size_t size, PngRows& rows) {
    return InflateInPieces(compressed, size, [&rows](auto piece) { return rows.Take(piece); }) &&
           rows.Finish();
}

// The library inflates in one piece.
bool FitsBeside(std::size_t size, const c32bppDIB& host) {
    return host.ScanWidth() * static_cast<std::size_t>(host.Height()) + size <=
           static_cast<std::size_t>(kMostDecodingBytes);
}

bool DrawByLibrary(std::span<const std::uint8_t> compressed, std::size_t size, ZlibLibrary& zlib,
                   PngRows& rows) {
    const auto inflated = std::make_unique_for_overwrite<std::uint8_t[]>(size);
    std::size_t written = 0;
    return zlib.Uncompress({inflated.get(), size}, written, compressed) == 0 &&
           rows.Take({inflated.get(), written}) && rows.Finish();
}

} // namespace

bool cPNGparser::LoadStream(std::span<const std::uint8_t> inStream, c32bppDIB& host, std::size_t streamOffset,
                            std::size_t streamLength, ZlibLibrary& zlib) {
    host.DestroyDIB();
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
    if (!Decode(host, zlib)) {
        host.DestroyDIB();
        return false;
    }
    host.alpha = HasAlpha();
    host.ImageType = kImagePng;
    return true;
}

// Deliberate D-38: a chunk that passes the end of the file, or a file without IEND, is an error even when all
// picture data have been read. Viewers show what there is. A file that was cut off while it was copied must
// not pass for a whole one.
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
        // Deliberate D-39: without the compression library nobody tests checksums, and never those of chunks
        // that are read past. One would expect the same answer on every machine. A cabinet without the
        // library shows what it can.
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
// as their makers saw them, sample by sample.
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
    const auto header = ReadPngHeader(data);
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

// Contents that are too short name no colour.
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

// Deliberate D-41: data that end properly but too early count as zeros, data beyond the picture are cut.
// One would expect a wrong amount of data to be refused. What has arrived whole is shown. Above 4096 x 4096
// pixels data too few to fill the picture are refused all the same, for the memory that they would cost.
bool cPNGparser::Decode(c32bppDIB& host, ZlibLibrary& zlib) {
    const auto size = header_.width == 0 ? std::nullopt : PngInflatedSize(header_);
    if (!size || !IsPngAffordable(header_, *size, compressed_.size())) {
        return false;
    }
    const PngPixelWriter writer(header_, colours_);
    const bool isMade = writer.WritesEveryPixel() ? host.InitializeUnset(header_.width, header_.height)
                                                  : host.InitializeDIB(header_.width, header_.height);
    if (!isMade) {
        return false;
    }
    PngRows rows(header_, writer, host);
    if (DrawByOwnInflate(compressed_, *size, rows)) {
        return true;
    }
    if (rows.IsBroken() || !FitsBeside(*size, host) || !zlib.Has("uncompress")) {
        return false;
    }
    PngRows again(header_, writer, host);
    return DrawByLibrary(compressed_, *size, zlib, again);
}

// Deliberate D-42: colour pictures and those with an alpha sample count as transparent whatever they hold.
// One would look at the pixels. The flag tells what the file can hold.
bool cPNGparser::HasAlpha() const {
    if (header_.colourType == kPngGrey || header_.colourType == kPngPalette) {
        return colours_.transparentColour != kPngNoTransparentColour || !colours_.transparency.empty();
    }
    return true;
}

// The chunk loop of PNG and the way from compressed data to the pixels of the host.
#include "imaging/png_parser.h"

#include "core/byte_reader.h"
#include "imaging/c32bppdib.h"
#include "imaging/inflate.h"
#include "imaging/png_passes.h"
#include "platform/zlib_library.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
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

// The inflated data. Of a file that is too short for what its header tells they are zeros from the system,
// which take memory only where they are written, so that such a header costs little; else they begin unset.
class InflatedData {
public:
    InflatedData(std::size_t count, std::size_t compressed)
        : beginsAsZeros_(count / kMostExpansion > compressed) {
        bytes_.reset(static_cast<std::uint8_t*>(beginsAsZeros_ ? std::calloc(count, 1) : std::malloc(count)));
        size_ = bytes_ ? count : 0;
    }

    // Empty when there was not enough memory.
    std::span<std::uint8_t> All() const { return {bytes_.get(), size_}; }
    // Makes zeros of what is behind the first `written` bytes. Who inflates may have written a little past
    // them.
    void EndAt(std::size_t written) const {
        constexpr std::size_t kPastTheEnd = 512;
        const std::size_t rest = size_ - written;
        std::memset(bytes_.get() + written, 0, beginsAsZeros_ ? std::min(rest, kPastTheEnd) : rest);
    }

private:
    struct Free {
        void operator()(std::uint8_t* bytes) const { std::free(bytes); }
    };

    // No byte of deflated data gives more.
    static constexpr std::size_t kMostExpansion = 1032;

    bool beginsAsZeros_ = false;
    std::unique_ptr<std::uint8_t, Free> bytes_;
    std::size_t size_ = 0;
};

// The own Inflate makes the same bytes of all data as the library does, and takes what the library refuses
// for its checksum alone; it is the faster of the two and therefore comes first. A fuzzer holds the two
// together.
bool InflateInto(const InflatedData& data, std::span<const std::uint8_t> compressed, ZlibLibrary& zlib) {
    std::size_t written = 0;
    if (const auto made = Inflate(compressed, data.All())) {
        written = *made;
    } else if (!zlib.Has("uncompress") || zlib.Uncompress(data.All(), written, compressed) != 0) {
        return false;
    }
    data.EndAt(written);
    return true;
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

bool cPNGparser::Decode(c32bppDIB& host, ZlibLibrary& zlib) {
    const auto size = header_.width == 0 ? std::nullopt : PngInflatedSize(header_);
    if (!size) {
        return false;
    }
    // Deliberate D-41: data that end properly but too early count as zeros, data beyond the picture are cut.
    // One would expect a wrong amount of data to be refused. What has arrived whole is shown.
    const InflatedData inflated(*size, compressed_.size());
    if (inflated.All().empty() || !InflateInto(inflated, compressed_, zlib)) {
        return false;
    }
    compressed_ = {};
    const PngPixelWriter writer(header_, colours_);
    const bool isMade = writer.WritesEveryPixel() ? host.InitializeUnset(header_.width, header_.height)
                                                  : host.InitializeDIB(header_.width, header_.height);
    return isMade && DrawPngPasses(header_, writer, inflated.All(), host);
}

// Deliberate D-42: colour pictures and those with an alpha sample count as transparent whatever they hold.
// One would look at the pixels. The flag tells what the file can hold.
bool cPNGparser::HasAlpha() const {
    if (header_.colourType == kPngGrey || header_.colourType == kPngPalette) {
        return colours_.transparentColour != kPngNoTransparentColour || !colours_.transparency.empty();
    }
    return true;
}

// Reading a JPEG's markers: its frame, and the blocks of each scan.
#include "platform/jpeg_limits.h"

#include "core/byte_reader.h"
#include "platform/picture_limits.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <vector>

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::int64_t kBlock = 8;
constexpr std::int64_t kBlockBytes = 128;
// The shortest code has one bit, and the first scan has one code for each block of 64 pixels.
constexpr std::int64_t kMostPixelsOfAByte = 512;
constexpr std::int64_t kMostVisits = std::int64_t{1} << 25;
// The number of coefficients that are refined in the time of one block.
constexpr std::int64_t kRefinedAtOnce = 8;
// The visits that a scan's tables cost.
constexpr std::int64_t kScanVisits = 1024;

constexpr std::uint8_t kFill = 0xFF;
constexpr std::uint8_t kStuffed = 0x00;
constexpr std::uint8_t kTemporary = 0x01;
constexpr std::uint8_t kFirstRestart = 0xD0;
constexpr std::uint8_t kLastRestart = 0xD7;
constexpr std::uint8_t kStartOfImage = 0xD8;
constexpr std::uint8_t kEndOfImage = 0xD9;
constexpr std::uint8_t kStartOfScan = 0xDA;
// Start of frame: baseline, extended and progressive; the last two also with arithmetic coding.
constexpr std::array<std::uint8_t, 5> kFrames = {0xC0, 0xC1, 0xC2, 0xC9, 0xCA};
constexpr std::array<std::uint8_t, 2> kProgressiveFrames = {0xC2, 0xCA};

struct Component {
    int id = 0;
    std::int64_t across = 1;
    std::int64_t down = 1;
};

struct Frame {
    std::int64_t width = 0;
    std::int64_t height = 0;
    std::int64_t across = 1;
    std::int64_t down = 1;
    bool isProgressive = false;
    std::vector<Component> components;
};

std::int64_t Rounded(std::int64_t value, std::int64_t unit) {
    return (value + unit - 1) / unit;
}

template <std::size_t Count>
bool IsOneOf(std::uint8_t code, const std::array<std::uint8_t, Count>& codes) {
    return std::ranges::find(codes, code) != codes.end();
}

// The next marker that has a segment, or ends the image. Skips coded data, stuffed bytes and restart markers.
std::optional<std::uint8_t> NextMarker(Bytes file, std::size_t& at) {
    while (at < file.size()) {
        const void* const found = std::memchr(file.data() + at, kFill, file.size() - at);
        if (found == nullptr) {
            return std::nullopt;
        }
        at = static_cast<std::size_t>(static_cast<const std::uint8_t*>(found) - file.data());
        while (at < file.size() && file[at] == kFill) {
            ++at;
        }
        if (at == file.size()) {
            return std::nullopt;
        }
        const std::uint8_t code = file[at++];
        const bool isRestart = code >= kFirstRestart && code <= kLastRestart;
        if (code != kStuffed && code != kTemporary && !isRestart) {
            return code;
        }
    }
    return std::nullopt;
}

// The contents of the segment at `at`; moves `at` past it. Returns nothing when the file ends inside it.
std::optional<Bytes> ReadSegment(Bytes file, std::size_t& at) {
    ByteReader reader(file.subspan(at));
    const std::size_t length = reader.ReadBigEndian16().value_or(0);
    const auto contents = length < 2 ? std::nullopt : reader.Read(length - 2);
    if (contents) {
        at += length;
    }
    return contents;
}

std::optional<Frame> ReadFrame(Bytes segment, bool isProgressive) {
    ByteReader reader(segment);
    Frame frame;
    frame.isProgressive = isProgressive;
    reader.Skip(1);
    frame.height = reader.ReadBigEndian16().value_or(0);
    frame.width = reader.ReadBigEndian16().value_or(0);
    const int count = reader.ReadByte().value_or(0);
    for (int i = 0; i < count; ++i) {
        const auto parts = reader.Read(3);
        if (!parts || (*parts)[1] >> 4 == 0 || ((*parts)[1] & 15) == 0) {
            return std::nullopt;
        }
        const Component component{(*parts)[0], (*parts)[1] >> 4, (*parts)[1] & 15};
        frame.across = std::max(frame.across, component.across);
        frame.down = std::max(frame.down, component.down);
        frame.components.push_back(component);
    }
    return frame;
}

struct Scan {
    // The frame's components that the scan names.
    std::vector<Component> components;
    // Coefficients of each block that the scan refines.
    std::int64_t refined = 0;
};

Scan ReadScan(Bytes segment, const Frame& frame) {
    ByteReader reader(segment);
    const int count = reader.ReadByte().value_or(0);
    Scan scan;
    for (int i = 0; i < count; ++i) {
        const auto id = reader.ReadByte();
        reader.Skip(1);
        const auto found = std::ranges::find_if(
            frame.components, [&](const Component& component) { return id && component.id == *id; });
        if (found != frame.components.end()) {
            scan.components.push_back(*found);
        }
    }
    const auto band = reader.Read(3);
    if (band && frame.isProgressive && (*band)[2] >> 4 != 0) {
        scan.refined = std::max(0, (*band)[1] - (*band)[0] + 1);
    }
    return scan;
}

// Blocks of a component that is interleaved with others, which fills up whole units of the frame.
std::int64_t InterleavedBlocks(const Frame& frame, const Component& component) {
    return Rounded(frame.width, kBlock * frame.across) * component.across *
           Rounded(frame.height, kBlock * frame.down) * component.down;
}

std::int64_t LoneBlocks(const Frame& frame, const Component& component) {
    return Rounded(Rounded(frame.width * component.across, frame.across), kBlock) *
           Rounded(Rounded(frame.height * component.down, frame.down), kBlock);
}

std::int64_t VisitsOf(const Frame& frame, const Scan& scan) {
    const bool isInterleaved = scan.components.size() > 1;
    std::int64_t blocks = 0;
    for (const Component& component : scan.components) {
        blocks += isInterleaved ? InterleavedBlocks(frame, component) : LoneBlocks(frame, component);
    }
    return kScanVisits + blocks + blocks * scan.refined / kRefinedAtOnce;
}

std::int64_t CoefficientBytes(const Frame& frame) {
    std::int64_t bytes = 0;
    for (const Component& component : frame.components) {
        bytes += InterleavedBlocks(frame, component) * kBlockBytes;
    }
    return bytes;
}

} // namespace

JpegCost CostOfJpeg(Bytes file) {
    JpegCost cost;
    Frame frame;
    std::size_t at = 2;
    bool isFirst = true;
    while (const auto marker = NextMarker(file, at)) {
        const auto segment =
            *marker == kStartOfImage || *marker == kEndOfImage ? std::nullopt : ReadSegment(file, at);
        if (!segment) {
            break;
        }
        if (IsOneOf(*marker, kFrames)) {
            frame = ReadFrame(*segment, IsOneOf(*marker, kProgressiveFrames)).value_or(Frame());
            cost.pixels = frame.width * frame.height;
        } else if (*marker == kStartOfScan) {
            const auto scan = ReadScan(*segment, frame);
            cost.visits += VisitsOf(frame, scan);
            if (isFirst && (frame.isProgressive || scan.components.size() < frame.components.size())) {
                cost.coefficientBytes = CoefficientBytes(frame);
            }
            isFirst = false;
        }
    }
    return cost;
}

bool IsJpegAffordable(Bytes file, std::int64_t pictureBytes) {
    const JpegCost cost = CostOfJpeg(file);
    return CanFill(cost.pixels, static_cast<std::int64_t>(file.size()), cost.pixels / kMostPixelsOfAByte) &&
           pictureBytes + cost.coefficientBytes <= kMostDecodingBytes && cost.visits <= kMostVisits;
}

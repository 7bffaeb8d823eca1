// The GIF parser: finds the first frame, lets the system decode that frame only, and maps its indices to
// colours.
#include "imaging/formats/gif_parser.h"

#include "core/byte_reader.h"
#include "imaging/picture_pixels.h"
#include "platform/system_pictures.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <vector>

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::size_t kScreenBytes = 13;
constexpr std::size_t kScreenFlags = 10;
constexpr std::size_t kDescriptionBytes = 10;
constexpr std::size_t kDescriptionFlags = 9;
constexpr unsigned kHasColours = 0x80;
constexpr std::uint8_t kSkipped = 0;
constexpr std::uint8_t kExtension = 0x21;
constexpr std::uint8_t kImage = 0x2C;
constexpr std::uint8_t kTrailer = 0x3B;
constexpr std::uint8_t kApplication = 255;
constexpr std::uint8_t kGraphicControl = 249;
constexpr std::size_t kLeastData = 3;
constexpr int kNoTransparency = -1;

// The ranges of the file that make up a GIF of one frame.
struct FirstFrame {
    Bytes screen;
    Bytes colours;
    Bytes control;
    Bytes description;
    Bytes data;
    int transparent = kNoTransparency;
};

bool IsGif(Bytes file) {
    constexpr std::size_t kLength = 6;
    std::array<char, kLength> signature{};
    if (file.size() < kLength) {
        return false;
    }
    std::transform(file.begin(), file.begin() + kLength, signature.begin(), [](std::uint8_t byte) {
        return static_cast<char>(byte >= 'A' && byte <= 'Z' ? byte + ('a' - 'A') : byte);
    });
    const std::string_view text(signature.data(), kLength);
    return text == "gif89a" || text == "gif87a";
}

// Size in bytes of the colour table that the flags of a screen or an image announce.
std::size_t ColourBytes(std::uint8_t flags) {
    return (flags & kHasColours) == 0 ? 0 : std::size_t{3} << ((flags & 7U) + 1);
}

bool SkipBlocks(ByteReader& reader) {
    while (true) {
        const auto length = reader.ReadByte();
        if (!length || !reader.Skip(*length)) {
            return false;
        }
        if (*length == 0) {
            return true;
        }
    }
}

// Deliberate D-61: the stated length of a control extension is ignored, and a later one without transparency
// does not undo an earlier one with it.
// One would expect each extension to count for itself. The last one that names a colour has always decided.
bool TakeControl(ByteReader& reader, Bytes extension, FirstFrame& frame) {
    constexpr std::size_t kLabel = 2;
    constexpr std::size_t kRest = 6;
    constexpr std::size_t kFlags = 3;
    constexpr std::size_t kIndex = 6;
    if (!reader.Skip(kRest)) {
        return false;
    }
    extension = extension.first(kLabel + kRest);
    if ((extension[kFlags] & 1U) != 0) {
        frame.transparent = extension[kIndex];
        frame.control = extension;
    }
    return true;
}

// Reads an extension after its first byte. `from` includes the first byte.
bool ReadExtension(ByteReader& reader, Bytes from, FirstFrame& frame) {
    const auto label = reader.ReadByte();
    if (!label) {
        return false;
    }
    if (*label == kGraphicControl) {
        return TakeControl(reader, from, frame);
    }
    if (*label == kApplication) {
        const auto length = reader.ReadByte();
        return length && reader.Skip(*length) && SkipBlocks(reader);
    }
    return SkipBlocks(reader);
}

// Reads the image after its first byte. `from` includes the first byte.
bool ReadImage(ByteReader& reader, Bytes from, FirstFrame& frame) {
    if (!reader.Skip(kDescriptionBytes - 1)) {
        return false;
    }
    const auto own = reader.Read(ColourBytes(from[kDescriptionFlags]));
    if (!own) {
        return false;
    }
    frame.description = from.first(kDescriptionBytes + own->size());
    if (!own->empty()) {
        frame.colours = *own;
    }
    const std::size_t start = reader.position();
    if (!reader.Skip(1) || !SkipBlocks(reader) || reader.position() - start < kLeastData) {
        return false;
    }
    frame.data = from.subspan(frame.description.size(), reader.position() - start);
    return true;
}

// Reads the blocks up to the first image. Returns nothing for an unknown block and for a block that passes
// the end of the file.
std::optional<FirstFrame> FindFirstFrame(Bytes file) {
    FirstFrame frame;
    ByteReader reader(file);
    const auto screen = reader.Read(kScreenBytes);
    const auto colours = screen ? reader.Read(ColourBytes((*screen)[kScreenFlags])) : std::nullopt;
    if (!colours) {
        return std::nullopt;
    }
    frame.screen = file.first(reader.position());
    frame.colours = *colours;
    while (true) {
        const Bytes from = file.subspan(reader.position());
        const auto block = reader.ReadByte();
        if (!block) {
            return std::nullopt;
        }
        if (*block == kImage) {
            return ReadImage(reader, from, frame) ? std::optional(frame) : std::nullopt;
        }
        const bool isPassed =
            *block == kSkipped || (*block == kExtension && ReadExtension(reader, from, frame));
        if (!isPassed) {
            return std::nullopt;
        }
    }
}

std::vector<std::uint8_t> FileOf(const FirstFrame& frame) {
    std::vector<std::uint8_t> file;
    for (const Bytes part : {frame.screen, frame.control, frame.description, frame.data}) {
        file.insert(file.end(), part.begin(), part.end());
    }
    file.push_back(kTrailer);
    return file;
}

// Writes a row of pixels. Returns false for an index without a colour, unless it is the transparent index.
bool ColourRow(const FirstFrame& frame, Bytes indices, std::uint8_t* to) {
    for (const std::uint8_t index : indices) {
        if (index != frame.transparent) {
            const std::size_t at = std::size_t{index} * 3;
            if (at + 3 > frame.colours.size()) {
                return false;
            }
            to[0] = frame.colours[at + 2];
            to[1] = frame.colours[at + 1];
            to[2] = frame.colours[at];
            to[3] = 255;
        }
        to += kPixelBytes;
    }
    return true;
}

} // namespace

bool cGIFparser::LoadStream(std::span<const std::uint8_t> inStream, PicturePixels& cHost,
                            std::size_t streamOffset, std::size_t streamLength, SystemPictures& pictures) {
    cHost.DestroyDIB();
    if (streamOffset > inStream.size() || streamLength > inStream.size() - streamOffset) {
        return false;
    }
    const Bytes file = inStream.subspan(streamOffset, streamLength);
    const auto frame = IsGif(file) ? FindFirstFrame(file) : std::nullopt;
    if (!frame) {
        return false;
    }
    const auto picture = pictures.OleLoadPicture(FileOf(*frame));
    if (!picture || picture->bitCount != 8 || !cHost.InitializeDIB(picture->width, picture->height)) {
        return false;
    }
    for (int y = 0; y < picture->height; ++y) {
        if (!ColourRow(*frame, picture->Row(y), cHost.Line(y).data())) {
            cHost.DestroyDIB();
            return false;
        }
    }
    cHost.alpha = frame->transparent != kNoTransparency;
    cHost.ImageType = kImageGif;
    return true;
}

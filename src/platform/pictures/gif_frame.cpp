// The first frame of a GIF, row by row through giflib.
#include "platform/pictures/gif_frame.h"

#include "platform/picture_limits.h"

#include <gif_lib.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>

namespace {

// One byte for the index, and four in the image object.
constexpr std::int64_t kPixelBytes = 5;

// The passes of an interlaced frame: first row and step.
struct Pass {
    int firstRow;
    int rowStep;
};
constexpr std::array<Pass, 1> kPlain = {{{0, 1}}};
constexpr std::array<Pass, 4> kInterlaced = {{{0, 8}, {4, 8}, {2, 4}, {1, 2}}};

struct Input {
    std::span<const std::uint8_t> rest;
    bool isAtStart = true;
};

// giflib reads the signature first and only accepts capitals.
int ReadInput(GifFileType* gif, GifByteType* to, int wanted) {
    auto& input = *static_cast<Input*>(gif->UserData);
    const std::size_t count = std::min(static_cast<std::size_t>(wanted), input.rest.size());
    std::copy_n(input.rest.data(), count, to);
    if (input.isAtStart) {
        std::memcpy(to, "GIF", std::min<std::size_t>(count, 3));
        input.isAtStart = false;
    }
    input.rest = input.rest.subspan(count);
    return static_cast<int>(count);
}

struct Close {
    void operator()(GifFileType* gif) const { DGifCloseFile(gif, nullptr); }
};
using Gif = std::unique_ptr<GifFileType, Close>;

bool SkipExtension(GifFileType& gif) {
    int label = 0;
    GifByteType* block = nullptr;
    if (DGifGetExtension(&gif, &label, &block) == GIF_ERROR) {
        return false;
    }
    while (block != nullptr) {
        if (DGifGetExtensionNext(&gif, &block) == GIF_ERROR) {
            return false;
        }
    }
    return true;
}

// Skips to the first frame and reads its description.
bool FindFrame(GifFileType& gif) {
    while (true) {
        GifRecordType type = UNDEFINED_RECORD_TYPE;
        if (DGifGetRecordType(&gif, &type) == GIF_ERROR) {
            return false;
        }
        if (type == IMAGE_DESC_RECORD_TYPE) {
            return DGifGetImageDesc(&gif) != GIF_ERROR;
        }
        if (type != EXTENSION_RECORD_TYPE || !SkipExtension(gif)) {
            return false;
        }
    }
}

bool ReadRows(GifFileType& gif, std::uint8_t* pixels) {
    const int width = gif.Image.Width;
    const std::span<const Pass> passes = gif.Image.Interlace ? std::span<const Pass>(kInterlaced) : kPlain;
    for (const Pass& pass : passes) {
        for (int y = pass.firstRow; y < gif.Image.Height; y += pass.rowStep) {
            std::uint8_t* const row = pixels + static_cast<std::size_t>(y) * static_cast<std::size_t>(width);
            if (DGifGetLine(&gif, row, width) == GIF_ERROR) {
                return false;
            }
        }
    }
    return true;
}

std::vector<std::uint8_t> PaletteOf(const GifFileType& gif) {
    const ColorMapObject* const map = gif.Image.ColorMap != nullptr ? gif.Image.ColorMap : gif.SColorMap;
    std::vector<std::uint8_t> palette;
    for (int i = 0; map != nullptr && i < map->ColorCount; ++i) {
        const GifColorType& colour = map->Colors[i];
        palette.insert(palette.end(), {colour.Red, colour.Green, colour.Blue});
    }
    return palette;
}

} // namespace

std::unique_ptr<SystemPicture> LoadGifFrame(std::span<const std::uint8_t> bytes) {
    Input input{bytes};
    const Gif gif(DGifOpen(&input, ReadInput, nullptr));
    if (!gif || !FindFrame(*gif)) {
        return nullptr;
    }
    auto picture = std::make_unique<SystemPicture>();
    picture->width = gif->Image.Width;
    picture->height = gif->Image.Height;
    const std::int64_t count = std::int64_t{picture->width} * picture->height;
    if (!IsPictureSize(picture->width, picture->height) || count > kMostDecodingBytes / kPixelBytes) {
        return nullptr;
    }
    // Zeroed memory is only used where it is written, so a frame with a false size costs little.
    const std::shared_ptr<std::uint8_t> pixels(
        static_cast<std::uint8_t*>(std::calloc(static_cast<std::size_t>(count), 1)), std::free);
    if (!pixels || !ReadRows(*gif, pixels.get())) {
        return nullptr;
    }
    picture->bitCount = 8;
    picture->palette = PaletteOf(*gif);
    picture->pixels = pixels.get();
    picture->stride = static_cast<std::size_t>(picture->width);
    picture->owner = pixels;
    return picture;
}

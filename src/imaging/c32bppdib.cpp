// The image object: its buffer, the chain of parsers, and drawing.
#include "imaging/c32bppdib.h"

#include "imaging/bmp_parser.h"
#include "imaging/gif_parser.h"
#include "imaging/ico_parser.h"
#include "imaging/picture_drawing.h"
#include "imaging/png_parser.h"
#include "platform/event_pump.h"
#include "platform/files.h"
#include "platform/pixel_memory.h"

#include <algorithm>
#include <limits>
#include <new>
#include <utility>

namespace {

// The smallest possible picture file, and the largest that is read.
constexpr qsizetype kSmallestFile = 57;
constexpr std::int64_t kLargestFile = std::int64_t{256} << 20;
constexpr std::int64_t kMostPixelBytes = std::int64_t{1} << 30;
constexpr std::int64_t kPixelBytes = 4;

std::span<const std::uint8_t> BytesOf(const QByteArray& bytes) {
    return {reinterpret_cast<const std::uint8_t*>(bytes.constData()), static_cast<std::size_t>(bytes.size())};
}

// The width or height given, or the picture's own for 0, without its sign.
int Extent(int given, int own) {
    if (given == std::numeric_limits<int>::min()) {
        return std::numeric_limits<int>::max();
    }
    return given == 0 ? own : std::abs(given);
}

// Deliberate D-34: opacity counts modulo 100, so that 150 is half transparent and 200 opaque.
// One would expect anything above 100 to be opaque. Themes and callers that count in such numbers look as
// they always did.
int PercentageOf(int Opacity) {
    const int percentage = std::abs(Opacity % 100);
    return percentage == 0 ? 100 : percentage;
}

} // namespace

bool IsPictureFileSize(std::int64_t size) {
    return size >= kSmallestFile && size <= kLargestFile;
}

std::optional<QByteArray> ReadPictureFile(const PicturePorts& ports, const QString& FileName) {
    auto bytes = ports.files.ReadWhole(FileName, kLargestFile);
    return bytes && bytes->size() >= kSmallestFile ? std::move(bytes) : std::nullopt;
}

c32bppDIB::c32bppDIB() = default;
c32bppDIB::~c32bppDIB() = default;

c32bppDIB::c32bppDIB(c32bppDIB&& other) noexcept {
    *this = std::move(other);
}

c32bppDIB& c32bppDIB::operator=(c32bppDIB&& other) noexcept {
    if (this != &other) {
        alpha = std::exchange(other.alpha, false);
        ImageType = std::exchange(other.ImageType, kImageNone);
        HighQualityInterpolation = other.HighQualityInterpolation;
        pixels_ = std::move(other.pixels_);
        width_ = std::exchange(other.width_, 0);
        height_ = std::exchange(other.height_, 0);
        isTurned_ = std::exchange(other.isTurned_, false);
        originalBytes_ = std::exchange(other.originalBytes_, {});
        drawing_ = std::move(other.drawing_);
    }
    return *this;
}

bool c32bppDIB::LoadPicture_File(const PicturePorts& ports, const QString& FileName, int iconCx, int iconCy,
                                 bool SaveFormat) {
    DestroyDIB();
    const auto bytes = ReadPictureFile(ports, FileName);
    if (!bytes) {
        return false;
    }
    const bool isLoaded = Load(ports, BytesOf(*bytes), iconCx, iconCy);
    if (isLoaded && SaveFormat) {
        originalBytes_ = *bytes;
    }
    ports.pump.DoEvents();
    return isLoaded;
}

bool c32bppDIB::LoadPicture_Stream(const DecodingPorts& ports, std::span<const std::uint8_t> inStream,
                                   int iconCx, int iconCy, std::size_t streamStart, std::size_t streamLength,
                                   bool SaveFormat) {
    // The stream may be this object's own original bytes, which end with the picture.
    const QByteArray kept = originalBytes_;
    DestroyDIB();
    if (streamStart > inStream.size()) {
        return false;
    }
    const std::size_t length = streamLength == 0 ? inStream.size() - streamStart : streamLength;
    if (length > inStream.size() - streamStart) {
        return false;
    }
    const auto bytes = inStream.subspan(streamStart, length);
    const bool isLoaded = Load(ports, bytes, iconCx, iconCy);
    if (isLoaded && SaveFormat) {
        originalBytes_ =
            QByteArray(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()));
    }
    return isLoaded;
}

// The order is fixed by what the parsers ask of the bytes; a file's name plays no part.
bool c32bppDIB::Load(const DecodingPorts& ports, std::span<const std::uint8_t> bytes, int iconCx,
                     int iconCy) {
    iconCx = std::max(0, iconCx);
    iconCy = std::max(0, iconCy);
    try {
        return cPNGparser().LoadStream(bytes, *this, 0, bytes.size(), ports.zlib) ||
               cGIFparser().LoadStream(bytes, *this, 0, bytes.size(), ports.pictures) ||
               cICOparser().LoadStream(bytes, iconCx, iconCy, *this, 0, bytes.size(), ports.zlib) ||
               cBMPparser().LoadStream(bytes, *this, 0, bytes.size(), ports.pictures);
    } catch (const std::bad_alloc&) {
        DestroyDIB();
        return false;
    }
}

bool c32bppDIB::InitializeDIB(int width, int height) {
    return Allocate(width, height, [](std::size_t bytes) { return std::calloc(bytes, 1); });
}

bool c32bppDIB::InitializeUnset(int width, int height) {
    // Without a row yet there is none to turn.
    isTurned_ = Allocate(width, height, AllocatePixels);
    return isTurned_;
}

bool c32bppDIB::Allocate(int width, int height, void* (*allocate)(std::size_t bytes)) {
    DestroyDIB();
    const std::int64_t rows = std::abs(std::int64_t{height});
    if (width < 1 || rows < 1 || rows > kMostPixelBytes / (width * kPixelBytes)) {
        return false;
    }
    pixels_.reset(static_cast<std::uint8_t*>(allocate(static_cast<std::size_t>(rows * width * kPixelBytes))));
    if (!pixels_) {
        return false;
    }
    width_ = width;
    height_ = static_cast<int>(rows);
    return true;
}

void c32bppDIB::TakePixels(PixelMemory pixels, int width, int height) {
    DestroyDIB();
    pixels_ = std::move(pixels);
    isTurned_ = true;
    width_ = width;
    height_ = height;
}

void c32bppDIB::DestroyDIB() {
    drawing_.reset();
    pixels_.reset();
    isTurned_ = false;
    width_ = 0;
    height_ = 0;
    originalBytes_.clear();
    alpha = false;
    ImageType = kImageNone;
}

std::uint8_t* c32bppDIB::BitsPointer() {
    KeepRows(false);
    return pixels_.get();
}

const std::uint8_t* c32bppDIB::BitsPointer() const {
    KeepRows(false);
    return pixels_.get();
}

std::span<std::uint8_t> c32bppDIB::Line(int row) {
    drawing_.reset();
    const auto line = static_cast<std::size_t>(isTurned_ ? row : height_ - 1 - row);
    return {pixels_.get() + line * ScanWidth(), ScanWidth()};
}

void c32bppDIB::PrepareRender() const {
    if (pixels_) {
        DrawingOf();
    }
}

// Turned in their place: a second buffer as large as the screen costs more than everything else here.
void c32bppDIB::KeepRows(bool isTurned) const {
    drawing_.reset();
    if (isTurned_ == isTurned) {
        return;
    }
    const std::size_t line = ScanWidth();
    std::uint8_t* low = pixels_.get();
    std::uint8_t* high = low + line * static_cast<std::size_t>(height_);
    for (int row = 0; row < height_ / 2; ++row) {
        high -= line;
        std::swap_ranges(low, low + line, high);
        low += line;
    }
    isTurned_ = isTurned;
}

PictureDrawing& c32bppDIB::DrawingOf() const {
    if (!drawing_) {
        KeepRows(true);
        const std::span pixels(pixels_.get(), ScanWidth() * static_cast<std::size_t>(height_));
        drawing_ = std::make_unique<PictureDrawing>(MakeDrawing(pixels, width_, height_));
    }
    return *drawing_;
}

bool c32bppDIB::Render(Surface& destinationDC, int destX, int destY, int destWidth, int destHeight, int srcX,
                       int srcY, int srcWidth, int srcHeight, int Opacity, bool Blend,
                       bool /*SetHalfTone*/) const {
    if (!pixels_ || srcWidth < 0 || srcHeight < 0) {
        return false;
    }
    if (Opacity == 0) {
        return true;
    }
    const int percentage = PercentageOf(Opacity);
    const Box from{std::max(0, srcX), std::max(0, srcY), Extent(srcWidth, width_),
                   Extent(srcHeight, height_)};
    const Box to{destX, destY, Extent(destWidth, width_), Extent(destHeight, height_)};
    if (from.width > width_ - from.x || from.height > height_ - from.y) {
        return false;
    }
    PictureDrawing& own = DrawingOf();
    // The simple route counts its constant in whole steps of 1 / 255.
    const int constant = percentage * 255 / 100;
    const double opacity = HighQualityInterpolation ? percentage / 100.0 : constant / 255.0;
    const auto quality = HighQualityInterpolation ? ScalingQuality::kSmooth : ScalingQuality::kNearest;
    // Deliberate D-35: a Blend of false is obeyed only without HighQualityInterpolation.
    // One would expect it to switch blending off in both qualities. The smooth one always takes the pixels as
    // they are, premultiplied; all theme pictures are drawn so.
    const bool leavesAlphaOut = !HighQualityInterpolation && !(alpha && Blend);
    if (destWidth >= 0 && destHeight >= 0 && !leavesAlphaOut) {
        DrawPart(own, from, destinationDC, to, opacity, quality);
        return true;
    }
    PictureDrawing changed =
        Mirrored(leavesAlphaOut ? WithoutAlpha(own) : own, destWidth < 0, destHeight < 0);
    DrawPart(changed, from, destinationDC, to, opacity, quality);
    return true;
}

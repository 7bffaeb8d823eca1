// The image object: its buffer, the chain of parsers, and drawing.
#include "imaging/picture/c32bppdib.h"

#include "imaging/formats/bmp_parser.h"
#include "imaging/formats/gif_parser.h"
#include "imaging/formats/ico_parser.h"
#include "imaging/picture/drawing.h"
#include "imaging/png/parser.h"
#include "platform/event_pump.h"
#include "platform/files.h"

#include <algorithm>
#include <limits>
#include <new>
#include <utility>

namespace {

// The smallest possible picture file and the largest that is read.
constexpr qsizetype kSmallestFile = 57;
constexpr std::int64_t kLargestFile = std::int64_t{256} << 20;

std::span<const std::uint8_t> BytesOf(const QByteArray& bytes) {
    return {reinterpret_cast<const std::uint8_t*>(bytes.constData()), static_cast<std::size_t>(bytes.size())};
}

// The absolute value of a width or height; the picture's own for 0.
int Extent(int given, int own) {
    if (given == std::numeric_limits<int>::min()) {
        return std::numeric_limits<int>::max();
    }
    return given == 0 ? own : std::abs(given);
}

// Deliberate D-34: opacity counts modulo 100, so 150 is half transparent and 200 opaque.
// One would expect anything above 100 to be opaque. Themes and callers that use such numbers look as they
// always did.
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
        pixels_ = std::exchange(other.pixels_, {});
        HighQualityInterpolation = other.HighQualityInterpolation;
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
    // The stream can be this object's own original bytes, which DestroyDIB releases.
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

// The order matters, because each parser accepts what it can read. The file's name is ignored.
bool c32bppDIB::Load(const DecodingPorts& ports, std::span<const std::uint8_t> bytes, int iconCx,
                     int iconCy) {
    iconCx = std::max(0, iconCx);
    iconCy = std::max(0, iconCy);
    try {
        return cPNGparser().LoadStream(bytes, pixels_, 0, bytes.size(), ports.zlib) ||
               cGIFparser().LoadStream(bytes, pixels_, 0, bytes.size(), ports.pictures) ||
               cICOparser().LoadStream(bytes, iconCx, iconCy, pixels_, 0, bytes.size(), ports.zlib) ||
               cBMPparser().LoadStream(bytes, pixels_, 0, bytes.size(), ports.pictures);
    } catch (const std::bad_alloc&) {
        DestroyDIB();
        return false;
    }
}

bool c32bppDIB::InitializeDIB(int width, int height) {
    DestroyDIB();
    return pixels_.InitializeDIB(width, height);
}

void c32bppDIB::TakePixels(PicturePixels pixels) {
    DestroyDIB();
    pixels_ = std::move(pixels);
}

void c32bppDIB::DestroyDIB() {
    drawing_.reset();
    pixels_.DestroyDIB();
    originalBytes_.clear();
}

std::uint8_t* c32bppDIB::BitsPointer() {
    drawing_.reset();
    return pixels_.BitsPointer();
}

const std::uint8_t* c32bppDIB::BitsPointer() const {
    drawing_.reset();
    return pixels_.BitsPointer();
}

void c32bppDIB::PrepareRender() const {
    if (!pixels_.IsEmpty()) {
        DrawingOf();
    }
}

PictureDrawing& c32bppDIB::DrawingOf() const {
    if (!drawing_) {
        drawing_ = std::make_unique<PictureDrawing>(MakeDrawing(pixels_.TopDownRows(), Width(), Height()));
    }
    return *drawing_;
}

bool c32bppDIB::Render(Surface& destinationDC, int destX, int destY, int destWidth, int destHeight, int srcX,
                       int srcY, int srcWidth, int srcHeight, int Opacity, bool Blend,
                       bool /*SetHalfTone*/) const {
    if (pixels_.IsEmpty() || srcWidth < 0 || srcHeight < 0) {
        return false;
    }
    if (Opacity == 0) {
        return true;
    }
    const int percentage = PercentageOf(Opacity);
    const Box from{std::max(0, srcX), std::max(0, srcY), Extent(srcWidth, Width()),
                   Extent(srcHeight, Height())};
    const Box to{destX, destY, Extent(destWidth, Width()), Extent(destHeight, Height())};
    if (from.width > Width() - from.x || from.height > Height() - from.y) {
        return false;
    }
    PictureDrawing& own = DrawingOf();
    // Without smoothing, opacity is counted in whole steps of 1 / 255.
    const int constant = percentage * 255 / 100;
    const double opacity = HighQualityInterpolation ? percentage / 100.0 : constant / 255.0;
    const auto quality = HighQualityInterpolation ? ScalingQuality::kSmooth : ScalingQuality::kNearest;
    // Deliberate D-35: a Blend of false has an effect only without HighQualityInterpolation.
    // One would expect it to switch off blending in both qualities. The smooth quality always uses the
    // premultiplied pixels as they are; all theme pictures are drawn this way.
    const bool leavesAlphaOut = !HighQualityInterpolation && !(alpha() && Blend);
    if (destWidth >= 0 && destHeight >= 0 && !leavesAlphaOut) {
        DrawPart(own, from, destinationDC, to, opacity, quality);
        return true;
    }
    PictureDrawing changed =
        Mirrored(leavesAlphaOut ? WithoutAlpha(own) : own, destWidth < 0, destHeight < 0);
    DrawPart(changed, from, destinationDC, to, opacity, quality);
    return true;
}

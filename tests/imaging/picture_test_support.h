// Shared by the tests of pictures: fixtures, ports, and generated pictures.
#pragma once

#include "core/path_text.h"
#include "imaging/picture/c32bppdib.h"
#include "imaging/picture/surface.h"
#include "platform/event_pump.h"
#include "platform/pictures/picture_loader.h"
#include "platform/posix/dlopened_zlib.h"
#include "platform/posix/posix_files.h"
#include "platform/simulated/simulated_resources.h"
#include "support/failing_files.h"

#include <QCryptographicHash>
#include <QString>

#include <cstdint>
#include <functional>
#include <span>
#include <utility>
#include <vector>

// An event pump that counts its calls and runs the pending routine of the test once.
struct CountingPump : EventPump {
    void DoEvents() override {
        ++calls;
        if (const auto now = std::exchange(pending, nullptr)) {
            now();
        }
    }
    void Wait(double /*milliseconds*/) override { DoEvents(); }

    int calls = 0;
    std::function<void()> pending;
};

// The ports for pictures: real files that can be made to fail, and the compression library, present or
// missing.
struct PictureMachine {
    DlopenedZlib zlib;
    NoZlib noZlib;
    PosixFiles realFiles;
    FailingFiles files{realFiles};
    CountingPump pump;
    PictureLoader pictures;

    PicturePorts WithZlib() { return {files, zlib, pump, pictures}; }
    PicturePorts WithoutZlib() { return {files, noZlib, pump, pictures}; }
};

inline QString FixturePath(const QString& name) {
    return TextOfPath(TESTS_FOLDER "/images/") + name;
}

inline QByteArray Fixture(const QString& name) {
    return PosixFiles().ReadWhole(FixturePath(name), std::int64_t{1} << 30).value_or(QByteArray());
}

inline std::span<const std::uint8_t> SpanOf(const QByteArray& bytes) {
    return {reinterpret_cast<const std::uint8_t*>(bytes.constData()), static_cast<std::size_t>(bytes.size())};
}

// An image object, or the pixels of a parser.
template <typename Image>
concept HasPixels = requires(Image& image) {
    image.BitsPointer();
};

// All pixels, bottom row first.
template <HasPixels Image>
std::vector<std::uint8_t> PixelsOf(Image&& image) {
    return {image.BitsPointer(), image.BitsPointer() + image.ByteCount()};
}

template <HasPixels Image>
QByteArray Sha256Of(Image&& image) {
    const auto pixels = PixelsOf(image);
    const QByteArray bytes(reinterpret_cast<const char*>(pixels.data()),
                           static_cast<qsizetype>(pixels.size()));
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
}

// A pixel as 0xAARRGGBB, the colour multiplied by alpha. Row 0 is the top row.
template <HasPixels Image>
QRgb PixelAt(Image&& image, int x, int y) {
    const auto row = static_cast<std::size_t>(image.Height() - y - 1);
    const std::uint8_t* const pixel =
        image.BitsPointer() + row * image.ScanWidth() + static_cast<std::size_t>(x) * 4;
    return qRgba(pixel[2], pixel[1], pixel[0], pixel[3]);
}

// An image object whose pixel at (x, y) is `colour`(x, y): 0xAARRGGBB, the colour multiplied by alpha.
inline c32bppDIB MakeImage(int width, int height, const std::function<QRgb(int, int)>& colour) {
    PicturePixels pixels;
    pixels.InitializeDIB(width, height);
    std::uint8_t* to = pixels.BitsPointer();
    for (int y = height - 1; y >= 0; --y) {
        for (int x = 0; x < width; ++x) {
            const QRgb value = colour(x, y);
            *to++ = static_cast<std::uint8_t>(qBlue(value));
            *to++ = static_cast<std::uint8_t>(qGreen(value));
            *to++ = static_cast<std::uint8_t>(qRed(value));
            *to++ = static_cast<std::uint8_t>(qAlpha(value));
        }
    }
    pixels.alpha = true;
    c32bppDIB image;
    image.TakePixels(std::move(pixels));
    return image;
}

inline Surface MakeSurface(int width, int height, const std::function<QRgb(int, int)>& colour) {
    Surface surface;
    Resize(surface, width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            surface.picture.setPixel(x, y, colour(x, y));
        }
    }
    return surface;
}

inline QRgb PixelAt(const Surface& surface, int x, int y) {
    return surface.picture.pixel(x, y);
}

// A colour for each position that differs from those nearby.
inline QRgb PatternAt(int x, int y) {
    return qRgb((x * 37 + y * 11) & 255, (x * 5 + y * 71) & 255, (x * y) & 255);
}

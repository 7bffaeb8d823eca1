// The time of opening PNG pictures of the screen's size, each reader in turn.
#include "png_bench.h"

#include "bench.h"
#include "imaging/c32bppdib.h"
#include "imaging/png_parser.h"
#include "platform/posix/dlopened_zlib.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <span>
#include <vector>

#ifdef VANTORIX_PEER_LIBPNG
#include <png.h>
#endif
#ifdef VANTORIX_PEER_SPNG
#include <spng.h>
#endif
#ifdef VANTORIX_PEER_STB
#include "stb_peer.h"
#endif

namespace {

constexpr int kRounds = 15;
constexpr int kWidth = 1920;
constexpr int kHeight = 1080;

// Slopes with a little noise, as a theme's background has them; transparent towards the right.
QByteArray MakePng(bool isTransparent) {
    QImage picture(kWidth, kHeight, isTransparent ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    std::minstd_rand dice(1);
    for (int y = 0; y < kHeight; ++y) {
        auto* const line = reinterpret_cast<QRgb*>(picture.scanLine(y));
        for (int x = 0; x < kWidth; ++x) {
            const int noise = static_cast<int>(dice() >> 8 & 3);
            const int alpha = isTransparent ? 255 - x * 255 / kWidth : 255;
            line[x] =
                qRgba((x / 9 + noise) & 255, (y / 5 + noise) & 255, ((x + y) / 12 + noise) & 255, alpha);
        }
    }
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    picture.save(&file, "PNG");
    return file.data();
}

void Require(bool isDone, const char* reader) {
    if (!isDone) {
        std::fprintf(stderr, "%s cannot read the picture\n", reader);
        std::exit(1);
    }
}

void LoadOurs(const QByteArray& png, ZlibLibrary& zlib) {
    const std::span bytes(reinterpret_cast<const std::uint8_t*>(png.constData()),
                          static_cast<std::size_t>(png.size()));
    c32bppDIB image;
    Require(cPNGparser().LoadStream(bytes, image, 0, bytes.size(), zlib), "the own decoder");
}

void LoadByToolkit(const QByteArray& png) {
    QImage image;
    Require(image.loadFromData(png, "PNG"), "QImage");
    image = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

#ifdef VANTORIX_PEER_LIBPNG
void LoadByLibpng(const QByteArray& png) {
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    Require(png_image_begin_read_from_memory(&image, png.constData(), static_cast<std::size_t>(png.size())) !=
                0,
            "libpng");
    image.format = PNG_FORMAT_BGRA;
    std::vector<png_byte> pixels(PNG_IMAGE_SIZE(image));
    Require(png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr) != 0, "libpng");
}
#endif

#ifdef VANTORIX_PEER_SPNG
void LoadBySpng(const QByteArray& png) {
    spng_ctx* context = spng_ctx_new(0);
    std::size_t size = 0;
    spng_set_png_buffer(context, png.constData(), static_cast<std::size_t>(png.size()));
    Require(spng_decoded_image_size(context, SPNG_FMT_RGBA8, &size) == 0, "libspng");
    std::vector<unsigned char> pixels(size);
    Require(spng_decode_image(context, pixels.data(), size, SPNG_FMT_RGBA8, SPNG_DECODE_TRNS) == 0,
            "libspng");
    spng_ctx_free(context);
}
#endif

using Pictures = std::vector<QByteArray>;

// A subject that reads all pictures with one reader.
template <typename Reader>
Subject Reading(const char* name, const Pictures& pictures, Reader reader) {
    return {QString::fromLatin1(name), [&pictures, reader] {
                for (const QByteArray& png : pictures) {
                    reader(png);
                }
            }};
}

void BenchPictures(const QString& title, const Pictures& pictures) {
    DlopenedZlib zlib;
    DlopenedZlib missing("no-such-library");
    const std::vector<Subject> subjects = {
        Reading("our decoder", pictures, [&](const QByteArray& png) { LoadOurs(png, zlib); }),
        Reading("our decoder, own Inflate", pictures, [&](const QByteArray& png) { LoadOurs(png, missing); }),
        Reading("QImage", pictures, LoadByToolkit),
#ifdef VANTORIX_PEER_LIBPNG
        Reading("libpng", pictures, LoadByLibpng),
#endif
#ifdef VANTORIX_PEER_SPNG
        Reading("libspng", pictures, LoadBySpng),
#endif
#ifdef VANTORIX_PEER_STB
        Reading("stb_image", pictures, LoadByStb),
#endif
    };
    PrintRow(title, RunInTurn(subjects, kRounds));
}

Pictures PicturesOf(const QString& folder) {
    Pictures pictures;
    for (const QFileInfo& entry : QDir(folder).entryInfoList({QStringLiteral("*.png")}, QDir::Files)) {
        QFile file(entry.filePath());
        Require(file.open(QIODevice::ReadOnly), "QFile");
        pictures.push_back(file.readAll());
    }
    return pictures;
}

} // namespace

void BenchPng(const QString& themeFolder) {
    BenchPictures(QStringLiteral("PNG, opaque, 1920x1080"), {MakePng(false)});
    BenchPictures(QStringLiteral("PNG, transparent, 1920x1080"), {MakePng(true)});
    BenchPictures(QStringLiteral("PNG, all pictures of the theme"), PicturesOf(themeFolder));
}

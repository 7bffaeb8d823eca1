// The time to open PNG pictures, for each reader in turn: two pictures of the screen's size, and all pictures
// of a theme.
#include "png_bench.h"

#include "bench.h"
#include "imaging/picture_pixels.h"
#include "imaging/png/inflate.h"
#include "imaging/png/parser.h"
#include "platform/posix/dlopened_zlib.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QtEndian>

#include <malloc.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
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

// Gradients with a little noise, as in a theme's background; transparent towards the right.
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

void LoadOurs(const QByteArray& png, PicturePixels& image, ZlibLibrary& zlib) {
    const std::span bytes(reinterpret_cast<const std::uint8_t*>(png.constData()),
                          static_cast<std::size_t>(png.size()));
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

// The minimum work of any reader that uses zlib: `uncompress` over the data of all chunks in one piece, and
// one copy of the pixels.
struct Floor {
    QByteArray compressed;
    std::vector<std::uint8_t> inflated;
    std::vector<char> pixels;
    std::vector<char> copy;
};

Floor FloorOf(const QByteArray& png, ZlibLibrary& zlib) {
    Floor floor;
    for (qsizetype at = 8; at + 12 <= png.size();) {
        const auto length = static_cast<qsizetype>(qFromBigEndian<quint32>(png.constData() + at));
        if (png.mid(at + 4, 4) == "IDAT") {
            floor.compressed += png.mid(at + 8, length);
        }
        at += length + 12;
    }
    PicturePixels image;
    LoadOurs(png, image, zlib);
    const std::size_t bytes = image.ByteCount();
    floor.pixels.resize(bytes);
    floor.copy.resize(bytes);
    floor.inflated.resize(bytes * 2 + static_cast<std::size_t>(image.Height()));
    return floor;
}

void RunInflate(Floor& floor) {
    const std::span packed(reinterpret_cast<const std::uint8_t*>(floor.compressed.constData()),
                           static_cast<std::size_t>(floor.compressed.size()));
    Require(Inflate(packed, floor.inflated).has_value(), "the own Inflate");
}

void RunUncompress(Floor& floor, ZlibLibrary& zlib) {
    std::size_t written = 0;
    const std::span packed(reinterpret_cast<const std::uint8_t*>(floor.compressed.constData()),
                           static_cast<std::size_t>(floor.compressed.size()));
    Require(zlib.Uncompress(floor.inflated, written, packed) == 0, "uncompress");
}

void RunFloor(Floor& floor, ZlibLibrary& zlib) {
    RunUncompress(floor, zlib);
    std::memcpy(floor.copy.data(), floor.pixels.data(), floor.pixels.size());
}

constexpr std::size_t kOurs = 0;
constexpr std::size_t kFloor = 2;
constexpr std::size_t kInflate = 3;
constexpr std::size_t kUncompress = 4;
constexpr std::size_t kFirstPeer = 5;

std::vector<Figure> Measure(const QByteArray& png) {
    DlopenedZlib zlib;
    DlopenedZlib missing("no-such-library");
    Floor floor = FloorOf(png, zlib);
    const auto reading = [&png](const char* name, auto reader) {
        return Contender{QString::fromLatin1(name), [&png, reader] { reader(png); }};
    };
    PicturePixels image;
    const std::vector<Contender> subjects = {
        reading("our decoder", [&](const QByteArray& file) { LoadOurs(file, image, zlib); }),
        reading("our decoder, no zlib", [&](const QByteArray& file) { LoadOurs(file, image, missing); }),
        {QStringLiteral("uncompress and a copy"), [&] { RunFloor(floor, zlib); }},
        {QStringLiteral("own Inflate alone"), [&] { RunInflate(floor); }},
        {QStringLiteral("uncompress alone"), [&] { RunUncompress(floor, zlib); }},
        reading("QImage", LoadByToolkit),
#ifdef VANTORIX_PEER_LIBPNG
        reading("libpng", LoadByLibpng),
#endif
#ifdef VANTORIX_PEER_SPNG
        reading("libspng", LoadBySpng),
#endif
#ifdef VANTORIX_PEER_STB
        reading("stb_image", LoadByStb),
#endif
    };
    return RunInTurn(subjects, kRounds);
}

struct NamedPicture {
    QString name;
    QByteArray png;
};

std::vector<NamedPicture> PicturesOf(const QString& folder) {
    std::vector<NamedPicture> pictures = {
        {QStringLiteral("opaque, 1920x1080"), MakePng(false)},
        {QStringLiteral("transparent, 1920x1080"), MakePng(true)},
    };
    for (const QFileInfo& entry : QDir(folder).entryInfoList({QStringLiteral("*.png")}, QDir::Files)) {
        QFile file(entry.filePath());
        Require(file.open(QIODevice::ReadOnly), "QFile");
        pictures.push_back({entry.fileName(), file.readAll()});
    }
    return pictures;
}

double BestPeer(const std::vector<Figure>& figures) {
    return std::min_element(figures.begin() + kFirstPeer, figures.end(),
                            [](const Figure& a, const Figure& b) { return a.ratio < b.ratio; })
        ->ratio;
}

// The geometric mean of `value` over the pictures.
template <typename Value>
double Mean(const std::vector<std::vector<Figure>>& all, Value value) {
    double sum = 0;
    for (const std::vector<Figure>& figures : all) {
        sum += std::log(value(figures));
    }
    return std::exp(sum / static_cast<double>(all.size()));
}

// Lets the program keep freed memory. Otherwise the first reader of a round pays for the pages that the
// previous one returned to the system.
void KeepFreedMemory() {
    constexpr int kMost = 1 << 30;
    mallopt(M_MMAP_THRESHOLD, kMost);
    mallopt(M_TRIM_THRESHOLD, kMost);
}

} // namespace

void BenchPng(const QString& themeFolder) {
    KeepFreedMemory();
    std::vector<std::vector<Figure>> all;
    std::printf("PNG: a picture, our time, how many times as long the best peer takes, and the floor\n");
    for (const NamedPicture& picture : PicturesOf(themeFolder)) {
        all.push_back(Measure(picture.png));
        std::printf("  %-44s %10.3f ms   x %.2f   x %.2f\n", qPrintable(picture.name),
                    all.back()[kOurs].milliseconds, BestPeer(all.back()), all.back()[kFloor].ratio);
        std::fflush(stdout);
    }
    std::vector<Figure> means = all.front();
    for (std::size_t i = 0; i < means.size(); ++i) {
        means[i].milliseconds = Mean(all, [i](const auto& figures) { return figures[i].milliseconds; });
        means[i].ratio = Mean(all, [i](const auto& figures) { return figures[i].ratio; });
    }
    PrintRow(QStringLiteral("PNG, geometric mean of %1 pictures").arg(all.size()), means);
    std::printf("  %-44s %10s      x %.2f\n", "the best peer of each picture", "", Mean(all, BestPeer));
    std::printf("  %-44s %10s      x %.2f\n", "uncompress, beside own Inflate", "",
                Mean(all, [](const auto& figures) {
                    return figures[kUncompress].milliseconds / figures[kInflate].milliseconds;
                }));
}

// The time of opening PNG pictures of the screen's size, each reader in turn.
#include "png_bench.h"

#include "imaging/c32bppdib.h"
#include "imaging/png_parser.h"
#include "platform/posix/dlopened_zlib.h"

#include <QBuffer>
#include <QImage>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <span>

namespace {

constexpr int kRounds = 7;
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

} // namespace

std::vector<BenchRow> PngRows() {
    DlopenedZlib zlib;
    DlopenedZlib missing("no-such-library");
    std::vector<BenchRow> rows;
    for (const bool isTransparent : {false, true}) {
        const QByteArray png = MakePng(isTransparent);
        const QString kind = isTransparent ? QStringLiteral("transparent") : QStringLiteral("opaque");
        rows.push_back({QStringLiteral("PNG, %1: with zlib").arg(kind),
                        FastestRun(kRounds, [&] { LoadOurs(png, zlib); })});
        rows.push_back({QStringLiteral("PNG, %1: own Inflate").arg(kind),
                        FastestRun(kRounds, [&] { LoadOurs(png, missing); })});
        rows.push_back(
            {QStringLiteral("PNG, %1: QImage").arg(kind), FastestRun(kRounds, [&] { LoadByToolkit(png); })});
    }
    return rows;
}

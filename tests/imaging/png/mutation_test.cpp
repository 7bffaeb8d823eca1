// PNG files with random damage: the decoder always returns, in time and within its memory limit.
#include "imaging/picture_test_support.h"

#include <gtest/gtest.h>

#include <QtEndian>

#include <algorithm>
#include <random>

namespace {

constexpr int kChangesPerFixture = 4000;
// Limits the size in a changed header to what a test machine fills quickly. The size limit has its own test.
constexpr quint32 kLargestSide = 2000;

const char* const kFixtures[] = {
    "grey-1-adam7-mixed",
    "grey-16-plain-mixed-trns-hit",
    "colour-8-plain-mixed",
    "colour-16-adam7-mixed",
    "palette-2-plain-mixed",
    "palette-8-adam7-mixed-trns-full",
    "grey-alpha-8-plain-mixed",
    "colour-alpha-8-adam7-mixed",
    "colour-alpha-16-plain-mixed",
    "data-stored",
    "data-fixed",
    "data-in-many-blocks",
    "data-chunks-with-others-between",
};

constexpr qsizetype kWidthAt = 16;
constexpr qsizetype kHeightAt = 20;

void KeepSmall(QByteArray& png) {
    for (const qsizetype at : {kWidthAt, kHeightAt}) {
        const auto side = qFromBigEndian<quint32>(png.constData() + at);
        if (side <= 0x7FFFFFFF && side > kLargestSide) {
            qToBigEndian(side % kLargestSide, png.data() + at);
        }
    }
}

// Changes one to eight bytes, mostly by one bit, and sometimes cuts the file or duplicates a part of it.
QByteArray Damaged(QByteArray png, std::mt19937& dice) {
    const auto below = [&dice](qsizetype end) {
        return static_cast<qsizetype>(dice() % static_cast<quint32>(end));
    };
    for (auto count = 1 + dice() % 8; count > 0; --count) {
        const qsizetype at = 8 + below(png.size() - 8);
        const auto changed = dice() % 3 == 0 ? dice() : static_cast<unsigned>(png[at]) ^ 1U << dice() % 8;
        png[at] = static_cast<char>(changed);
    }
    if (dice() % 16 == 0) {
        png.truncate(std::max<qsizetype>(57, below(png.size())));
    } else if (dice() % 16 == 0) {
        png.insert(8 + below(png.size() - 8), png.mid(8 + below(png.size() - 8), 30));
    }
    KeepSmall(png);
    return png;
}

void Try(const char* name, const PicturePorts& ports) {
    const QByteArray whole = Fixture(QStringLiteral("png/%1.png").arg(QString::fromLatin1(name)));
    ASSERT_GE(whole.size(), 57) << name;
    std::mt19937 dice(20);
    c32bppDIB image;
    int loaded = 0;
    for (int i = 0; i < kChangesPerFixture; ++i) {
        const bool isLoaded = image.LoadPicture_Stream(ports, SpanOf(Damaged(whole, dice)));
        EXPECT_EQ(isLoaded, image.Handle() != 0);
        EXPECT_EQ(isLoaded, image.Width() > 0 && image.Height() > 0);
        loaded += isLoaded;
    }
    // Some damage goes unnoticed, but not most of it.
    EXPECT_LT(loaded, kChangesPerFixture * 3 / 4) << name;
    EXPECT_TRUE(image.LoadPicture_Stream(ports, SpanOf(whole))) << name;
}

TEST(PngMutation, DamagedFilesWithTheCompressionLibrary) {
    PictureMachine machine;
    for (const char* const name : kFixtures) {
        Try(name, machine.WithZlib());
    }
}

TEST(PngMutation, DamagedFilesWithoutTheCompressionLibrary) {
    PictureMachine machine;
    for (const char* const name : kFixtures) {
        Try(name, machine.WithoutZlib());
    }
}

} // namespace

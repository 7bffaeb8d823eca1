// Every PNG of the ledger, with the compression library and without it.
#include "imaging/picture_test_support.h"

#include <gtest/gtest.h>

namespace {

struct LedgerLine {
    bool isGoodWithZlib = false;
    bool isGoodWithoutZlib = false;
    QByteArray sha256;
    bool alpha = false;
    QString file;
};

std::vector<LedgerLine> ReadLedger() {
    std::vector<LedgerLine> lines;
    for (const QByteArray& line : Fixture(QStringLiteral("png/ledger.txt")).split('\n')) {
        const QList<QByteArray> fields = line.split(' ');
        if (fields.size() == 5) {
            lines.push_back({fields[0] == "OK", fields[1] == "OK", fields[2], fields[3] == "1",
                             QStringLiteral("png/") + QString::fromLatin1(fields[4])});
        }
    }
    return lines;
}

void Expect(const PicturePorts& ports, const LedgerLine& line, bool isGood) {
    SCOPED_TRACE(line.file.toStdString());
    c32bppDIB image;
    ASSERT_EQ(image.LoadPicture_File(ports, FixturePath(line.file)), isGood);
    EXPECT_EQ(image.Handle() != 0, isGood);
    if (isGood) {
        EXPECT_EQ(Sha256Of(image), line.sha256);
        EXPECT_EQ(image.alpha(), line.alpha);
        EXPECT_EQ(image.ImageType(), kImagePng);
    }
}

TEST(PngLedger, HoldsManyFiles) {
    EXPECT_GT(ReadLedger().size(), 500U);
}

// Deliberate D-41 is covered by the ledger's files with missing and surplus data.
TEST(PngLedger, EveryFileWithTheCompressionLibrary) {
    PictureMachine machine;
    ASSERT_TRUE(machine.zlib.Has("uncompress"));
    for (const LedgerLine& line : ReadLedger()) {
        Expect(machine.WithZlib(), line, line.isGoodWithZlib);
    }
}

TEST(PngLedger, EveryFileWithoutTheCompressionLibrary) {
    PictureMachine machine;
    for (const LedgerLine& line : ReadLedger()) {
        Expect(machine.WithoutZlib(), line, line.isGoodWithoutZlib);
    }
}

} // namespace

// Every GIF, icon and bitmap of the ledgers.
#include "imaging/picture_test_support.h"

#include <gtest/gtest.h>

namespace {

struct LedgerLine {
    bool isGood = false;
    QByteArray sha256;
    bool alpha = false;
    int imageType = 0;
    QString file;
};

std::vector<LedgerLine> ReadLedger(const QString& folder) {
    std::vector<LedgerLine> lines;
    for (const QByteArray& line : Fixture(folder + QStringLiteral("/ledger.txt")).split('\n')) {
        const QList<QByteArray> fields = line.split(' ');
        if (fields.size() == 5) {
            lines.push_back({fields[0] == "OK", fields[1], fields[2] == "1", fields[3].toInt(),
                             folder + u'/' + QString::fromLatin1(fields[4])});
        }
    }
    return lines;
}

class PictureLedger : public testing::TestWithParam<const char*> {};

TEST_P(PictureLedger, EveryFile) {
    PictureMachine machine;
    const std::vector<LedgerLine> lines = ReadLedger(QString::fromLatin1(GetParam()));
    EXPECT_GT(lines.size(), 30U);
    for (const LedgerLine& line : lines) {
        SCOPED_TRACE(line.file.toStdString());
        c32bppDIB image;
        EXPECT_EQ(image.LoadPicture_File(machine.WithZlib(), FixturePath(line.file)), line.isGood);
        EXPECT_EQ(image.Handle() != 0, line.isGood);
        EXPECT_EQ(image.ImageType(), line.imageType);
        EXPECT_EQ(image.alpha(), line.alpha);
        if (line.isGood && image.Handle() != 0) {
            EXPECT_EQ(Sha256Of(image), line.sha256);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Kinds, PictureLedger, testing::Values("gif", "ico", "bmp"));

} // namespace

// Every tag of the ledger, and tags that are cut or changed.
#include "imaging/tag_test_support.h"

#include "support/failing_files.h"

#include <gtest/gtest.h>

#include <QCryptographicHash>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <random>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString kFolder = QStringLiteral(TESTS_FOLDER "/tags/");

std::vector<QJsonObject> ReadLedger(PosixFiles& files) {
    std::vector<QJsonObject> lines;
    for (const QByteArray& line :
         files.ReadWhole(kFolder + u"ledger.jsonl"_s, 1 << 20).value_or("").split('\n')) {
        if (!line.isEmpty()) {
            lines.push_back(QJsonDocument::fromJson(line).object());
        }
    }
    return lines;
}

QJsonArray PicturesOf(const cTaggedImages& tag) {
    QJsonArray pictures;
    for (int i = 1; i <= tag.ImageCount(); ++i) {
        const auto data = tag.ExtractImageData(i);
        QCryptographicHash hash(QCryptographicHash::Sha256);
        if (data) {
            hash.addData(QByteArrayView(data->data(), static_cast<qsizetype>(data->size())));
        }
        pictures.append(QJsonObject{{u"ImageType"_s, tag.ImageType(i)},
                                    {u"ImageCategory"_s, tag.ImageCategory(i)},
                                    {u"extracted"_s, data.has_value()},
                                    {u"length"_s, data ? static_cast<int>(data->size()) : 0},
                                    {u"sha256"_s, QString::fromLatin1(hash.result().toHex())}});
    }
    return pictures;
}

// What the reader finds in a file, in the form of the ledger.
QJsonObject Reading(cTaggedImages& tag, Files& files, const QString& path) {
    try {
        tag.LoadTagged_Images(files, path);
        return {{u"images"_s, PicturesOf(tag)}};
    } catch (const ProgramStop& stop) {
        EXPECT_TRUE(stop.error.detail.startsWith(path)) << stop.error.detail.toStdString();
        return {{u"stop"_s, stop.error.number}};
    }
}

TEST(TagLedger, HoldsManyFilesAndNoOthersLieBesideIt) {
    PosixFiles files;
    const auto ledger = ReadLedger(files);
    EXPECT_GT(ledger.size(), 460U);
    EXPECT_EQ(static_cast<std::size_t>(QDir(kFolder + u"files"_s).entryList(QDir::Files).size()),
              ledger.size());
}

TEST(TagLedger, EveryFileGivesWhatTheRulesSay) {
    PosixFiles files;
    cTaggedImages tag;
    for (QJsonObject line : ReadLedger(files)) {
        const QString name = line.take(u"file"_s).toString();
        EXPECT_EQ(QJsonDocument(Reading(tag, files, kFolder + u"files/"_s + name)).toJson(),
                  QJsonDocument(line).toJson())
            << name.toStdString();
    }
}

// Whatever a tag claims, its pictures are inside it and reading it ends.
void ExpectBounded(TagReader& reader, const QByteArray& file) {
    try {
        reader.Load(file);
    } catch (const ProgramStop& stop) {
        EXPECT_TRUE(stop.error.number == 9 || stop.error.number == 6) << stop.error.number;
    }
    for (int i = 1; i <= reader.tag.ImageCount(); ++i) {
        reader.tag.ImageType(i);
        EXPECT_LE(reader.Data(i).size(), file.size());
    }
}

TEST(TagMutations, CutAndChangedTagsStayInBounds) {
    PosixFiles files;
    TagReader reader;
    std::minstd_rand dice(1);
    for (const QJsonObject& line : ReadLedger(files)) {
        const QString path = kFolder + u"files/"_s + line[u"file"_s].toString();
        const QByteArray whole = files.ReadWhole(path, 1 << 20).value_or("");
        if (whole.isEmpty()) {
            continue;
        }
        for (int round = 0; round < 20; ++round) {
            QByteArray changed = whole;
            for (int i = 0; i <= round % 4; ++i) {
                changed[static_cast<qsizetype>(dice() % static_cast<std::size_t>(whole.size()))] =
                    static_cast<char>(dice() % 4 == 0 ? 255 : dice() >> 8);
            }
            ExpectBounded(reader, changed);
            ExpectBounded(
                reader, whole.first(static_cast<qsizetype>(dice() % static_cast<std::size_t>(whole.size()))));
        }
    }
}

} // namespace

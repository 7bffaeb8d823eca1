// The tag reader: starts of files, links, flags, deliberate oddities, and one object for many files.
#include "imaging/tag_test_support.h"

#include "imaging/picture/c32bppdib.h"
#include "imaging/tags/asf_parser.h"
#include "support/failing_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>

using namespace Qt::Literals::StringLiterals;

namespace {

const QByteArray kPicture = "0123456789abcdefghijklmnopqrstuvwxyz";

// The number of the error with which a body stops the program; 0 when it returns.
template <typename Body>
int StopNumber(Body&& body) {
    try {
        std::forward<Body>(body)();
    } catch (const ProgramStop& stop) {
        return stop.error.number;
    }
    return 0;
}

// --- Starts of files -----------------------------------------------------------------------------

// Records how a file is used.
class WatchedFile : public OpenFile {
public:
    WatchedFile(std::int64_t size, int& reads) : size_(size), reads_(reads) {}
    std::int64_t Size() const override { return size_; }
    bool Read(std::span<std::uint8_t> /*to*/) override { return ++reads_ == 0; }

private:
    std::int64_t size_;
    int& reads_;
};

class WatchedFiles : public FailingFiles {
public:
    WatchedFiles(Files& inner, std::int64_t size) : FailingFiles(inner), size_(size) {}
    std::unique_ptr<OpenFile> Open(const QString& /*path*/) override {
        return std::make_unique<WatchedFile>(size_, reads);
    }
    int reads = 0;

private:
    std::int64_t size_;
};

TEST(TaggedImages, AFileOf29BytesHasNoPicturesAndIsNotRead) {
    PosixFiles inner;
    for (const auto& [size, reads] : {std::pair(29, 0), std::pair(30, 1)}) {
        WatchedFiles files(inner, size);
        cTaggedImages tag;
        EXPECT_EQ(tag.LoadTagged_Images(files, u"song"_s), 0);
        EXPECT_EQ(files.reads, reads);
    }
}

TEST(TaggedImages, AFileThatCannotBeOpenedHasNoPictures) {
    HomeFolder home;
    const QString path = home.Write(u"song"_s, Id3File(3, Apic(3, kPicture) + Padding()));
    FailingFiles files(home.files());
    cTaggedImages tag;
    EXPECT_EQ(tag.LoadTagged_Images(files, path), 1);
    files.Fail("Open");
    EXPECT_EQ(tag.LoadTagged_Images(files, path), 0);
    EXPECT_FALSE(tag.ExtractImageData(1));
    EXPECT_EQ(tag.LoadTagged_Images(home.files(), home.Path()), 0);
    EXPECT_EQ(tag.LoadTagged_Images(home.files(), home.Path(u"none"_s)), 0);
    EXPECT_EQ(tag.LoadTagged_Images(home.files(), QString()), 0);
}

TEST(TaggedImages, Version5HasNoPictures) {
    TagReader reader;
    EXPECT_EQ(reader.Load(Id3File(5, Apic(3, kPicture) + Padding())), 0);
    EXPECT_EQ(reader.Load(Id3File(3, Apic(3, kPicture) + Padding())), 1);
}

// A file whose header states a tag of `size` bytes.
QByteArray ShortTagFile(int version, int size, int flags = 0) {
    return Id3File(version, Apic(3, kPicture) + Padding(), flags).replace(6, 4, SyncSafe(size));
}

// How loading a file stops the program: the error, the routine, and whether the detail names the file.
struct Stop {
    int number = 0;
    QString routine;
    bool isFileNamed = false;

    bool operator==(const Stop&) const = default;
};

Stop StopAt(TagReader& reader, const QByteArray& file) {
    try {
        reader.Load(file);
    } catch (const ProgramStop& stop) {
        return {stop.error.number, stop.routine, stop.error.detail.contains(u"/song: "_s)};
    }
    return {};
}

// Deliberate D-90: the version byte is outside such a tag, and no parser handles that error.
TEST(TaggedImages, ATagOfFewerThan4BytesStopsTheProgramInEveryVersion) {
    TagReader reader;
    for (const int version : {2, 3, 4}) {
        for (const int size : {0, 1, 2, 3}) {
            EXPECT_EQ(StopAt(reader, ShortTagFile(version, size)), (Stop{9, u"LoadTagged_Images"_s, true}))
                << version << ' ' << size;
            EXPECT_EQ(reader.tag.ImageCount(), 0);
        }
    }
}

TEST(TaggedImages, ATagOf4To9BytesStopsTheProgramInVersions2And4) {
    TagReader reader;
    for (int size = 4; size <= 9; ++size) {
        EXPECT_EQ(StopAt(reader, ShortTagFile(2, size)), (Stop{9, u"ID3v2.2"_s, true})) << size;
        EXPECT_EQ(StopAt(reader, ShortTagFile(3, size)), Stop()) << size;
        EXPECT_EQ(reader.tag.ImageCount(), 0);
        EXPECT_EQ(StopAt(reader, ShortTagFile(4, size)), (Stop{9, u"ID3v2.4"_s, true})) << size;
    }
    // A compressed tag of version 2.2 is ignored as soon as its flags can be read.
    EXPECT_EQ(StopAt(reader, ShortTagFile(2, 5, 0x40)), (Stop{9, u"ID3v2.2"_s, true}));
    EXPECT_EQ(StopAt(reader, ShortTagFile(2, 6, 0x40)), Stop());
}

TEST(TaggedImages, AShortTagOfAnUnknownVersionIsNoTag) {
    TagReader reader;
    for (const int version : {1, 5}) {
        EXPECT_EQ(StopAt(reader, ShortTagFile(version, 0)), Stop());
    }
}

// --- Pictures ------------------------------------------------------------------------------------

// Deliberate D-89: the buffer lacks the tag's last ten bytes.
// Deliberate D-83: the frame still passes the test of its length.
TEST(TaggedImages, ALastFrameWithoutPaddingLosesItsLastTenBytes) {
    TagReader reader;
    for (const int version : {3, 4}) {
        ASSERT_EQ(reader.Load(Id3File(version, Apic(version, kPicture))), 1);
        EXPECT_EQ(reader.Data(1), kPicture.chopped(10));
        ASSERT_EQ(reader.Load(Id3File(version, Apic(version, kPicture) + Padding())), 1);
        EXPECT_EQ(reader.Data(1), kPicture);
    }
}

TEST(TaggedImages, ALinkIsNotListed) {
    TagReader reader;
    for (const int version : {3, 4}) {
        EXPECT_EQ(reader.Load(Id3File(version, Apic(version, "http://x/a.jpg", {.mime = "-->"}) +
                                                   Apic(version, kPicture) + Padding())),
                  1);
        EXPECT_EQ(reader.Data(1), kPicture);
    }
    EXPECT_EQ(reader.Load(Id3File(2, "PIC" + BigEndian(19).sliced(1) + Bytes({0}) + "-->" + Bytes({3, 0}) +
                                         "http://x/a.jp" + Padding())),
              0);
}

TEST(TaggedImages, AFrameWithFlags80IsSkippedAndOneWith3FIsNot) {
    TagReader reader;
    EXPECT_EQ(reader.Load(Id3File(3, Apic(3, kPicture, {.flags = 0x80}) + Padding())), 0);
    EXPECT_EQ(reader.Load(Id3File(3, Apic(3, kPicture, {.flags = 0x40}) + Padding())), 0);
    ASSERT_EQ(reader.Load(Id3File(3, Apic(3, kPicture, {.flags = 0x3F}) + Padding())), 1);
    EXPECT_EQ(reader.Data(1), kPicture);
}

// Deliberate D-81: in version 2.2 the number of the encoding is added to the offset.
TEST(TaggedImages, AWideDescriptionShiftsThePictureIn22AndNotIn23) {
    const QByteArray wide = Bytes({0xFF, 0xFE, 'A', 0, 'b', 0, 0, 0});
    TagReader reader;
    ASSERT_EQ(reader.Load(Id3File(2, "PIC" + BigEndian(5 + wide.size() + kPicture.size()).sliced(1) +
                                         Bytes({1}) + "JPG" + Bytes({3}) + wide + kPicture + Padding())),
              1);
    EXPECT_EQ(reader.Data(1), kPicture.sliced(1));
    ASSERT_EQ(reader.Load(Id3File(3, Apic(3, kPicture, {.encoding = 1, .description = wide}) + Padding())),
              1);
    EXPECT_EQ(reader.Data(1), kPicture);
}

TEST(TaggedImages, TwoPicturesAreNumbered1And2) {
    TagReader reader;
    ASSERT_EQ(reader.Load(Id3File(3, Apic(3, kPicture, {.category = 4}) +
                                         Apic(3, kPicture + kPicture, {.category = 6, .mime = "image/png"}) +
                                         Padding())),
              2);
    EXPECT_EQ(reader.tag.ImageCount(), 2);
    EXPECT_EQ(reader.tag.ImageType(1), u"image/jpeg"_s);
    EXPECT_EQ(reader.tag.ImageType(2), u"image/png"_s);
    EXPECT_EQ(reader.tag.ImageCategory(1), 4);
    EXPECT_EQ(reader.tag.ImageCategory(2), 6);
    EXPECT_EQ(reader.Data(2), kPicture + kPicture);
    for (const int none : {-1, 0, 3}) {
        EXPECT_EQ(reader.tag.ImageType(none), QString());
        EXPECT_EQ(reader.tag.ImageCategory(none), 0);
        EXPECT_FALSE(reader.tag.ExtractImageData(none));
    }
}

// Deliberate D-80: the last byte of a frame whose unsynchronisation was removed becomes zero.
TEST(TaggedImages, AnUnsynchronisedFrameLosesItsLastByte) {
    TagReader reader;
    const QByteArray picture = "ab" + Bytes({0xFF, 0x00, 0x01}) + "cd";
    ASSERT_EQ(reader.Load(Id3File(4, Apic(4, picture, {.flags = 0x02}) + Padding())), 1);
    EXPECT_EQ(reader.Data(1), "ab" + Bytes({0xFF, 0x01}) + "c" + Bytes({0}));
}

// Deliberate D-82: flags for a group and a data length make a picture longer.
TEST(TaggedImages, AGroupAndADataLengthMakeAPictureLongerInVersion4) {
    TagReader reader;
    for (const auto& [flags, more] : {std::pair(0x40, 1), std::pair(0x01, 4), std::pair(0x41, 5)}) {
        ASSERT_EQ(reader.Load(Id3File(4, Apic(4, kPicture, {.flags = flags}) + Padding())), 1);
        EXPECT_EQ(reader.Data(1), kPicture + QByteArray(more, '\0'));
    }
}

// Deliberate D-84: the byte of a group is not skipped. The encoding then takes the place of the first byte of
// the MIME type, and a letter of the MIME type that of the category.
TEST(TaggedImages, TheByteOfAGroupIsNotSkippedInVersion3) {
    TagReader reader;
    const QByteArray body = Bytes({0, 0}) + "image/jpeg" + Bytes({0, 3, 0}) + kPicture;
    ASSERT_EQ(reader.Load(Id3File(3, "APIC" + BigEndian(body.size()) + Bytes({0, 0x20}) + body + Padding())),
              1);
    EXPECT_EQ(reader.tag.ImageType(1), QString());
    EXPECT_EQ(reader.tag.ImageCategory(1), 'i');
}

// Deliberate D-85: the area of an unsynchronised tag passes its end by the length of an extended header.
TEST(TaggedImages, AnUnsynchronisedTagWithAnExtendedHeaderIsBroken) {
    TagReader reader;
    EXPECT_EQ(
        reader.Load(Id3File(3, BigEndian(10) + QByteArray(6, '\0') + Apic(3, kPicture) + Padding(), 0xC0)),
        0);
    EXPECT_EQ(StopNumber([&] {
                  reader.Load(Id3File(4, SyncSafe(6) + Bytes({1, 0}) + Apic(4, kPicture) + Padding(), 0xC0));
              }),
              9);
}

// Deliberate D-86: in version 2.3 the size field of an extended header is not skipped, in 2.4 it is.
TEST(TaggedImages, FramesBehindAnExtendedHeaderAreFoundInVersion4Alone) {
    TagReader reader;
    EXPECT_EQ(
        reader.Load(Id3File(3, BigEndian(6) + QByteArray(6, '\0') + Apic(3, kPicture) + Padding(), 0x40)), 0);
    EXPECT_EQ(reader.Load(Id3File(4, SyncSafe(6) + Bytes({1, 0}) + Apic(4, kPicture) + Padding(), 0x40)), 1);
}

// Deliberate D-90: an error that stops the program in 2.2 and 2.4 gives the pictures found so far in 2.3.
TEST(TaggedImages, ABrokenTagStopsTheProgramInVersions2And4) {
    TagReader reader;
    const QByteArray open = "APIC" + BigEndian(40) + Bytes({0, 0}) + QByteArray(60, 'x');
    EXPECT_EQ(reader.Load(Id3File(3, Apic(3, kPicture) + open)), 1);
    EXPECT_EQ(StopNumber([&] { reader.Load(Id3File(4, Apic(4, kPicture) + open)); }), 9);
    EXPECT_EQ(StopNumber([&] {
                  reader.Load(Id3File(2, "PIC" + BigEndian(40).sliced(1) + Bytes({0}) + QByteArray(60, 'x')));
              }),
              9);
}

// --- ASF -----------------------------------------------------------------------------------------

QByteArray Fixture(const QString& name) {
    return PosixFiles().ReadWhole(QStringLiteral(TESTS_FOLDER "/tags/files/") + name, 1 << 20).value_or("");
}

TEST(TaggedImages, APictureInTheMetadataLibraryIsFoundIfTheObjectsAroundItParse) {
    TagReader reader;
    EXPECT_EQ(reader.Load(Fixture(u"asf-metadata-library.wma"_s)), 1);
    EXPECT_EQ(reader.Load(Fixture(u"asf-metadata-library-among-others.wma"_s)), 2);
    EXPECT_EQ(reader.Load(Fixture(u"asf-extension-object-of-0.wma"_s)), 0);
}

// Deliberate D-87: the Header Extension Object ends the search.
TEST(TaggedImages, APictureBehindTheHeaderExtensionIsNotReached) {
    TagReader reader;
    EXPECT_EQ(reader.Load(Fixture(u"asf-behind-the-header-extension.wma"_s)), 0);
    EXPECT_EQ(reader.Load(Fixture(u"asf-both-places.wma"_s)), 2);
}

// Deliberate D-88: bytes after the last record of a Metadata Library Object are read as the next object.
TEST(TaggedImages, BytesBehindTheLastRecordHideTheNextObject) {
    TagReader reader;
    EXPECT_EQ(reader.Load(Fixture(u"asf-library-with-bytes-behind.wma"_s)), 1);
}

// --- One object for many files -------------------------------------------------------------------

TEST(TaggedImages, EachLoadForgetsTheFileBefore) {
    TagReader reader;
    ASSERT_EQ(reader.Load(Id3File(3, Apic(3, kPicture) + Padding())), 1);
    EXPECT_EQ(reader.Load(QByteArray(100, 'x')), 0);
    EXPECT_EQ(reader.Data(1), "(nothing)");
    ASSERT_EQ(reader.Load(Id3File(3, Apic(3, kPicture) + Padding())), 1);
    EXPECT_EQ(StopNumber([&] { reader.Load(Id3File(4, "APIC")); }), 9);
    EXPECT_EQ(reader.tag.ImageCount(), 0);
}

TEST(TaggedImages, PicturesAreRangesOfOneBuffer) {
    TagReader reader;
    ASSERT_EQ(reader.Load(Id3File(3, Apic(3, kPicture) + Apic(3, kPicture) + Padding())), 2);
    const auto first = reader.tag.ExtractImageData(1);
    const auto second = reader.tag.ExtractImageData(2);
    ASSERT_TRUE(first && second);
    EXPECT_EQ(second->data() - first->data(), Apic(3, kPicture).size());
}

// --- Hostile tags --------------------------------------------------------------------------------

// CPU time, which other programs do not affect.
double WorkToLoadOnce(const QByteArray& file) {
    TagReader reader;
    const std::clock_t start = std::clock();
    try {
        reader.Load(file);
    } catch (const ProgramStop&) {
        // Broken tags must end soon too.
    }
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

// The minimum of three runs, because fresh memory and a full cache cost extra.
double WorkToLoad(const QByteArray& file) {
    return std::min({WorkToLoadOnce(file), WorkToLoadOnce(file), WorkToLoadOnce(file)});
}

// Searching to the end of the tag for each string would take minutes.
TEST(TaggedImages, StringsWithoutEndAreSearchedOnce) {
    constexpr int kFrames = 100'000;
    const QByteArray wide =
        "APIC" + SyncSafe(200) + Bytes({0, 0, 1}) + "abc" + Bytes({0, 3}) + QByteArray(195, 'x');
    const QByteArray bytes =
        "PIC" + Bytes({1, 1, 1}) + Bytes({0}) + "JPG" + Bytes({3}) + QByteArray(0x10101 - 5, 'x');
    // Sixteen times the strings take sixteen times the work. With a search to the end for each, it would be
    // 256 times.
    const auto growth = [](const auto& fileOf, int frames) {
        return WorkToLoad(fileOf(16 * frames)) / std::max(WorkToLoad(fileOf(frames)), 0.001);
    };
    const auto wideFile = [&](int frames) {
        return Id3File(4, wide.repeated(frames) + Bytes({'A', 0, 0, 0}));
    };
    const auto bytesFile = [&](int frames) { return Id3File(2, bytes.repeated(frames)); };
    EXPECT_LT(growth(wideFile, kFrames / 16), 100);
    EXPECT_LT(growth(bytesFile, 60), 100);
}

TEST(TaggedImages, TheListOfPicturesIsBounded) {
    TagReader reader;
    const QByteArray least = "APIC" + BigEndian(1) + Bytes({0, 0, 0});
    const int count = reader.Load(Id3File(3, least.repeated((1 << 20) + 1000) + Padding()));
    EXPECT_EQ(count, 1 << 20);
}

} // namespace

// Covers of slots and the big cover: which file or tag is used, where it is drawn, and what is kept of it.
#include "rendering/covers.h"

#include "imaging/tag_test_support.h"
#include "rendering/redraw_jukebox.h"
#include "rendering/tag_covers.h"
#include "rendering/track_zone.h"
#include "shell/hand_down.h"
#include "support/error_of.h"
#include "support/failing_files.h"
#include "support/jukebox.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QImage>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QRgb kRed = qRgb(220, 10, 10);
constexpr QRgb kGreen = qRgb(10, 200, 10);
constexpr QRgb kBlue = qRgb(10, 10, 220);

// The first slot of the test theme, and its cover box.
constexpr QRect kSlot(4, 3, 216, 32);
constexpr QRect kCoverBox(30, 6, 26, 26);

// Returns a picture file of one colour.
QByteArray PictureFile(QRgb colour, const char* format, const QSize& size) {
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(colour);
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    picture.save(&file, format, 100);
    return file.data();
}

QByteArray Png(QRgb colour) {
    return PictureFile(colour, "PNG", QSize(64, 64));
}

// Returns a JPEG that is larger than twice any box of the test theme.
QByteArray Jpeg(QRgb colour) {
    return PictureFile(colour, "JPG", QSize(640, 640));
}

QByteArray TaggedTrack(const QByteArray& picture, const PictureFrame& of = {}) {
    return Id3File(3, Apic(3, picture, of) + Padding());
}

// Whether two colours are the same except for the small errors of JPEG.
bool IsLike(QRgb a, QRgb b) {
    return qAbs(qRed(a) - qRed(b)) < 4 && qAbs(qGreen(a) - qGreen(b)) < 4 && qAbs(qBlue(a) - qBlue(b)) < 4;
}

class Covers : public testing::Test {
protected:
    explicit Covers(const QSize& screen = QSize(640, 360)) : box(screen) {}

    // Writes a file of the music folder, and creates its folders.
    void Music(const QString& name, const QByteArray& bytes) {
        box.Folder(name.contains(u'/') ? name.left(name.lastIndexOf(u'/')) : QString());
        ASSERT_TRUE(PosixFiles().Write(box.Music(name), bytes, false));
    }
    void Set(const char* key, const char* value) {
        box.SetKey(u"config.ini"_s, u"Main"_s, QString::fromLatin1(key), QString::fromLatin1(value));
    }

    // Returns the area of a colour on one of the surfaces.
    static QRect AreaOf(const Surface& surface, QRgb colour) {
        QRect area;
        for (int y = 0; y < surface.Height(); ++y) {
            for (int x = 0; x < surface.Width(); ++x) {
                area = IsLike(surface.picture.pixel(x, y), colour) ? area.united(QRect(x, y, 1, 1)) : area;
            }
        }
        return area;
    }
    // Returns the area of a colour in the track zone, which must be the same in both looks.
    QRect AreaOf(QRgb colour) const {
        const QRect area = AreaOf(box.form.frame.Picture_Cache, colour);
        EXPECT_EQ(AreaOf(box.form.frame.Picture_CacheHilight, colour), area);
        return area;
    }
    // Whether the first slot's title begins after the cover box, which shows that the slot counts as having a
    // cover.
    bool FirstSlotHasCover() const {
        const QString drawn = box.DrawnTexts().filter(QStringLiteral(",28,Vantorix Test")).value(0);
        return drawn.split(u',').value(1).toInt() > kCoverBox.right();
    }

    Jukebox box;
};

// --- Folders -------------------------------------------------------------------------------------

TEST_F(Covers, AFolderWithBothPicturesShowsTheJpg) {
    Music(u"Rock/folder.png"_s, Png(kRed));
    Music(u"Rock/folder.jpg"_s, Jpeg(kGreen));
    box.Start();
    EXPECT_EQ(AreaOf(kGreen), kCoverBox);
    EXPECT_EQ(AreaOf(kRed), QRect());
    EXPECT_TRUE(FirstSlotHasCover());
}

TEST_F(Covers, AFolderPictureIsFoundInAnyCaseAndToldByItsContent) {
    Music(u"Rock/Folder.JPG"_s, Png(kGreen));
    box.Start();
    EXPECT_EQ(AreaOf(kGreen), kCoverBox);
}

// Deliberate D-92: a "bigcover" does not depend on ShowCover.
TEST_F(Covers, ABigCoverFillsTheWholeSlotWithoutShowCover) {
    Set("ShowCover", "false");
    Set("ShowBigCover", "true");
    Music(u"Rock/bigcover.jpg"_s, Jpeg(kGreen));
    Music(u"Rock/bigcover.png"_s, Png(kRed));
    Music(u"Rock/folder.png"_s, Png(kBlue));
    box.Start();
    EXPECT_EQ(AreaOf(kGreen), kSlot);
    EXPECT_EQ(AreaOf(kRed), QRect());
    EXPECT_EQ(AreaOf(kBlue), QRect());
}

TEST_F(Covers, AFolderPictureComesBeforeABigCover) {
    Set("ShowBigCover", "true");
    Music(u"Rock/bigcover.png"_s, Png(kGreen));
    Music(u"Rock/folder.png"_s, Png(kRed));
    box.Start();
    EXPECT_EQ(AreaOf(kRed), kCoverBox);
    EXPECT_EQ(AreaOf(kGreen), QRect());
}

TEST_F(Covers, ABigCoverPngWithoutShowFolderCoverIsNotShown) {
    Set("ShowBigCover", "true");
    Set("ShowFolderCover", "false");
    Music(u"Rock/bigcover.png"_s, Png(kGreen));
    box.Start();
    EXPECT_EQ(AreaOf(kGreen), QRect());
    EXPECT_FALSE(FirstSlotHasCover());
}

TEST_F(Covers, ABigCoverNeedsShowBigCover) {
    Music(u"Rock/bigcover.png"_s, Png(kGreen));
    box.Start();
    EXPECT_EQ(AreaOf(kGreen), QRect());
}

TEST_F(Covers, APictureThatCannotBeDecodedStillTakesTheCoversRoom) {
    Music(u"Rock/folder.jpg"_s, QByteArray(500, 'x'));
    Music(u"Rock/folder.png"_s, Png(kGreen));
    box.Start();
    EXPECT_EQ(AreaOf(kGreen), QRect());
    EXPECT_TRUE(FirstSlotHasCover());
    EXPECT_EQ(box.form.frame.ImgCover.Width(), 0);
}

// --- Tracks --------------------------------------------------------------------------------------

TEST_F(Covers, APictureBesideATrackIsShown) {
    Music(u"Song.mp3"_s, "");
    Music(u"song.jpg"_s, Png(kGreen));
    box.Start();
    EXPECT_EQ(AreaOf(kGreen), kCoverBox);
    EXPECT_TRUE(FirstSlotHasCover());
}

TEST_F(Covers, APictureBesideATrackNeedsShowCover) {
    Music(u"x.mp3"_s, TaggedTrack(Jpeg(kRed)));
    Music(u"x.jpg"_s, Png(kGreen));
    Set("ShowCover", "false");
    box.Start();
    EXPECT_EQ(AreaOf(kGreen), QRect());
    EXPECT_EQ(AreaOf(kRed), QRect());
    EXPECT_FALSE(FirstSlotHasCover());
}

TEST_F(Covers, APngBesideATrackIsNotLookedAt) {
    Music(u"x.mp3"_s, "");
    Music(u"x.png"_s, Png(kGreen));
    box.Start();
    EXPECT_EQ(AreaOf(kGreen), QRect());
}

TEST_F(Covers, APictureBesideATrackComesBeforeItsTag) {
    Music(u"x.mp3"_s, TaggedTrack(Jpeg(kRed)));
    Music(u"x.jpg"_s, Png(kGreen));
    box.Start();
    EXPECT_EQ(AreaOf(kGreen), kCoverBox);
    Set("ShowFileCover", "false");
    box.Start();
    EXPECT_EQ(AreaOf(kRed), kCoverBox);
    Set("ShowMp3CoverTag", "false");
    box.Start();
    EXPECT_EQ(AreaOf(kRed), QRect());
}

// Deliberate D-91: three characters are cut off, so x.fjpg is the picture of the track x.flac.
TEST_F(Covers, AFourLetterEndingNeverMeetsTheJpg) {
    Music(u"x.flac"_s, "");
    Music(u"x.jpg"_s, Png(kGreen));
    box.Start();
    EXPECT_EQ(AreaOf(kGreen), QRect());
    Music(u"x.fjpg"_s, Png(kRed));
    box.Start();
    EXPECT_EQ(AreaOf(kRed), kCoverBox);
}

// Deliberate D-93: the zone's corner is added for folders only.
TEST_F(Covers, TheZonesCornerMovesTheCoverOfAFolderAndNotThatOfATrack) {
    box.SetTheme(u"zonelist"_s, u"ZoneListX"_s, u"5"_s);
    box.SetTheme(u"zonelist"_s, u"ZoneListY"_s, u"7"_s);
    Set("ShowBigCover", "true");
    Music(u"A/folder.png"_s, Png(kRed));
    Music(u"B/bigcover.png"_s, Png(kBlue));
    Music(u"C.mp3"_s, TaggedTrack(Jpeg(kGreen)));
    box.Start();
    EXPECT_EQ(AreaOf(kRed), kCoverBox.translated(5, 7));
    EXPECT_EQ(AreaOf(kBlue), kSlot.translated(5, 7 + 33));
    // The slot's number and title are drawn later and in other places.
    EXPECT_EQ(AreaOf(kGreen), kCoverBox.translated(0, 2 * 33));
}

// --- Tags ----------------------------------------------------------------------------------------

TEST_F(Covers, ATrackWithABackCoverAloneHasNoTagPicture) {
    Music(u"x.mp3"_s, TaggedTrack(Jpeg(kRed), {.category = 4}));
    box.Start();
    EXPECT_EQ(AreaOf(kRed), QRect());
    EXPECT_FALSE(FirstSlotHasCover());
}

TEST_F(Covers, TheFirstOfAnOtherAndAFrontCoverIsUsed) {
    Music(u"x.mp3"_s,
          Id3File(3, Apic(3, Jpeg(kBlue), {.category = 4}) + Apic(3, Jpeg(kRed), {.category = 0}) +
                         Apic(3, Jpeg(kGreen), {.category = 3}) + Padding()));
    box.Start();
    EXPECT_EQ(AreaOf(kRed), kCoverBox);
    EXPECT_EQ(AreaOf(kGreen), QRect());
    EXPECT_EQ(AreaOf(kBlue), QRect());
}

// Deliberate D-95: a PNG is not shown, ends the search and counts as a cover.
TEST_F(Covers, APngInATagLeavesTheBoxEmptyAndEndsTheSearch) {
    for (const char* const mime : {"image/png", "PNG", "image/tiff", "image/x-other", "image/jpeg"}) {
        Music(u"x.mp3"_s, Id3File(3, Apic(3, Png(kRed), {.mime = mime}) + Apic(3, Jpeg(kGreen)) + Padding()));
        box.Start();
        EXPECT_EQ(AreaOf(kRed), QRect()) << mime;
        EXPECT_EQ(AreaOf(kGreen), QRect()) << mime;
        EXPECT_TRUE(FirstSlotHasCover()) << mime;
    }
}

// The text of the format gives the kind, which only decides whether the loader is called.
TEST_F(Covers, AJpegIsShownUnderAnyNameOfAKnownKind) {
    for (const char* const mime :
         {"image/JPEG", "jpg", "image/bmp", "x-Bitmap", "image/gif", "x-metafile", "image/wmf"}) {
        Music(u"x.mp3"_s, TaggedTrack(Jpeg(kGreen), {.mime = mime}));
        box.Start();
        EXPECT_EQ(AreaOf(kGreen), kCoverBox) << mime;
    }
    for (const char* const mime : {"", "image/png", "image/tiff", "picture"}) {
        Music(u"x.mp3"_s, TaggedTrack(Jpeg(kGreen), {.mime = mime}));
        box.Start();
        EXPECT_EQ(AreaOf(kGreen), QRect()) << mime;
    }
}

// Returns a GIF of two by two pixels in one colour, which is the transparent one.
QByteArray TransparentGif(QRgb colour) {
    return "GIF89a" + Bytes({2, 0, 2, 0, 0x80, 0, 0, qRed(colour), qGreen(colour), qBlue(colour), 0, 0, 0}) +
           Bytes({0x21, 0xF9, 4, 1, 0, 0, 0, 0, 0x2C, 0, 0, 0, 0, 2, 0, 2, 0, 0}) +
           Bytes({2, 2, 0x84, 0x51, 0, 0x3B});
}

// Returns a 32-bit bitmap with one pixel that is almost transparent.
QByteArray FaintBmp(QRgb colour) {
    return "BM" +
           Bytes({58, 0, 0, 0, 0, 0, 0, 0, 54, 0, 0, 0, 40, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 32}) +
           QByteArray(25, '\0') + Bytes({qBlue(colour), qGreen(colour), qRed(colour), 3});
}

// The copy from the surface of tag pictures ignores transparency.
TEST_F(Covers, APictureInATagCoversItsBoxWhateverItsAlpha) {
    for (const QByteArray& picture : {TransparentGif(kGreen), FaintBmp(kGreen)}) {
        Music(u"x.mp3"_s, TaggedTrack(picture, {.mime = "image/gif"}));
        box.Start();
        EXPECT_EQ(AreaOf(kGreen), kCoverBox);
        SettleTmpCover(box.form);
        EXPECT_TRUE(IsLike(box.form.frame.Picture_TmpCover.picture.pixel(0, 0), kGreen));
    }
}

TEST_F(Covers, APictureOfWhichNothingLiesInTheTagEndsTheSearchWithoutACover) {
    // The description runs past the end of its frame, so the length of the picture is negative.
    const QByteArray open = Apic(3, "", {.description = "no end"});
    Music(u"x.mp3"_s, Id3File(3, open + Apic(3, Jpeg(kGreen)) + Padding()));
    box.Start();
    EXPECT_EQ(AreaOf(kGreen), QRect());
    EXPECT_FALSE(FirstSlotHasCover());
}

TEST_F(Covers, ABrokenTagOnThePageStopsTheProgramAndIsNamed) {
    Music(u"x.mp3"_s, Id3File(4, "APIC" + SyncSafe(30) + Bytes({0, 0}) + QByteArray(60, 'x')));
    const auto stop = StopOf([&] { box.Start(); });
    ASSERT_TRUE(stop);
    EXPECT_EQ(stop->error.number, 9);
    EXPECT_TRUE(stop->error.detail.contains(box.Music(u"x.mp3"_s)));
}

TEST_F(Covers, TheLastTagPictureIsHeldWhole) {
    Music(u"a.mp3"_s, TaggedTrack(PictureFile(kRed, "JPG", QSize(300, 200))));
    Music(u"b.mp3"_s, TaggedTrack(PictureFile(kGreen, "JPG", QSize(250, 220))));
    box.Start();
    SettleTmpCover(box.form);
    // Decoding at full size needs the system's loader. Without it the surface stays empty, but is never
    // smaller.
    const Surface& cover = box.form.frame.Picture_TmpCover;
    EXPECT_TRUE(cover.picture.isNull() || cover.picture.size() == QSize(250, 220));
}

// --- The big cover -------------------------------------------------------------------------------

class BigCovers : public Covers {
protected:
    explicit BigCovers(const QSize& screen = QSize(640, 360)) : Covers(screen) {}
    void SetUp() override { Set("ShowBigCover", "true"); }
    // The command block of the test theme without ten pixels at each side.
    static constexpr QRect kBlock{448 + 10, 240 + 10, 192 - 20, 120 - 20};
    QRect OnScreen(QRgb colour) const { return AreaOf(box.form.frame.Picture_Main, colour); }
};

TEST_F(BigCovers, AFolderShowsItsPictureAndNeverItsBigCover) {
    Music(u"A/folder.png"_s, Png(kGreen));
    Music(u"A/bigcover.png"_s, Png(kRed));
    Music(u"B/bigcover.png"_s, Png(kRed));
    box.Start();
    EXPECT_EQ(box.form.frame.CoverKind, 1);
    EXPECT_EQ(OnScreen(kGreen).united(kBlock), OnScreen(kGreen));
    LoadBigCover(box.form, 1);
    EXPECT_EQ(box.form.frame.CoverKind, 0);
}

TEST_F(BigCovers, ATrackShowsThePictureBesideIt) {
    Music(u"a.mp3"_s, TaggedTrack(Jpeg(kRed)));
    Music(u"a.jpg"_s, Png(kGreen));
    box.Start();
    EXPECT_EQ(box.form.frame.CoverKind, 1);
    EXPECT_EQ(OnScreen(kGreen).right(), kBlock.right());
    EXPECT_EQ(OnScreen(kGreen).bottom(), kBlock.bottom());
}

// Deliberate D-94: the other switches have no effect.
TEST_F(BigCovers, TheOtherSwitchesPlayNoPart) {
    for (const char* const key : {"ShowCover", "ShowFolderCover", "ShowFileCover", "ShowMp3CoverTag"}) {
        Set(key, "false");
    }
    Music(u"A/folder.png"_s, Png(kGreen));
    Music(u"b.mp3"_s, TaggedTrack(Jpeg(kBlue)));
    Music(u"c.mp3"_s, "");
    Music(u"c.jpg"_s, Png(kRed));
    box.Start();
    EXPECT_EQ(box.form.frame.CoverKind, 1);
    LoadBigCover(box.form, 1);
    EXPECT_EQ(box.form.frame.CoverKind, 2);
    LoadBigCover(box.form, 2);
    EXPECT_EQ(box.form.frame.CoverKind, 1);
}

TEST_F(BigCovers, AnEmptySlotHasNone) {
    box.Start();
    box.form.frame.CoverKind = 1;
    LoadBigCover(box.form, 5);
    EXPECT_EQ(box.form.frame.CoverKind, 0);
}

// A screen of twice the theme's size, on which copies are smoothed.
class BigTagCovers : public BigCovers {
protected:
    BigTagCovers() : BigCovers(QSize(1280, 720)) {}
    static QByteArray LargeTrack(QRgb colour) {
        return TaggedTrack(PictureFile(colour, "JPG", QSize(1000, 1000)));
    }
    // Whether two corners and the middle of the block have a colour.
    bool FillsTheBlock(QRgb colour) const {
        const QRect block(2 * kBlock.topLeft(), 2 * kBlock.size());
        for (const QPoint place : {block.topLeft(), block.center(), block.bottomRight()}) {
            if (!IsLike(box.form.frame.Picture_Main.picture.pixel(place), colour)) {
                return false;
            }
        }
        return true;
    }
};

TEST_F(BigTagCovers, ATrackWithoutAPictureBesideItShowsTheOneInItsTag) {
    Music(u"a.mp3"_s, LargeTrack(kBlue));
    Music(u"b.mp3"_s, "");
    box.Start();
    EXPECT_EQ(box.form.frame.CoverKind, 2);
    EXPECT_TRUE(FillsTheBlock(kBlue));
    box.form.cursor.SelY = 2;
    RedrawJukebox(box.form);
    EXPECT_EQ(box.form.frame.CoverKind, 0);
    EXPECT_FALSE(FillsTheBlock(kBlue));
}

// Drawing a page again leaves its last tag picture on the surface.
TEST_F(BigTagCovers, ItIsWhateverTheSurfaceHoldsWhenItIsDrawn) {
    Music(u"a.mp3"_s, LargeTrack(kRed));
    Music(u"b.mp3"_s, LargeTrack(kBlue));
    box.Start();
    RedrawJukebox(box.form);
    EXPECT_TRUE(FillsTheBlock(kRed));
    DrawZoneList(box.form);
    RedrawJukebox(box.form);
    EXPECT_TRUE(FillsTheBlock(kBlue));
}

// --- What is kept --------------------------------------------------------------------------------

// Ports whose file operations are counted.
class CountedCovers : public Covers {
protected:
    FailingFiles counted{box.platform.realFiles};
    Ports PortsOver() {
        Ports ports = box.platform.ports();
        return {ports.audio, ports.graphs, ports.MSComm1, ports.display, ports.windows,
                ports.fonts, ports.clock,  ports.pump,    ports.dialogs, ports.messageBox,
                counted,     ports.zlib,   ports.pictures};
    }
};

TEST_F(CountedCovers, APageSeenAgainReadsNoPictureAndNoTag) {
    Music(u"A/folder.jpg"_s, Jpeg(kRed));
    Music(u"b.mp3"_s, TaggedTrack(Jpeg(kGreen)));
    Music(u"c.mp3"_s, "");
    Form_Main form(PortsOver(), HandDown());
    form.shell.AppFolder = box.Home();
    Form_Load(form);
    ASSERT_EQ(AreaOf(form.frame.Picture_Cache, kRed), kCoverBox);
    const QImage first = form.frame.Picture_Cache.picture.copy();
    const int opened = counted.Calls("Open");
    const int read = counted.Calls("ReadWhole");
    EXPECT_GT(opened, 0);
    DrawZoneList(form);
    EXPECT_EQ(counted.Calls("Open"), opened);
    EXPECT_EQ(counted.Calls("ReadWhole"), read);
    EXPECT_EQ(form.frame.Picture_Cache.picture, first);
}

TEST_F(Covers, AChangedFileIsShownAnew) {
    Music(u"A/folder.jpg"_s, Jpeg(kRed));
    Music(u"b.mp3"_s, TaggedTrack(Jpeg(kBlue)));
    box.Start();
    EXPECT_EQ(AreaOf(kRed), kCoverBox);
    Music(u"A/folder.jpg"_s, Jpeg(kGreen) + "longer");
    Music(u"b.mp3"_s, TaggedTrack(Jpeg(kRed)) + "longer");
    DrawZoneList(box.form);
    EXPECT_EQ(AreaOf(kGreen), kCoverBox);
    EXPECT_EQ(AreaOf(kRed), kCoverBox.translated(0, 33));
}

TEST_F(Covers, AFileThatGoesTakesItsCoverAlong) {
    Music(u"A/folder.jpg"_s, Jpeg(kRed));
    Music(u"b.mp3"_s, TaggedTrack(Jpeg(kBlue)));
    box.Start();
    QFile::remove(box.Music(u"A/folder.jpg"_s));
    QFile::remove(box.Music(u"b.mp3"_s));
    DrawZoneList(box.form);
    EXPECT_EQ(AreaOf(kRed), QRect());
    EXPECT_EQ(AreaOf(kBlue), QRect());
}

TEST_F(Covers, ABoxOfNoSizeShowsAFileInItsOwnSizeAndATagNotAtAll) {
    box.SetTheme(u"zonelistGauche1"_s, u"ZoneListPisteCoverW"_s, u"0"_s);
    Music(u"a.mp3"_s, "");
    Music(u"a.jpg"_s, PictureFile(kGreen, "PNG", QSize(40, 40)));
    box.Start();
    EXPECT_EQ(AreaOf(kGreen), QRect(kCoverBox.topLeft(), QSize(40, kCoverBox.height())));
    QFile::remove(box.Music(u"a.jpg"_s));
    Music(u"a.mp3"_s, TaggedTrack(Jpeg(kRed)));
    box.Start();
    EXPECT_EQ(AreaOf(kRed), QRect());
    EXPECT_TRUE(FirstSlotHasCover());
}

} // namespace

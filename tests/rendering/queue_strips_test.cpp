// The strips of the queue, compared with strips that are painted whole.
#include "core/conversions.h"
#include "imaging/strip.h"
#include "rendering/playlist_block.h"
#include "rendering/text.h"
#include "rendering/titles.h"
#include "shell/log.h"
#include "support/error_of.h"
#include "support/jukebox.h"
#include "theme/load_theme.h"

#include <gtest/gtest.h>

#include <random>

namespace {

constexpr int kTail = 7;

// How the theme of a test differs from the plain one.
struct Theme {
    const char* name;
    QSize bar;
    // Of the pictures: 255 is opaque.
    int alpha;
    const char* font;
    int fontSize;
    int decal;
};

std::ostream& operator<<(std::ostream& out, const Theme& theme) {
    return out << theme.name;
}

// The whole strips, painted as the rule says: each row's ground, then its texts.
struct WholeStrips {
    Surface normal;
    Surface selected;
    Surface touch;
};

void PaintGround(Form_Main& form, WholeStrips& strips, int y) {
    const int x = form.BlockPlaylistPlaylistX.value();
    const int top = form.BlockPlaylistPlaylistY.value();
    const int width = form.ImgPlaylistPlaylistHilight.Width();
    const int height = form.ImgPlaylistPlaylistHilight.Height();
    form.ImgPlaylist.Render(strips.normal, 0, y, width, height, x, top, width, height);
    form.ImgPlaylist.Render(strips.selected, 0, y, width, height, x, top, width, height);
    form.ImgPlaylistPlaylistHilight.Render(strips.selected, 0, y);
}

void PaintTexts(Form_Main& form, Surface& strip, int y, const TitleParts& parts, const TextStyle& style,
                Integer16 decal) {
    const QString left = QStringLiteral("left");
    const QString center = QStringLiteral("center");
    const double half = form.ImgPlaylistPlaylistHilight.Height() / 2.0;
    const Integer16 width = form.BlockPlaylistPlaylistW - 5;
    const Integer16 titleTop = CInt16(static_cast<double>(y) + decal.value() + 1);
    const Integer16 artistTop = CInt16(y + half + decal.value() - 1);
    DrawText(form, strip, parts.Titre, {5, titleTop, width, CInt16(half)}, style, left, center);
    DrawText(form, strip, parts.Interprete, {5, artistTop, width, CInt16(half)}, style, left, center);
}

void PaintRow(Form_Main& form, WholeStrips& strips, int row) {
    const int y = row * form.ImgPlaylistPlaylistHilight.Height();
    PaintGround(form, strips, y);
    const TitleParts parts = BlockTitle(
        form.PlaylistTitre(row + 1),
        {QStringLiteral(".mp3"), QStringLiteral(".flac"), QStringLiteral(".avi"), QStringLiteral(".mpg"),
         QStringLiteral(".mp4"), QStringLiteral(".wma"), QStringLiteral(".vtxpl")});
    PaintTexts(form, strips.normal, y, parts,
               {form.BlockPlaylistPlaylistFont, form.BlockPlaylistPlaylistFontSize,
                form.BlockPlaylistPlaylistFontColor},
               form.BlockPlaylistPlaylistFontDecal);
    PaintTexts(form, strips.selected, y, parts,
               {form.BlockPlaylistPlaylistFontHilight, form.BlockPlaylistPlaylistFontSizeHilight,
                form.BlockPlaylistPlaylistFontColorHilight},
               form.BlockPlaylistPlaylistFontDecalHilight);
}

void PaintWhole(Form_Main& form, WholeStrips& strips) {
    WriteLog(form, QStringLiteral(" : DrawPlaylist"));
    const int rowHeight = form.ImgPlaylistPlaylistHilight.Height();
    const int count = form.PlaylistCount.value();
    for (Surface* strip : {&strips.normal, &strips.selected}) {
        Resize(*strip, form.BlockPlaylistPlaylistW.value(), (count + kTail) * rowHeight);
    }
    for (int row = 0; row < count; ++row) {
        PaintRow(form, strips, row);
    }
    for (int row = count; row <= count + kTail; ++row) {
        PaintGround(form, strips, row * rowHeight);
    }
    Resize(strips.touch, strips.normal.Width(), strips.normal.Height());
    BitBlt(strips.touch, {0, 0, strips.normal.Width(), strips.normal.Height()}, strips.normal, 0, 0);
    const int y = (form.PlaylistSelected.value() - 1) * rowHeight;
    BitBlt(strips.touch, {0, y, strips.normal.Width(), rowHeight}, strips.selected, 0, y);
}

// A picture in which no two neighbouring pixels are the same.
QImage Pattern(const QSize& size, int alpha, unsigned seed) {
    QImage picture(size, QImage::Format_ARGB32);
    std::mt19937 random(seed);
    const auto part = [&] { return static_cast<int>(random() % 256); };
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            picture.setPixelColor(x, y, QColor(part(), part(), part(), alpha == 255 ? 255 : part()));
        }
    }
    return picture;
}

class QueueStrips : public testing::TestWithParam<Theme> {
protected:
    QueueStrips() {
        const Theme& theme = GetParam();
        SetPicture(QStringLiteral("playlist.png"), Pattern({400, 300}, theme.alpha, 1));
        SetPicture(QStringLiteral("playlist_playlisthilight.png"), Pattern(theme.bar, theme.alpha, 2));
        jukebox.Start();
        form.TactileMode = QStringLiteral("true");
        form.BlockPlaylistPlaylistFont = QString::fromLatin1(theme.font);
        form.BlockPlaylistPlaylistFontSize = theme.fontSize;
        form.BlockPlaylistPlaylistFontDecal = theme.decal;
        form.BlockPlaylistPlaylistFontHilight = QStringLiteral("DejaVu Sans");
        form.BlockPlaylistPlaylistFontSizeHilight = theme.fontSize + 3;
        form.BlockPlaylistPlaylistFontDecalHilight = -theme.decal;
        Queue();
    }

    void SetPicture(const QString& name, const QImage& picture) {
        const QString path = jukebox.Home(QStringLiteral("themes/default/") + name);
        QFile::remove(path);
        ASSERT_TRUE(picture.save(path));
    }
    void Queue() {
        const QStringList titles = {
            QStringLiteral("Band - Song.mp3"),
            QStringLiteral("a_title_without_an_artist_that_is_too_wide_for_its_row_in_any_font.flac"),
            QStringLiteral("jgpqy - ÀÉÎÕÜ.mp3"),
            QStringLiteral("Tall - Z") + QString(12, QChar(0x301)) + QString(12, QChar(0x323)),
            QStringLiteral("سلام - مرحبا بالعالم الجميل"),
            QString(),
            QStringLiteral("12 - Band - Song.mp3"),
            QStringLiteral("Band - Song.mp3")};
        for (int i = 0; i < 24; ++i) {
            form.PlaylistCount += 1;
            form.PlaylistTitre(form.PlaylistCount) = titles[i * 5 % titles.size()] + QString::number(i / 6);
        }
        form.PlaylistSelected = 7;
    }
    void ExpectSamePictures() {
        EXPECT_EQ(PictureOf(form.Picture_Playlist), whole.normal.picture);
        EXPECT_EQ(PictureOf(form.Picture_PlaylistHilight), whole.selected.picture);
        EXPECT_EQ(PictureOf(form.Picture_PlaylistTmp), whole.touch.picture);
    }

    Jukebox jukebox;
    Form_Main& form = jukebox.form;
    WholeStrips whole;
};

TEST_P(QueueStrips, AreThoseThatArePaintedWhole) {
    DrawPlaylist(form);
    PaintWhole(form, whole);
    ExpectSamePictures();
    EXPECT_EQ(form.Picture_Playlist.Width(), whole.normal.Width());
    EXPECT_EQ(form.Picture_Playlist.Height(), whole.normal.Height());
}

TEST_P(QueueStrips, FollowTheQueue) {
    DrawPlaylist(form);
    std::swap(form.PlaylistTitre(2), form.PlaylistTitre(9));
    form.PlaylistCount -= 1;
    form.PlaylistSelected = 1;
    DrawPlaylist(form);
    PaintWhole(form, whole);
    ExpectSamePictures();
    form.PlaylistCount = 0;
    form.PlaylistSelected = 0;
    DrawPlaylist(form);
    PaintWhole(form, whole);
    ExpectSamePictures();
}

// Places of copies: inside the strip, over its edges, beside it, in the same size and scaled.
Box RandomBox(std::mt19937& random, int width, int height) {
    const auto between = [&](int low, int high) {
        return low + static_cast<int>(random() % static_cast<unsigned>(high - low));
    };
    return {between(-20, width), between(-60, height), between(1, width + 40), between(1, 300)};
}

TEST_P(QueueStrips, AreCopiedAsThoseThatArePaintedWhole) {
    DrawPlaylist(form);
    PaintWhole(form, whole);
    std::mt19937 random(3);
    const std::pair<const Strip*, const Surface*> pairs[] = {{&form.Picture_Playlist, &whole.normal},
                                                             {&form.Picture_PlaylistHilight, &whole.selected},
                                                             {&form.Picture_PlaylistTmp, &whole.touch}};
    for (int i = 0; i < 300; ++i) {
        const auto& [strip, surface] = pairs[i % 3];
        const Box from = RandomBox(random, surface->Width(), surface->Height());
        Box to = RandomBox(random, 200, 150);
        if (i % 4 == 0) {
            to.width = from.width;
            to.height = from.height;
        }
        Surface copy;
        Resize(copy, 200, 150);
        copy.stretchMode = i % 2 == 0 ? kStretchFast : kStretchHalftone;
        Surface expected = copy;
        StretchBlt(copy, to, *strip, from);
        StretchBlt(expected, to, *surface, from);
        ASSERT_EQ(copy.picture, expected.picture) << i;
    }
}

// The heartbeat's slide, a line at a time, and back.
TEST_P(QueueStrips, SlideAsThoseThatArePaintedWhole) {
    DrawPlaylist(form);
    PaintWhole(form, whole);
    Surface copy;
    Resize(copy, whole.normal.Width(), 90);
    Surface expected = copy;
    for (int step = 0; step < 240; ++step) {
        const int top = step < 120 ? step * 3 : (240 - step) * 2;
        BitBlt(expected, {0, 0, copy.Width(), 90}, whole.touch, 0, top);
        StretchBlt(copy, {0, 0, copy.Width(), 90}, form.Picture_PlaylistTmp, {0, top, copy.Width(), 90});
        ASSERT_EQ(copy.picture, expected.picture) << step;
    }
}

TEST_P(QueueStrips, WriteTheLogOfThoseThatArePaintedWhole) {
    const qsizetype before = jukebox.Log().size();
    DrawPlaylist(form);
    const qsizetype between = jukebox.Log().size();
    PaintWhole(form, whole);
    const QStringList log = jukebox.Log();
    EXPECT_EQ(log.mid(before, between - before), log.mid(between));
    EXPECT_EQ(between - before, 1 + 4 * form.PlaylistCount.value());
}

// A theme is loaded without a new drawing of the queue when the menu's dialog closes.
TEST_P(QueueStrips, KeepThePicturesOfTheirTheme) {
    DrawPlaylist(form);
    PaintWhole(form, whole);
    SetPicture(QStringLiteral("playlist.png"), Pattern({400, 300}, 255, 7));
    SetPicture(QStringLiteral("playlist_playlisthilight.png"), Pattern({90, 31}, 255, 8));
    LoadTheme(form);
    ExpectSamePictures();
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Themes, QueueStrips, testing::Values(
    Theme{"Plain",             {180, 26}, 255, "Vantorix Test",  9,   0},
    Theme{"TallFont",          {180, 14}, 255, "DejaVu Sans",   30,   0},
    Theme{"NarrowBar",         {70, 15},  255, "DejaVu Sans",   24,   0},
    Theme{"Translucent",       {180, 17}, 100, "DejaVu Sans",   28,   3},
    Theme{"NarrowTranslucent", {40, 13},  100, "DejaVu Sans",   26, -40},
    Theme{"WideBar",           {390, 20}, 100, "Vantorix Test", 18,   9},
    Theme{"BarBesideTheBlock", {399, 21}, 255, "DejaVu Sans",   12,   0}),
    [](const auto& theme) { return std::string(theme.param.name); });
// clang-format on

// --- Errors --------------------------------------------------------------------------------------

class QueueStripErrors : public testing::Test {
protected:
    QueueStripErrors() {
        const QString bar = jukebox.Home(QStringLiteral("themes/default/playlist_playlisthilight.png"));
        QFile::remove(bar);
        Pattern({180, 64}, 255, 2).save(bar);
        jukebox.Start();
        form.TactileMode = QStringLiteral("false");
    }
    void Queue(int count) {
        form.PlaylistCount = count;
        for (int i = 1; i <= count; ++i) {
            form.PlaylistTitre(i) = QStringLiteral("Band - Song %1.mp3").arg(i);
        }
    }
    // Both ways of drawing fail alike: the same lines in the log, and the same rows drawn.
    template <typename Draw>
    std::pair<int, QStringList> Outcome(Draw&& draw) {
        const qsizetype before = jukebox.Log().size();
        int error = 0;
        const auto stop = StopOf([&] { error = ErrorOf(draw); });
        return {stop ? 1000 + stop->error.number : error, jukebox.Log().mid(before)};
    }
    void ExpectSameOutcome(int error) {
        const auto [ours, ourLog] = Outcome([&] { DrawPlaylist(form); });
        const auto [theirs, theirLog] = Outcome([&] { PaintWhole(form, whole); });
        EXPECT_EQ(ours, error);
        EXPECT_EQ(theirs, error);
        EXPECT_EQ(ourLog, theirLog);
        EXPECT_EQ(PictureOf(form.Picture_Playlist), whole.normal.picture);
        EXPECT_EQ(PictureOf(form.Picture_PlaylistHilight), whole.selected.picture);
    }

    Jukebox jukebox;
    Form_Main& form = jukebox.form;
    WholeStrips whole;
};

TEST_F(QueueStripErrors, ARowBeyond16BitsIsError6AndTheRowsBeforeItStay) {
    Queue(515);
    ExpectSameOutcome(kOverflow);
    // 512 rows of four texts.
    const QStringList log = jukebox.Log();
    EXPECT_EQ(log.size() - 1 - log.lastIndexOf(QStringLiteral(" : DrawPlaylist")), 2048);
}

TEST_F(QueueStripErrors, OnlyTheSelectedLookCanPass16Bits) {
    form.BlockPlaylistPlaylistFontDecalHilight = 32'700;
    Queue(4);
    ExpectSameOutcome(kOverflow);
}

TEST_F(QueueStripErrors, ABoxWithoutRoomForDotsEndsTheProgram) {
    form.BlockPlaylistPlaylistW = 20;
    Queue(3);
    ExpectSameOutcome(1000 + kInvalidProcedureCall);
    form.BlockPlaylistPlaylistW = 5;
    ExpectSameOutcome(1000 + kInvalidProcedureCall);
    form.BlockPlaylistPlaylistW = -1;
    ExpectSameOutcome(1000 + kInvalidProcedureCall);
    form.BlockPlaylistPlaylistW = -32'768;
    ExpectSameOutcome(kOverflow);
    form.PlaylistCount = 0;
    ExpectSameOutcome(0);
}

TEST_F(QueueStripErrors, AColourThatIsNoColourEndsTheProgram) {
    Queue(3);
    form.BlockPlaylistPlaylistFontColorHilight = QStringLiteral("1,2");
    ExpectSameOutcome(1000 + kSubscriptOutOfRange);
    form.BlockPlaylistPlaylistFontColor = QStringLiteral("red,2,3");
    ExpectSameOutcome(1000 + kTypeMismatch);
}

TEST_F(QueueStripErrors, ALogThatCannotBeWrittenIsError75) {
    Queue(3);
    jukebox.platform.failures.Add(QStringLiteral("Append"));
    EXPECT_EQ(ErrorOf([&] { DrawPlaylist(form); }), kPathFileAccess);
}

TEST_F(QueueStripErrors, AStripOfMoreThanAGibibyteIsError7) {
    form.BlockPlaylistPlaylistW = 32'767;
    Queue(1);
    DrawPlaylist(form);
    const QSize before(form.Picture_Playlist.Width(), form.Picture_Playlist.Height());
    Queue(200);
    EXPECT_EQ(ErrorOf([&] { DrawPlaylist(form); }), kOutOfMemory);
    EXPECT_EQ(QSize(form.Picture_Playlist.Width(), form.Picture_Playlist.Height()), before);
}

// --- Cost ----------------------------------------------------------------------------------------

// 500 rows of 64 lines would be 23 MB a strip; the window of a frame is less than a hundredth of that.
TEST_F(QueueStripErrors, ALongQueueKeepsOnlyThePixelsThatAreShown) {
    Queue(500);
    form.PlaylistSelected = 250;
    DrawPlaylist(form);
    ShowPlaylistRows(form);
    EXPECT_GT(form.Picture_Playlist.painted.Height(), 0);
    EXPECT_LE(form.Picture_Playlist.painted.Height(), 2 * form.BlockPlaylistPlaylistH.value());
    EXPECT_LE(form.Picture_PlaylistHilight.painted.Height(), 2 * 64);
}

TEST_F(QueueStripErrors, TextsThatStayInTheQueueAreKeptAndOthersForgotten) {
    Queue(3);
    DrawPlaylist(form);
    const auto kept = form.playlistTexts.letters.value(QStringLiteral("SONG 2"));
    ASSERT_TRUE(kept);
    form.PlaylistTitre(1) = form.PlaylistTitre(2);
    form.PlaylistCount = 1;
    DrawPlaylist(form);
    EXPECT_EQ(form.playlistTexts.letters.value(QStringLiteral("SONG 2")), kept);
    EXPECT_EQ(form.playlistTexts.letters.size(), 2); // its title and its artist
    form.BlockPlaylistPlaylistFontSize += 1;
    DrawPlaylist(form);
    EXPECT_NE(form.playlistTexts.letters.value(QStringLiteral("SONG 2")), kept);
}

// The theme may bring the font that its texts are measured in.
TEST_F(QueueStripErrors, AFontThatIsInstalledMakesTheTextsBeMeasuredAgain) {
    Queue(3);
    DrawPlaylist(form);
    ASSERT_FALSE(form.playlistTexts.letters.isEmpty());
    LoadTheme(form);
    EXPECT_TRUE(form.playlistTexts.letters.isEmpty());
    EXPECT_TRUE(form.playlistHilightTexts.letters.isEmpty());
}

} // namespace

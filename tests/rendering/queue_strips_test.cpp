// The strips of the queue, compared with strips that are painted completely.
#include "core/conversions.h"
#include "imaging/picture/strip.h"
#include "rendering/playlist_block.h"
#include "rendering/text.h"
#include "rendering/titles.h"
#include "shell/load_theme.h"
#include "state/log.h"
#include "support/error_of.h"
#include "support/jukebox.h"

#include <gtest/gtest.h>

#include <random>

namespace {

constexpr int kTail = 7;

// How the theme of a test differs from the default one.
struct Theme {
    const char* name;
    QSize bar;
    // The alpha of the pictures: 255 is opaque.
    int alpha;
    const char* font;
    int fontSize;
    int decal;
};

std::ostream& operator<<(std::ostream& out, const Theme& theme) {
    return out << theme.name;
}

// The complete strips as a reference: each row's background, then its texts.
struct WholeStrips {
    Surface normal;
    Surface selected;
    Surface touch;
};

void PaintGround(Form_Main& form, WholeStrips& strips, int y) {
    const int x = form.theme.BlockPlaylistPlaylist.X.value();
    const int top = form.theme.BlockPlaylistPlaylist.Y.value();
    const int width = form.assets.ImgPlaylistPlaylistHilight.Width();
    const int height = form.assets.ImgPlaylistPlaylistHilight.Height();
    form.assets.ImgPlaylist.Render(strips.normal, 0, y, width, height, x, top, width, height);
    form.assets.ImgPlaylist.Render(strips.selected, 0, y, width, height, x, top, width, height);
    form.assets.ImgPlaylistPlaylistHilight.Render(strips.selected, 0, y);
}

void PaintTexts(Form_Main& form, Surface& strip, int y, const TitleParts& parts, const TextLook& style,
                Integer16 decal) {
    const QString left = QStringLiteral("left");
    const QString center = QStringLiteral("center");
    const double half = form.assets.ImgPlaylistPlaylistHilight.Height() / 2.0;
    const Integer16 width = form.theme.BlockPlaylistPlaylist.W - 5;
    const Integer16 titleTop = CInt16(static_cast<double>(y) + decal.value() + 1);
    const Integer16 artistTop = CInt16(y + half + decal.value() - 1);
    DrawText(form, strip, parts.Titre, {5, titleTop, width, CInt16(half)}, style, left, center);
    DrawText(form, strip, parts.Interprete, {5, artistTop, width, CInt16(half)}, style, left, center);
}

void PaintRow(Form_Main& form, WholeStrips& strips, int row) {
    const int y = row * form.assets.ImgPlaylistPlaylistHilight.Height();
    PaintGround(form, strips, y);
    const TitleParts parts = BlockTitle(
        form.queue.PlaylistTitre(row + 1),
        {QStringLiteral(".mp3"), QStringLiteral(".flac"), QStringLiteral(".avi"), QStringLiteral(".mpg"),
         QStringLiteral(".mp4"), QStringLiteral(".wma"), QStringLiteral(".vtxpl")});
    PaintTexts(form, strips.normal, y, parts, form.theme.BlockPlaylistPlaylistFont,
               form.theme.BlockPlaylistPlaylistFontDecal);
    PaintTexts(form, strips.selected, y, parts, form.theme.BlockPlaylistPlaylistFontHilight,
               form.theme.BlockPlaylistPlaylistFontDecalHilight);
}

void PaintWhole(Form_Main& form, WholeStrips& strips) {
    WriteLog(form, QStringLiteral(" : DrawPlaylist"));
    const int rowHeight = form.assets.ImgPlaylistPlaylistHilight.Height();
    const int count = form.queue.PlaylistCount.value();
    for (Surface* strip : {&strips.normal, &strips.selected}) {
        Resize(*strip, form.theme.BlockPlaylistPlaylist.W.value(), (count + kTail) * rowHeight);
    }
    for (int row = 0; row < count; ++row) {
        PaintRow(form, strips, row);
    }
    for (int row = count; row <= count + kTail; ++row) {
        PaintGround(form, strips, row * rowHeight);
    }
    Resize(strips.touch, strips.normal.Width(), strips.normal.Height());
    BitBlt(strips.touch, {0, 0, strips.normal.Width(), strips.normal.Height()}, strips.normal, 0, 0);
    const int y = (form.queue.PlaylistSelected.value() - 1) * rowHeight;
    BitBlt(strips.touch, {0, y, strips.normal.Width(), rowHeight}, strips.selected, 0, y);
}

// Returns a picture of random pixels, in which any shift is detected.
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
        form.settings.TactileMode = QStringLiteral("true");
        form.theme.BlockPlaylistPlaylistFont.Font = QString::fromLatin1(theme.font);
        form.theme.BlockPlaylistPlaylistFont.Size = theme.fontSize;
        form.theme.BlockPlaylistPlaylistFontDecal = theme.decal;
        form.theme.BlockPlaylistPlaylistFontHilight.Font = QStringLiteral("DejaVu Sans");
        form.theme.BlockPlaylistPlaylistFontHilight.Size = theme.fontSize + 3;
        form.theme.BlockPlaylistPlaylistFontDecalHilight = -theme.decal;
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
            form.queue.PlaylistCount += 1;
            form.queue.PlaylistTitre(form.queue.PlaylistCount) =
                titles[i * 5 % titles.size()] + QString::number(i / 6);
        }
        form.queue.PlaylistSelected = 7;
    }
    void ExpectSamePictures() {
        EXPECT_EQ(PictureOf(form.frame.Picture_Playlist), whole.normal.picture);
        EXPECT_EQ(PictureOf(form.frame.Picture_PlaylistHilight), whole.selected.picture);
        EXPECT_EQ(PictureOf(form.frame.Picture_PlaylistTmp), whole.touch.picture);
    }

    Jukebox jukebox;
    Form_Main& form = jukebox.form;
    WholeStrips whole;
};

TEST_P(QueueStrips, AreThoseThatArePaintedWhole) {
    DrawPlaylist(form);
    PaintWhole(form, whole);
    ExpectSamePictures();
    EXPECT_EQ(form.frame.Picture_Playlist.Width(), whole.normal.Width());
    EXPECT_EQ(form.frame.Picture_Playlist.Height(), whole.normal.Height());
}

TEST_P(QueueStrips, FollowTheQueue) {
    DrawPlaylist(form);
    std::swap(form.queue.PlaylistTitre(2), form.queue.PlaylistTitre(9));
    form.queue.PlaylistCount -= 1;
    form.queue.PlaylistSelected = 1;
    DrawPlaylist(form);
    PaintWhole(form, whole);
    ExpectSamePictures();
    form.queue.PlaylistCount = 0;
    form.queue.PlaylistSelected = 0;
    DrawPlaylist(form);
    PaintWhole(form, whole);
    ExpectSamePictures();
}

// Returns a random box: inside the strip, across its edges or outside it.
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
    const std::pair<const Strip*, const Surface*> pairs[] = {
        {&form.frame.Picture_Playlist, &whole.normal},
        {&form.frame.Picture_PlaylistHilight, &whole.selected},
        {&form.frame.Picture_PlaylistTmp, &whole.touch}};
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

// The heartbeat's slide by a few lines per step, and back.
TEST_P(QueueStrips, SlideAsThoseThatArePaintedWhole) {
    DrawPlaylist(form);
    PaintWhole(form, whole);
    Surface copy;
    Resize(copy, whole.normal.Width(), 90);
    Surface expected = copy;
    for (int step = 0; step < 240; ++step) {
        const int top = step < 120 ? step * 3 : (240 - step) * 2;
        BitBlt(expected, {0, 0, copy.Width(), 90}, whole.touch, 0, top);
        StretchBlt(copy, {0, 0, copy.Width(), 90}, form.frame.Picture_PlaylistTmp,
                   {0, top, copy.Width(), 90});
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
    EXPECT_EQ(between - before, 1 + 4 * form.queue.PlaylistCount.value());
}

// Closing the menu's dialog loads the theme without drawing the queue again.
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
        form.settings.TactileMode = QStringLiteral("false");
    }
    void Queue(int count) {
        form.queue.PlaylistCount = count;
        for (int i = 1; i <= count; ++i) {
            form.queue.PlaylistTitre(i) = QStringLiteral("Band - Song %1.mp3").arg(i);
        }
    }
    // Returns the error of a drawing, plus 1000 when it stops the program, and its log lines.
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
        EXPECT_EQ(PictureOf(form.frame.Picture_Playlist), whole.normal.picture);
        EXPECT_EQ(PictureOf(form.frame.Picture_PlaylistHilight), whole.selected.picture);
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
    form.theme.BlockPlaylistPlaylistFontDecalHilight = 32'700;
    Queue(4);
    ExpectSameOutcome(kOverflow);
}

TEST_F(QueueStripErrors, ABoxWithoutRoomForDotsEndsTheProgram) {
    form.theme.BlockPlaylistPlaylist.W = 20;
    Queue(3);
    ExpectSameOutcome(1000 + kInvalidProcedureCall);
    form.theme.BlockPlaylistPlaylist.W = 5;
    ExpectSameOutcome(1000 + kInvalidProcedureCall);
    form.theme.BlockPlaylistPlaylist.W = -1;
    ExpectSameOutcome(1000 + kInvalidProcedureCall);
    form.theme.BlockPlaylistPlaylist.W = -32'768;
    ExpectSameOutcome(kOverflow);
    form.queue.PlaylistCount = 0;
    ExpectSameOutcome(0);
}

TEST_F(QueueStripErrors, AColourThatIsNoColourEndsTheProgram) {
    Queue(3);
    form.theme.BlockPlaylistPlaylistFontHilight.Color = QStringLiteral("1,2");
    ExpectSameOutcome(1000 + kSubscriptOutOfRange);
    form.theme.BlockPlaylistPlaylistFont.Color = QStringLiteral("red,2,3");
    ExpectSameOutcome(1000 + kTypeMismatch);
}

TEST_F(QueueStripErrors, ALogThatCannotBeWrittenIsError75) {
    Queue(3);
    jukebox.platform.failures.Add(QStringLiteral("Append"));
    EXPECT_EQ(ErrorOf([&] { DrawPlaylist(form); }), kPathFileAccess);
}

TEST_F(QueueStripErrors, AStripOfMoreThanAGibibyteIsError7) {
    form.theme.BlockPlaylistPlaylist.W = 32'767;
    Queue(1);
    DrawPlaylist(form);
    const QSize before(form.frame.Picture_Playlist.Width(), form.frame.Picture_Playlist.Height());
    Queue(200);
    EXPECT_EQ(ErrorOf([&] { DrawPlaylist(form); }), kOutOfMemory);
    EXPECT_EQ(QSize(form.frame.Picture_Playlist.Width(), form.frame.Picture_Playlist.Height()), before);
}

// --- Cost ----------------------------------------------------------------------------------------

// 500 rows of 64 lines would take 23 MB per strip; the visible window is less than a hundredth of that.
TEST_F(QueueStripErrors, ALongQueueKeepsOnlyThePixelsThatAreShown) {
    Queue(500);
    form.queue.PlaylistSelected = 250;
    DrawPlaylist(form);
    ShowPlaylistRows(form);
    EXPECT_GT(form.frame.Picture_Playlist.painted.Height(), 0);
    EXPECT_LE(form.frame.Picture_Playlist.painted.Height(), 2 * form.theme.BlockPlaylistPlaylist.H.value());
    EXPECT_LE(form.frame.Picture_PlaylistHilight.painted.Height(), 2 * 64);
}

TEST_F(QueueStripErrors, TextsThatStayInTheQueueAreKeptAndOthersForgotten) {
    Queue(3);
    DrawPlaylist(form);
    const auto kept = form.frame.playlistTexts.letters.value(QStringLiteral("SONG 2"));
    ASSERT_TRUE(kept);
    form.queue.PlaylistTitre(1) = form.queue.PlaylistTitre(2);
    form.queue.PlaylistCount = 1;
    DrawPlaylist(form);
    EXPECT_EQ(form.frame.playlistTexts.letters.value(QStringLiteral("SONG 2")), kept);
    EXPECT_EQ(form.frame.playlistTexts.letters.size(), 2); // its title and its artist
    form.theme.BlockPlaylistPlaylistFont.Size += 1;
    DrawPlaylist(form);
    EXPECT_NE(form.frame.playlistTexts.letters.value(QStringLiteral("SONG 2")), kept);
}

// A theme can install the font in which its texts are measured.
TEST_F(QueueStripErrors, AFontThatIsInstalledMakesTheTextsBeMeasuredAgain) {
    Queue(3);
    DrawPlaylist(form);
    ASSERT_FALSE(form.frame.playlistTexts.letters.isEmpty());
    LoadTheme(form);
    EXPECT_TRUE(form.frame.playlistTexts.letters.isEmpty());
    EXPECT_TRUE(form.frame.playlistHilightTexts.letters.isEmpty());
}

} // namespace

// The queue's rows: their texts, their window, and as the finger drags them.
#include "rendering/playlist_block.h"
#include "support/jukebox.h"

#include <gtest/gtest.h>

namespace {

constexpr int kRow = 26;
constexpr int kTail = 7;

class PlaylistBlock : public testing::Test {
protected:
    PlaylistBlock() { jukebox.Start(); }

    void Queue(const QStringList& titles) {
        for (const QString& title : titles) {
            form.PlaylistCount += 1;
            form.PlaylistTitre(form.PlaylistCount) = title;
        }
        form.PlaylistSelected = 1;
    }
    // What the queue's place on the frame shows after a fresh frame, one design pixel being one of the
    // screen.
    QImage Shown() {
        form.Picture_Main.picture.fill(kGround);
        ShowPlaylistRows(form);
        return form.Picture_Main.picture.copy(
            form.BlockPlaylistX.value() + form.BlockPlaylistPlaylistX.value(),
            form.BlockPlaylistY.value() + form.BlockPlaylistPlaylistY.value(),
            form.BlockPlaylistPlaylistW.value(), form.BlockPlaylistPlaylistH.value());
    }
    static QImage RowOf(const Strip& strip, int row) {
        return PictureOf(strip).copy(0, row * kRow, strip.Width(), kRow);
    }
    static bool IsGround(const QImage& part) {
        QImage ground(part.size(), part.format());
        ground.fill(kGround);
        return part == ground;
    }

    static constexpr QRgb kGround = 0xFF102030;

    Jukebox jukebox;
    Form_Main& form = jukebox.form;
};

TEST_F(PlaylistBlock, AnEmptyQueueHasSevenBlankRowsAndCopiesNothing) {
    const qsizetype drawn = jukebox.DrawnTexts().size();
    DrawPlaylist(form);
    EXPECT_EQ(form.Picture_Playlist.Height(), kTail * kRow);
    EXPECT_EQ(form.Picture_PlaylistHilight.Height(), kTail * kRow);
    EXPECT_EQ(jukebox.DrawnTexts().size(), drawn);
    EXPECT_EQ(jukebox.Log().last(), QStringLiteral(" : DrawPlaylist"));
    for (int row = 1; row < kTail; ++row) {
        EXPECT_EQ(RowOf(form.Picture_Playlist, row), RowOf(form.Picture_Playlist, 0)) << row;
    }
    EXPECT_TRUE(IsGround(Shown()));
}

TEST_F(PlaylistBlock, WithTheLastEntrySelectedOneRowShowsAndTheRestIsLeft) {
    Queue({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    form.PlaylistSelected = 3;
    DrawPlaylist(form);
    const QImage shown = Shown();
    EXPECT_EQ(shown.copy(0, 0, shown.width(), kRow), RowOf(form.Picture_PlaylistHilight, 2));
    EXPECT_TRUE(IsGround(shown.copy(0, kRow, shown.width(), shown.height() - kRow)));
}

TEST_F(PlaylistBlock, TheSelectedRowIsTheTopOne) {
    Queue({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    form.PlaylistSelected = 2;
    DrawPlaylist(form);
    const QImage shown = Shown();
    EXPECT_EQ(shown.copy(0, 0, shown.width(), kRow), RowOf(form.Picture_PlaylistHilight, 1));
    EXPECT_EQ(shown.copy(0, kRow, shown.width(), kRow), RowOf(form.Picture_Playlist, 2));
}

TEST_F(PlaylistBlock, ATitleWithoutADashStandsInTheUpperHalfAndTheLowerOneIsEmpty) {
    Queue({QStringLiteral("Alone.mp3"), QStringLiteral("12 - Band - Song.mp3")});
    const qsizetype drawn = jukebox.DrawnTexts().size();
    DrawPlaylist(form);
    const QString plain = QStringLiteral(",5,%1,175,13,Vantorix Test,%2,%3,left,center");
    const auto drawnAs = [&](const QString& text, int top) {
        const QString style = plain.arg(top + form.BlockPlaylistPlaylistFontDecal.value())
                                  .arg(form.BlockPlaylistPlaylistFontSize.value())
                                  .arg(form.BlockPlaylistPlaylistFontColor);
        return text + style;
    };
    const QStringList texts = jukebox.DrawnTexts().mid(drawn);
    ASSERT_EQ(texts.size(), 8);
    EXPECT_EQ(texts[0], drawnAs(QStringLiteral("ALONE"), 1));
    EXPECT_EQ(texts[1], drawnAs(QString(), 12));
    EXPECT_EQ(texts[4], drawnAs(QStringLiteral("SONG"), 27));
    EXPECT_EQ(texts[5], drawnAs(QStringLiteral("BAND"), 38));
}

// Without a height the rows have no pixels, but their texts keep the theme's width.
TEST(PlaylistBlockWithoutItsBar, AQueueIsDrawnAllTheSame) {
    Jukebox jukebox;
    QFile::remove(jukebox.Home(QStringLiteral("themes/default/playlist_playlisthilight.png")));
    jukebox.Start();
    jukebox.form.PlaylistCount = 1;
    jukebox.form.PlaylistTitre(1) = QStringLiteral("Alone.mp3");
    EXPECT_FALSE(StopOf([&] { DrawPlaylist(jukebox.form); }));
    const QStringList texts = jukebox.DrawnTexts();
    EXPECT_TRUE(texts[texts.size() - 4].startsWith(QStringLiteral("ALONE,5,1,175,0,")))
        << texts[texts.size() - 4].toStdString();
}

// ".mp3" goes first here and last but two on the Main block.
TEST_F(PlaylistBlock, TheEndingsGoInAnOrderOfTheirOwn) {
    Queue({QStringLiteral("x.a.mp3vi")});
    DrawPlaylist(form);
    const QStringList texts = jukebox.DrawnTexts();
    EXPECT_TRUE(texts[texts.size() - 4].startsWith(QStringLiteral("X,5,1,")))
        << texts[texts.size() - 4].toStdString();
}

// Deliberate D-24.
TEST(ReleaseOffset, IsLimitedByTheRowsAloneAndTheNextFrameByTheirAreaToo) {
    Jukebox jukebox;
    jukebox.Start();
    Form_Main& form = jukebox.form;
    form.TactileMode = QStringLiteral("true");
    form.PlaylistCount = 50;
    DrawPlaylist(form);
    const int rows = 50 * form.ImgPlaylistPlaylistHilight.Height();
    form.TouchDeltaY = 32000;
    EXPECT_EQ(ReleaseOffset(form), rows);
    form.TouchScrollOffset = rows;
    form.TouchDragging = 0;
    ShowPlaylistRows(form);
    EXPECT_EQ(form.TouchScrollOffset.value(), rows - form.BlockPlaylistPlaylistH.value());
}

} // namespace

// The queue's rows: their texts, the visible window, and dragging with a finger.
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
            form.queue.PlaylistCount += 1;
            form.queue.PlaylistTitre(form.queue.PlaylistCount) = title;
        }
        form.queue.PlaylistSelected = 1;
    }
    // Returns the queue's part of the frame, drawn onto a blank frame. One design pixel is one screen pixel.
    QImage Shown() {
        form.frame.Picture_Main.picture.fill(kGround);
        ShowPlaylistRows(form);
        return form.frame.Picture_Main.picture.copy(
            form.theme.BlockPlaylist.X.value() + form.theme.BlockPlaylistPlaylist.X.value(),
            form.theme.BlockPlaylist.Y.value() + form.theme.BlockPlaylistPlaylist.Y.value(),
            form.theme.BlockPlaylistPlaylist.W.value(), form.theme.BlockPlaylistPlaylist.H.value());
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
    EXPECT_EQ(form.frame.Picture_Playlist.Height(), kTail * kRow);
    EXPECT_EQ(form.frame.Picture_PlaylistHilight.Height(), kTail * kRow);
    EXPECT_EQ(jukebox.DrawnTexts().size(), drawn);
    EXPECT_EQ(jukebox.Log().last(), QStringLiteral(" : DrawPlaylist"));
    for (int row = 1; row < kTail; ++row) {
        EXPECT_EQ(RowOf(form.frame.Picture_Playlist, row), RowOf(form.frame.Picture_Playlist, 0)) << row;
    }
    EXPECT_TRUE(IsGround(Shown()));
}

TEST_F(PlaylistBlock, WithTheLastEntrySelectedOneRowShowsAndTheRestIsLeft) {
    Queue({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    form.queue.PlaylistSelected = 3;
    DrawPlaylist(form);
    const QImage shown = Shown();
    EXPECT_EQ(shown.copy(0, 0, shown.width(), kRow), RowOf(form.frame.Picture_PlaylistHilight, 2));
    EXPECT_TRUE(IsGround(shown.copy(0, kRow, shown.width(), shown.height() - kRow)));
}

TEST_F(PlaylistBlock, TheSelectedRowIsTheTopOne) {
    Queue({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    form.queue.PlaylistSelected = 2;
    DrawPlaylist(form);
    const QImage shown = Shown();
    EXPECT_EQ(shown.copy(0, 0, shown.width(), kRow), RowOf(form.frame.Picture_PlaylistHilight, 1));
    EXPECT_EQ(shown.copy(0, kRow, shown.width(), kRow), RowOf(form.frame.Picture_Playlist, 2));
}

TEST_F(PlaylistBlock, ATitleWithoutADashStandsInTheUpperHalfAndTheLowerOneIsEmpty) {
    Queue({QStringLiteral("Alone.mp3"), QStringLiteral("12 - Band - Song.mp3")});
    const qsizetype drawn = jukebox.DrawnTexts().size();
    DrawPlaylist(form);
    const QString plain = QStringLiteral(",5,%1,175,13,Vantorix Test,%2,%3,left,center");
    const auto drawnAs = [&](const QString& text, int top) {
        const QString style = plain.arg(top + form.theme.BlockPlaylistPlaylistFontDecal.value())
                                  .arg(form.theme.BlockPlaylistPlaylistFont.Size.value())
                                  .arg(form.theme.BlockPlaylistPlaylistFont.Color);
        return text + style;
    };
    const QStringList texts = jukebox.DrawnTexts().mid(drawn);
    ASSERT_EQ(texts.size(), 8);
    EXPECT_EQ(texts[0], drawnAs(QStringLiteral("ALONE"), 1));
    EXPECT_EQ(texts[1], drawnAs(QString(), 12));
    EXPECT_EQ(texts[4], drawnAs(QStringLiteral("SONG"), 27));
    EXPECT_EQ(texts[5], drawnAs(QStringLiteral("BAND"), 38));
}

// Without a height the rows have no pixels, but their texts still have the theme's width.
TEST(PlaylistBlockWithoutItsBar, AQueueIsDrawnAllTheSame) {
    Jukebox jukebox;
    QFile::remove(jukebox.Home(QStringLiteral("themes/default/playlist_playlisthilight.png")));
    jukebox.Start();
    jukebox.form.queue.PlaylistCount = 1;
    jukebox.form.queue.PlaylistTitre(1) = QStringLiteral("Alone.mp3");
    EXPECT_FALSE(StopOf([&] { DrawPlaylist(jukebox.form); }));
    const QStringList texts = jukebox.DrawnTexts();
    EXPECT_TRUE(texts[texts.size() - 4].startsWith(QStringLiteral("ALONE,5,1,175,0,")))
        << texts[texts.size() - 4].toStdString();
}

// Here ".mp3" is removed first; on the Main block it is third from last.
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
    form.settings.TactileMode = QStringLiteral("true");
    form.queue.PlaylistCount = 50;
    DrawPlaylist(form);
    const int rows = 50 * form.assets.ImgPlaylistPlaylistHilight.Height();
    form.touch.TouchDeltaY = 32000;
    EXPECT_EQ(ReleaseOffset(form), rows);
    form.touch.TouchScrollOffset = rows;
    form.touch.TouchDragging = 0;
    ShowPlaylistRows(form);
    EXPECT_EQ(form.touch.TouchScrollOffset.value(), rows - form.theme.BlockPlaylistPlaylist.H.value());
}

} // namespace

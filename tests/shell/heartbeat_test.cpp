// What a heartbeat draws, and the state that a failed heartbeat leaves.
#include "shell/heartbeat.h"

#include "platform/tone_file.h"
#include "rendering/playlist_block.h"
#include "shell/handle_event.h"
#include "support/jukebox.h"

#include <gtest/gtest.h>

namespace {

constexpr int kConfirmKey = 13;
constexpr double kInterval = 399;
constexpr int kRowHeight = 26;

// A jukebox with a queue of ten-second tracks, the first of them playing.
class Heartbeat : public ::testing::Test {
protected:
    void StartWith(int entries) {
        WriteTone(jukebox.Music(QStringLiteral("a.wav")), 441'000, 440);
        jukebox.Start();
        for (int i = 0; i < entries; ++i) {
            InputEvent key;
            key.kind = InputKind::kKeyDown;
            key.code = kConfirmKey;
            ASSERT_FALSE(HandleEvent(form, key));
        }
        // Each pick after the first flashes for 720 ms while the first track plays.
        jukebox.platform.clock.Advance(-720.0 * (entries - 1) + 3000);
    }
    std::optional<RunTimeError> TickAfter(double milliseconds) {
        jukebox.platform.clock.Advance(milliseconds + kInterval);
        InputEvent tick;
        tick.kind = InputKind::kTimer1;
        return HandleEvent(form, tick);
    }
    void SetMain(const char* key, const char* value) {
        jukebox.SetKey(QStringLiteral("config.ini"), QStringLiteral("Main"), QString::fromLatin1(key),
                       QString::fromLatin1(value));
    }

    Jukebox jukebox;
    Form_Main& form = jukebox.form;
};

QImage Part(const Surface& surface, int x, int y, int width, int height) {
    return surface.picture.copy(x, y, width, height);
}

QImage Part(const Strip& strip, int x, int y, int width, int height) {
    return PictureOf(strip).copy(x, y, width, height);
}

TEST_F(Heartbeat, TheSlideEndsOnTheNextRowInItsSelectedLook) {
    StartWith(2);
    ASSERT_FALSE(TickAfter(2000));
    ASSERT_EQ(form.player.TrackChanging, 0);
    ASSERT_FALSE(TickAfter(1500));
    ASSERT_EQ(form.player.TrackChanging, 1);
    const int x = form.theme.BlockPlaylist.X.value() + form.theme.BlockPlaylistPlaylist.X.value();
    const int y = form.theme.BlockPlaylist.Y.value() + form.theme.BlockPlaylistPlaylist.Y.value();
    const int width = form.theme.BlockPlaylistPlaylist.W.value();
    EXPECT_EQ(Part(form.frame.Picture_Main, x, y, width, kRowHeight),
              Part(form.frame.Picture_PlaylistHilight, 0, kRowHeight, width, kRowHeight));
    EXPECT_NE(Part(form.frame.Picture_Main, x, y, width, kRowHeight),
              Part(form.frame.Picture_Playlist, 0, kRowHeight, width, kRowHeight));
}

TEST_F(Heartbeat, TheRemainingTimeIsDrawnInItsRectangle) {
    StartWith(1);
    const qsizetype before = jukebox.DrawnTexts().size();
    ASSERT_FALSE(TickAfter(0));
    const QStringList drawn = jukebox.DrawnTexts().mid(before);
    EXPECT_TRUE(
        drawn.contains(QStringLiteral("00:06,524,42,104,20,Vantorix Test,9,244,242,234,center,center")))
        << drawn.join(u'\n').toStdString();
}

TEST_F(Heartbeat, TheRemainingTimeIsKeptButNotDrawnWithoutTheMainBlock) {
    SetMain("ShowMainZone", "false");
    StartWith(1);
    const qsizetype before = jukebox.DrawnTexts().size();
    ASSERT_FALSE(TickAfter(0));
    EXPECT_EQ(form.player.Remain, QStringLiteral("00:06"));
    EXPECT_EQ(jukebox.DrawnTexts().size(), before);
}

TEST_F(Heartbeat, AChargingSoundThatIsGoneEndsTheTickAndStopsThePulse) {
    StartWith(2);
    const QString sound = jukebox.Home(QStringLiteral("themes/default/charge.mp3"));
    ASSERT_TRUE(jukebox.platform.files.Remove(sound));
    const std::optional<RunTimeError> error = TickAfter(3000);
    ASSERT_TRUE(error);
    EXPECT_EQ(error->number, kInvalidProcedureCall);
    EXPECT_TRUE(error->detail.startsWith(QStringLiteral("a sound of the theme \"default\" (expected")))
        << error->detail.toStdString();
    EXPECT_TRUE(error->detail.contains(sound)) << error->detail.toStdString();
    EXPECT_EQ(form.frame.BlockMainInfos, QStringLiteral("charging"));
    // Deliberate D-134: the next tick finds InputBusy set.
    EXPECT_EQ(form.shell.InputBusy, 1);
    const Integer16 current = form.queue.PlaylistCurrent;
    EXPECT_FALSE(TickAfter(2500));
    EXPECT_EQ(form.queue.PlaylistCurrent, current);
}

TEST_F(Heartbeat, TheEndOfAQueueThatShrankHidesBothVideoSurfaces) {
    StartWith(2);
    form.player.TrackChanging = 1;
    form.queue.PlaylistCount = 1;
    form.frame.Picture_MainVideo.Visible = true;
    form.shell.Form_Video.Visible = true;
    ASSERT_FALSE(TickAfter(6000));
    EXPECT_EQ(form.player.IsPlaying, 0);
    EXPECT_FALSE(form.frame.Picture_MainVideo.Visible);
    EXPECT_FALSE(form.shell.Form_Video.Visible);
    const QStringList log = jukebox.Log();
    EXPECT_LT(log.lastIndexOf(QStringLiteral(" : DrawPlaylist")),
              log.lastIndexOf(QStringLiteral(" : RedrawJukebox")));
}

TEST_F(Heartbeat, InTouchModeTheChangeRefreshesTheQueuesTouchPicture) {
    StartWith(2);
    form.settings.TactileMode = QStringLiteral("true");
    form.player.TrackChanging = 1;
    DrawPlaylist(form);
    ResizeStrip(form.frame.Picture_PlaylistTmp, 1, 1, 1);
    ASSERT_FALSE(TickAfter(6000));
    ASSERT_EQ(form.queue.PlaylistCurrent, 2);
    const int width = form.frame.Picture_Playlist.Width();
    ASSERT_EQ(form.frame.Picture_PlaylistTmp.Height(), form.frame.Picture_Playlist.Height());
    // The cursor stays on row 1.
    EXPECT_EQ(Part(form.frame.Picture_PlaylistTmp, 0, 0, width, kRowHeight),
              Part(form.frame.Picture_PlaylistHilight, 0, 0, width, kRowHeight));
    EXPECT_EQ(Part(form.frame.Picture_PlaylistTmp, 0, kRowHeight, width, kRowHeight),
              Part(form.frame.Picture_Playlist, 0, kRowHeight, width, kRowHeight));
}

TEST_F(Heartbeat, ATickThatFindsTheGuardUpDoesNothing) {
    StartWith(1);
    form.shell.InputBusy = 2;
    const qsizetype lines = jukebox.Log().size();
    ASSERT_FALSE(TickAfter(6000));
    EXPECT_EQ(form.shell.InputBusy, 2);
    EXPECT_EQ(form.player.IsPlaying, -1);
    EXPECT_EQ(jukebox.Log().size(), lines);
}

} // namespace

// The audio and video players behind their common operations, where the console cannot observe them.
#include "playback/engine.h"
#include "playback/play_time.h"

#include "platform/tone_file.h"
#include "shell/hand_down.h"
#include "support/error_of.h"
#include "support/jukebox.h"

#include <gtest/gtest.h>

namespace {

// The simulated library. Records how it was called, and can return given lengths and positions.
class ListeningAudio : public SimulatedAudio {
public:
    using SimulatedAudio::SimulatedAudio;

    std::uint32_t BASS_StreamCreateFile(const QString& path, std::uint32_t flags) override {
        openFlags = flags;
        return SimulatedAudio::BASS_StreamCreateFile(path, flags);
    }
    bool BASS_ChannelPlay(std::uint32_t handle, bool restart) override {
        playRestart = restart;
        return SimulatedAudio::BASS_ChannelPlay(handle, restart);
    }
    std::int64_t BASS_ChannelGetLength(std::uint32_t handle) override {
        return length.value_or(SimulatedAudio::BASS_ChannelGetLength(handle));
    }
    std::int64_t BASS_ChannelGetPosition(std::uint32_t handle) override {
        return position.value_or(SimulatedAudio::BASS_ChannelGetPosition(handle));
    }

    std::optional<std::uint32_t> openFlags;
    std::optional<bool> playRestart;
    std::optional<std::int64_t> length;
    std::optional<std::int64_t> position;
};

// A graph of a given length that records its calls.
class NotingGraph : public MediaGraph {
public:
    explicit NotingGraph(double duration) : duration_(duration) {}
    void RenderFile(const QString&) override { asked += QStringLiteral("RenderFile"); }
    void Run() override { asked += QStringLiteral("Run"); }
    void Pause() override { asked += QStringLiteral("Pause"); }
    void Stop() override { asked += QStringLiteral("Stop"); }
    double Duration() override { return duration_; }
    double CurrentPosition() override { return 0; }
    void SetCurrentPosition(double seconds) override {
        asked += QStringLiteral("CurrentPosition %1").arg(seconds);
    }
    void Place(const QString&, int, int, int, int) override {}
    int Height() override { return 0; }
    void SetVisible(bool /*visible*/) override {}

    QStringList asked;

private:
    double duration_;
};

class Engine : public ::testing::Test {
protected:
    Engine() : form(PortsWithListening(), HandDown()) { WriteTone(tone, 441'000, 440); }

    Ports PortsWithListening() {
        Ports all = jukebox.platform.ports();
        return {audio,    all.graphs,  all.MSComm1,    all.display, all.windows, all.fonts,   all.clock,
                all.pump, all.dialogs, all.messageBox, all.files,   all.zlib,    all.pictures};
    }
    void GiveRefusalSound() {
        form.assets.SoundNoCredit = refusal;
        form.assets.SoundNoCreditPosition = refusal;
    }
    void GiveVideo(const std::shared_ptr<MediaGraph>& graph) {
        form.player.VideoControl = form.player.VideoPosition = form.player.VideoAudio =
            form.player.VideoWindow = graph;
    }

    Jukebox jukebox;
    QString tone = jukebox.Music(QStringLiteral("a.wav"));
    ListeningAudio audio{jukebox.platform.clock, jukebox.platform.calls, jukebox.platform.failures};
    Form_Main form;
    std::shared_ptr<NotingGraph> refusal = std::make_shared<NotingGraph>(1);
};

TEST_F(Engine, AStreamLoopsAndIsResumedNotRestarted) {
    BassPlayFile(form, tone);
    EXPECT_EQ(audio.openFlags, 4U);
    EXPECT_EQ(audio.playRestart, false);
    EXPECT_EQ(form.player.IsPlaying, -1);
    EXPECT_EQ(form.player.TrackLengthSeconds, 10);
}

TEST_F(Engine, AnAudioStartHidesTheEmbeddedVideoSurface) {
    form.frame.Picture_MainVideo.Visible = true;
    BassPlayFile(form, tone);
    EXPECT_FALSE(form.frame.Picture_MainVideo.Visible);
}

TEST_F(Engine, AFileThatDoesNotOpenHidesTheSurfaceSoundsTheRefusalAndStops) {
    GiveRefusalSound();
    form.frame.Picture_MainVideo.Visible = true;
    form.player.IsPlaying = -1;
    form.player.Remain = QStringLiteral("00:01");
    BassPlayFile(form, jukebox.Music(QStringLiteral("missing.wav")));
    EXPECT_FALSE(form.frame.Picture_MainVideo.Visible);
    EXPECT_EQ(refusal->asked, (QStringList{QStringLiteral("CurrentPosition 0"), QStringLiteral("Run")}));
    EXPECT_EQ(form.player.IsPlaying, 0);
    EXPECT_EQ(form.player.BassChannel, 0U);
    EXPECT_EQ(form.player.Remain, QString());
}

TEST_F(Engine, WithoutAThemeThereIsNoRefusalSound) {
    EXPECT_EQ(ErrorOf([&] { BassPlayFile(form, jukebox.Music(QStringLiteral("missing.wav"))); }),
              kObjectNotSet);
}

TEST_F(Engine, OnlyTheLowWordOfALengthAndAPositionIsKept) {
    constexpr std::int64_t kWord = std::int64_t{1} << 32;
    audio.length = kWord + 3 * 176'400;
    audio.position = 5 * kWord + 2 * 176'400;
    BassPlayFile(form, tone);
    EXPECT_EQ(form.player.TrackLengthSeconds, 3);
    const PlayTime time = ReadPlayTime(form);
    EXPECT_EQ(time.position, 2);
    EXPECT_EQ(time.length, 3);
    EXPECT_EQ(form.player.TrackPositionSeconds, 2);
}

TEST_F(Engine, StoppingAudioLeavesTheStreamOpenAndEmptiesTheRemainingTime) {
    BassPlayFile(form, tone);
    const std::uint32_t channel = form.player.BassChannel;
    form.player.Remain = QStringLiteral("00:09");
    BassStopFile(form);
    EXPECT_EQ(form.player.IsPlaying, 0);
    EXPECT_EQ(form.player.BassChannel, channel);
    EXPECT_GT(audio.BASS_ChannelGetLength(channel), 0);
    EXPECT_EQ(form.player.Remain, QString());
}

TEST_F(Engine, StoppingAVideoRewindsItDropsItAndLeavesTheRemainingTime) {
    const auto video = std::make_shared<NotingGraph>(30);
    GiveVideo(video);
    form.player.Remain = QStringLiteral("00:09");
    jukebox.platform.calls.Clear();
    BassStopFile(form);
    EXPECT_EQ(video->asked, (QStringList{QStringLiteral("Stop"), QStringLiteral("CurrentPosition 0")}));
    EXPECT_FALSE(form.player.VideoControl || form.player.VideoPosition || form.player.VideoAudio ||
                 form.player.VideoWindow);
    EXPECT_EQ(form.player.Remain, QStringLiteral("00:09"));
    // The audio stream is not touched.
    EXPECT_TRUE(jukebox.platform.calls.Entries().empty());
}

TEST_F(Engine, StoppingNothingIsHarmless) {
    EXPECT_EQ(ErrorOf([&] { BassStopFile(form); }), 0);
    EXPECT_EQ(form.player.IsPlaying, 0);
}

TEST_F(Engine, OnlyAnActiveControllersTimerIsStopped) {
    form.shell.tmrSpectrum.Enabled = true;
    BassStopFile(form);
    EXPECT_TRUE(form.shell.tmrSpectrum.Enabled);
    form.settings.RGBLedsActive = QStringLiteral("true");
    BassStopFile(form);
    EXPECT_FALSE(form.shell.tmrSpectrum.Enabled);
}

TEST_F(Engine, TheSeekKeyGoesTenSecondsBeforeTheEndOfAVideo) {
    const auto video = std::make_shared<NotingGraph>(25.5);
    GiveVideo(video);
    SeekNearEnd(form);
    EXPECT_EQ(video->asked, QStringList{QStringLiteral("CurrentPosition 15.5")});
}

TEST_F(Engine, AVideoBelowTenSecondsGoesToItsStart) {
    const auto video = std::make_shared<NotingGraph>(4);
    GiveVideo(video);
    SeekNearEnd(form);
    EXPECT_EQ(video->asked, QStringList{QStringLiteral("CurrentPosition 0")});
}

TEST_F(Engine, AVideosTimeLeavesTheAudioPositionAlone) {
    form.player.TrackPositionSeconds = 7;
    GiveVideo(std::make_shared<NotingGraph>(30));
    const PlayTime time = ReadPlayTime(form);
    EXPECT_EQ(time.length, 30);
    EXPECT_EQ(form.player.TrackPositionSeconds, 7);
}

} // namespace

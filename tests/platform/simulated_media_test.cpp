// Tests of the simulated audio library and media graphs: real files, positions that follow the simulated
// time.
#include "platform/simulated/simulated_platform.h"
#include "tone_file.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

class SimulatedAudioTest : public ::testing::Test {
protected:
    SimulatedAudioTest() { WriteTone(tone, 44100 * 2, 44100.0 / 1024 * 20); }

    std::uint32_t Open() { return platform.audio.BASS_StreamCreateFile(tone, kSampleLoop); }

    QTemporaryDir folder;
    QString tone = folder.filePath(QStringLiteral("tone.wav"));
    SimulatedPlatform platform;
};

TEST_F(SimulatedAudioTest, IsVersionTwoFour) {
    EXPECT_EQ(platform.audio.BASS_GetVersion() >> 16, 0x0204U);
}

TEST_F(SimulatedAudioTest, OpensAFileWithItsExactLength) {
    const std::uint32_t handle = Open();
    ASSERT_NE(handle, 0U);
    EXPECT_EQ(platform.audio.BASS_ChannelGetLength(handle), 44100 * 2 * 4);
    EXPECT_EQ(platform.audio.BASS_ChannelBytes2Seconds(handle, 44100 * 2 * 4), 2.0);
    EXPECT_EQ(platform.audio.BASS_ChannelSeconds2Bytes(handle, 1.5), 44100 * 6);
}

TEST_F(SimulatedAudioTest, RefusesWhatIsNoSound) {
    const QString text = folder.filePath(QStringLiteral("text.mp3"));
    QFile file(text);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("no sound at all\n");
    file.close();
    EXPECT_EQ(platform.audio.BASS_StreamCreateFile(text, 0), 0U);
    EXPECT_EQ(platform.audio.BASS_StreamCreateFile(folder.filePath(QStringLiteral("missing.mp3")), 0), 0U);
    EXPECT_EQ(platform.audio.BASS_StreamCreateFile(folder.path(), 0), 0U);
}

TEST_F(SimulatedAudioTest, ThePositionFollowsTheTimeAndWraps) {
    const std::uint32_t handle = Open();
    platform.clock.Advance(500);
    EXPECT_EQ(platform.audio.BASS_ChannelGetPosition(handle), 0);
    EXPECT_TRUE(platform.audio.BASS_ChannelPlay(handle, false));
    platform.clock.Advance(1500);
    EXPECT_EQ(platform.audio.BASS_ChannelGetPosition(handle), 44100 * 6);
    platform.clock.Advance(1000);
    EXPECT_EQ(platform.audio.BASS_ChannelGetPosition(handle), 44100 * 2);
}

TEST_F(SimulatedAudioTest, PauseHoldsThePositionAndStopDropsIt) {
    const std::uint32_t handle = Open();
    EXPECT_FALSE(platform.audio.BASS_ChannelPause(handle));
    platform.audio.BASS_ChannelPlay(handle, false);
    platform.clock.Advance(1000);
    EXPECT_TRUE(platform.audio.BASS_ChannelPause(handle));
    platform.clock.Advance(700);
    EXPECT_EQ(platform.audio.BASS_ChannelGetPosition(handle), 44100 * 4);
    platform.audio.BASS_ChannelPlay(handle, false);
    platform.clock.Advance(500);
    EXPECT_EQ(platform.audio.BASS_ChannelGetPosition(handle), 44100 * 6);
    EXPECT_TRUE(platform.audio.BASS_ChannelStop(handle));
    EXPECT_EQ(platform.audio.BASS_ChannelGetPosition(handle), 0);
}

TEST_F(SimulatedAudioTest, ASeekOutsideTheStreamDoesNotMove) {
    const std::uint32_t handle = Open();
    EXPECT_TRUE(platform.audio.BASS_ChannelSetPosition(handle, 44100 * 4));
    EXPECT_FALSE(platform.audio.BASS_ChannelSetPosition(handle, -4));
    EXPECT_FALSE(platform.audio.BASS_ChannelSetPosition(handle, 44100 * 8));
    EXPECT_EQ(platform.audio.BASS_ChannelGetPosition(handle), 44100 * 4);
}

TEST_F(SimulatedAudioTest, AFreedHandleIsRefused) {
    const std::uint32_t handle = Open();
    EXPECT_TRUE(platform.audio.BASS_StreamFree(handle));
    EXPECT_FALSE(platform.audio.BASS_StreamFree(handle));
    EXPECT_FALSE(platform.audio.BASS_ChannelPlay(handle, false));
    EXPECT_EQ(platform.audio.BASS_ChannelGetLength(handle), 0);
    const std::uint32_t next = Open();
    EXPECT_NE(next, handle);
    platform.audio.BASS_Free();
    EXPECT_EQ(platform.audio.BASS_ChannelGetLength(next), 0);
}

// The tone is exactly on bin 20, at half of full scale. It ends with a whole wave, so the window that passes
// the end also holds a whole tone.
TEST_F(SimulatedAudioTest, TheSpectrumIsThatOfTheFileAtThePosition) {
    WriteTone(tone, 1024 * 43, 44100.0 / 1024 * 20);
    const std::uint32_t handle = Open();
    std::array<float, 512> fft{};
    EXPECT_FALSE(platform.audio.BASS_ChannelGetData(handle, fft));
    platform.audio.BASS_ChannelPlay(handle, false);
    for (const double milliseconds : {500.0, 490.0}) {
        platform.clock.Advance(milliseconds);
        ASSERT_TRUE(platform.audio.BASS_ChannelGetData(handle, fft));
        EXPECT_EQ(std::max_element(fft.begin(), fft.end()) - fft.begin(), 20);
        EXPECT_NEAR(fft[20], 0.5F, 0.01F);
        EXPECT_LT(fft[300], 0.001F);
    }
    platform.audio.BASS_ChannelPause(handle);
    EXPECT_FALSE(platform.audio.BASS_ChannelGetData(handle, fft)) << "a paused track has no sound";
    platform.audio.BASS_ChannelPlay(handle, false);
    EXPECT_TRUE(platform.audio.BASS_ChannelGetData(handle, fft));
    platform.audio.BASS_ChannelStop(handle);
    EXPECT_FALSE(platform.audio.BASS_ChannelGetData(handle, fft));
}

TEST_F(SimulatedAudioTest, EveryEffectIsInTheCalls) {
    const std::uint32_t handle = Open();
    platform.audio.BASS_ChannelPlay(handle, false);
    platform.audio.BASS_ChannelSetPosition(handle, 400);
    platform.audio.BASS_ChannelGetPosition(handle);
    platform.audio.BASS_Free();
    const QJsonArray expected[] = {{QStringLiteral("BASS_StreamCreateFile"), tone},
                                   {QStringLiteral("BASS_ChannelPlay")},
                                   {QStringLiteral("BASS_ChannelSetPosition"), 400},
                                   {QStringLiteral("BASS_Free")}};
    ASSERT_EQ(platform.calls.Entries().size(), std::size(expected));
    EXPECT_TRUE(std::equal(std::begin(expected), std::end(expected), platform.calls.Entries().begin()));
}

class SimulatedGraphTest : public SimulatedAudioTest {
protected:
    std::shared_ptr<MediaGraph> graph = platform.graphs.CreateGraph(QStringLiteral("Video"));
};

TEST_F(SimulatedGraphTest, StandsAtItsEnd) {
    graph->RenderFile(tone);
    EXPECT_EQ(graph->Duration(), 2.0);
    graph->Run();
    platform.clock.Advance(1500);
    EXPECT_EQ(graph->CurrentPosition(), 1.5);
    platform.clock.Advance(9000);
    EXPECT_EQ(graph->CurrentPosition(), 2.0);
    graph->SetCurrentPosition(-8);
    EXPECT_EQ(graph->CurrentPosition(), 0.0);
}

TEST_F(SimulatedGraphTest, RefusesWhatCannotBeRendered) {
    try {
        graph->RenderFile(folder.filePath(QStringLiteral("missing.avi")));
        FAIL() << "a missing file was rendered";
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number, kInvalidProcedureCall);
    }
}

// A picture of 64 by 48 in a rectangle of 400 by 200 is 200 high; in one of 100 by 200 it is 75 high.
TEST_F(SimulatedGraphTest, ThePictureKeepsItsAspect) {
    graph->RenderFile(QStringLiteral(TESTS_FOLDER "/sessions/media/film.avi"));
    graph->Place(QStringLiteral("Picture_Main"), 0, 0, 400, 200);
    EXPECT_EQ(graph->Height(), 200);
    graph->Place(QStringLiteral("Picture_Main"), 0, 0, 100, 200);
    EXPECT_EQ(graph->Height(), 75);
}

} // namespace

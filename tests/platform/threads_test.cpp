// Tests of the sound when the system has no more threads.
#include "core/errand.h"
#include "core/run_time_error.h"
#include "platform/gstreamer/audio_library.h"
#include "platform/gstreamer/media_graph.h"
#include "platform/gstreamer/opening.h"

#include "platform/gstreamer_media.h"
#include "platform/no_more_threads.h"
#include "platform/video_screens.h"

namespace {

TEST(Threads, AnErrandThatCannotBeginIsNone) {
    const auto ran = std::make_shared<std::atomic<bool>>(false);
    {
        const NoMoreThreads full;
        EXPECT_FALSE(Errand::Begin([ran] { *ran = true; }));
    }
    EXPECT_EQ(ran.use_count(), 1) << "what the routine owned is gone";
    EXPECT_FALSE(*ran);
    const auto errand = Errand::Begin([ran] { *ran = true; });
    ASSERT_TRUE(errand);
    while (!errand->IsDone()) {
    }
    EXPECT_TRUE(*ran);
}

TEST(Threads, AFileOpensOnlyWithAThread) {
    const auto one = [](const std::atomic<bool>&) { return 1; };
    {
        const NoMoreThreads full;
        EXPECT_FALSE(WithinLimits<int>(OpeningLimits{}, one));
    }
    EXPECT_EQ(WithinLimits<int>(OpeningLimits{}, one), 1);
}

TEST(Threads, TheOutputFailsWithoutOneAndCanBeTriedAgain) {
    GstAudioLibrary library({.sink = "fakesink"});
    {
        const NoMoreThreads full;
        EXPECT_FALSE(library.BASS_Init(-1, 44100, 0));
    }
    EXPECT_TRUE(library.BASS_Init(-1, 44100, 0));
    {
        const NoMoreThreads full;
        library.BASS_Free();
    }
}

TEST(Threads, AStreamNeedsOneToOpenItsFileAndOneToDecodeIt) {
    media::Scratch scratch;
    const QString path = scratch.WriteTone("tone.wav", 440, 1);
    GstAudioLibrary library({.sink = "fakesink"});
    ASSERT_TRUE(library.BASS_Init(-1, 44100, 0));
    for (int left = 0; left < 2; ++left) {
        const NoMoreThreads full(left);
        EXPECT_EQ(library.BASS_StreamCreateFile(path, kSampleLoop), 0U) << left;
    }
    const std::uint32_t handle = library.BASS_StreamCreateFile(path, kSampleLoop);
    EXPECT_NE(handle, 0U);
    const NoMoreThreads full;
    EXPECT_TRUE(library.BASS_StreamFree(handle));
}

TEST(Threads, AThemeSoundThatCannotBeDecodedRaisesFive) {
    media::Scratch scratch;
    media::NoScreen screen;
    GstMediaGraphs graphs({.screen = screen, .output = {}}, {.sink = "fakesink"});
    const auto sound = graphs.CreateGraph(QStringLiteral("SoundMove"));
    const QString path = scratch.WriteTone("tone.wav", 440, 1);
    {
        const NoMoreThreads full;
        EXPECT_THROW(sound->RenderFile(path), RunTimeError);
    }
    sound->RenderFile(path);
    EXPECT_EQ(sound->Duration(), 1.0);
}

} // namespace

// Tests of the audio library's streams on the silent output: opening, transport, positions, spectrum,
// clean-up.
#include "platform/gstreamer/audio_library.h"
#include "platform/gstreamer/decode_file.h"
#include "platform/gstreamer/opening.h"

#include "platform/gstreamer_media.h"

#include <algorithm>
#include <filesystem>

namespace {

using media::Eventually;
using media::MadeFile;

AudioOutputOptions Silent() {
    AudioOutputOptions options;
    options.sink = "fakesink";
    return options;
}

std::ptrdiff_t ThreadCount() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/task"),
                         std::filesystem::directory_iterator());
}

class GstreamerAudioLibrary : public testing::Test {
protected:
    GstreamerAudioLibrary() { EXPECT_TRUE(library.BASS_Init(-1, 44100, 0)); }

    std::uint32_t Open(const QString& path) { return library.BASS_StreamCreateFile(path, kSampleLoop); }
    std::int64_t Frame(std::uint32_t handle) { return library.BASS_ChannelGetPosition(handle) / 4; }
    bool Reaches(std::uint32_t handle, std::int64_t frame) {
        return Eventually([&] { return Frame(handle) >= frame; });
    }

    media::Scratch scratch;
    GstAudioLibrary library{Silent()};
};

TEST_F(GstreamerAudioLibrary, VersionIsTwoPointFour) {
    EXPECT_EQ(library.BASS_GetVersion() >> 16, 0x0204U);
}

TEST_F(GstreamerAudioLibrary, WhatHoldsNoSoundHasNoHandle) {
    EXPECT_EQ(Open(scratch.Path() + QStringLiteral("/missing.mp3")), 0U);
    EXPECT_EQ(Open(scratch.Path()), 0U);
    EXPECT_EQ(Open(QString()), 0U);
    EXPECT_EQ(Open(scratch.Write("empty.mp3", "")), 0U);
    EXPECT_EQ(Open(scratch.Write("text.mp3", "Dear reader, this is no song.\n")), 0U);
    EXPECT_EQ(Open(scratch.Write("silent.wav", media::WavBytes({}))), 0U);
    EXPECT_EQ(Open(MadeFile("truncated.m4a")), 0U);
    EXPECT_EQ(Open(MadeFile("pictures_only.mp4")), 0U);
    EXPECT_NE(Open(MadeFile("truncated.mp3")), 0U);
    EXPECT_NE(Open(MadeFile("film.mp4")), 0U);
}

TEST_F(GstreamerAudioLibrary, AnyNameOnDiskPlays) {
    for (const QByteArray& name : {QByteArray("#1 50%.wav"), QByteArray("caf\xE9|\n.wav")}) {
        const std::uint32_t handle = Open(scratch.WriteTone(name, 440, 1));
        ASSERT_NE(handle, 0U);
        EXPECT_TRUE(library.BASS_ChannelPlay(handle, false));
        EXPECT_TRUE(Reaches(handle, 4410));
    }
}

TEST_F(GstreamerAudioLibrary, RefusesHandlesThatAreNoStreams) {
    const std::uint32_t freed = Open(scratch.WriteTone("tone.wav", 440, 1));
    EXPECT_TRUE(library.BASS_StreamFree(freed));
    for (const std::uint32_t handle : {0U, freed, 4711U}) {
        std::array<float, 512> fft;
        fft.fill(7);
        EXPECT_FALSE(library.BASS_StreamFree(handle));
        EXPECT_FALSE(library.BASS_MusicFree(handle));
        EXPECT_FALSE(library.BASS_ChannelPlay(handle, false));
        EXPECT_FALSE(library.BASS_ChannelPause(handle));
        EXPECT_FALSE(library.BASS_ChannelStop(handle));
        EXPECT_FALSE(library.BASS_ChannelSetPosition(handle, 0));
        EXPECT_FALSE(library.BASS_ChannelGetData(handle, fft));
        EXPECT_EQ(fft[0], 7);
        EXPECT_EQ(library.BASS_ChannelGetLength(handle), 0);
        EXPECT_EQ(library.BASS_ChannelGetPosition(handle), 0);
    }
    EXPECT_NE(Open(scratch.WriteTone("tone.wav", 440, 1)), freed);
}

TEST_F(GstreamerAudioLibrary, LengthIsKnownAtOnceForEveryKindOfFile) {
    for (const char* name :
         {"song.wav", "cbr.mp3", "cbr_noheader.mp3", "vbr.mp3", "vbr_noheader.mp3", "song.flac", "song.wma",
          "song.ogg", "song.m4a", "truncated.mp3", "truncated.wav"}) {
        const std::uint32_t handle = Open(MadeFile(name));
        ASSERT_NE(handle, 0U) << name;
        EXPECT_EQ(library.BASS_ChannelGetLength(handle), ProbeLength(MadeFile(name))) << name;
        EXPECT_TRUE(library.BASS_StreamFree(handle));
    }
}

TEST_F(GstreamerAudioLibrary, LengthOfALongFileWithoutHeaderIsEstimatedAndThenExact) {
    const QString path = MadeFile("long_noheader.mp3");
    const std::chrono::nanoseconds before = ProcessWork();
    const std::uint32_t handle = Open(path);
    const std::chrono::nanoseconds work = ProcessWork() - before;
    ASSERT_NE(handle, 0U);
    // Eight hundred copies of the song of twenty seconds, each with up to 0.2 s of padding.
    const double least = 800 * 20.0;
    const auto length = [&] {
        return library.BASS_ChannelBytes2Seconds(handle, library.BASS_ChannelGetLength(handle));
    };
    EXPECT_GT(length(), 0.5 * least);
    EXPECT_LT(length(), 2 * least);
    EXPECT_LT(work, std::chrono::seconds(2)) << "opening does not go through the whole file";
    EXPECT_TRUE(Eventually([&] { return length() > least && length() < least + 800 * 0.2; })) << length();
}

TEST_F(GstreamerAudioLibrary, PositionMovesInRealTimeOnlyWhilePlaying) {
    const std::uint32_t handle = Open(scratch.WriteTone("tone.wav", 440, 30));
    EXPECT_EQ(library.BASS_ChannelGetPosition(handle), 0);
    ASSERT_TRUE(library.BASS_ChannelPlay(handle, false));
    ASSERT_TRUE(Reaches(handle, 4410));
    const std::int64_t first = Frame(handle);
    media::Pace pace;
    pace.Start(first);
    EXPECT_TRUE(pace.IsReal([&] { return Frame(handle); }));

    EXPECT_TRUE(library.BASS_ChannelPause(handle));
    const std::int64_t held = Frame(handle);
    EXPECT_FALSE(library.BASS_ChannelPause(handle));
    EXPECT_FALSE(Eventually([&] { return Frame(handle) != held; }, 0.3));
    EXPECT_TRUE(library.BASS_ChannelPlay(handle, false));
    EXPECT_TRUE(Eventually([&] { return Frame(handle) > held; }));
    EXPECT_LT(Frame(handle), held + 22050);
}

TEST_F(GstreamerAudioLibrary, StopRewindsAndAPositionSetThenHolds) {
    const std::uint32_t handle = Open(scratch.WriteTone("tone.wav", 440, 30));
    library.BASS_ChannelPlay(handle, false);
    ASSERT_TRUE(Reaches(handle, 4410));
    EXPECT_TRUE(library.BASS_ChannelStop(handle));
    EXPECT_EQ(library.BASS_ChannelGetPosition(handle), 0);
    EXPECT_TRUE(library.BASS_ChannelSetPosition(handle, 441000 * 4));
    EXPECT_FALSE(Eventually([&] { return Frame(handle) != 441000; }, 0.2));
    EXPECT_TRUE(library.BASS_ChannelPlay(handle, false));
    ASSERT_TRUE(Eventually([&] { return Frame(handle) > 441000; }));
    EXPECT_LT(Frame(handle), 441000 + 44100);
    EXPECT_TRUE(library.BASS_ChannelPlay(handle, true));
    EXPECT_LT(Frame(handle), 44100);
    EXPECT_TRUE(Reaches(handle, 4410));
}

TEST_F(GstreamerAudioLibrary, LoopWrapsThePositionInTime) {
    const std::uint32_t handle = Open(scratch.WriteTone("short.wav", 440, 0.5));
    library.BASS_ChannelPlay(handle, false);
    ASSERT_TRUE(Eventually([&] { return Frame(handle) > 0; }));
    std::int64_t last = Frame(handle);
    std::int64_t played = 0;
    int wraps = 0;
    media::Pace pace;
    pace.Start(0);
    const auto follow = [&] {
        const std::int64_t now = Frame(handle);
        EXPECT_LE(now, 22050);
        wraps += now < last ? 1 : 0;
        played += now < last ? now + 22050 - last : now - last;
        last = now;
        return played;
    };
    EXPECT_TRUE(pace.IsReal(follow));
    EXPECT_TRUE(Eventually([&] { return follow() > 0 && wraps >= 5; }));
}

TEST_F(GstreamerAudioLibrary, WithoutTheLoopFlagAStreamEnds) {
    const QString path = scratch.WriteTone("short.wav", 440, 0.3);
    const std::uint32_t handle = library.BASS_StreamCreateFile(path, 0);
    std::array<float, 512> fft{};
    library.BASS_ChannelPlay(handle, false);
    ASSERT_TRUE(Reaches(handle, 13230));
    EXPECT_TRUE(Eventually([&] { return !library.BASS_ChannelGetData(handle, fft); }));
    EXPECT_EQ(Frame(handle), 13230);
    library.BASS_ChannelPlay(handle, false);
    EXPECT_LT(Frame(handle), 13230);
    EXPECT_TRUE(Reaches(handle, 13230));
}

TEST_F(GstreamerAudioLibrary, TruncatedFileWrapsWhereItEnds) {
    const std::uint32_t handle = Open(MadeFile("truncated.flac"));
    ASSERT_NE(handle, 0U);
    const std::int64_t end = ProbeLength(MadeFile("truncated.flac")).value_or(0) / 4;
    EXPECT_NEAR(static_cast<double>(library.BASS_ChannelGetLength(handle)) / 4, static_cast<double>(end),
                8192);
    ASSERT_TRUE(library.BASS_ChannelSetPosition(handle, (end - 22050) * 4));
    library.BASS_ChannelPlay(handle, false);
    EXPECT_TRUE(Eventually([&] { return Frame(handle) > 0 && Frame(handle) < 44100; }));
    EXPECT_EQ(library.BASS_ChannelGetLength(handle) / 4, end);
}

TEST_F(GstreamerAudioLibrary, SeekOutsideTheStreamIsRefused) {
    const std::uint32_t handle = Open(scratch.WriteTone("tone.wav", 440, 2));
    ASSERT_TRUE(library.BASS_ChannelSetPosition(handle, 1000 * 4));
    EXPECT_FALSE(library.BASS_ChannelSetPosition(handle, -1));
    EXPECT_FALSE(library.BASS_ChannelSetPosition(handle, -8 * 44100 * 4));
    EXPECT_FALSE(library.BASS_ChannelSetPosition(handle, 88200 * 4));
    EXPECT_FALSE(library.BASS_ChannelSetPosition(handle, INT64_MAX));
    EXPECT_FALSE(library.BASS_ChannelSetPosition(handle, INT64_MIN));
    EXPECT_EQ(Frame(handle), 1000);
    EXPECT_TRUE(library.BASS_ChannelSetPosition(handle, 88199 * 4 + 3));
    EXPECT_EQ(library.BASS_ChannelGetPosition(handle), 88199 * 4);
}

// The sweep's frequency gives the time: 300 Hz + 40 Hz a second.
TEST_F(GstreamerAudioLibrary, SeekAndSpectrumAgreeOnThePlace) {
    for (const char* name : {"song.wav", "vbr_noheader.mp3", "song.flac", "song.wma", "song.m4a"}) {
        const std::uint32_t handle = Open(MadeFile(name));
        library.BASS_ChannelPlay(handle, false);
        std::array<float, 512> fft{};
        for (const double seconds : {14.0, 6.0}) {
            ASSERT_TRUE(
                library.BASS_ChannelSetPosition(handle, library.BASS_ChannelSeconds2Bytes(handle, seconds)));
            const auto target = static_cast<std::int64_t>(seconds * 44100);
            ASSERT_TRUE(Eventually([&] { return Frame(handle) > target + 22050; })) << name;
            ASSERT_TRUE(library.BASS_ChannelGetData(handle, fft)) << name;
            const auto peak = std::max_element(fft.begin(), fft.end()) - fft.begin();
            EXPECT_NEAR(static_cast<double>(peak) * 44100 / 1024, 300 + 40 * (seconds + 0.5), 50) << name;
        }
        library.BASS_StreamFree(handle);
    }
}

// 43 bins of 0.1 s blocks: a gap at the seam of the loop would lower the peak by 4 % for each millisecond.
TEST_F(GstreamerAudioLibrary, SpectrumShowsTheToneAtItsHeightAndNoGapAtTheSeam) {
    const double frequency = 10 * 44100.0 / 1024;
    const std::uint32_t handle = Open(scratch.WriteTone("bin.wav", frequency, 1024.0 * 20 / 44100, 0.5));
    std::array<float, 512> fft{};
    EXPECT_FALSE(library.BASS_ChannelGetData(handle, fft));
    library.BASS_ChannelPlay(handle, false);
    ASSERT_TRUE(Eventually([&] { return library.BASS_ChannelGetData(handle, fft) && fft[10] > 0.49; }));
    float least = 1;
    int wraps = 0;
    std::int64_t last = 0;
    ASSERT_TRUE(Eventually([&] {
        EXPECT_TRUE(library.BASS_ChannelGetData(handle, fft));
        least = std::min(least, fft[10]);
        EXPECT_EQ(std::max_element(fft.begin(), fft.end()) - fft.begin(), 10);
        wraps += Frame(handle) < last ? 1 : 0;
        last = Frame(handle);
        return wraps == 4;
    }));
    EXPECT_GT(least, 0.49F);
    library.BASS_ChannelPause(handle);
    EXPECT_FALSE(library.BASS_ChannelGetData(handle, fft));
}

TEST_F(GstreamerAudioLibrary, ConversionsAreExact) {
    EXPECT_EQ(library.BASS_ChannelBytes2Seconds(1, 176400), 1.0);
    EXPECT_EQ(library.BASS_ChannelSeconds2Bytes(1, 1.0), 176400);
    for (const std::int64_t frame : {1, 441, 1323, 44099, 10584001}) {
        EXPECT_EQ(library.BASS_ChannelSeconds2Bytes(1, library.BASS_ChannelBytes2Seconds(1, frame * 4)),
                  frame * 4);
    }
    EXPECT_EQ(library.BASS_ChannelSeconds2Bytes(1, std::nan("")), 0);
    EXPECT_LT(library.BASS_ChannelSeconds2Bytes(1, -2.5), 0);
    EXPECT_GT(library.BASS_ChannelSeconds2Bytes(1, INFINITY), 0);
}

TEST_F(GstreamerAudioLibrary, RapidTransportLeavesAWorkingStream) {
    const std::uint32_t handle = Open(MadeFile("vbr.mp3"));
    for (int i = 0; i < 50; ++i) {
        EXPECT_TRUE(library.BASS_ChannelPlay(handle, i % 3 == 0));
        EXPECT_TRUE(library.BASS_ChannelPause(handle));
        EXPECT_TRUE(library.BASS_ChannelPlay(handle, false));
        EXPECT_TRUE(library.BASS_ChannelSetPosition(handle, i * 40000));
        EXPECT_TRUE(library.BASS_ChannelStop(handle));
    }
    EXPECT_EQ(Frame(handle), 0);
    library.BASS_ChannelPlay(handle, false);
    EXPECT_TRUE(Reaches(handle, 22050));
}

TEST_F(GstreamerAudioLibrary, OpeningAndFreeingLeavesNoThread) {
    const QString wav = scratch.WriteTone("tone.wav", 440, 1);
    const QString mp3 = MadeFile("vbr_noheader.mp3");
    const auto cycle = [&](const QString& path, bool plays) {
        const std::uint32_t handle = Open(path);
        ASSERT_NE(handle, 0U);
        if (plays) {
            library.BASS_ChannelPlay(handle, false);
        }
        ASSERT_TRUE(library.BASS_StreamFree(handle));
    };
    // The toolkit keeps a few threads for later use, which the first cycles start.
    for (int i = 0; i < 10; ++i) {
        cycle(i % 2 == 0 ? wav : mp3, true);
    }
    const std::ptrdiff_t before = ThreadCount();
    for (int i = 0; i < 200; ++i) {
        cycle(i % 2 == 0 ? wav : mp3, i % 3 == 0);
    }
    EXPECT_TRUE(Eventually([&] { return ThreadCount() <= before + 2; })) << before << " " << ThreadCount();
}

TEST_F(GstreamerAudioLibrary, SeveralStreamsPlayAtOnceAndFreeEndsThemAll) {
    const std::uint32_t a = Open(scratch.WriteTone("a.wav", 440, 2));
    const std::uint32_t b = Open(scratch.WriteTone("b.wav", 880, 2));
    library.BASS_ChannelPlay(a, false);
    library.BASS_ChannelPlay(b, false);
    EXPECT_TRUE(Reaches(a, 4410));
    EXPECT_TRUE(Reaches(b, 4410));
    library.BASS_Free();
    EXPECT_EQ(library.BASS_ChannelGetLength(a), 0);
    EXPECT_FALSE(library.BASS_ChannelPlay(b, false));
    EXPECT_EQ(Open(scratch.WriteTone("a.wav", 440, 2)), 0U);
    library.BASS_Free();
    EXPECT_TRUE(library.BASS_Init(-1, 44100, 0));
    EXPECT_TRUE(library.BASS_Init(-1, 44100, 0));
    EXPECT_NE(Open(scratch.WriteTone("a.wav", 440, 2)), 0U);
}

TEST_F(GstreamerAudioLibrary, DamageInTheMiddleIsPlayedOver) {
    const std::uint32_t handle = Open(scratch.Write("damaged.flac", media::DamagedSong()));
    ASSERT_NE(handle, 0U);
    ASSERT_TRUE(library.BASS_ChannelSetPosition(handle, 176400));
    library.BASS_ChannelPlay(handle, false);
    EXPECT_TRUE(Reaches(handle, 6 * 44100)) << Frame(handle);
    EXPECT_EQ(library.BASS_ChannelGetLength(handle), 20 * 176400);
    // The sweep is where the position says.
    std::array<float, 512> fft{};
    EXPECT_TRUE(Eventually([&] {
        EXPECT_TRUE(library.BASS_ChannelGetData(handle, fft));
        const auto peak = static_cast<double>(std::max_element(fft.begin(), fft.end()) - fft.begin());
        return std::abs(peak * 44100 / 1024 - 300 - 40 * static_cast<double>(Frame(handle)) / 44100) < 50;
    }));
}

TEST_F(GstreamerAudioLibrary, FileThatCanNoLongerBeReadStillComesToItsEnd) {
    const QString path = scratch.Write("damaged.flac", media::DamagedSong());
    const std::uint32_t handle = Open(path);
    ASSERT_NE(handle, 0U);
    std::filesystem::remove(path.toStdString());
    library.BASS_ChannelPlay(handle, false);
    ASSERT_TRUE(Reaches(handle, 5 * 44100)) << Frame(handle);
    EXPECT_EQ(library.BASS_ChannelGetLength(handle), 20 * 176400);
    std::array<float, 512> fft{};
    ASSERT_TRUE(library.BASS_ChannelGetData(handle, fft));
    EXPECT_EQ(*std::max_element(fft.begin(), fft.end()), 0.0F);
}

TEST(GstreamerAudioLibraryInit, FreeBeforeInitIsHarmlessAndNothingOpensBeforeInit) {
    media::Scratch scratch;
    GstAudioLibrary library(Silent());
    library.BASS_Free();
    library.BASS_Free();
    EXPECT_EQ(library.BASS_StreamCreateFile(scratch.WriteTone("a.wav", 440, 1), 0), 0U);
}

TEST(GstreamerAudioLibraryInit, MissingSinkFallsBackToTheSilentOne) {
    AudioOutputOptions options;
    options.sink = "nosuchsink";
    media::Scratch scratch;
    GstAudioLibrary library(options);
    ASSERT_TRUE(library.BASS_Init(-1, 44100, 0));
    EXPECT_TRUE(library.IsSilent());
    const std::uint32_t handle =
        library.BASS_StreamCreateFile(scratch.WriteTone("a.wav", 440, 5), kSampleLoop);
    library.BASS_ChannelPlay(handle, false);
    EXPECT_TRUE(Eventually([&] { return library.BASS_ChannelGetPosition(handle) > 44100 * 4; }));
}

TEST(GstreamerAudioLibraryInit, FailsOnlyWithoutAnyOutput) {
    AudioOutputOptions options;
    options.sink = "nosuchsink";
    options.silentSink = "nosuchsilence";
    GstAudioLibrary library(options);
    EXPECT_FALSE(library.BASS_Init(-1, 44100, 0));
    EXPECT_EQ(library.BASS_StreamCreateFile(MadeFile("song.wav"), 0), 0U);
    library.BASS_Free();
}

} // namespace

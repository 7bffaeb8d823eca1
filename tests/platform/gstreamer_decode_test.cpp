// Tests of decoding whole files, of the length of files, and of the spectrum.
#include "platform/gstreamer/decode_file.h"
#include "platform/gstreamer/opening.h"
#include "platform/gstreamer/spectrum.h"

#include "platform/gstreamer_media.h"

#include <sys/stat.h>

#include <cstdlib>

namespace {

using media::MadeFile;
using media::Samples;

constexpr std::int64_t kSongFrames = 20 * 44100;
// Encoders put up to this many frames of silence around a song.
constexpr std::int64_t kPadding = 3000;
constexpr double kUnlimited = 1e6;

TEST(GstreamerDecode, WavGivesItsOwnSamples) {
    media::Scratch scratch;
    const Samples tone = media::Tone(440, 1.5, 0.5);
    const auto sound = DecodeFile(scratch.Write("tone.wav", media::WavBytes(tone)), kUnlimited);
    ASSERT_TRUE(sound);
    EXPECT_EQ(sound->samples, tone);
    EXPECT_EQ(sound->Bytes(), 66150 * 4);
}

TEST(GstreamerDecode, LimitCutsTheSound) {
    media::Scratch scratch;
    const QString path = scratch.WriteTone("tone.wav", 440, 2);
    EXPECT_EQ(DecodeFile(path, 0.25)->Frames(), 11025);
    EXPECT_EQ(DecodeFile(path, 0)->Frames(), 0);
    EXPECT_EQ(DecodeFile(path, -1)->Frames(), 0);
    EXPECT_EQ(DecodeFile(path, std::nan(""))->Frames(), 88200);
    EXPECT_EQ(DecodeFile(path, INFINITY)->Frames(), 88200);
}

TEST(GstreamerDecode, SameFileGivesTheSameSamplesEachTime) {
    for (const char* name : {"vbr.mp3", "song.flac", "song.ogg", "mono48k.wav"}) {
        const auto once = DecodeFile(MadeFile(name), kUnlimited);
        const auto again = DecodeFile(MadeFile(name), kUnlimited);
        ASSERT_TRUE(once && again) << name;
        EXPECT_EQ(once->samples, again->samples) << name;
    }
}

TEST(GstreamerDecode, OtherRatesAndChannelsBecomeStereoAt44100) {
    for (const char* name : {"mono48k.wav", "mono8k.wav"}) {
        const auto sound = DecodeFile(MadeFile(name), kUnlimited);
        ASSERT_TRUE(sound) << name;
        EXPECT_NEAR(static_cast<double>(sound->Frames()), static_cast<double>(kSongFrames), 10) << name;
        // The sweep is at 380 Hz after two seconds.
        EXPECT_NEAR(media::Amplitude(sound->samples, 2 * 44100 - 1000, 2000, 380), 0.4, 0.05) << name;
        EXPECT_EQ(sound->samples[100000], sound->samples[100001]) << name;
    }
}

TEST(GstreamerDecode, ImpossibleRatesAreRefusedSoon) {
    media::Scratch scratch;
    const Samples tone = media::Tone(440, 1, 0.5);
    for (const std::uint32_t rate : {1U, 2000000000U, 0x7700AC44U}) {
        const std::chrono::nanoseconds before = ProcessWork();
        EXPECT_FALSE(DecodeFile(scratch.Write("odd.wav", media::WavBytes(tone, rate)), kUnlimited)) << rate;
        EXPECT_LT(ProcessWork() - before, std::chrono::seconds(2)) << rate;
    }
    for (const std::uint32_t rate : {1000U, 44099U, 192000U, 768000U}) {
        const auto sound = DecodeFile(scratch.Write("odd.wav", media::WavBytes(tone, rate)), kUnlimited);
        ASSERT_TRUE(sound) << rate;
        EXPECT_NEAR(static_cast<double>(sound->Frames()), 44100.0 * 44100 / rate, 50) << rate;
    }
}

struct LengthRow {
    const char* name;
    std::int64_t frames;
    std::int64_t tolerance;
};

TEST(GstreamerDecode, LengthIsThatOfTheDecodedFile) {
    // clang-format off
    const LengthRow rows[] = {
        {"song.wav",         kSongFrames, 0},
        {"song.flac",        kSongFrames, 0},
        {"mono48k.wav",      kSongFrames, 0},
        {"mono8k.wav",       kSongFrames, 0},
        {"cbr.mp3",          kSongFrames, kPadding},
        {"cbr_noheader.mp3", kSongFrames, kPadding},
        {"vbr.mp3",          kSongFrames, kPadding},
        {"vbr_noheader.mp3", kSongFrames, kPadding},
        {"with_cover.mp3",   kSongFrames, kPadding},
        {"song.ogg",         kSongFrames, 2},
        {"song.wma",         kSongFrames, kPadding},
        {"song.m4a",         kSongFrames, kPadding},
        {"film.mp4",         2 * 44100,   kPadding},
        {"truncated.mp3",    4 * 44100,   kPadding},
        {"truncated.wav",    4 * 44100,   kPadding},
        {"truncated.flac",   4 * 44100,   2 * 44100},
    };
    // clang-format on
    for (const LengthRow& row : rows) {
        const auto bytes = ProbeLength(MadeFile(row.name));
        const auto sound = DecodeFile(MadeFile(row.name), kUnlimited);
        ASSERT_TRUE(bytes && sound) << row.name;
        EXPECT_LE(std::abs(*bytes / 4 - row.frames), row.tolerance) << row.name << " " << *bytes / 4;
        EXPECT_LE(std::abs(*bytes / 4 - sound->Frames()), 441) << row.name;
    }
}

TEST(GstreamerDecode, LengthOfATruncatedFileIsWhatIsLeftOfIt) {
    const auto bytes = ProbeLength(MadeFile("truncated.flac"));
    const auto sound = DecodeFile(MadeFile("truncated.flac"), kUnlimited);
    ASSERT_TRUE(bytes && sound);
    EXPECT_EQ(*bytes, sound->Bytes());
}

TEST(GstreamerDecode, WhatIsNoSoundIsRefusedWithAReason) {
    media::Scratch scratch;
    std::string noise(50000, '\0');
    std::uint32_t state = 12345;
    for (char& byte : noise) {
        state = state * 1664525 + 1013904223;
        byte = static_cast<char>(state >> 24);
    }
    const QString pipe = scratch.Path() + QStringLiteral("/pipe.mp3");
    ASSERT_EQ(mkfifo(pipe.toUtf8().constData(), 0600), 0);
    const QString paths[] = {
        pipe,
        QString(),
        scratch.Path() + QStringLiteral("/missing.mp3"),
        scratch.Path(),
        QStringLiteral("/dev/zero"),
        scratch.Write("empty.mp3", ""),
        scratch.Write("text.mp3", "This is a letter, not a song.\nIt goes on for a while.\n"),
        scratch.Write("noise.mp3", noise),
        scratch.Write("silent.wav", media::WavBytes({})),
        scratch.Write("header.wav", media::WavBytes(media::Tone(440, 1, 0.5)).substr(0, 30)),
        scratch.Write("list.mp3", "#EXTM3U\n#EXT-X-TARGETDURATION:5\n#EXTINF:5,\nhttp://127.0.0.1:9/a.ts\n"),
        MadeFile("truncated.m4a"),
        MadeFile("pictures_only.mp4"),
        MadeFile("cover.png"),
    };
    for (const QString& path : paths) {
        QString reason;
        const std::chrono::nanoseconds before = ProcessWork();
        EXPECT_FALSE(DecodeFile(path, kUnlimited, &reason)) << path.toStdString();
        EXPECT_FALSE(reason.isEmpty()) << path.toStdString();
        EXPECT_FALSE(ProbeLength(path)) << path.toStdString();
        EXPECT_LT(ProcessWork() - before, std::chrono::seconds(5)) << path.toStdString();
    }
}

TEST(GstreamerDecode, DamageBehindTheFirstFramesDoesNotHang) {
    media::Scratch scratch;
    const auto sound = DecodeFile(scratch.Write("damaged.flac", media::DamagedSong()), kUnlimited);
    ASSERT_TRUE(sound);
    EXPECT_GT(sound->Frames(), 44100);
    EXPECT_LE(sound->Frames(), kSongFrames + 44100);
}

TEST(GstreamerDecode, AnyNameOnDiskIsOpened) {
    media::Scratch scratch;
    const QByteArray names[] = {"#1 50% off?.wav", "%41.wav",      "a|b\nc.wav",   "caf\xC3\xA9.wav",
                                "caf\xE9.wav",     "\xFF\xFE.wav", " blank .wav ", "a\\b.wav",
                                "\"'&.wav",        "uri:x.wav"};
    for (const QByteArray& name : names) {
        const auto sound = DecodeFile(scratch.WriteTone(name, 440, 0.2), kUnlimited);
        ASSERT_TRUE(sound) << name.toPercentEncoding().toStdString();
        EXPECT_EQ(sound->Frames(), 8820) << name.toPercentEncoding().toStdString();
    }
}

std::array<float, 512> SpectrumOfTone(double frequency, double amplitude) {
    Samples tone = media::Tone(frequency, 0.1, amplitude);
    tone.resize(kSpectrumFrames * 2);
    return SpectrumOf(std::span<const std::int16_t, kSpectrumFrames * 2>(tone));
}

TEST(GstreamerSpectrum, SineOnABinStandsAtItsAmplitude) {
    for (const int bin : {5, 23, 100, 400, 510}) {
        const auto spectrum = SpectrumOfTone(bin * 44100.0 / 1024, 1.0);
        const auto at = static_cast<std::size_t>(bin);
        EXPECT_NEAR(spectrum[at], 1.0, 0.005) << bin;
        // The window spreads half of it to each neighbour and nothing further.
        EXPECT_NEAR(spectrum[at - 1], 0.5, 0.01) << bin;
        EXPECT_LT(spectrum[at - 4], 0.005) << bin;
    }
    EXPECT_NEAR(SpectrumOfTone(50 * 44100.0 / 1024, 0.25)[50], 0.25, 0.002);
}

TEST(GstreamerSpectrum, SilenceIsZeroAndChannelsAreAveraged) {
    Samples samples(kSpectrumFrames * 2, 0);
    for (const float magnitude : SpectrumOf(std::span<const std::int16_t, kSpectrumFrames * 2>(samples))) {
        EXPECT_EQ(magnitude, 0.0F);
    }
    samples = media::Tone(40 * 44100.0 / 1024, 0.1, 0.8);
    samples.resize(kSpectrumFrames * 2);
    for (std::size_t i = 1; i < samples.size(); i += 2) {
        samples[i] = 0;
    }
    EXPECT_NEAR(SpectrumOf(std::span<const std::int16_t, kSpectrumFrames * 2>(samples))[40], 0.4, 0.003);
}

} // namespace

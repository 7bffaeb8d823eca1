// Tests of the theme sounds' own decoder, compared with the pipeline's.
#include "platform/gstreamer/decode_mp3.h"

#include "platform/gstreamer_media.h"

#include <algorithm>
#include <cstdlib>

namespace {

using media::MadeFile;

constexpr double kUnlimited = 100.0;

// The greatest difference between a second of one sound and the same second of another one that is this many
// frames later.
int Difference(const DecodedSound& sound, const DecodedSound& other, std::size_t behind) {
    int farthest = 0;
    for (std::size_t i = 0; i < std::size_t{2} * 44100; ++i) {
        farthest = std::max(farthest, std::abs(sound.samples[i] - other.samples[i + 2 * behind]));
    }
    return farthest;
}

TEST(Mp3Decoding, GivesThePipelinesSamplesWithoutTheSilenceInFront) {
    for (const char* name : {"cbr.mp3", "vbr.mp3", "with_cover.mp3"}) {
        const auto direct = DecodeMp3(MadeFile(name), kUnlimited);
        const auto pipeline = DecodeFile(MadeFile(name), kUnlimited);
        ASSERT_TRUE(direct && pipeline) << name;
        std::size_t behind = 0;
        while (behind < 2000 && Difference(*direct, *pipeline, behind) > 2) {
            ++behind;
        }
        EXPECT_LT(behind, 2000U) << name;
    }
}

TEST(Mp3Decoding, IsCutAtTheLimit) {
    EXPECT_EQ(DecodeMp3(MadeFile("cbr.mp3"), 0.25)->Frames(), 11025);
}

TEST(Mp3Decoding, DamageEndsTheSoundThere) {
    const auto sound = DecodeMp3(MadeFile("truncated.mp3"), kUnlimited);
    ASSERT_TRUE(sound);
    EXPECT_LE(std::abs(sound->Frames() - std::int64_t{4} * 44100), 4410);
}

TEST(Mp3Decoding, WhateverElseIsLeftToThePipeline) {
    media::Scratch scratch;
    for (const QString& path :
         {MadeFile("song.wav"), MadeFile("song.flac"), MadeFile("song.m4a"), MadeFile("slow.mp3"),
          scratch.Path(), QStringLiteral("/dev/zero"), scratch.Path() + QStringLiteral("/missing.mp3"),
          scratch.Write("text.mp3", "no sound at all\n"), scratch.Write("empty.mp3", ""),
          scratch.Write("tag.mp3", "ID3 and nothing behind it"), scratch.Write("sync.mp3", "\xFF\xFB\x90")}) {
        EXPECT_FALSE(DecodeMp3(path, kUnlimited)) << path.toStdString();
    }
}

} // namespace

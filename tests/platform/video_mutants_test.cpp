// Tests of damaged films: they end early or are refused, whatever bytes they hold.
#include "platform/gstreamer/opening.h"
#include "platform/gstreamer/video_playback.h"
#include "platform/gstreamer_media.h"

#include <random>

namespace {

constexpr std::int64_t kPeriod = kFramesPerSecond / 100;

struct Opened {
    std::unique_ptr<VideoReader> reader;
    QString reason;
};

// Overwrites, removes and repeats some stretches of bytes. The same number gives the same damage.
std::string Damaged(std::string bytes, unsigned number) {
    std::mt19937 random(number);
    const auto upTo = [&](std::size_t most) { return most == 0 ? 0 : random() % most; };
    for (std::size_t left = 1 + upTo(12); left > 0 && bytes.size() > 100; --left) {
        const std::size_t at = upTo(number % 3 == 0 ? 400 : bytes.size());
        const std::size_t length = std::min(bytes.size() - at, 1 + upTo(1 + upTo(2000)));
        switch (upTo(4)) {
        case 0:
            bytes.erase(at, length);
            break;
        case 1:
            bytes.insert(at, bytes.substr(at, length));
            break;
        case 2:
            bytes[at] = static_cast<char>(upTo(2) * 255);
            break;
        default:
            for (std::size_t i = 0; i < length; ++i) {
                bytes[at + i] = static_cast<char>(random());
            }
        }
    }
    return bytes;
}

// Plays ten times as fast as usual. Returns the milliseconds of film until the end, at most a minute.
int PlayedUntilEnd(VideoPlayback& playback) {
    std::vector<std::int32_t> sums(static_cast<std::size_t>(kPeriod) * 2);
    std::int64_t frame = 0;
    playback.Run();
    while (frame < kFramesPerSecond * 60 && playback.PositionAt(frame) < playback.Length()) {
        playback.Mix(sums, frame);
        frame += kPeriod;
        playback.TakeDue(frame);
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return static_cast<int>(frame * 1000 / kFramesPerSecond);
}

// VANTORIX_MUTANTS: how many of each film, 4 if it is not set.
TEST(VideoMutants, EndOrAreRefusedInTime) {
    const char* wanted = std::getenv("VANTORIX_MUTANTS");
    const unsigned count = wanted != nullptr ? static_cast<unsigned>(std::atoi(wanted)) : 4;
    const media::Scratch scratch;
    media::Scratch folder;
    int refused = 0;
    int played = 0;
    int longest = 0;
    for (const char* name : {"film25.avi", "film2997.mpg", "film50.avi", "film_mpeg1.mpg", "film_mono.mp4"}) {
        const std::string film = media::BytesOf(media::MadeFile(name));
        for (unsigned number = 0; number < count; ++number) {
            SCOPED_TRACE(std::string(name) + ", damage " + std::to_string(number));
            const QString path = folder.Write("film", Damaged(film, number));
            const double start = media::SecondsNow();
            std::optional<Opened> file =
                WithinLimits<Opened>({.looks = 50}, [path](const std::atomic<bool>& abandoned) {
                    Opened opened;
                    opened.reader = VideoReader::Open(path, opened.reason, abandoned);
                    return opened;
                });
            EXPECT_LT(media::SecondsNow() - start, 6);
            if (!file || !file->reader) {
                ++refused;
                continue;
            }
            ++played;
            VideoPlayback playback(std::move(file->reader));
            const std::int64_t stated = playback.Length();
            longest = std::max(longest, PlayedUntilEnd(playback));
            EXPECT_LT(stated, kFramesPerSecond * 3600 * 24 * 365);
            playback.BeginSeek(kFramesPerSecond / 2);
            playback.Seek();
            playback.TakeDue(0);
        }
    }
    std::printf("%d played, at most %d ms; %d refused\n", played, longest, refused);
    EXPECT_GT(played, refused);
    EXPECT_LT(longest, 60000);
}

} // namespace

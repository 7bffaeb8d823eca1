// The running of one video: its clock, its sound, and which picture is due.
#pragma once

#include "platform/gstreamer/mixer.h"
#include "platform/gstreamer/video_reader.h"

#include <array>
#include <mutex>

struct VideoCounts {
    std::int64_t shown = 0;
    std::int64_t dropped = 0;
};

// The video's clock is the sound output: a picture is due when the sound of its time is heard. A video
// without sound runs in silence on the same clock. Times are frames of the sound, as in VideoReader. Mix is
// called on the output's thread, Seek on any thread, everything else on the event thread.
class VideoPlayback : public SoundSource {
public:
    explicit VideoPlayback(std::unique_ptr<VideoReader> reader);

    void Run();
    void Halt();
    // The length that the file states, otherwise the latest end of a picture or of sound so far.
    std::int64_t Length();
    // The time that is heard at this frame of the output; the length once the file has ended.
    std::int64_t PositionAt(std::int64_t heardFrame);

    // Moves to another time, in two steps: BeginSeek sets the target at once, Seek does the work, which a
    // slow disk can delay. Returns true when the caller has to see to it that Seek is called.
    bool BeginSeek(std::int64_t frame);
    // Seeks until the last target is reached, or until Abandon.
    void Seek();
    // Makes a running Seek end soon.
    void Abandon() { abandoned_ = true; }

    // The picture that has become due since the last call. A picture whose time is over is dropped.
    std::optional<VideoPicture> TakeDue(std::int64_t heardFrame);
    // Frames from the heard one to the next picture; nothing when no picture will come before the next
    // command.
    std::optional<std::int64_t> NextDueIn(std::int64_t heardFrame);
    QSize Shape();
    VideoCounts Counts();

    void Mix(std::span<std::int32_t> sums, std::int64_t firstFrame) override;

private:
    // What one call of Mix has done: output frames [first, first + count) are those from `position` on, as
    // far as the video advanced.
    struct Period {
        std::int64_t first = 0;
        std::int64_t count = 0;
        std::int64_t position = 0;
        std::int64_t advanced = 0;
    };

    std::int64_t KnownLength();
    std::int64_t HeardAt(std::int64_t heardFrame) const;
    bool IsHeard(std::int64_t heardFrame) const;
    bool IsDue(const TimedPicture& picture, std::int64_t now) const;
    void CollectPictures(std::int64_t now);
    std::int64_t Take(std::span<std::int32_t> sums);
    bool FindSound();
    std::int64_t TakeSound(std::span<std::int32_t> sums);
    bool MayGoOnInSilence(std::int64_t missing);
    void Remember(const Period& period);
    void LookForEnd();

    std::mutex mutex_;
    const std::unique_ptr<VideoReader> reader_;
    const std::optional<std::int64_t> statedLength_;
    bool running_ = false;
    bool seeking_ = false;
    bool ended_ = false;
    std::int64_t position_ = 0;
    std::int64_t seekTarget_ = 0;
    std::atomic<bool> abandoned_{false};
    // Counts the targets, so that Seek notices a new one.
    int targets_ = 0;
    // The latest end of a picture or of sound so far.
    std::int64_t lastEnd_ = 0;

    PcmBlock sound_;
    std::size_t soundTaken_ = 0;
    // Output frames without sound that should have been there.
    std::int64_t starved_ = 0;

    // The next picture, and the one that is due but has not been taken yet.
    std::optional<TimedPicture> next_;
    std::optional<TimedPicture> due_;
    // The first picture after opening and after a seek is shown even if its time is not the clock's.
    bool showFirst_ = true;
    bool firstAwaitsSound_ = false;
    bool dueIsFirst_ = false;
    QSize shape_;
    VideoCounts counts_;

    std::array<Period, 256> periods_{};
    std::size_t periodCount_ = 0;
};

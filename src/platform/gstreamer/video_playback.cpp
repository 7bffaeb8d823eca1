// Pictures that follow the sound that is heard.
#include "platform/gstreamer/video_playback.h"

#include <algorithm>
#include <utility>

namespace {

// Time stamps of sound that is written without a gap may differ by this much from the count of its frames.
constexpr std::int64_t kTolerance = kFramesPerSecond / 50;
// The time for which the video waits for late sound while pictures are ready; then it continues in silence. A
// badly interleaved file has its sound after the pictures, and reading would not continue before they are
// taken.
constexpr std::int64_t kLongestWait = kFramesPerSecond * 3 / 10;
// The time after which a file that delivers nothing counts as ended.
constexpr std::int64_t kGivenUpAfter = kFramesPerSecond * 5;
// A time stamp further ahead than this is damaged. The sound is played where it is, the picture is dropped.
constexpr std::int64_t kFurthestAhead = kFramesPerSecond * 60;
// Pictures that nobody takes are dropped when the sound is this far ahead, because reading would stop.
constexpr std::int64_t kForgottenAfter = kFramesPerSecond / 2;

} // namespace

VideoPlayback::VideoPlayback(std::unique_ptr<VideoReader> reader)
    : reader_(std::move(reader)), statedLength_(reader_->StatedLength()), shape_(reader_->Shape()) {}

void VideoPlayback::Run() {
    const std::lock_guard lock(mutex_);
    running_ = true;
}

void VideoPlayback::Halt() {
    const std::lock_guard lock(mutex_);
    running_ = false;
}

std::int64_t VideoPlayback::KnownLength() {
    return statedLength_.value_or(lastEnd_);
}

std::int64_t VideoPlayback::Length() {
    const std::lock_guard lock(mutex_);
    return KnownLength();
}

std::int64_t VideoPlayback::PositionAt(std::int64_t heardFrame) {
    const std::lock_guard lock(mutex_);
    return ended_ ? KnownLength() : std::clamp<std::int64_t>(HeardAt(heardFrame), 0, KnownLength());
}

// Before the first period that is known, nothing of this video was heard yet.
std::int64_t VideoPlayback::HeardAt(std::int64_t heardFrame) const {
    const std::size_t kept = std::min(periodCount_, periods_.size());
    for (std::size_t back = 1; back <= kept; ++back) {
        const Period& period = periods_[(periodCount_ - back) % periods_.size()];
        if (heardFrame >= period.first || back == kept) {
            return period.position + std::clamp<std::int64_t>(heardFrame - period.first, 0, period.advanced);
        }
    }
    return position_;
}

// Whether sound of the time since the last seek is heard.
bool VideoPlayback::IsHeard(std::int64_t heardFrame) const {
    return periodCount_ > periods_.size() || (periodCount_ > 0 && heardFrame >= periods_.front().first);
}

bool VideoPlayback::BeginSeek(std::int64_t frame) {
    const std::lock_guard lock(mutex_);
    const bool untouched = frame == 0 && position_ == 0 && !seeking_ && !ended_;
    if (untouched) {
        return false;
    }
    position_ = frame;
    seekTarget_ = frame;
    ++targets_;
    periodCount_ = 0;
    next_.reset();
    due_.reset();
    sound_ = {};
    soundTaken_ = 0;
    starved_ = 0;
    ended_ = false;
    showFirst_ = true;
    firstAwaitsSound_ = running_;
    return !std::exchange(seeking_, true);
}

void VideoPlayback::Seek() {
    std::unique_lock lock(mutex_);
    for (int done = targets_ - 1; done != targets_ && !abandoned_;) {
        done = targets_;
        const std::int64_t target = seekTarget_;
        lock.unlock();
        const bool found = reader_->Seek(target, abandoned_);
        lock.lock();
        ended_ = !found;
    }
    seeking_ = false;
}

std::optional<VideoPicture> VideoPlayback::TakeDue(std::int64_t heardFrame) {
    const std::lock_guard lock(mutex_);
    const std::int64_t now = HeardAt(heardFrame);
    firstAwaitsSound_ = firstAwaitsSound_ && running_ && !IsHeard(heardFrame);
    CollectPictures(now);
    if (!due_) {
        return std::nullopt;
    }
    const TimedPicture picture = std::move(*std::exchange(due_, std::nullopt));
    if (picture.end <= now && !dueIsFirst_ && !ended_) {
        ++counts_.dropped;
        reader_->SkipAfter(picture, now - picture.begin);
        return std::nullopt;
    }
    ++counts_.shown;
    shape_ = picture.picture.shape;
    return picture.picture;
}

// A picture that is not the first is due at its time. After a seek the output still plays what was mixed
// before it, so the first picture is due when that has been heard.
bool VideoPlayback::IsDue(const TimedPicture& picture, std::int64_t now) const {
    if (!showFirst_) {
        return picture.begin <= now;
    }
    return !firstAwaitsSound_ || position_ - picture.begin > kForgottenAfter;
}

// Keeps the latest picture that is due.
void VideoPlayback::CollectPictures(std::int64_t now) {
    while (!seeking_) {
        next_ = next_ ? std::move(next_) : reader_->NextPicture();
        if (!next_) {
            return;
        }
        if (next_->begin > position_ + kFurthestAhead) {
            next_.reset();
            continue;
        }
        lastEnd_ = std::max(lastEnd_, next_->end);
        if (!IsDue(*next_, now)) {
            return;
        }
        counts_.dropped += due_ ? 1 : 0;
        dueIsFirst_ = std::exchange(showFirst_, false);
        due_ = std::exchange(next_, std::nullopt);
    }
}

std::optional<std::int64_t> VideoPlayback::NextDueIn(std::int64_t heardFrame) {
    const std::lock_guard lock(mutex_);
    const bool isHalted = !running_ && !showFirst_;
    const bool noneLeft = !seeking_ && !next_ && !due_ && reader_->PicturesEnded();
    if (ended_ || isHalted || noneLeft) {
        return std::nullopt;
    }
    constexpr std::int64_t kLookAgain = kFramesPerSecond / 250;
    const bool isKnown = next_ && running_ && !showFirst_;
    return isKnown ? std::max<std::int64_t>(next_->begin - HeardAt(heardFrame), 0) : kLookAgain;
}

QSize VideoPlayback::Shape() {
    const std::lock_guard lock(mutex_);
    return shape_;
}

VideoCounts VideoPlayback::Counts() {
    const std::lock_guard lock(mutex_);
    return counts_;
}

void VideoPlayback::Mix(std::span<std::int32_t> sums, std::int64_t firstFrame) {
    const std::lock_guard lock(mutex_);
    if (seeking_) {
        return;
    }
    const std::int64_t before = position_;
    const bool plays = running_ && !ended_;
    const std::int64_t advanced = plays ? Take(sums) : 0;
    Remember({firstFrame, static_cast<std::int64_t>(sums.size() / 2), before, advanced});
    if (plays) {
        CollectPictures(position_ - kForgottenAfter);
        LookForEnd();
    }
}

void VideoPlayback::Remember(const Period& period) {
    periods_[periodCount_ % periods_.size()] = period;
    ++periodCount_;
}

// Returns the number of frames by which the video advances.
std::int64_t VideoPlayback::Take(std::span<std::int32_t> sums) {
    const auto wanted = static_cast<std::int64_t>(sums.size() / 2);
    std::int64_t done = 0;
    while (done < wanted) {
        if (FindSound()) {
            const std::int64_t taken = TakeSound(sums.subspan(static_cast<std::size_t>(done) * 2));
            done += taken;
            position_ += taken;
            starved_ = 0;
        } else if (reader_->SoundEnded() || MayGoOnInSilence(wanted - done)) {
            position_ += wanted - done;
            done = wanted;
        } else {
            return done;
        }
    }
    return done;
}

// Makes `sound_` the block at the position, or one after it. Returns false when none is decoded yet.
bool VideoPlayback::FindSound() {
    for (;;) {
        const bool used = soundTaken_ >= sound_.samples.size();
        const std::int64_t end = sound_.position + sound_.Frames();
        if (!used && (soundTaken_ > 0 || end > position_)) {
            return true;
        }
        std::optional<PcmBlock> block = reader_->NextSound();
        if (!block) {
            return false;
        }
        sound_ = std::move(*block);
        if (sound_.position > position_ + kFurthestAhead) {
            sound_.position = position_;
        }
        lastEnd_ = std::max(lastEnd_, sound_.position + sound_.Frames());
        const std::int64_t late = position_ - sound_.position;
        const std::int64_t skipped = late > kTolerance ? std::min(late, sound_.Frames()) : 0;
        soundTaken_ = static_cast<std::size_t>(skipped) * 2;
    }
}

// Adds the next frames of the block, or leaves silence up to a block that begins later.
std::int64_t VideoPlayback::TakeSound(std::span<std::int32_t> sums) {
    const auto room = static_cast<std::int64_t>(sums.size() / 2);
    const std::int64_t gap = sound_.position - position_;
    if (soundTaken_ == 0 && gap > kTolerance) {
        return std::min(room, gap);
    }
    const std::size_t count = std::min(sums.size(), sound_.samples.size() - soundTaken_);
    for (std::size_t i = 0; i < count; ++i) {
        sums[i] += sound_.samples[soundTaken_ + i];
    }
    soundTaken_ += count;
    return static_cast<std::int64_t>(count / 2);
}

// Returns true when the sound has been missing for so long that the video continues without it.
bool VideoPlayback::MayGoOnInSilence(std::int64_t missing) {
    starved_ += missing;
    CollectPictures(position_);
    if (starved_ > kGivenUpAfter) {
        ended_ = !next_;
        return true;
    }
    return next_ && starved_ > kLongestWait;
}

void VideoPlayback::LookForEnd() {
    const bool silent = soundTaken_ >= sound_.samples.size() && reader_->SoundEnded();
    const bool over = silent && !next_ && reader_->PicturesEnded() && position_ >= lastEnd_;
    const bool failed = !next_ && (silent || starved_ > 0) && reader_->HasFailed();
    ended_ = ended_ || over || failed;
}

// Decoding ahead, looping without a gap, and exact positions.
#include "platform/gstreamer/audio_stream.h"

#include "platform/gstreamer/length_scan.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

// Half a second is decoded ahead, which is far more than a seek to the beginning takes.
constexpr std::int64_t kAhead = kFramesPerSecond / 2;
// The time limit of each of the two ways to find the length when a file is opened.
constexpr milliseconds kLengthBudget{300};
constexpr milliseconds kReadWait{100};
// The number of mixed frames that are kept for the spectrum: about six seconds, a power of two.
constexpr std::int64_t kKept = 1 << 18;

std::size_t SlotOf(std::int64_t outputFrame) {
    return static_cast<std::size_t>(outputFrame & (kKept - 1)) * 2;
}

} // namespace

struct AudioStream::OpenedFile {
    std::unique_ptr<Decoder> decoder;
    ScannedLength length;
};

AudioStream::OpenedFile AudioStream::OpenFile(const QString& path, const std::atomic<bool>& abandoned) {
    MeasuredFile file = OpenAndMeasure(path, kLengthBudget, abandoned);
    ScannedLength length{file.frames.value_or(0), true};
    if (file.decoder != nullptr && length.frames == 0) {
        length = ScanLength(path, abandoned, steady_clock::now() + kLengthBudget);
    }
    return {std::move(file.decoder), length};
}

std::unique_ptr<AudioStream> AudioStream::Open(const QString& path, bool loops, const OpeningLimits& limits) {
    std::optional<OpenedFile> file = WithinLimits<OpenedFile>(
        limits, [path](const std::atomic<bool>& abandoned) { return OpenFile(path, abandoned); });
    if (!file || file->decoder == nullptr) {
        return nullptr;
    }
    try {
        return Start(path, loops, std::move(*file));
    } catch (const std::system_error&) {
        return nullptr; // there are no more threads
    }
}

std::unique_ptr<AudioStream> AudioStream::Start(const QString& path, bool loops, OpenedFile file) {
    // A file with sound but of unknown length counts as one second.
    const std::int64_t frames = file.length.frames > 0 ? file.length.frames : kFramesPerSecond;
    std::unique_ptr<AudioStream> stream(new AudioStream(path, loops, std::move(file.decoder), frames));
    if (!file.length.complete) {
        stream->lengthThread_ = std::thread([self = stream.get()] { self->FindLength(); });
    }
    return stream;
}

AudioStream::AudioStream(const QString& path, bool loops, std::unique_ptr<Decoder> decoder,
                         std::int64_t length)
    : path_(path), loops_(loops), length_(length), handedOut_(static_cast<std::size_t>(kKept) * 2),
      decoder_(std::move(decoder)), decodeThread_([this] { DecodeAhead(); }) {}

AudioStream::~AudioStream() {
    {
        const std::lock_guard lock(mutex_);
        quit_ = true;
    }
    wake_.notify_all();
    decodeThread_.join();
    if (lengthThread_.joinable()) {
        lengthThread_.join();
    }
}

void AudioStream::Play(bool restart) {
    const std::lock_guard lock(mutex_);
    const bool atEnd = complete_ && queue_.empty();
    if (restart || atEnd) {
        GoTo(0);
    }
    playing_ = true;
}

bool AudioStream::Pause() {
    const std::lock_guard lock(mutex_);
    return std::exchange(playing_, false);
}

void AudioStream::Stop() {
    const std::lock_guard lock(mutex_);
    playing_ = false;
    GoTo(0);
}

bool AudioStream::IsPlaying() {
    const std::lock_guard lock(mutex_);
    return playing_;
}

std::int64_t AudioStream::Length() {
    const std::lock_guard lock(mutex_);
    return length_;
}

std::int64_t AudioStream::Position() {
    const std::lock_guard lock(mutex_);
    return queue_.empty() ? position_ : queue_.front().position + static_cast<std::int64_t>(taken_ / 2);
}

bool AudioStream::SetPosition(std::int64_t frame) {
    const std::lock_guard lock(mutex_);
    if (frame < 0 || frame >= length_) {
        return false;
    }
    GoTo(frame);
    return true;
}

// Drops what was decoded ahead. The decoding thread continues at the new position.
void AudioStream::GoTo(std::int64_t frame) {
    queue_.clear();
    queued_ = 0;
    taken_ = 0;
    position_ = frame;
    complete_ = false;
    seekWanted_ = true;
    seekTarget_ = frame;
    wake_.notify_all();
}

void AudioStream::Mix(std::span<std::int32_t> sums, std::int64_t firstFrame) {
    const std::lock_guard lock(mutex_);
    const std::size_t frames = playing_ ? TakeFrames(sums, firstFrame) : 0;
    for (std::size_t i = frames; i < sums.size() / 2; ++i) {
        Remember(firstFrame + static_cast<std::int64_t>(i), 0, 0);
    }
    if (playing_ && complete_ && queue_.empty()) {
        playing_ = false;
    }
    if (queued_ < kAhead) {
        wake_.notify_all();
    }
}

std::size_t AudioStream::TakeFrames(std::span<std::int32_t> sums, std::int64_t firstFrame) {
    std::size_t done = 0;
    while (done < sums.size() && !queue_.empty()) {
        const PcmBlock& block = queue_.front();
        const std::size_t count = std::min(sums.size() - done, block.samples.size() - taken_);
        for (std::size_t i = 0; i < count; i += 2) {
            const std::int16_t left = block.samples[taken_ + i];
            const std::int16_t right = block.samples[taken_ + i + 1];
            sums[done + i] += left;
            sums[done + i + 1] += right;
            Remember(firstFrame + static_cast<std::int64_t>((done + i) / 2), left, right);
        }
        done += count;
        taken_ += count;
        queued_ -= static_cast<std::int64_t>(count / 2);
        position_ = block.position + static_cast<std::int64_t>(taken_ / 2);
        if (taken_ == block.samples.size()) {
            queue_.pop_front();
            taken_ = 0;
        }
    }
    return done / 2;
}

void AudioStream::Remember(std::int64_t frame, std::int16_t left, std::int16_t right) {
    handedOut_[SlotOf(frame)] = left;
    handedOut_[SlotOf(frame) + 1] = right;
}

std::array<std::int16_t, kSpectrumFrames * 2> AudioStream::HandedOutBefore(std::int64_t end) {
    std::array<std::int16_t, kSpectrumFrames * 2> frames{};
    const std::lock_guard lock(mutex_);
    for (std::size_t i = 0; i < kSpectrumFrames; ++i) {
        const std::int64_t frame = end - static_cast<std::int64_t>(kSpectrumFrames - i);
        frames[2 * i] = handedOut_[SlotOf(frame)];
        frames[2 * i + 1] = handedOut_[SlotOf(frame) + 1];
    }
    return frames;
}

void AudioStream::DecodeAhead() {
    while (WaitForWork()) {
        std::unique_lock lock(mutex_);
        if (seekWanted_) {
            seekWanted_ = false;
            const std::int64_t target = seekTarget_;
            lock.unlock();
            SeekDecoder(target);
        } else {
            lock.unlock();
            ReadBlock();
        }
    }
}

bool AudioStream::WaitForWork() {
    std::unique_lock lock(mutex_);
    wake_.wait(lock, [this] { return quit_ || seekWanted_ || (!complete_ && queued_ < kAhead); });
    return !quit_;
}

void AudioStream::SeekDecoder(std::int64_t frame) {
    if (decoder_ == nullptr || !decoder_->Seek(frame)) {
        QString reason;
        decoder_ = Decoder::OpenWithin(OpeningLimits{}, path_, reason, &quit_);
        if (decoder_ != nullptr && frame > 0 && !decoder_->Seek(frame)) {
            decoder_.reset();
        }
    }
    passStart_ = frame;
    decoded_ = frame;
    damageEnd_ = 0;
}

void AudioStream::ReadBlock() {
    if (decoder_ == nullptr || decoded_ < damageEnd_) {
        AppendSilence(decoder_ == nullptr ? Length() : damageEnd_);
        return;
    }
    PcmBlock block;
    switch (decoder_->Read(block, kReadWait)) {
    case Decoder::Outcome::kFrames:
        decoded_ = block.position + block.Frames();
        Append(std::move(block));
        break;
    case Decoder::Outcome::kNothingYet:
        break;
    case Decoder::Outcome::kEnd:
        EndOfPass();
        break;
    case Decoder::Outcome::kFailed:
        SkipDamage();
        break;
    }
}

// Damage at which the decoder gives up becomes a second of silence. A file that can no longer be read at all,
// for instance on a drive that was unplugged, continues as silence to its length, so that the jukebox reaches
// the next track.
void AudioStream::SkipDamage() {
    QString reason;
    damageEnd_ = decoded_ + kFramesPerSecond;
    decoder_ = damageEnd_ < Length() ? Decoder::OpenWithin(OpeningLimits{}, path_, reason, &quit_) : nullptr;
    if (decoder_ != nullptr && !decoder_->Seek(damageEnd_)) {
        decoder_.reset();
    }
}

// The file ends where decoding ends, whatever its header says.
void AudioStream::EndOfPass() {
    {
        const std::lock_guard lock(mutex_);
        if (seekWanted_) {
            return;
        }
        if (decoded_ > passStart_ && !IsSameLength(decoded_, length_)) {
            length_ = decoded_;
        }
        if (!loops_) {
            complete_ = true;
            return;
        }
    }
    const bool nothing = decoded_ == 0;
    SeekDecoder(0);
    if (nothing) {
        decoder_.reset();
    }
}

void AudioStream::AppendSilence(std::int64_t end) {
    const std::int64_t frames = std::min(end - decoded_, kFramesPerSecond / 10);
    if (frames <= 0) {
        EndOfPass();
        return;
    }
    PcmBlock block;
    block.samples.resize(static_cast<std::size_t>(frames) * 2);
    block.position = decoded_;
    decoded_ += frames;
    Append(std::move(block));
}

// Drops blocks that were decoded for a position that a seek has left in the meantime.
void AudioStream::Append(PcmBlock block) {
    const std::lock_guard lock(mutex_);
    if (!seekWanted_) {
        queued_ += block.Frames();
        queue_.push_back(std::move(block));
    }
}

void AudioStream::FindLength() {
    const ScannedLength length = ScanLength(path_, quit_, steady_clock::time_point::max());
    const std::lock_guard lock(mutex_);
    if (length.complete && length.frames > 0) {
        length_ = length.frames;
    }
}

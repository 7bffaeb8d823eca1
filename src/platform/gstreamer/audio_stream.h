// One stream of the audio library: a thread decodes a file ahead, the mixer takes it frame by frame.
#pragma once

#include "platform/gstreamer/decoder.h"
#include "platform/gstreamer/mixer.h"
#include "platform/gstreamer/pcm.h"
#include "platform/gstreamer/spectrum.h"

#include <QString>

#include <array>
#include <atomic>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>

// Positions and lengths are frames of the file. Mix is called on the output's thread, everything else on the
// event thread.
class AudioStream : public SoundSource {
public:
    // Returns null when the file does not open (see Decoder::Open) or not within the limits, and when the
    // system has no more threads. The length is exact. For a long file that does not state it, it is an
    // estimate that becomes exact within a second.
    static std::unique_ptr<AudioStream> Open(const QString& path, bool loops,
                                             const OpeningLimits& limits = {});
    // Waits for the stream's threads, which a disk that does not answer can block.
    ~AudioStream() override;
    AudioStream(const AudioStream&) = delete;
    AudioStream& operator=(const AudioStream&) = delete;

    void Play(bool restart);
    // Returns false when the stream was not playing.
    bool Pause();
    void Stop();
    bool IsPlaying();
    std::int64_t Length();
    std::int64_t Position();
    bool SetPosition(std::int64_t frame);
    // The last frames mixed before the output's frame `end`. Silence is zeros.
    std::array<std::int16_t, kSpectrumFrames * 2> HandedOutBefore(std::int64_t end);

    void Mix(std::span<std::int32_t> sums, std::int64_t firstFrame) override;

private:
    struct OpenedFile;

    static OpenedFile OpenFile(const QString& path, const std::atomic<bool>& abandoned);
    static std::unique_ptr<AudioStream> Start(const QString& path, bool loops, OpenedFile file);
    AudioStream(const QString& path, bool loops, std::unique_ptr<Decoder> decoder, std::int64_t length);
    void GoTo(std::int64_t frame);
    std::size_t TakeFrames(std::span<std::int32_t> sums, std::int64_t firstFrame);
    void Remember(std::int64_t frame, std::int16_t left, std::int16_t right);

    void DecodeAhead();
    bool WaitForWork();
    void SeekDecoder(std::int64_t frame);
    void ReadBlock();
    void SkipDamage();
    void EndOfPass();
    void AppendSilence(std::int64_t end);
    void Append(PcmBlock block);
    void FindLength();

    const QString path_;
    const bool loops_;

    std::mutex mutex_;
    std::condition_variable wake_;
    std::deque<PcmBlock> queue_;
    std::int64_t queued_ = 0;
    std::size_t taken_ = 0;
    std::int64_t position_ = 0;
    std::int64_t length_;
    bool playing_ = false;
    bool complete_ = false;
    bool seekWanted_ = false;
    std::int64_t seekTarget_ = 0;
    std::atomic<bool> quit_{false};
    std::vector<std::int16_t> handedOut_;

    std::unique_ptr<Decoder> decoder_;
    std::int64_t decoded_ = 0;
    std::int64_t passStart_ = 0;
    std::int64_t damageEnd_ = 0;
    std::thread decodeThread_;
    std::thread lengthThread_;
};

// Decodes one file into frames, from any position.
#pragma once

#include "platform/gstreamer/handles.h"
#include "platform/gstreamer/opening.h"
#include "platform/gstreamer/pcm.h"
#include "platform/gstreamer/pipeline_state.h"

#include <QString>

#include <gst/app/gstappsink.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <optional>

// One open file. Used by one thread at a time.
class Decoder {
public:
    enum class Outcome { kFrames, kEnd, kNothingYet, kFailed };

    // Opens a file at its beginning. Returns null, and a sentence in `reason`, for anything but a regular
    // file with sound that can be decoded. Usually takes a few milliseconds, but has no limit of its own;
    // `stop` ends it within one wait, unless a system call hangs.
    static std::unique_ptr<Decoder> Open(const QString& path, QString& reason, const std::atomic<bool>& stop);
    // The same within limits, or until `stop` is set. Then whatever still hangs is left to its own thread.
    static std::unique_ptr<Decoder> OpenWithin(const OpeningLimits& limits, const QString& path,
                                               QString& reason, const std::atomic<bool>* stop = nullptr);

    // Reads the next frames. Waits at most `wait` for them.
    Outcome Read(PcmBlock& block, std::chrono::milliseconds wait);
    // Seeks to a frame. Returns false when the file can no longer be read; only a new Decoder helps then.
    bool Seek(std::int64_t frame);
    // The length that the file states, in frames.
    std::optional<std::int64_t> StatedLength();
    // The length that the file states, checked by decoding the end of the file; costs two seeks. Returns
    // nothing when the stated length is missing or wrong, or when the check takes longer than `budget`. The
    // position is lost: Seek before the next Read.
    std::optional<std::int64_t> MeasuredLength(std::chrono::milliseconds budget);
    // Decodes and counts the frames from here to the end, or to damage that ends the file. Returns nothing
    // when the deadline comes first.
    std::optional<std::int64_t> CountToEnd(std::chrono::steady_clock::time_point deadline);

private:
    Decoder() = default;
    bool Build(const QByteArray& path);
    bool WaitForStart(QString& reason, const std::atomic<bool>& stop);
    bool ReadFirst(QString& reason, const std::atomic<bool>& stop);
    Outcome OutcomeWithoutSample();
    bool HasFailed();
    void TakeSample(GstSample* sample, PcmBlock& block);
    void Align(GstClockTime time, PcmBlock& block);
    void BridgeGap(std::int64_t ahead);
    void GiveSilence(PcmBlock& block);
    void Place(PcmBlock& block);

    PipelineHandle pipeline_;
    BusHandle bus_;
    GstAppSink* sink_ = nullptr;
    std::optional<PcmBlock> held_;
    GstClockTime origin_ = 0;
    std::int64_t position_ = 0;
    std::int64_t silentUntil_ = 0;
    IdleWatch watch_;
    bool placed_ = false;
    bool failed_ = false;
};

// What opening finds out about a file.
struct MeasuredFile {
    // Positioned at the file's beginning; null when the file does not open.
    std::unique_ptr<Decoder> decoder;
    // See Decoder::MeasuredLength.
    std::optional<std::int64_t> frames;
    // The reason when there is no decoder.
    QString reason;
};

// Opens a file to play it.
MeasuredFile OpenAndMeasure(const QString& path, std::chrono::milliseconds budget,
                            const std::atomic<bool>& stop);
// Opens a file to find its length.
MeasuredFile OpenToCount(const QString& path, const std::atomic<bool>& stop);
// The exact length. Decodes and counts the whole file, for at most an hour, when the length could not be
// measured.
std::optional<std::int64_t> FramesOf(MeasuredFile& file);

// Decodes one file into frames, from any place in it.
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

// One opened file. One thread at a time.
class Decoder {
public:
    enum class Outcome { kFrames, kEnd, kNothingYet, kFailed };

    // Opens a file, positioned at its beginning. Null, and a sentence in `reason`, for anything but a regular
    // file that holds sound that can be decoded. Takes a few milliseconds as a rule, and as long as the disk
    // and the file make it otherwise; `stop` ends it within a look, unless a system call hangs.
    static std::unique_ptr<Decoder> Open(const QString& path, QString& reason, const std::atomic<bool>& stop);
    // The same within limits, or until `stop` is set; then whatever still hangs is left to its own thread.
    static std::unique_ptr<Decoder> OpenWithin(const OpeningLimits& limits, const QString& path,
                                               QString& reason, const std::atomic<bool>* stop = nullptr);

    // The next frames. Waits so long for them and no longer.
    Outcome Read(PcmBlock& block, std::chrono::milliseconds wait);
    // Goes to a frame. False when the file cannot be gone through any more; then only a new Decoder helps.
    bool Seek(std::int64_t frame);
    // What the file says of its length, in frames.
    std::optional<std::int64_t> StatedLength();
    // The length that the file states, once decoding its last moment has borne it out; costs two seeks.
    // Nothing when the file's own word about it is missing or false, or when it takes longer than `budget`.
    // The place is lost: Seek before reading on.
    std::optional<std::int64_t> MeasuredLength(std::chrono::milliseconds budget);
    // The number of frames from here to the end, or to the damage that ends it, decoded one by one. Nothing
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

// What is found out about a file when it is opened.
struct MeasuredFile {
    // At the file's beginning; null when the file does not open.
    std::unique_ptr<Decoder> decoder;
    // See Decoder::MeasuredLength.
    std::optional<std::int64_t> frames;
    // Why there is no decoder.
    QString reason;
};

// Opens a file that is going to be played.
MeasuredFile OpenAndMeasure(const QString& path, std::chrono::milliseconds budget,
                            const std::atomic<bool>& stop);
// Opens a file of which only the length is wanted.
MeasuredFile OpenToCount(const QString& path, const std::atomic<bool>& stop);
// The exact length: counted by decoding the whole file, for an hour at most, when it could not be measured.
std::optional<std::int64_t> FramesOf(MeasuredFile& file);

// Decodes one file into frames, from any place in it.
#pragma once

#include "platform/gstreamer/handles.h"
#include "platform/gstreamer/pcm.h"

#include <QString>

#include <gst/app/gstappsink.h>

#include <chrono>
#include <memory>
#include <optional>

// One opened file. One thread at a time.
class Decoder {
public:
    enum class Outcome { kFrames, kEnd, kNothingYet, kFailed };

    // Opens a file, positioned at its beginning. Null, and a sentence in `reason`, for anything but a regular
    // file that holds sound that can be decoded. Takes a few milliseconds, five seconds at most.
    static std::unique_ptr<Decoder> Open(const QString& path, QString& reason);

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
    bool WaitForStart(QString& reason);
    MessageHandle WaitForVerdict();
    MessageHandle PopMessage(GstMessageType types);
    bool ReadFirst(QString& reason);
    Outcome OutcomeWithoutSample();
    bool IsDead();
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
    int idleLooks_ = 0;
    bool placed_ = false;
    bool failed_ = false;
};

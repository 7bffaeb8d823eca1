// Decoding any file to 16-bit stereo frames with GStreamer, sample exact.
#include "platform/gstreamer/decoder.h"

#include "core/path_text.h"
#include "platform/gstreamer/local_file.h"
#include "platform/gstreamer/pipeline_state.h"
#include "platform/gstreamer/sound_chain.h"
#include "platform/gstreamer/start.h"

#include <algorithm>
#include <cstring>

namespace {

// The longest single wait for a sample. Waits are counted, not timed, so that a suspended machine loses one
// wait and not the file.
constexpr std::chrono::milliseconds kReadLook{100};
constexpr std::chrono::seconds kMeasureLimit{2};
constexpr std::chrono::hours kCountLimit{1};
constexpr const char* kNoSound = "vantorix-no-sound";

GstClockTime Nanoseconds(std::chrono::nanoseconds time) {
    return static_cast<GstClockTime>(std::max<std::int64_t>(time.count(), 0));
}

GstClockTime TimeOfFrame(std::int64_t frame) {
    return gst_util_uint64_scale_round(static_cast<guint64>(frame), GST_SECOND, kFramesPerSecond);
}

std::int64_t FrameOfTime(GstClockTime time) {
    return static_cast<std::int64_t>(gst_util_uint64_scale_round(time, kFramesPerSecond, GST_SECOND));
}

// Connects the first audio stream. All others stay unconnected.
void LinkNewPad(GstElement*, GstPad* pad, gpointer gate) {
    LinkFirstPad(pad, static_cast<GstElement*>(gate));
}

// A file without sound never delivers a first sample. It is recognised when its list of streams is complete.
void TellWhenSilent(GstElement* source, gpointer gate) {
    if (!IsLinked(static_cast<GstElement*>(gate))) {
        gst_element_post_message(source, gst_message_new_application(reinterpret_cast<GstObject*>(source),
                                                                     gst_structure_new_empty(kNoSound)));
    }
}

} // namespace

std::unique_ptr<Decoder> Decoder::Open(const QString& path, QString& reason, const std::atomic<bool>& stop) {
    const QByteArray bytes = BytesOfPath(path);
    if (!IsPlainFile(bytes, reason)) {
        return nullptr;
    }
    std::unique_ptr<Decoder> decoder(new Decoder);
    if (!StartGStreamer() || !decoder->Build(bytes)) {
        reason = QStringLiteral("the decoders are not installed");
        return nullptr;
    }
    if (!decoder->WaitForStart(reason, stop) || !decoder->ReadFirst(reason, stop)) {
        return nullptr;
    }
    return decoder;
}

std::unique_ptr<Decoder> Decoder::OpenWithin(const OpeningLimits& limits, const QString& path,
                                             QString& reason, const std::atomic<bool>* stop) {
    std::optional<MeasuredFile> opened = WithinLimits<MeasuredFile>(
        limits,
        [path](const std::atomic<bool>& abandoned) {
            MeasuredFile file;
            file.decoder = Open(path, file.reason, abandoned);
            return file;
        },
        stop);
    reason = opened ? opened->reason : OpeningTookTooLong();
    return opened ? std::move(opened->decoder) : nullptr;
}

bool Decoder::Build(const QByteArray& path) {
    pipeline_.reset(gst_pipeline_new(nullptr));
    GstElement* source = MakeLocalSource(path);
    const SoundChain sound = AddSoundChain(pipeline_.get());
    if (source != nullptr) {
        gst_bin_add(reinterpret_cast<GstBin*>(pipeline_.get()), source);
    }
    if (source == nullptr || sound.first == nullptr) {
        return false;
    }
    const CapsHandle decoded(gst_caps_new_empty_simple("audio/x-raw"));
    g_object_set(source, "caps", decoded.get(), "expose-all-streams", FALSE, nullptr);
    g_signal_connect(source, "pad-added", G_CALLBACK(LinkNewPad), sound.first);
    g_signal_connect(source, "no-more-pads", G_CALLBACK(TellWhenSilent), sound.first);
    sink_ = sound.sink;
    bus_.reset(gst_element_get_bus(pipeline_.get()));
    return true;
}

bool Decoder::WaitForStart(QString& reason, const std::atomic<bool>& stop) {
    const auto verdicts = static_cast<GstMessageType>(GST_MESSAGE_ERROR | GST_MESSAGE_ASYNC_DONE |
                                                      GST_MESSAGE_EOS | GST_MESSAGE_APPLICATION);
    // The error's text reaches the bus shortly after the state change has failed.
    const bool refused =
        gst_element_set_state(pipeline_.get(), GST_STATE_PLAYING) == GST_STATE_CHANGE_FAILURE;
    const MessageHandle message =
        refused ? MessageHandle(gst_bus_timed_pop_filtered(bus_.get(), kLookEvery, GST_MESSAGE_ERROR))
                : WaitForVerdict(pipeline_.get(), verdicts, stop);
    if (message == nullptr) {
        reason = QStringLiteral("the file cannot be decoded");
        return false;
    }
    switch (GST_MESSAGE_TYPE(message.get())) {
    case GST_MESSAGE_ERROR:
        reason = TextOfError(message.get());
        return false;
    case GST_MESSAGE_APPLICATION:
        reason = QStringLiteral("the file holds no sound");
        return false;
    default:
        return true;
    }
}

// A file has sound when at least one frame of it can be read.
bool Decoder::ReadFirst(QString& reason, const std::atomic<bool>& stop) {
    PcmBlock block;
    Outcome outcome = Outcome::kNothingYet;
    while (outcome == Outcome::kNothingYet && !stop) {
        outcome = Read(block, kReadLook);
    }
    if (outcome != Outcome::kFrames) {
        reason = QStringLiteral("the file holds no sound");
        return false;
    }
    position_ = block.position;
    held_ = std::move(block);
    return true;
}

Decoder::Outcome Decoder::Read(PcmBlock& block, std::chrono::milliseconds wait) {
    if (position_ < silentUntil_) {
        GiveSilence(block);
        return Outcome::kFrames;
    }
    if (held_) {
        block = std::move(*held_);
        held_.reset();
        Place(block);
        return Outcome::kFrames;
    }
    for (auto left = wait;;) {
        const auto look = std::min(left, kReadLook);
        const SampleHandle sample(gst_app_sink_try_pull_sample(sink_, Nanoseconds(look)));
        if (sample == nullptr) {
            const Outcome outcome = OutcomeWithoutSample();
            left -= look;
            if (outcome != Outcome::kNothingYet || left.count() <= 0) {
                return outcome;
            }
            continue;
        }
        watch_.SeeWork();
        TakeSample(sample.get(), block);
        if (position_ < silentUntil_) {
            held_ = std::move(block);
            GiveSilence(block);
            return Outcome::kFrames;
        }
        if (!block.samples.empty()) {
            Place(block);
            return Outcome::kFrames;
        }
    }
}

Decoder::Outcome Decoder::OutcomeWithoutSample() {
    const bool dead = watch_.IsDead(pipeline_.get());
    const bool ended = gst_app_sink_is_eos(sink_) != FALSE;
    failed_ = HasFailed() || (dead && !ended);
    return failed_ ? Outcome::kFailed : ended ? Outcome::kEnd : Outcome::kNothingYet;
}

void Decoder::Place(PcmBlock& block) {
    block.position = position_;
    position_ += block.Frames();
}

void Decoder::GiveSilence(PcmBlock& block) {
    const std::int64_t frames = std::min(silentUntil_ - position_, kFramesPerSecond / 10);
    block.samples.assign(static_cast<std::size_t>(frames) * 2, 0);
    Place(block);
}

void Decoder::TakeSample(GstSample* sample, PcmBlock& block) {
    GstBuffer* buffer = gst_sample_get_buffer(sample);
    GstMapInfo map;
    block.samples.clear();
    if (buffer == nullptr || gst_buffer_map(buffer, &map, GST_MAP_READ) == FALSE) {
        return;
    }
    block.samples.resize(map.size / static_cast<gsize>(kBytesPerFrame) * 2);
    if (!block.samples.empty()) {
        std::memcpy(block.samples.data(), map.data, block.samples.size() * sizeof(std::int16_t));
    }
    gst_buffer_unmap(buffer, &map);
    const GstClockTime stamp = GST_BUFFER_PTS(buffer);
    const GstClockTime time =
        GST_CLOCK_TIME_IS_VALID(stamp)
            ? gst_segment_to_stream_time(gst_sample_get_segment(sample), GST_FORMAT_TIME, stamp)
            : GST_CLOCK_TIME_NONE;
    if (GST_CLOCK_TIME_IS_VALID(time) && !block.samples.empty()) {
        Align(time, block);
    }
}

// Frames are counted. Time stamps matter only where a block does not follow the previous one.
void Decoder::Align(GstClockTime time, PcmBlock& block) {
    if (!placed_ && position_ == 0) {
        origin_ = time;
        placed_ = true;
        return;
    }
    const std::int64_t ahead = FrameOfTime(time) - FrameOfTime(origin_) - position_;
    if (placed_) {
        BridgeGap(ahead);
    } else if (ahead < 0) {
        // The first block after a seek may begin before the requested frame.
        const std::int64_t cut = std::min(-ahead, block.Frames());
        block.samples.erase(block.samples.begin(), block.samples.begin() + cut * 2);
        placed_ = cut == -ahead;
    } else {
        position_ += ahead > kFramesPerSecond / 100 ? ahead : 0;
        placed_ = true;
    }
}

// Replaces what a damaged file has lost by silence of the same length, so that later sound keeps its
// position. Only within the length that the file states, because time stamps may be damaged too.
void Decoder::BridgeGap(std::int64_t ahead) {
    constexpr std::int64_t kSmallest = kFramesPerSecond / 20;
    constexpr std::int64_t kLargest = kFramesPerSecond * 600;
    if (ahead > kSmallest && ahead < kLargest && position_ + ahead < StatedLength().value_or(0)) {
        silentUntil_ = position_ + ahead;
    }
}

bool Decoder::Seek(std::int64_t frame) {
    if (HasFailed()) {
        return false;
    }
    held_.reset();
    watch_.SeeWork();
    silentUntil_ = 0;
    position_ = frame;
    placed_ = false;
    const GstClockTime time = frame == 0 ? 0 : origin_ + TimeOfFrame(frame);
    // Without ACCURATE the position is off by seconds in a file of varying bit rate, and nothing reports it.
    const auto flags = static_cast<GstSeekFlags>(GST_SEEK_FLAG_FLUSH | GST_SEEK_FLAG_ACCURATE);
    return gst_element_seek_simple(pipeline_.get(), GST_FORMAT_TIME, flags, static_cast<gint64>(time)) !=
           FALSE;
}

std::optional<std::int64_t> Decoder::StatedLength() {
    gint64 time = -1;
    if (gst_element_query_duration(pipeline_.get(), GST_FORMAT_TIME, &time) == FALSE || time <= 0) {
        return std::nullopt;
    }
    return FrameOfTime(static_cast<GstClockTime>(time));
}

std::optional<std::int64_t> Decoder::MeasuredLength(std::chrono::milliseconds budget) {
    const auto deadline = std::chrono::steady_clock::now() + budget;
    const std::optional<std::int64_t> stated = StatedLength();
    const std::int64_t start = std::max<std::int64_t>(stated.value_or(0) - kFramesPerSecond / 4, 0);
    if (!stated || !Seek(start)) {
        return std::nullopt;
    }
    const std::optional<std::int64_t> rest = CountToEnd(deadline);
    if (!rest || *rest == 0) {
        return std::nullopt;
    }
    // A resampler or coarse time stamps may shift the last frame a little.
    return IsSameLength(position_, *stated) ? *stated : position_;
}

std::optional<std::int64_t> Decoder::CountToEnd(std::chrono::steady_clock::time_point deadline) {
    std::int64_t frames = 0;
    PcmBlock block;
    for (;;) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
            deadline - std::chrono::steady_clock::now());
        if (left.count() <= 0) {
            return std::nullopt;
        }
        switch (Read(block, left)) {
        case Outcome::kFrames:
            frames += block.Frames();
            break;
        case Outcome::kNothingYet:
            break;
        case Outcome::kEnd:
        case Outcome::kFailed:
            return frames;
        }
    }
}

// Empties the bus, so that a stream that loops for days does not fill it.
bool Decoder::HasFailed() {
    while (const MessageHandle message{gst_bus_pop(bus_.get())}) {
        failed_ = failed_ || GST_MESSAGE_TYPE(message.get()) == GST_MESSAGE_ERROR;
    }
    return failed_;
}

MeasuredFile OpenAndMeasure(const QString& path, std::chrono::milliseconds budget,
                            const std::atomic<bool>& stop) {
    MeasuredFile file;
    file.decoder = Decoder::Open(path, file.reason, stop);
    if (file.decoder == nullptr) {
        return file;
    }
    file.frames = file.decoder->MeasuredLength(budget);
    if (!file.decoder->Seek(0)) {
        file.decoder = Decoder::Open(path, file.reason, stop);
    }
    return file;
}

// Opens the file again when it could not be measured: after seeks a decoder would count differently from
// DecodeFile, which starts with a fresh one.
MeasuredFile OpenToCount(const QString& path, const std::atomic<bool>& stop) {
    MeasuredFile file;
    file.decoder = Decoder::Open(path, file.reason, stop);
    if (file.decoder != nullptr) {
        file.frames = file.decoder->MeasuredLength(kMeasureLimit);
    }
    if (file.decoder != nullptr && !file.frames) {
        file.decoder = Decoder::Open(path, file.reason, stop);
    }
    return file;
}

std::optional<std::int64_t> FramesOf(MeasuredFile& file) {
    if (file.decoder == nullptr || file.frames) {
        return file.decoder != nullptr ? file.frames : std::nullopt;
    }
    return file.decoder->CountToEnd(std::chrono::steady_clock::now() + kCountLimit);
}

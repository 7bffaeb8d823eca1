// Decoding a file to pictures of 32 bits and to 16-bit stereo.
#include "platform/gstreamer/video_reader.h"

#include "core/path_text.h"
#include "platform/gstreamer/local_file.h"
#include "platform/gstreamer/pipeline_state.h"
#include "platform/gstreamer/sound_chain.h"
#include "platform/gstreamer/start.h"

#include <gst/video/video.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

constexpr GstClockTime kFirstLook = 5 * GST_MSECOND;
// The number of such looks that a second stream may take once the first one has begun: one second.
constexpr int kSecondStreamLooks = 200;
// One more picture waits at the reader's owner.
constexpr guint kPicturesAhead = 2;
constexpr std::int64_t kUnknownDuration = kFramesPerSecond / 25;

std::int64_t FramesOfTime(GstClockTime time) {
    return static_cast<std::int64_t>(gst_util_uint64_scale_round(time, kFramesPerSecond, GST_SECOND));
}

GstClockTime TimeOfFrames(std::int64_t frames) {
    return gst_util_uint64_scale_round(static_cast<guint64>(frames), GST_SECOND, kFramesPerSecond);
}

GstClockTime StreamTimeOf(GstSample* sample) {
    const GstBuffer* buffer = gst_sample_get_buffer(sample);
    if (buffer == nullptr || !GST_BUFFER_PTS_IS_VALID(buffer)) {
        return GST_CLOCK_TIME_NONE;
    }
    return gst_segment_to_stream_time(gst_sample_get_segment(sample), GST_FORMAT_TIME,
                                      GST_BUFFER_PTS(buffer));
}

// A decoded picture that is shown without copying it. It keeps the buffer, not the sample: the sink
// changes its sample during a seek and complains if it has another owner.
struct MappedPicture {
    MappedPicture() = default;
    ~MappedPicture() {
        if (isMapped) {
            gst_video_frame_unmap(&frame);
        }
    }
    MappedPicture(const MappedPicture&) = delete;
    MappedPicture& operator=(const MappedPicture&) = delete;

    GstVideoFrame frame{};
    bool isMapped = false;
};

QSize ShapeOf(const GstVideoInfo& info) {
    const guint64 width = gst_util_uint64_scale_int(static_cast<guint64>(info.width), std::max(info.par_n, 1),
                                                    std::max(info.par_d, 1));
    constexpr guint64 kWidest = 1 << 20;
    return {static_cast<int>(std::clamp<guint64>(width, 1, kWidest)), info.height};
}

VideoPicture PictureIn(GstSample* sample, const GstVideoInfo& info) {
    VideoPicture picture{.pixels = nullptr, .size = {}, .shape = ShapeOf(info)};
    const auto mapped = std::make_shared<MappedPicture>();
    GstVideoInfo layout = info;
    mapped->isMapped =
        gst_video_frame_map(&mapped->frame, &layout, gst_sample_get_buffer(sample), GST_MAP_READ) != FALSE;
    if (mapped->isMapped) {
        const auto* pixels = static_cast<const unsigned char*>(GST_VIDEO_FRAME_PLANE_DATA(&mapped->frame, 0));
        picture.pixels = {mapped, pixels};
        picture.size = QSize(info.width, info.height);
        picture.bytesPerRow = GST_VIDEO_FRAME_PLANE_STRIDE(&mapped->frame, 0);
    }
    return picture;
}

} // namespace

std::unique_ptr<VideoReader> VideoReader::Open(const QString& path, QString& reason,
                                               const std::atomic<bool>& stop) {
    const QByteArray bytes = BytesOfPath(path);
    if (!IsPlainFile(bytes, reason)) {
        return nullptr;
    }
    std::unique_ptr<VideoReader> reader(new VideoReader);
    if (!StartGStreamer() || !reader->Build(bytes)) {
        reason = QStringLiteral("the decoders are not installed");
        return nullptr;
    }
    return reader->WaitForFirst(reason, stop) ? std::move(reader) : nullptr;
}

bool VideoReader::Build(const QByteArray& path) {
    pipeline_.reset(gst_pipeline_new(nullptr));
    bus_.reset(gst_element_get_bus(pipeline_.get()));
    const SoundChain sound = AddSoundChain(pipeline_.get());
    GstElement* source = MakeLocalSource(path);
    if (source != nullptr) {
        gst_bin_add(reinterpret_cast<GstBin*>(pipeline_.get()), source);
    }
    if (source == nullptr || sound.first == nullptr || !AddPictureChain()) {
        return false;
    }
    firstSound_ = sound.first;
    sound_ = sound.sink;
    // A file may lack one of the two streams, so the pipeline does not wait for both sinks.
    g_object_set(sound_, "async", FALSE, nullptr);
    const CapsHandle decoded(gst_caps_from_string("video/x-raw; audio/x-raw"));
    g_object_set(source, "caps", decoded.get(), "expose-all-streams", TRUE, nullptr);
    g_signal_connect(source, "pad-added", G_CALLBACK(LinkNewPad), this);
    g_signal_connect(source, "no-more-pads", G_CALLBACK(SeeAllStreams), this);
    return true;
}

bool VideoReader::AddPictureChain() {
    const auto add = [&](const char* kind) {
        GstElement* element = gst_element_factory_make(kind, nullptr);
        if (element != nullptr) {
            gst_bin_add(reinterpret_cast<GstBin*>(pipeline_.get()), element);
        }
        return element;
    };
    GstElement* deinterlace = add("deinterlace");
    GstElement* convert = add("videoconvert");
    GstElement* sink = add("appsink");
    if (deinterlace == nullptr || convert == nullptr || sink == nullptr) {
        return false;
    }
    // One picture for each interlaced picture of the file; others pass through untouched.
    gst_util_set_object_arg(reinterpret_cast<GObject*>(deinterlace), "mode", "auto");
    gst_util_set_object_arg(reinterpret_cast<GObject*>(deinterlace), "fields", "top");
    g_object_set(convert, "n-threads", 2U, nullptr);
    const CapsHandle wanted(gst_caps_from_string("video/x-raw, format=(string)BGRx"));
    g_object_set(sink, "caps", wanted.get(), "sync", FALSE, "async", FALSE, "max-buffers", kPicturesAhead,
                 nullptr);
    firstPicture_ = deinterlace;
    pictures_ = reinterpret_cast<GstAppSink*>(sink);
    const PadHandle pad(gst_element_get_static_pad(deinterlace, "sink"));
    gst_pad_add_probe(
        pad.get(),
        static_cast<GstPadProbeType>(GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM | GST_PAD_PROBE_TYPE_BUFFER),
        RefuseHugePictures, this, nullptr);
    return gst_element_link_many(deinterlace, convert, sink, nullptr) != FALSE;
}

// Connects the first stream of each kind.
void VideoReader::LinkNewPad(GstElement*, GstPad* pad, gpointer self) {
    const auto& reader = *static_cast<VideoReader*>(self);
    CapsHandle caps(gst_pad_get_current_caps(pad));
    if (caps == nullptr) {
        caps.reset(gst_pad_query_caps(pad, nullptr));
    }
    const char* kind = gst_caps_get_size(caps.get()) > 0
                           ? gst_structure_get_name(gst_caps_get_structure(caps.get(), 0))
                           : "";
    if (std::strcmp(kind, "audio/x-raw") == 0) {
        LinkFirstPad(pad, reader.firstSound_);
    } else if (std::strcmp(kind, "video/x-raw") == 0) {
        LinkFirstPad(pad, reader.firstPicture_);
    }
}

void VideoReader::SeeAllStreams(GstElement*, gpointer self) {
    static_cast<VideoReader*>(self)->allStreams_ = true;
}

// Converting such a picture would take hundreds of megabytes for each one that is held.
GstPadProbeReturn VideoReader::RefuseHugePictures(GstPad*, GstPadProbeInfo* info, gpointer self) {
    std::atomic<bool>& tooLarge = static_cast<VideoReader*>(self)->tooLarge_;
    if ((GST_PAD_PROBE_INFO_TYPE(info) & GST_PAD_PROBE_TYPE_BUFFER) != 0) {
        return tooLarge ? GST_PAD_PROBE_DROP : GST_PAD_PROBE_OK;
    }
    GstEvent* event = gst_pad_probe_info_get_event(info);
    if (GST_EVENT_TYPE(event) != GST_EVENT_CAPS) {
        return GST_PAD_PROBE_OK;
    }
    GstCaps* caps = nullptr;
    gint width = 0;
    gint height = 0;
    gst_event_parse_caps(event, &caps);
    const GstStructure* format = gst_caps_get_structure(caps, 0);
    gst_structure_get_int(format, "width", &width);
    gst_structure_get_int(format, "height", &height);
    tooLarge = std::int64_t{width} * height > kMostPixels;
    return tooLarge ? GST_PAD_PROBE_DROP : GST_PAD_PROBE_OK;
}

bool VideoReader::WaitForFirst(QString& reason, const std::atomic<bool>& stop) {
    const bool refused =
        gst_element_set_state(pipeline_.get(), GST_STATE_PLAYING) == GST_STATE_CHANGE_FAILURE;
    IdleWatch watch;
    int secondLooks = 0;
    for (int looks = 1; !refused && !stop && !tooLarge_ && !ReadBus(); ++looks) {
        const bool any = TakeFirst();
        secondLooks += any ? 1 : 0;
        const bool settled = allStreams_ && FirstPictureSettled() && FirstSoundSettled();
        if (settled || (any && secondLooks > kSecondStreamLooks)) {
            break;
        }
        if (looks % 20 == 0 && watch.IsDead(pipeline_.get())) {
            break;
        }
    }
    if (refused) {
        // The error's text reaches the bus shortly after the state change has failed.
        const MessageHandle message(gst_bus_timed_pop_filtered(bus_.get(), kLookEvery, GST_MESSAGE_ERROR));
        error_ = message ? TextOfError(message.get()) : error_;
    }
    if (heldPicture_ == nullptr && heldSound_ == nullptr) {
        reason = WhyNothing();
        return false;
    }
    SetOrigin();
    return true;
}

QString VideoReader::WhyNothing() const {
    if (tooLarge_) {
        return QStringLiteral("its pictures have more than %1 pixels").arg(kMostPixels);
    }
    return error_.isEmpty() ? QStringLiteral("the file holds neither a picture nor sound") : error_;
}

// Returns true when at least one stream has begun.
bool VideoReader::TakeFirst() {
    if (heldPicture_ == nullptr) {
        heldPicture_.reset(gst_app_sink_try_pull_sample(pictures_, FirstPictureSettled() ? 0 : kFirstLook));
    }
    if (heldSound_ == nullptr) {
        heldSound_.reset(gst_app_sink_try_pull_sample(sound_, FirstSoundSettled() ? 0 : kFirstLook));
    }
    return heldPicture_ != nullptr || heldSound_ != nullptr;
}

bool VideoReader::FirstPictureSettled() const {
    return heldPicture_ != nullptr || gst_app_sink_is_eos(pictures_) != FALSE ||
           (allStreams_ && !IsLinked(firstPicture_));
}

bool VideoReader::FirstSoundSettled() const {
    return heldSound_ != nullptr || gst_app_sink_is_eos(sound_) != FALSE ||
           (allStreams_ && !IsLinked(firstSound_));
}

void VideoReader::SetOrigin() {
    GstClockTime first = GST_CLOCK_TIME_NONE;
    for (const SampleHandle* sample : {&heldPicture_, &heldSound_}) {
        const GstClockTime time = *sample != nullptr ? StreamTimeOf(sample->get()) : GST_CLOCK_TIME_NONE;
        first = std::min(first, time); // none is the largest time
    }
    origin_ = GST_CLOCK_TIME_IS_VALID(first) ? first : 0;
    hasPicture_ = heldPicture_ != nullptr;
    GstVideoInfo info;
    if (hasPicture_ && gst_video_info_from_caps(&info, gst_sample_get_caps(heldPicture_.get())) != FALSE) {
        shape_ = ShapeOf(info);
    }
}

std::int64_t VideoReader::FrameAt(GstClockTime streamTime) const {
    return streamTime >= origin_ ? FramesOfTime(streamTime - origin_) : -FramesOfTime(origin_ - streamTime);
}

std::optional<TimedPicture> VideoReader::NextPicture() {
    const SampleHandle sample(heldPicture_ != nullptr ? heldPicture_.release()
                                                      : gst_app_sink_try_pull_sample(pictures_, 0));
    return sample != nullptr ? PictureOf(sample.get()) : std::nullopt;
}

VideoReader::Span VideoReader::SpanOf(GstSample* sample, std::int64_t otherwise) const {
    const GstBuffer* buffer = gst_sample_get_buffer(sample);
    const GstClockTime time = StreamTimeOf(sample);
    Span span;
    span.begin = GST_CLOCK_TIME_IS_VALID(time) ? FrameAt(time) : otherwise;
    std::int64_t duration = kUnknownDuration;
    GstVideoInfo info;
    if (buffer != nullptr && GST_BUFFER_DURATION_IS_VALID(buffer)) {
        duration = FramesOfTime(GST_BUFFER_DURATION(buffer));
    } else if (gst_video_info_from_caps(&info, gst_sample_get_caps(sample)) != FALSE && info.fps_n > 0) {
        duration = kFramesPerSecond * info.fps_d / info.fps_n;
    }
    span.end = span.begin + duration;
    return span;
}

std::optional<TimedPicture> VideoReader::PictureOf(GstSample* sample) {
    GstVideoInfo info;
    const GstBuffer* buffer = gst_sample_get_buffer(sample);
    if (buffer == nullptr || gst_video_info_from_caps(&info, gst_sample_get_caps(sample)) == FALSE) {
        return std::nullopt;
    }
    const Span span = SpanOf(sample, pictureEnd_);
    pictureEnd_ = span.end;
    TimedPicture timed{.picture = PictureIn(sample, info), .begin = span.begin, .end = span.end};
    timed.runningTime = GST_BUFFER_PTS_IS_VALID(buffer)
                            ? gst_segment_to_running_time(gst_sample_get_segment(sample), GST_FORMAT_TIME,
                                                          GST_BUFFER_PTS(buffer))
                            : GST_CLOCK_TIME_NONE;
    return timed;
}

std::optional<PcmBlock> VideoReader::NextSound() {
    const SampleHandle sample(heldSound_ != nullptr ? heldSound_.release()
                                                    : gst_app_sink_try_pull_sample(sound_, 0));
    return sample != nullptr ? SoundOf(sample.get()) : std::nullopt;
}

std::optional<PcmBlock> VideoReader::SoundOf(GstSample* sample) {
    GstBuffer* buffer = gst_sample_get_buffer(sample);
    GstMapInfo map;
    if (buffer == nullptr || gst_buffer_map(buffer, &map, GST_MAP_READ) == FALSE) {
        return std::nullopt;
    }
    PcmBlock block;
    block.samples.resize(map.size / static_cast<gsize>(kBytesPerFrame) * 2);
    if (!block.samples.empty()) {
        std::memcpy(block.samples.data(), map.data, block.samples.size() * sizeof(std::int16_t));
    }
    gst_buffer_unmap(buffer, &map);
    block.position = SpanOf(sample, soundEnd_).begin;
    soundEnd_ = block.position + block.Frames();
    return block;
}

bool VideoReader::PicturesEnded() const {
    return heldPicture_ == nullptr &&
           (gst_app_sink_is_eos(pictures_) != FALSE || tooLarge_ || !IsLinked(firstPicture_));
}

bool VideoReader::SoundEnded() const {
    return heldSound_ == nullptr && (gst_app_sink_is_eos(sound_) != FALSE || !IsLinked(firstSound_));
}

bool VideoReader::HasFailed() {
    return ReadBus() || tooLarge_;
}

// Empties the bus. Returns true once an error has been on it.
bool VideoReader::ReadBus() {
    while (const MessageHandle message{gst_bus_pop(bus_.get())}) {
        if (GST_MESSAGE_TYPE(message.get()) == GST_MESSAGE_ERROR && !failed_) {
            failed_ = true;
            error_ = TextOfError(message.get());
        }
    }
    return failed_;
}

// Some kinds of files can only be read from about the right place on, and the next picture that can be
// decoded may be a second later. They are read from an earlier place.
bool VideoReader::Seek(std::int64_t frame, const std::atomic<bool>& stop) {
    constexpr std::int64_t kEarlier = 2 * kFramesPerSecond;
    const bool exact = SeekTo(frame) && FindFirst(frame, stop);
    if (exact || stop) {
        return exact;
    }
    const bool found = SeekTo(std::max<std::int64_t>(frame - kEarlier, 0));
    FindFirst(frame, stop);
    return found;
}

bool VideoReader::SeekTo(std::int64_t frame) {
    heldPicture_.reset();
    heldSound_.reset();
    pictureEnd_ = frame;
    soundEnd_ = frame;
    // The first picture's time need not be 0, but reading begins there.
    const GstClockTime time = frame > 0 ? origin_ + TimeOfFrames(frame) : 0;
    // Without ACCURATE the two streams may continue at different times.
    const auto flags = static_cast<GstSeekFlags>(GST_SEEK_FLAG_FLUSH | GST_SEEK_FLAG_ACCURATE);
    return gst_element_seek_simple(pipeline_.get(), GST_FORMAT_TIME, flags, static_cast<gint64>(time)) !=
           FALSE;
}

// Takes what is before the frame. Returns false when the first picture after it is not the one of its time.
bool VideoReader::FindFirst(std::int64_t frame, const std::atomic<bool>& stop) {
    constexpr int kMostLooks = 600; // three seconds
    constexpr std::int64_t kSameTime = kFramesPerSecond / 5;
    for (int looks = 0; looks < kMostLooks && !stop && !ReadBus(); ++looks) {
        TakeFirst();
        DropBefore(frame, heldPicture_);
        DropBefore(frame, heldSound_);
        if (FirstPictureSettled() && FirstSoundSettled()) {
            break;
        }
    }
    return heldPicture_ != nullptr ? SpanOf(heldPicture_.get(), frame).begin <= frame + kSameTime
                                   : !hasPicture_;
}

void VideoReader::DropBefore(std::int64_t frame, SampleHandle& held) {
    if (held != nullptr && SpanOf(held.get(), frame).end <= frame) {
        held.reset();
    }
}

std::optional<std::int64_t> VideoReader::StatedLength() {
    gint64 time = -1;
    if (gst_element_query_duration(pipeline_.get(), GST_FORMAT_TIME, &time) == FALSE || time <= 0) {
        return std::nullopt;
    }
    return FramesOfTime(static_cast<GstClockTime>(time));
}

// The decoder leaves out what it can up to twice the stated delay.
void VideoReader::SkipAfter(const TimedPicture& picture, std::int64_t late) {
    if (!GST_CLOCK_TIME_IS_VALID(picture.runningTime) || late <= 0) {
        return;
    }
    const PadHandle pad(gst_element_get_static_pad(reinterpret_cast<GstElement*>(pictures_), "sink"));
    gst_pad_push_event(pad.get(), gst_event_new_qos(GST_QOS_TYPE_UNDERFLOW, 1.0,
                                                    static_cast<GstClockTimeDiff>(TimeOfFrames(late) / 2),
                                                    picture.runningTime));
}

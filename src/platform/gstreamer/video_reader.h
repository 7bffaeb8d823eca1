// Reads the pictures and the sound of one video file, as fast as they are taken.
#pragma once

#include "platform/gstreamer/handles.h"
#include "platform/gstreamer/pcm.h"
#include "platform/video_screen.h"

#include <gst/app/gstappsink.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>

// Times are frames of the sound, 44,100 a second, counted from the file's first picture or sound.
struct TimedPicture {
    VideoPicture picture;
    std::int64_t begin = 0;
    std::int64_t end = 0;
    // What the pipeline calls its beginning, in nanoseconds.
    GstClockTime runningTime = 0;
};

// One open file. Pictures and sound may be taken on different threads, each of them on one at a time; not
// during a seek. Decoding runs ahead by a few pictures and some 0.2 s of sound, then waits.
class VideoReader {
public:
    // The most pixels of a picture: more would need a gigabyte for the few that are held at a time.
    static constexpr std::int64_t kMostPixels = std::int64_t{1} << 24;

    // Opens a file and waits for its first picture and its first sound. Returns null, and a sentence in
    // `reason`, when there is neither. Has no time limit of its own; `stop` ends it within one wait, unless a
    // system call hangs.
    static std::unique_ptr<VideoReader> Open(const QString& path, QString& reason,
                                             const std::atomic<bool>& stop);

    // The shape of the first picture.
    QSize Shape() const { return shape_; }

    // The next picture, the next block of sound. Nothing when none is decoded yet, or none is left.
    std::optional<TimedPicture> NextPicture();
    std::optional<PcmBlock> NextSound();
    // Whether all pictures, or all sound, have been taken. Also when there never were any.
    bool PicturesEnded() const;
    bool SoundEnded() const;
    // True once the file can no longer be decoded. From one thread at a time.
    bool HasFailed();

    // Continues at another time, and waits for the picture and the sound of that time. Returns false when the
    // file cannot be read there. `stop` ends the wait.
    bool Seek(std::int64_t frame, const std::atomic<bool>& stop);
    // The length that the file states, in frames.
    std::optional<std::int64_t> StatedLength();
    // Asks the decoder to leave out the pictures up to `late` frames after this one.
    void SkipAfter(const TimedPicture& picture, std::int64_t late);

private:
    VideoReader() = default;
    bool Build(const QByteArray& path);
    bool AddPictureChain();
    static void LinkNewPad(GstElement* source, GstPad* pad, gpointer self);
    static void SeeAllStreams(GstElement* source, gpointer self);
    static GstPadProbeReturn RefuseHugePictures(GstPad* pad, GstPadProbeInfo* info, gpointer self);
    bool WaitForFirst(QString& reason, const std::atomic<bool>& stop);
    bool FirstPictureSettled() const;
    bool FirstSoundSettled() const;
    bool TakeFirst();
    void SetOrigin();
    QString WhyNothing() const;
    bool ReadBus();

    bool SeekTo(std::int64_t frame);
    bool FindFirst(std::int64_t frame, const std::atomic<bool>& stop);
    void DropBefore(std::int64_t frame, SampleHandle& held);

    // The time of a picture or of sound; a sample without a time stamp begins at `otherwise`.
    struct Span {
        std::int64_t begin = 0;
        std::int64_t end = 0;
    };
    Span SpanOf(GstSample* sample, std::int64_t otherwise) const;
    std::optional<TimedPicture> PictureOf(GstSample* sample);
    std::optional<PcmBlock> SoundOf(GstSample* sample);
    std::int64_t FrameAt(GstClockTime streamTime) const;

    GstElement* firstPicture_ = nullptr;
    GstElement* firstSound_ = nullptr;
    GstAppSink* pictures_ = nullptr;
    GstAppSink* sound_ = nullptr;
    std::atomic<bool> allStreams_{false};
    std::atomic<bool> tooLarge_{false};
    // The samples that opening and seeking have taken.
    SampleHandle heldPicture_;
    SampleHandle heldSound_;
    bool hasPicture_ = false;
    QSize shape_;
    GstClockTime origin_ = 0;
    std::int64_t pictureEnd_ = 0;
    std::int64_t soundEnd_ = 0;
    bool failed_ = false;
    QString error_;
    BusHandle bus_;
    // Destroyed first: its threads use all of the above.
    PipelineHandle pipeline_;
};

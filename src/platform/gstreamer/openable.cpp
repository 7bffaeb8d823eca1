// Opening media files to see whether they play, and searching GStreamer's decoders.
#include "platform/gstreamer/openable.h"

#include "core/errand.h"
#include "platform/gstreamer/decoder.h"
#include "platform/gstreamer/opening.h"
#include "platform/gstreamer/start.h"
#include "platform/gstreamer/video_reader.h"

#include <array>
#include <chrono>
#include <memory>
#include <thread>
#include <utility>

namespace {

struct FormatRow {
    const char* files;
    // What has to be taken apart or decoded, as caps.
    const char* caps;
    GstElementFactoryListType type;
    const char* package;
};

constexpr GstElementFactoryListType kContainer =
    GST_ELEMENT_FACTORY_TYPE_DEMUXER | GST_ELEMENT_FACTORY_TYPE_PARSER;
constexpr GstElementFactoryListType kCodec = GST_ELEMENT_FACTORY_TYPE_DECODER;

// The formats of the files that are listed, and the packages of Debian 12.
// clang-format off
constexpr std::array kFormats = {
    FormatRow{".mp3 files",                     "audio/mpeg, mpegversion=1, layer=3", kCodec,     "gstreamer1.0-plugins-good"},
    FormatRow{".flac files",                    "audio/x-flac, framed=true",          kCodec,     "gstreamer1.0-plugins-good"},
    FormatRow{".wav files",                     "audio/x-wav",                        kContainer, "gstreamer1.0-plugins-good"},
    FormatRow{".wma files",                     "video/x-ms-asf",                     kContainer, "gstreamer1.0-plugins-ugly"},
    FormatRow{".wma files",                     "audio/x-wma, wmaversion=2",          kCodec,     "gstreamer1.0-libav"},
    FormatRow{".avi videos",                    "video/x-msvideo",                    kContainer, "gstreamer1.0-plugins-good"},
    FormatRow{".avi videos in MPEG-4 (DivX, Xvid)", "video/mpeg, mpegversion=4, systemstream=false", kCodec, "gstreamer1.0-libav"},
    FormatRow{".mpg videos",                    "video/mpeg, mpegversion=2, systemstream=true",  kContainer, "gstreamer1.0-plugins-bad"},
    FormatRow{".mpg videos",                    "video/mpeg, mpegversion=2, systemstream=false", kCodec, "gstreamer1.0-libav"},
};
// clang-format on

bool HasFactory(const FormatRow& row) {
    GList* const all = gst_element_factory_list_get_elements(row.type, GST_RANK_MARGINAL);
    const CapsHandle caps(gst_caps_from_string(row.caps));
    GList* const matching = gst_element_factory_list_filter(all, caps.get(), GST_PAD_SINK, FALSE);
    const bool found = matching != nullptr;
    gst_plugin_feature_list_free(matching);
    gst_plugin_feature_list_free(all);
    return found;
}

struct OpenedMedia {
    // At most one of them is set.
    std::unique_ptr<Decoder> sound;
    std::unique_ptr<VideoReader> video;
    QString reason;
};

OpenedMedia Open(const QString& path, bool isVideo, const std::atomic<bool>& stop) {
    OpenedMedia opened;
    if (isVideo) {
        opened.video = VideoReader::Open(path, opened.reason, stop);
    } else {
        opened.sound = Decoder::Open(path, opened.reason, stop);
    }
    return opened;
}

// A pipeline that has just begun is still changing its state, and cannot end while its sinks are full. Taking
// what is ready lets it go on, as playing does.
void TakeWhatIsReady(VideoReader& video) {
    constexpr int kTurns = 5;
    for (int turn = 0; turn < kTurns; ++turn) {
        while (video.NextPicture() || video.NextSound()) {
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
}

// Ending can still hang in a decoder or in the disk. Such a file has opened; what is left of it stays with
// its own thread.
void Close(OpenedMedia opened) {
    constexpr std::chrono::seconds kEndLimit{1};
    if (opened.video) {
        TakeWhatIsReady(*opened.video);
    }
    const auto ending = Errand::Begin(
        [media = std::make_shared<OpenedMedia>(std::move(opened))]() mutable { media.reset(); });
    if (ending) {
        ending->WaitFor(kEndLimit);
    }
}

} // namespace

QString FaultOfMedia(const QString& path, bool isVideo) {
    std::optional<OpenedMedia> opened =
        WithinLimits<OpenedMedia>(OpeningLimits{}, [path, isVideo](const std::atomic<bool>& abandoned) {
            return Open(path, isVideo, abandoned);
        });
    if (!opened) {
        return OpeningTookTooLong();
    }
    if (opened->sound || opened->video) {
        Close(std::move(*opened));
        return QString();
    }
    return opened->reason.isEmpty() ? QStringLiteral("the file does not open") : opened->reason;
}

std::vector<MissingDecoder> MissingDecoders() {
    const bool isStarted = StartGStreamer();
    std::vector<MissingDecoder> missing;
    for (const FormatRow& row : kFormats) {
        if (!isStarted || !HasFactory(row)) {
            missing.push_back({QString::fromLatin1(row.files), QString::fromLatin1(row.package)});
        }
    }
    return missing;
}

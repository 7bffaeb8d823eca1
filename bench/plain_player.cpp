// Plays one video over the whole screen with the jukebox's own reader, clock and window, and nothing else.
// Usage: vantorix-plain-player FILE frames N | FILE seconds N. With "frames" each picture is painted as soon
// as it is decoded, otherwise when it is due. Prints how many pictures were shown and how many came too late.
#include "platform/gstreamer/audio_library.h"
#include "platform/gstreamer/video_graph.h"
#include "platform/qt/qt_event_pump.h"
#include "platform/qt/qt_video_screen.h"
#include "platform/qt/qt_windows.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QScreen>
#include <QThread>

#include <cstdio>

namespace {

int ShowAtOnce(QtWindows& windows, const QString& path, const QRect& screen, int count) {
    std::atomic<bool> stop{false};
    QString reason;
    const std::unique_ptr<VideoReader> reader = VideoReader::Open(path, reason, stop);
    int shown = 0;
    while (reader != nullptr && shown < count && !reader->PicturesEnded() && !reader->HasFailed()) {
        reader->NextSound();
        if (const std::optional<TimedPicture> picture = reader->NextPicture()) {
            windows.ShowVideo(QStringLiteral("Picture_MainVideo"), screen, picture->picture);
            ++shown;
        } else {
            QThread::usleep(200);
        }
    }
    return shown;
}

void PlaySeconds(QtWindows& windows, QtEventPump& pump, const QString& path, const QRect& screen,
                 int seconds) {
    GstAudioLibrary audio;
    audio.BASS_Init(-1, 44100, 0);
    QtVideoScreen videoScreen(windows);
    VideoGraph video({.screen = videoScreen,
                      .output = [&] { return audio.Output(); },
                      .log = [](const QString& line) { std::printf("%s\n", qPrintable(line)); }});
    video.RenderFile(path);
    video.Place(QStringLiteral("Picture_MainVideo"), 0, 0, screen.width(), screen.height());
    video.Run();
    const QDeadlineTimer end(qint64{seconds} * 1000);
    QTimer wake;
    wake.start(100);
    pump.RunWhile([&] { return !end.hasExpired(); });
    video.Stop();
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 4) {
        return 2;
    }
    QApplication::setStyle(QStringLiteral("Fusion"));
    const QApplication application(argc, argv);
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    QtEventPump pump;
    QtWindows windows(pump, nullptr);
    windows.PlaceVideoSurface(QRect(QPoint(0, 0), screen.size()));
    windows.ShowMainWindow(screen);
    const QString path = QString::fromLocal8Bit(argv[1]);
    const int count = QByteArray(argv[3]).toInt();
    if (QByteArray(argv[2]) == "frames") {
        std::printf("%d shown\n", ShowAtOnce(windows, path, screen, count));
    } else {
        PlaySeconds(windows, pump, path, screen, count);
    }
    return 0;
}

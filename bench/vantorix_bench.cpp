// vantorix-bench: the speed of the jukebox compared with other libraries, measured in turn in one run and
// printed as ratios.
#include "dialog_bench.h"
#include "doctor_bench.h"
#include "frame_bench.h"
#include "ini_bench.h"
#include "led_bench.h"
#include "list_bench.h"
#include "png_bench.h"
#include "start_bench.h"
#include "tag_bench.h"
#include "theme_bench.h"
#include "video_bench.h"

#include <QApplication>
#include <QFileInfo>

#include <cstdio>

namespace {

constexpr char kUsage[] =
    "vantorix-bench HOME_FOLDER DEMO_FOLDER "
    "[ini|list|png|tags|frame|queue|turn|dialog|doctor|leds|themes|start|video]...\n"
    "  the folders home/ and demo/ of the repository; without a word every row is measured\n";

} // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_FONT_DPI", "96");
    QApplication::setStyle(QStringLiteral("Fusion"));
    const QApplication application(argc, argv);
    const QStringList words = QApplication::arguments().mid(3);
    const auto wanted = [&](const char* word) {
        return words.isEmpty() || words.contains(QLatin1StringView(word));
    };
    const QString home = QString::fromLocal8Bit(argv[1]);
    if (wanted("ini")) {
        BenchIni(home + QStringLiteral("/themes/default/theme.ini"));
    }
    if (wanted("list")) {
        BenchLists();
    }
    if (wanted("png")) {
        BenchPng(home + QStringLiteral("/themes/default"));
    }
    if (wanted("tags")) {
        BenchTags();
        BenchCovers(home);
    }
    if (wanted("frame")) {
        BenchFrames(home);
    }
    if (wanted("queue")) {
        BenchQueue(home);
    }
    if (wanted("turn")) {
        BenchTurns(home);
    }
    if (wanted("dialog")) {
        BenchDialogs(home);
    }
    if (wanted("doctor")) {
        BenchDoctor(home, QString::fromLocal8Bit(argv[2]));
    }
    if (wanted("leds")) {
        BenchLeds(home);
    }
    if (wanted("themes")) {
        BenchThemes(home);
    }
    if (wanted("start")) {
        const QString programs = QFileInfo(QString::fromLocal8Bit(argv[0])).absolutePath();
        qunsetenv("QT_QPA_PLATFORM");
        BenchStart(programs, home, QString::fromLocal8Bit(argv[2]));
    }
    if (wanted("video")) {
        qunsetenv("QT_QPA_PLATFORM");
        BenchVideos(QFileInfo(QString::fromLocal8Bit(argv[0])).absolutePath());
    }
    return 0;
}

// The check of a music library beside listing it, and beside ffprobe.
#include "doctor_bench.h"

#include "app/doctor/deep_check.h"
#include "app/doctor/library_check.h"
#include "app/doctor/progress.h"
#include "app/doctor/still_files.h"
#include "app/doctor/theme_check.h"
#include "app/findings/finding_report.h"
#include "bench.h"
#include "library/create_list.h"
#include "platform/posix/posix_files.h"
#include "platform/simulated/simulated_platform.h"
#include "settings/config.h"
#include "shell/display_mode.h"
#include "shell/hand_down.h"
#include "state/form_main.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <cstdio>
#include <memory>

namespace {

constexpr int kFilesOfFolder = 20;
constexpr int kRounds = 7;
// ffprobe is a process a file and takes some hundred times as long.
constexpr int kSlowRounds = 3;
constexpr int kSlowFiles = 100;

// Copies of the tracks of the demo library, in folders with a cover.
QString MakeLibrary(const QString& scratch, const QString& demo, int files) {
    QString library = scratch + QStringLiteral("/music%1").arg(files);
    const QString source = demo + QStringLiteral("/Saturday Night");
    const QStringList tracks = QDir(source).entryList({QStringLiteral("*.mp3")}, QDir::Files);
    for (int i = 0; i < files && !tracks.isEmpty(); ++i) {
        const QString folder = library + QStringLiteral("/Band %1").arg(i / kFilesOfFolder);
        if (i % kFilesOfFolder == 0) {
            QDir().mkpath(folder);
            QFile::copy(source + QStringLiteral("/folder.jpg"), folder + QStringLiteral("/folder.jpg"));
        }
        QFile::copy(source + u'/' + tracks[i % tracks.size()],
                    folder + QStringLiteral("/%1 - Band - Song %2.mp3").arg(i % kFilesOfFolder + 1).arg(i));
    }
    return library;
}

// A jukebox with a theme, on files that cannot be changed.
class Loaded {
public:
    explicit Loaded(const QString& home)
        : form_(PortsWith(platform_.ports(), files_), HandDown()), output_(std::fopen("/dev/null", "w")) {
        form_.shell.AppFolder = home;
        ReadScreenKeys(form_);
        CoverScreen(form_);
        ReadPlacementKeys(form_);
        ReadOtherKeys(form_);
        FindingReport report(output_, true);
        hasTheme_ = CheckThemeOfHome(form_, report);
    }
    ~Loaded() { std::fclose(output_); }
    Loaded(const Loaded&) = delete;
    Loaded& operator=(const Loaded&) = delete;

    LibrarySummary Check(const QString& library, bool isDeep) {
        FindingReport report(output_, true);
        Progress progress;
        LibrarySummary summary = CheckLibrary(form_, report, {library, hasTheme_, isDeep}, progress);
        if (isDeep) {
            CheckOpening(summary.media, report, progress);
        }
        return summary;
    }
    void List(const QString& library) {
        PointDir1(form_, library);
        CreateList(form_);
        const QStringList folders = form_.library.Dir1.List;
        for (const QString& folder : folders) {
            form_.library.Dir1.Path = folder;
            CreateList(form_);
        }
    }

private:
    static Ports PortsWith(const Ports& ports, Files& files) {
        return {ports.audio, ports.graphs, ports.MSComm1, ports.display, ports.windows,
                ports.fonts, ports.clock,  ports.pump,    ports.dialogs, ports.messageBox,
                files,       ports.zlib,   ports.pictures};
    }

    PosixFiles real_;
    StillFiles files_{real_};
    SimulatedPlatform platform_;
    Form_Main form_;
    std::FILE* output_;
    bool hasTheme_ = false;
};

void Probe(const QString& program, const std::vector<MediaFile>& files) {
    for (const MediaFile& file : files) {
        QProcess process;
        process.setStandardOutputFile(QProcess::nullDevice());
        process.setStandardErrorFile(QProcess::nullDevice());
        process.start(program, {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-show_format"),
                                QStringLiteral("-show_streams"), file.path});
        process.waitForFinished();
    }
}

} // namespace

void BenchDoctor(const QString& home, const QString& demo) {
    const QTemporaryDir scratch;
    const QString thousand = MakeLibrary(scratch.path(), demo, 1000);
    const QString few = MakeLibrary(scratch.path(), demo, kSlowFiles);
    Loaded loaded(home);
    PrintRow(
        QStringLiteral("A library of 1,000 files"),
        RunInTurn({{QStringLiteral("names, tags and covers checked"), [&] { loaded.Check(thousand, false); }},
                   {QStringLiteral("listed alone"), [&] { loaded.List(thousand); }}},
                  kRounds));
    std::vector<Contender> contenders = {
        {QStringLiteral("names, tags and covers checked"), [&] { loaded.Check(few, false); }},
        {QStringLiteral("the same, and every file opened"), [&] { loaded.Check(few, true); }}};
    const QString program = QStandardPaths::findExecutable(QStringLiteral("ffprobe"));
    const std::vector<MediaFile> files = loaded.Check(few, true).media;
    if (!program.isEmpty()) {
        contenders.push_back({QStringLiteral("ffprobe, file by file"), [&] { Probe(program, files); }});
    }
    PrintRow(QStringLiteral("A library of %1 files").arg(kSlowFiles), RunInTurn(contenders, kSlowRounds));
}

// The time of one whole frame beside one copy of the screen.
#include "frame_bench.h"

#include "bench.h"
#include "platform/simulated/simulated_platform.h"
#include "rendering/redraw_jukebox.h"
#include "settings/ini_file.h"
#include "shell/form_main.h"
#include "shell/start_up.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include <cstdlib>
#include <cstring>
#include <vector>

namespace {

constexpr int kScreenWidth = 1920;
constexpr int kScreenHeight = 1080;

void WriteFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
        std::exit(1);
    }
}

QByteArray ReadFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "cannot read %s\n", qPrintable(path));
        std::exit(1);
    }
    return file.readAll();
}

// A number of theme.ini times the scale; anything else as it is.
QByteArray ScaledLine(const QByteArray& line, double scale) {
    const qsizetype equals = line.indexOf('=');
    bool number = false;
    const double value = line.mid(equals + 1).trimmed().toDouble(&number);
    const bool counts = line.startsWith("ZoneListNbTracksParColonne") || line.startsWith("Key");
    if (equals < 0 || !number || counts) {
        return line;
    }
    return line.left(equals + 1) + QByteArray::number(qRound(value * scale));
}

// Copies a theme with all numbers and pictures scaled.
void ScaleTheme(const QString& from, const QString& to, double scale) {
    QDir().mkpath(to);
    const QStringList names = QDir(from).entryList(QDir::Files);
    for (const QString& name : names) {
        const QString source = from + u'/' + name;
        if (name.endsWith(QStringLiteral(".png"))) {
            const QImage image(source);
            image.scaled(image.size() * scale, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                .save(to + u'/' + name);
        } else if (name == u"theme.ini") {
            QByteArray scaled;
            for (const QByteArray& line : ReadFile(source).split('\n')) {
                scaled += ScaledLine(line, scale) + '\n';
            }
            WriteFile(to + u'/' + name, scaled);
        } else {
            QFile::copy(source, to + u'/' + name);
        }
    }
}

// A home with the delivered configuration, a theme at the scale, and a music folder of 40 tracks.
void MakeHome(const QString& delivered, const QString& home, double scale) {
    const QString music = home + QStringLiteral("/music");
    QDir().mkpath(music);
    QDir().mkpath(home + QStringLiteral("/playlists"));
    for (int i = 1; i <= 40; ++i) {
        WriteFile(QStringLiteral("%1/%2 - Artist %2 - A Song of Number %2.mp3")
                      .arg(music)
                      .arg(i, 2, 10, QChar(u'0')),
                  QByteArray());
    }
    ScaleTheme(delivered + QStringLiteral("/themes/default"), home + QStringLiteral("/themes/default"),
               scale);
    IniFile config(ReadFile(delivered + QStringLiteral("/config.ini")));
    config.SetValue(QStringLiteral("Main"), QStringLiteral("StartPath"), music);
    WriteFile(home + QStringLiteral("/config.ini"), config.Bytes());
}

void BenchFrame(const QString& title, const QString& delivered, double scale) {
    const QTemporaryDir folder;
    MakeHome(delivered, folder.path(), scale);
    SimulationOptions options;
    options.screens = {QRect(0, 0, kScreenWidth, kScreenHeight)};
    SimulatedPlatform platform(options);
    Form_Main form(platform.ports());
    form.AppFolder = folder.path();
    Form_Load(form);
    std::vector<char> screen(static_cast<std::size_t>(kScreenWidth) * kScreenHeight * 4, 1);
    std::vector<char> copy(screen.size());
    PrintRow(title, RunInTurn({{QStringLiteral("one memcpy of the screen"),
                                [&] { std::memcpy(copy.data(), screen.data(), copy.size()); }},
                               {QStringLiteral("RedrawJukebox"), [&] { RedrawJukebox(form); }}},
                              51));
}

} // namespace

void BenchFrames(const QString& homeFolder) {
    BenchFrame(QStringLiteral("A frame of 1920x1080, theme of 1920x1080"), homeFolder, 1.0);
    BenchFrame(QStringLiteral("A frame of 1920x1080, theme of 1280x720"), homeFolder, 2.0 / 3);
}

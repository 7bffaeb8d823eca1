// Makes the application folder of a measured jukebox.
#include "bench_jukebox.h"

#include "settings/ini_file.h"
#include "shell/hand_down.h"
#include "shell/start_up.h"

#include <QDir>
#include <QFile>
#include <QImage>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

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

// Scales a number of theme.ini; anything else is unchanged.
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
        if (scale != 1.0 && name.endsWith(QStringLiteral(".png"))) {
            const QImage image(source);
            image.scaled(image.size() * scale, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                .save(to + u'/' + name);
        } else if (scale != 1.0 && name == u"theme.ini") {
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

void MakeHome(const BenchHome& from, const QString& home) {
    const QString music = home + QStringLiteral("/music");
    QDir().mkpath(music);
    QDir().mkpath(home + QStringLiteral("/playlists"));
    for (int i = 1; i <= 40; ++i) {
        WriteFile(QStringLiteral("%1/%2 - Artist %2 - A Song of Number %2.mp3")
                      .arg(music)
                      .arg(i, 2, 10, QChar(u'0')),
                  QByteArray());
    }
    const QString theme = QStringLiteral("/themes/") + from.theme;
    ScaleTheme(from.delivered + theme, home + theme, from.scale);
    IniFile config(ReadFile(from.delivered + QStringLiteral("/config.ini")));
    const bool isUpright = from.screen.height() > from.screen.width();
    const auto set = [&](const char* key, const QString& value) {
        config.SetValue(QStringLiteral("Main"), QString::fromLatin1(key), value);
    };
    set("StartPath", music);
    set("Theme", from.theme);
    set("Orientation", isUpright ? QStringLiteral("vertical") : QStringLiteral("horizontal"));
    WriteFile(home + QStringLiteral("/config.ini"), config.Bytes());
}

SimulationOptions OneScreen(const QSize& size) {
    SimulationOptions options;
    options.screens = {QRect(QPoint(0, 0), size)};
    return options;
}

} // namespace

BenchJukebox::BenchJukebox(const BenchHome& home)
    : platform(OneScreen(home.screen)), form(platform.ports(), HandDown()) {
    MakeHome(home, folder_.path());
    form.shell.AppFolder = folder_.path();
}

void BenchJukebox::Load() {
    Form_Load(form);
}

ScreenCopy::ScreenCopy(const QSize& screen)
    : screen_(static_cast<std::size_t>(screen.width()) * static_cast<std::size_t>(screen.height()) * 4, 1),
      copy_(screen_.size()) {}

void ScreenCopy::Run() {
    std::memcpy(copy_.data(), screen_.data(), copy_.size());
}

// A jukebox on a simulated machine, with its own copy of the plain test home.
#pragma once

#include "core/path_text.h"
#include "core/run_time_error.h"
#include "platform/simulated/simulated_platform.h"
#include "shell/hand_down.h"
#include "shell/start_up.h"
#include "state/form_main.h"
#include "support/gui_application.h"
#include "support/home_folder.h"

#include <QDir>
#include <QFile>
#include <QStringList>

#include <optional>
#include <utility>
#include <vector>

// The run-time error with which a routine stops the program; nothing when the routine returns.
template <typename Body>
std::optional<ProgramStop> StopOf(Body&& body) {
    try {
        std::forward<Body>(body)();
    } catch (const ProgramStop& stop) {
        return stop;
    }
    return std::nullopt;
}

// The home is a copy of tests/homes/plain, with the music folder next to it. The screen has the theme's size,
// so one design pixel is one screen pixel. Start starts the jukebox.
class Jukebox {
public:
    explicit Jukebox(const QSize& screen = QSize(640, 360)) : Jukebox({QRect(QPoint(0, 0), screen)}) {}
    // With several monitors, the primary one first.
    explicit Jukebox(std::vector<QRect> screens)
        : platform(OptionsFor(std::move(screens))), form(platform.ports(), HandDown()) {
        for (const char* folder : {"", "/playlists", "/themes/default"}) {
            const QString name = QString::fromLatin1(folder);
            CopyFolder(TextOfPath(TESTS_FOLDER "/homes/plain") + name, Home() + name);
        }
        folder_.MakeFolder(QStringLiteral("music"));
        SetKey(QStringLiteral("config.ini"), QStringLiteral("Main"), QStringLiteral("StartPath"), Music());
        form.shell.AppFolder = Home();
    }

    QString Home(const QString& name = QString()) const {
        return folder_.Path(Below(QStringLiteral("home"), name));
    }
    QString Music(const QString& name = QString()) const {
        return folder_.Path(Below(QStringLiteral("music"), name));
    }

    // Makes an empty file, or an empty folder, in the music folder.
    void Track(const QString& name) { folder_.Write(Below(QStringLiteral("music"), name)); }
    void Folder(const QString& name) { QDir().mkpath(Music(name)); }

    // Sets a key of an INI file of the home, or removes the key. Other lines do not change.
    void SetKey(const QString& file, const QString& section, const QString& key, const QString& value) {
        ChangeKey(file, section, key, key + u'=' + value);
    }
    void RemoveKey(const QString& file, const QString& section, const QString& key) {
        ChangeKey(file, section, key, std::nullopt);
    }
    // The same in the theme's file.
    void SetTheme(const QString& section, const QString& key, const QString& value) {
        SetKey(kThemeFile, section, key, value);
    }
    void RemoveTheme(const QString& section, const QString& key) { RemoveKey(kThemeFile, section, key); }

    void Start() { Form_Load(form); }

    // The lines of the log without their time.
    QStringList Log() const {
        QFile file(Home(QStringLiteral("vantorix.log")));
        file.open(QIODevice::ReadOnly);
        QStringList lines = QString::fromUtf8(file.readAll()).split(QStringLiteral("\r\n"));
        lines.removeLast();
        constexpr int kStamp = 19;
        for (QString& line : lines) {
            line.remove(0, kStamp);
        }
        return lines;
    }
    // The arguments of every text drawn so far, as the log lists them.
    QStringList DrawnTexts() const {
        QStringList drawn;
        const QString head = QStringLiteral(" : DrawText (");
        for (const QString& line : Log()) {
            if (line.startsWith(head)) {
                drawn += line.mid(head.size()).chopped(1);
            }
        }
        return drawn;
    }

private:
    static inline const QString kThemeFile = QStringLiteral("themes/default/theme.ini");

    static SimulationOptions OptionsFor(std::vector<QRect> screens) {
        SimulationOptions options;
        options.screens = std::move(screens);
        return options;
    }
    static QString Below(const QString& folder, const QString& name) {
        return name.isEmpty() ? folder : folder + u'/' + name;
    }
    // Pictures and sounds are only read, so links are enough.
    static void CopyFolder(const QString& from, const QString& to) {
        QDir().mkpath(to);
        for (const QFileInfo& entry : QDir(from).entryInfoList(QDir::Files)) {
            const QString target = to + u'/' + entry.fileName();
            entry.suffix() == u"ini" ? QFile::copy(entry.filePath(), target)
                                     : QFile::link(entry.filePath(), target);
        }
    }

    void ChangeKey(const QString& file, const QString& section, const QString& key,
                   const std::optional<QString>& line) {
        QStringList lines = QString::fromUtf8(folder_.Read(Below(QStringLiteral("home"), file))).split(u'\n');
        qsizetype at = lines.indexOf(u'[' + section + u']');
        if (at < 0) {
            lines += u'[' + section + u']';
            at = lines.size() - 1;
        }
        qsizetype end = at + 1;
        while (end < lines.size() && !lines[end].startsWith(u'[') && !lines[end].startsWith(key + u'=')) {
            ++end;
        }
        if (end < lines.size() && lines[end].startsWith(key + u'=')) {
            lines.removeAt(end);
        }
        if (line) {
            lines.insert(at + 1, *line);
        }
        folder_.Write(Below(QStringLiteral("home"), file), lines.join(u'\n').toUtf8());
    }

    HomeFolder folder_;

public:
    SimulatedPlatform platform;
    Form_Main form;
};

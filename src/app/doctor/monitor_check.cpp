// Comparing config.ini with the monitors of the X server or of the kernel.
#include "app/doctor/monitor_check.h"

#include "app/doctor/setting_values.h"
#include "app/findings/finding_report.h"
#include "core/monitor_layout.h"
#include "core/path_text.h"
#include "platform/display.h"
#include "settings/ini_file.h"

#include <QDir>
#include <QFile>

#include <algorithm>

namespace {

void Report(FindingReport& report, Level level, const QString& path, const QString& text,
            const QString& advice) {
    report.Add({level, Subject::kMachine, path, text, advice});
}

QString WordsOf(const QSize& size) {
    return QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
}

QString WordsOf(const std::vector<QSize>& modes) {
    QStringList words;
    for (const QSize& mode : modes) {
        words += words.contains(WordsOf(mode)) ? QStringList() : QStringList{WordsOf(mode)};
    }
    return words.isEmpty() ? QStringLiteral("no modes") : words.join(QStringLiteral(", "));
}

// The mode that is set at the start; nothing when the screen keeps its mode.
std::optional<DisplayMode> WantedMode(const IniFile& config) {
    return config.Value(u"Main", u"Fullscreen").toLower() == u"true"
               ? ScreenModeOf(config.Value(u"Main", u"FullscreenSize"))
               : std::nullopt;
}

bool HasDepth(const ShownMonitors& shown, const DisplayMode& mode) {
    return (mode.bits == 24 ? 32 : mode.bits) == shown.bitsPerPixel;
}

bool ListsSize(const ShownMonitors& shown, const DisplayMode& mode) {
    const QSize size(mode.width, mode.height);
    return shown.places.front().size() == size ||
           std::find(shown.modes.begin(), shown.modes.end(), size) != shown.modes.end();
}

void CheckMode(const ShownMonitors& shown, const DisplayMode& mode, FindingReport& report) {
    const QString size = WordsOf(QSize(mode.width, mode.height));
    if (!ListsSize(shown, mode)) {
        Report(report, Level::kWarning, shown.display,
               QStringLiteral("The first monitor does not list the size \"%1\" of FullscreenSize, so the "
                              "screen keeps its mode after a message. It lists %2.")
                   .arg(size, WordsOf(shown.modes)),
               QStringLiteral(
                   "Set FullscreenSize in config.ini to a size of the monitor, or Fullscreen=false."));
    } else if (!HasDepth(shown, mode)) {
        Report(report, Level::kWarning, shown.display,
               QStringLiteral(
                   "The depth of FullscreenSize is %1 bits, but the screen has %2, so it keeps its mode "
                   "after a message.")
                   .arg(mode.bits)
                   .arg(shown.bitsPerPixel),
               QStringLiteral("Write FullscreenSize=%1 %2bits in config.ini, or Fullscreen=false.")
                   .arg(size)
                   .arg(shown.bitsPerPixel));
    }
}

// The monitors after the start.
std::vector<QRect> PlacesAtWork(const ShownMonitors& shown, const std::optional<DisplayMode>& mode) {
    return mode && ListsSize(shown, *mode) && HasDepth(shown, *mode)
               ? LayoutWithPrimary(shown.places, QSize(mode->width, mode->height))
               : shown.places;
}

// The window of videos is shown when its left edge is beyond the width of the first monitor, wherever that
// monitor is.
void CheckVideoPlace(const ShownMonitors& shown, const std::vector<QRect>& places, int left,
                     FindingReport& report) {
    const int width = places.front().width();
    const auto holds = [=](const QRect& place) { return left >= place.left() && left <= place.right(); };
    if (left < width) {
        Report(report, Level::kNote, shown.display,
               QStringLiteral("Videos stay on the first monitor, because VideoPositionLeft is %1 and this "
                              "monitor is %2 pixels wide.")
                   .arg(left)
                   .arg(width),
               QStringLiteral("For a second monitor set VideoPositionLeft in config.ini to %1 or more, "
                              "otherwise empty it.")
                   .arg(width + 1));
    } else if (left == width) {
        Report(report, Level::kWarning, shown.display,
               QStringLiteral("Videos are heard but not seen, because VideoPositionLeft is exactly the width "
                              "of the first monitor."),
               QStringLiteral("Set VideoPositionLeft in config.ini to %1, or empty it.").arg(width + 1));
    } else if (std::none_of(places.begin(), places.end(), holds)) {
        Report(report, Level::kWarning, shown.display,
               QStringLiteral("Videos are heard but not seen, because there is no monitor at "
                              "VideoPositionLeft=%1.")
                   .arg(left),
               QStringLiteral("Connect the second monitor and make it a part of the desktop beside the first "
                              "one, or empty VideoPositionLeft in config.ini."));
    }
}

QString TextOfFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? TextOfPath(file.read(65536)) : QString();
}

struct Monitor {
    QString name;
    QStringList modes;
};

// The monitors that are connected, from the kernel.
std::vector<Monitor> Monitors(const QString& root) {
    const QString folder = PathIn(root, QStringLiteral("sys/class/drm"));
    std::vector<Monitor> monitors;
    for (const QString& name :
         QDir(folder).entryList({QStringLiteral("card*-*")}, QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QString monitor = PathIn(folder, name);
        if (TextOfFile(PathIn(monitor, QStringLiteral("status"))).trimmed() == u"connected") {
            monitors.push_back(
                {name.mid(name.indexOf(u'-') + 1),
                 TextOfFile(PathIn(monitor, QStringLiteral("modes"))).split(u'\n', Qt::SkipEmptyParts)});
        }
    }
    return monitors;
}

} // namespace

void CheckShownMonitors(const ShownMonitors& shown, const IniFile& config, FindingReport& report) {
    if (shown.places.empty()) {
        Report(report, Level::kNote, shown.display,
               QStringLiteral("The X server does not list its monitors."), {});
        return;
    }
    QStringList words;
    for (const QRect& place : shown.places) {
        words += QStringLiteral("%1 at %2,%3").arg(WordsOf(place.size())).arg(place.x()).arg(place.y());
    }
    Report(report, Level::kNote, shown.display,
           QStringLiteral("Monitors of the X server: %1. The jukebox is on the first one.")
               .arg(words.join(QStringLiteral(", "))),
           {});
    const std::optional<DisplayMode> mode = WantedMode(config);
    if (mode) {
        CheckMode(shown, *mode, report);
    }
    const std::optional<int> left = PixelsOf(config.Value(u"Main", u"VideoPositionLeft"));
    if (left) {
        CheckVideoPlace(shown, PlacesAtWork(shown, mode), *left, report);
    }
}

void CheckConnectedMonitors(const QString& root, const IniFile& config, FindingReport& report) {
    const std::vector<Monitor> monitors = Monitors(root);
    const QString folder = PathIn(root, QStringLiteral("sys/class/drm"));
    if (monitors.empty()) {
        Report(report, Level::kNote, folder,
               QStringLiteral("The kernel reports no monitor that is connected."),
               QStringLiteral("Connect and switch on the screen, if this is the cabinet."));
        return;
    }
    QStringList words;
    bool hasMode = false;
    const QString wanted = config.Value(u"Main", u"FullscreenSize").toLower().simplified();
    const QString size = wanted.left(wanted.indexOf(u' ')).remove(u' ');
    for (const Monitor& monitor : monitors) {
        words +=
            QStringLiteral("%1 (%2)").arg(monitor.name, monitor.modes.value(0, QStringLiteral("no modes")));
        hasMode = hasMode || monitor.modes.contains(size);
    }
    Report(report, Level::kNote, folder,
           QStringLiteral("Monitors: %1.").arg(words.join(QStringLiteral(", "))), {});
    if (config.Value(u"Main", u"Fullscreen").toLower() == u"true" && !hasMode) {
        Report(report, Level::kWarning, folder,
               QStringLiteral("No monitor that is connected lists the size \"%1\" of FullscreenSize, so the "
                              "screen keeps its mode "
                              "after a message.")
                   .arg(size),
               QStringLiteral(
                   "Set FullscreenSize in config.ini to a size of the monitor, or Fullscreen=false."));
    }
}

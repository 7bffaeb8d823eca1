// Setting the music folder without a screen.
#include "app/home/setup.h"

#include "core/path_text.h"
#include "library/file_pattern.h"
#include "platform/files.h"
#include "platform/posix/termination_signals.h"
#include "settings/ini_file.h"
#include "settings/safe_write.h"
#include "state/library_state.h"

#include <thread>

namespace {

constexpr std::int64_t kLargestConfig = std::int64_t{16} * 1024 * 1024;
// Links can make a folder contain itself.
constexpr int kDeepest = 40;

// Counts what the jukebox would list in a folder and below.
class TrackCounter {
public:
    TrackCounter(Files& files, std::chrono::milliseconds patience)
        : files_(files), deadline_(std::chrono::steady_clock::now() + patience) {}

    // Returns false when the folder cannot be read or does not answer.
    bool Count(const QString& folder, int depth = 0) {
        const auto entries = files_.ListSlowFolder(folder, [this] { return Wait(); });
        if (!entries) {
            return false;
        }
        for (const FolderEntry& entry : *entries) {
            if (entry.name.startsWith(u'.')) {
                continue;
            }
            if (!entry.isFolder) {
                tracks += isMusic_.Matches(entry.name) && !isPlaylist_.Matches(entry.name) ? 1 : 0;
            } else if (depth < kDeepest && HasTime()) {
                Count(PathIn(folder, entry.name), depth + 1);
            }
        }
        return true;
    }
    bool HasTime() const { return TerminationSignal() == 0 && std::chrono::steady_clock::now() < deadline_; }

    int tracks = 0;

private:
    bool Wait() const {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        return HasTime();
    }

    Files& files_;
    std::chrono::steady_clock::time_point deadline_;
    FilePattern isMusic_{kMusicPattern.toString()};
    FilePattern isPlaylist_{QStringLiteral("*.vtxpl")};
};

// The file whose keys are kept.
QString ModelOfConfig(Files& files, const QString& home, const QString& share) {
    const QString name = QStringLiteral("config.ini");
    const QString own = PathIn(home, name);
    return files.Identity(own) || share.isEmpty() ? own : PathIn(share, name);
}

// Returns what went wrong, or an empty text.
QString WriteStartPath(Files& files, const QString& home, const QString& share, const QString& folder) {
    const QString section = QStringLiteral("Main");
    const QString key = QStringLiteral("StartPath");
    const QString path = PathIn(home, QStringLiteral("config.ini"));
    const QString model = ModelOfConfig(files, home, share);
    const std::optional<QByteArray> bytes = files.ReadWhole(model, kLargestConfig);
    if (!bytes) {
        return QStringLiteral("\"%1\" does not exist or cannot be read").arg(model);
    }
    IniFile config(*bytes);
    config.SetValue(section, key, folder);
    // Line feeds, blanks at the start and more than 254 characters would not be read back.
    if (IniFile(config.Bytes()).Value(section, key) != folder) {
        return QStringLiteral(
                   "config.ini cannot hold the path \"%1\": it is too long, begins with a blank, or "
                   "has a line feed in it")
            .arg(folder);
    }
    if ((config.Bytes() != *bytes || model != path) && !WriteFileSafely(files, path, config.Bytes())) {
        return QStringLiteral("\"%1\" cannot be written; the disk may be full or read-only").arg(path);
    }
    return QString();
}

} // namespace

SetupResult SetMusicFolder(Files& files, const QString& home, const QString& share, const QString& folder,
                           std::chrono::milliseconds patience) {
    SetupResult result;
    result.folder = WithoutSeparatorAtEnd(folder.startsWith(u'/') ? folder : files.RealPath(folder));
    if (!files.IsFolder(result.folder)) {
        result.error = QStringLiteral("there is no folder \"%1\"").arg(result.folder);
        return result;
    }
    TrackCounter counter(files, patience);
    const bool isCounted = counter.Count(result.folder);
    if (TerminationSignal() != 0) {
        result.error = QStringLiteral("interrupted; the music folder has not been set");
        return result;
    }
    if (!isCounted) {
        result.error = QStringLiteral("the folder \"%1\" cannot be read").arg(result.folder);
        return result;
    }
    result.tracks = counter.tracks;
    result.isMore = !counter.HasTime();
    result.error = WriteStartPath(files, home, share, result.folder);
    return result;
}

QStringList ThemesThatHideDelivered(Files& files, const QString& home, const QString& share) {
    const QString themes = QStringLiteral("themes");
    QStringList names;
    if (share.isEmpty()) {
        return names;
    }
    for (const FolderEntry& entry :
         files.ListFolder(PathIn(share, themes)).value_or(std::vector<FolderEntry>())) {
        if (entry.isFolder && files.IsFolder(PathIn(PathIn(home, themes), entry.name))) {
            names += entry.name;
        }
    }
    names.sort();
    return names;
}

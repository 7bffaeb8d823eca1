// Watching the files of a theme.
#include "app/workshop/theme_watch.h"

#include "core/path_text.h"
#include "platform/posix/posix_files.h"

#include <QStringList>

namespace {

constexpr int kQuietMilliseconds = 100;
constexpr int kSlowMilliseconds = 3000;
// A folder with more files is not a theme, and the system limits the number of watches.
constexpr int kMostWatched = 200;

} // namespace

ThemeWatch::ThemeWatch(QString folder, std::function<void()> onChange)
    : folder_(std::move(folder)), onChange_(std::move(onChange)) {
    seen_ = reported_ = ReadState();
    const auto begin = [this] { Begin(); };
    QObject::connect(&watcher_, &QFileSystemWatcher::directoryChanged, &quiet_, begin);
    QObject::connect(&watcher_, &QFileSystemWatcher::fileChanged, &quiet_, begin);
    QObject::connect(&quiet_, &QTimer::timeout, &quiet_, [this] { Look(); });
    QObject::connect(&slow_, &QTimer::timeout, &slow_, [this] {
        if (!quiet_.isActive() && ReadState() != reported_) {
            Begin();
        }
    });
    slow_.start(kSlowMilliseconds);
}

// Returns the identities of all files, and watches those that are new. A file that was replaced by a rename
// needs a new watch.
ThemeWatch::State ThemeWatch::ReadState() {
    PosixFiles files;
    State state;
    QStringList paths = {folder_};
    for (const FolderEntry& entry : files.ListFolder(folder_).value_or(std::vector<FolderEntry>())) {
        const QString path = PathIn(folder_, entry.name);
        const auto identity = entry.isFolder ? std::nullopt : files.Identity(path);
        if (identity) {
            state[path] = *identity;
            paths += paths.size() < kMostWatched ? QStringList{path} : QStringList();
        }
    }
    const QStringList watched = watcher_.files() + watcher_.directories();
    for (const QString& path : paths) {
        if (!watched.contains(path) && (path != folder_ || files.IsFolder(path))) {
            watcher_.addPath(path);
        }
    }
    return state;
}

void ThemeWatch::Begin() {
    seen_ = ReadState();
    quiet_.start(kQuietMilliseconds);
}

void ThemeWatch::Look() {
    State now = ReadState();
    if (now != seen_) {
        seen_ = std::move(now);
        return;
    }
    quiet_.stop();
    if (seen_ != reported_) {
        reported_ = seen_;
        onChange_();
    }
}

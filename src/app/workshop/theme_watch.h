// Noticing that files of a theme have been saved.
#pragma once

#include "platform/files.h"

#include <QFileSystemWatcher>
#include <QTimer>

#include <functional>
#include <map>

// Watches a folder and the files in it. Editors write a file in pieces, or write another one and rename it;
// several files may be saved at once. All of that is one change, reported once the folder has been quiet for
// 100 ms. Needs an event loop.
class ThemeWatch {
public:
    ThemeWatch(QString folder, std::function<void()> onChange);

private:
    using State = std::map<QString, FileIdentity>;
    State ReadState();
    void Begin();
    void Look();

    QString folder_;
    std::function<void()> onChange_;
    QFileSystemWatcher watcher_;
    // Runs from the first sign of a change until the folder is quiet.
    QTimer quiet_;
    // Finds what the watcher misses: network folders, and a folder that was replaced.
    QTimer slow_;
    State seen_;
    State reported_;
};

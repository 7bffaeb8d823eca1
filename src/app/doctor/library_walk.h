// Visiting every folder of a music library once, whatever its links and rights.
#pragma once

#include <QString>

#include <cstdint>
#include <functional>
#include <vector>

enum class EntryKind { kFile, kFolder, kBrokenLink, kOther };

// What a folder holds, with links followed.
struct WalkEntry {
    QString name;
    EntryKind kind = EntryKind::kOther;
    bool isLink = false;
    // Whether this process may read the file, or list and enter the folder.
    bool isReadable = false;
    std::int64_t size = 0;
};

struct WalkedFolder {
    QString path;
    // 0 for the folder where the walk began.
    int depth = 0;
    // The system's error number when the folder cannot be read; `entries` is empty then.
    int error = 0;
    std::vector<WalkEntry> entries;
};

struct WalkVisitor {
    std::function<void(const WalkedFolder& folder)> visit;
    // Whether to go into a folder of the folder visited last.
    std::function<bool(const QString& path, const QString& name)> enters;
    // Called for a link to one of the folders that it is in.
    std::function<void(const QString& link, const QString& target)> atLoop;
    // Called for a folder that has been visited already under another path.
    std::function<void(const QString& path)> atSecondPath;
};

// Walks through `root` and the folders below it, in the order of their names. Ends on every file system: each
// folder is visited once.
void WalkLibrary(const QString& root, const WalkVisitor& visitor);

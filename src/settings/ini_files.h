// Cached copies of the parsed INI files, parsed again when a file has changed on disk.
#pragma once

#include "settings/ini_file.h"

#include <QString>

#include <functional>
#include <memory>
#include <vector>

struct Files;

// The cache of all INI files of the jukebox. A missing or unreadable file reads as an empty one.
class IniFiles {
public:
    IniFiles();
    ~IniFiles();

    // Returns the current file: checks its identity, and parses it again only when that has changed. The
    // reference is valid until the next call for the same path.
    const IniFile& Open(Files& files, const QString& path);

    // Sets one key of a section and replaces the whole file safely (see WriteFileSafely). Returns false when
    // it could not be written; the file and the parsed copy are then unchanged.
    bool Write(Files& files, const QString& path, const QString& section, const QString& key,
               const QString& value);

    // Does the same for any number of keys: `change` sets them on the parsed copy, and one write follows. An
    // exception in `change` is rethrown after the keys set so far have been written.
    bool Change(Files& files, const QString& path, const std::function<void(IniFile&)>& change);

private:
    struct Copy;
    Copy& Fresh(Files& files, const QString& path);
    static bool WriteBack(Files& files, Copy& copy, const QByteArray& before);

    std::vector<std::unique_ptr<Copy>> copies_;
};

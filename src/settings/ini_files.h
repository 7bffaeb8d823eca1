// The parsed copies of the INI files, made anew when a file has changed on disk.
#pragma once

#include "settings/ini_file.h"

#include <QString>

#include <functional>
#include <memory>
#include <vector>

struct Files;

// What the jukebox knows of its INI files. A missing or unreadable file reads as an empty one.
class IniFiles {
public:
    IniFiles();
    ~IniFiles();

    // The file as it stands now: one look at its identity, and a new parse only when that has changed. The
    // reference holds until the next call for the same path.
    const IniFile& Open(Files& files, const QString& path);

    // Sets one key of a section and writes the file whole, safe from a power cut. False when it could not be
    // written; the file and the parsed copy are then as before.
    bool Write(Files& files, const QString& path, const QString& section, const QString& key,
               const QString& value);

    // The same for any number of keys: `change` sets them on the parsed copy, and one write follows. A
    // run-time error in it goes on after what it had set until then has been written.
    bool Change(Files& files, const QString& path, const std::function<void(IniFile&)>& change);

private:
    struct Copy;
    Copy& Fresh(Files& files, const QString& path);
    static bool WriteBack(Files& files, Copy& copy, const QByteArray& before);

    std::vector<std::unique_ptr<Copy>> copies_;
};

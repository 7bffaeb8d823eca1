// A temporary application folder, for tests.
#pragma once

#include "core/path_text.h"
#include "platform/posix/posix_files.h"

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include <filesystem>
#include <system_error>

// Names of files and folders are relative to the folder; names may hold bytes that are not UTF-8. The
// destructor removes the folder.
class HomeFolder {
public:
    HomeFolder() { folder_.setAutoRemove(false); }
    ~HomeFolder() {
        // Unlike QTemporaryDir this removes names with any bytes.
        std::error_code error;
        std::filesystem::remove_all(folder_.path().toStdString(), error);
    }
    HomeFolder(const HomeFolder&) = delete;
    HomeFolder& operator=(const HomeFolder&) = delete;

    QString Path(const QString& name = QString()) const {
        return name.isEmpty() ? folder_.path() : folder_.path() + u'/' + name;
    }
    QString Write(const QString& name, const QByteArray& bytes = QByteArray()) {
        files_.Write(Path(name), bytes, false);
        return Path(name);
    }
    QString MakeFolder(const QString& name) {
        files_.MakeFolder(Path(name));
        return Path(name);
    }
    // The file's bytes, or "(missing)".
    QByteArray Read(const QString& name) {
        return files_.ReadWhole(Path(name), 1 << 30).value_or("(missing)");
    }
    // The number of entries in the folder, hidden ones included.
    std::size_t Count(const QString& name = QString()) {
        return files_.ListFolder(Path(name)).value_or(std::vector<FolderEntry>()).size();
    }
    PosixFiles& files() { return files_; }

private:
    QTemporaryDir folder_;
    PosixFiles files_;
};

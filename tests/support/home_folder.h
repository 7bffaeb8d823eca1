// A temporary application folder, for tests.
#pragma once

#include "core/path_text.h"
#include "platform/posix/posix_files.h"

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include <filesystem>
#include <system_error>

// Files and folders are named from the folder; bytes of a name that are no UTF-8 stay. It is removed at the
// end.
class HomeFolder {
public:
    HomeFolder() { folder_.setAutoRemove(false); }
    ~HomeFolder() {
        // Unlike QTemporaryDir this removes names of any bytes.
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
    // The file's bytes; "(missing)" when there is none.
    QByteArray Read(const QString& name) {
        return files_.ReadWhole(Path(name), 1 << 30).value_or("(missing)");
    }
    // How many entries the folder has, hidden ones included.
    std::size_t Count(const QString& name = QString()) {
        return files_.ListFolder(Path(name)).value_or(std::vector<FolderEntry>()).size();
    }
    PosixFiles& files() { return files_; }

private:
    QTemporaryDir folder_;
    PosixFiles files_;
};

// The names of a folder's files, looked up without regard to case.
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

struct Files;

// The file names of a folder, as they were at the first lookup: the folder is read then, and only once.
class FolderNames {
public:
    FolderNames(Files& files, QString folder) : files_(files), folder_(std::move(folder)) {}

    // Whether the file of this path exists, under the exact name or one that differs only in case. Paths in
    // other folders are looked up exactly.
    bool HasFile(const QString& path) const;
    // Returns the path of such a file as it is spelled on disk: the exact name if it exists, otherwise the
    // first of those that differ only in case. Empty when there is none. Requires a path in the folder.
    QString FindFile(const QString& path) const;

private:
    void Read() const;

    Files& files_;
    QString folder_;
    mutable bool read_ = false;
    // The names as they are on disk, keyed by their case-folded form.
    mutable QHash<QString, QStringList> names_;
};

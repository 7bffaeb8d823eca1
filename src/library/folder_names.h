// The names of a folder's files, looked up without regard to case.
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

struct Files;

// A folder's file names as they stood when first asked for; the folder is read once, and only when something
// is asked.
class FolderNames {
public:
    FolderNames(Files& files, QString folder) : files_(files), folder_(std::move(folder)) {}

    // Whether the file of this path exists, the exact name or one that differs in case only. Paths of other
    // folders are looked up exactly.
    bool HasFile(const QString& path) const;
    // The path of such a file as it is on disk: the exact name first, else the first of those that differ in
    // case only. Empty when there is none. The path lies in the folder.
    QString FindFile(const QString& path) const;

private:
    void Read() const;

    Files& files_;
    QString folder_;
    mutable bool read_ = false;
    // The names as they are on disk, under the same without case.
    mutable QHash<QString, QStringList> names_;
};

// The names of a folder's files, looked up without regard to case.
#pragma once

#include <QSet>
#include <QString>

struct Files;

// A folder's file names as they stood when first asked for; the folder is read once, and only when something
// is asked.
class FolderNames {
public:
    FolderNames(Files& files, QString folder) : files_(files), folder_(std::move(folder)) {}

    // Whether the file of this path exists, the exact name or one that differs in case only. Paths of other
    // folders are looked up exactly.
    bool HasFile(const QString& path) const;

private:
    Files& files_;
    QString folder_;
    mutable bool read_ = false;
    mutable QSet<QString> names_;
};

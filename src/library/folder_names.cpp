// The names of a folder's files, looked up without regard to case.
#include "library/folder_names.h"

#include "library/find_file.h"
#include "platform/files.h"

#include <algorithm>

void FolderNames::Read() const {
    if (read_) {
        return;
    }
    read_ = true;
    for (const FolderEntry& entry : files_.ListFolder(folder_).value_or(std::vector<FolderEntry>())) {
        if (!entry.isFolder) {
            names_[entry.name.toCaseFolded()] += entry.name;
        }
    }
}

bool FolderNames::HasFile(const QString& path) const {
    const qsizetype separator = path.lastIndexOf(u'/');
    if (path.left(separator) != folder_) {
        return FileExists(files_, path);
    }
    Read();
    return names_.contains(path.mid(separator + 1).toCaseFolded());
}

QString FolderNames::FindFile(const QString& path) const {
    Read();
    const QString name = path.mid(path.lastIndexOf(u'/') + 1);
    const QStringList found = names_.value(name.toCaseFolded());
    if (found.isEmpty() || found.contains(name)) {
        return found.isEmpty() ? QString() : path;
    }
    return folder_ + u'/' + *std::min_element(found.begin(), found.end());
}

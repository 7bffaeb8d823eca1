// The names of a folder's files, looked up without regard to case.
#include "library/folder_names.h"

#include "core/path_text.h"
#include "platform/files.h"
#include "state/paths.h"

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
    if (FolderOfPath(path) != folder_) {
        return FileExists(files_, path);
    }
    Read();
    return names_.contains(NameOfPath(path).toCaseFolded());
}

QString FolderNames::FindFile(const QString& path) const {
    Read();
    const QString name = NameOfPath(path);
    const QStringList found = names_.value(name.toCaseFolded());
    if (found.isEmpty() || found.contains(name)) {
        return found.isEmpty() ? QString() : path;
    }
    return PathIn(folder_, *std::min_element(found.begin(), found.end()));
}

// The names of a folder's files, looked up without regard to case.
#include "library/folder_names.h"

#include "library/find_file.h"
#include "platform/files.h"

bool FolderNames::HasFile(const QString& path) const {
    const qsizetype separator = path.lastIndexOf(u'/');
    if (path.left(separator) != folder_) {
        return FileExists(files_, path);
    }
    if (!read_) {
        read_ = true;
        for (const FolderEntry& entry : files_.ListFolder(folder_).value_or(std::vector<FolderEntry>())) {
            if (!entry.isFolder) {
                names_.insert(entry.name.toCaseFolded());
            }
        }
    }
    return names_.contains(path.mid(separator + 1).toCaseFolded());
}

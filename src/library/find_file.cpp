// Looking for a name without regard to case.
#include "library/find_file.h"

#include "core/path_text.h"
#include "platform/files.h"

QString FindFile(Files& files, const QString& folder, const QString& name) {
    QString exact = PathIn(folder, name);
    if (FileExists(files, exact)) {
        return exact;
    }
    const QString folded = name.toCaseFolded();
    QString found;
    for (const FolderEntry& entry : files.ListFolder(folder).value_or(std::vector<FolderEntry>())) {
        // Of several the first in the order of their characters' numbers, so that the answer does not change.
        const bool matches =
            !entry.isFolder && entry.name.size() == name.size() && entry.name.toCaseFolded() == folded;
        if (matches && (found.isEmpty() || entry.name < found)) {
            found = entry.name;
        }
    }
    return found.isEmpty() ? found : PathIn(folder, found);
}

bool FileExists(Files& files, const QString& path) {
    return files.Identity(path).has_value();
}

// Listing folders, each once while it is checked.
#include "app/doctor/still_files.h"

std::optional<std::vector<FolderEntry>> StillFiles::ListFolder(const QString& path) {
    if (path != listedPath_ || !listed_) {
        listed_ = real_.ListFolder(path);
        listedPath_ = path;
    }
    return listed_;
}

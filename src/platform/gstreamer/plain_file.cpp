// Looks at a path before anything is opened.
#include "platform/gstreamer/plain_file.h"

#include <sys/stat.h>

bool IsPlainFile(const QByteArray& path, QString& reason) {
    struct stat status {};
    if (path.isEmpty() || path.contains('\0') || stat(path.constData(), &status) != 0) {
        reason = QStringLiteral("the file is missing");
        return false;
    }
    if (!S_ISREG(status.st_mode)) {
        reason = QStringLiteral("this is no file");
        return false;
    }
    if (status.st_size == 0) {
        reason = QStringLiteral("the file is empty");
        return false;
    }
    return true;
}

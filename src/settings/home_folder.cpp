// Checking whether a folder can be the application folder.
#include "settings/home_folder.h"

#include "core/path_text.h"
#include "platform/files.h"
#include "settings/home_restore.h"

bool HoldsJukebox(Files& files, const QString& folder) {
    return files.Identity(PathIn(folder, QStringLiteral("config.ini"))).has_value() ||
           files.IsFolder(PathIn(folder, QStringLiteral("themes"))) || HoldsRestore(files, folder);
}

QString FaultOfHome(Files& files, const QString& folder, const QString& given) {
    if (!files.IsFolder(folder)) {
        return QStringLiteral("--home: there is no folder \"%1\"").arg(given);
    }
    if (!HoldsJukebox(files, folder)) {
        return QStringLiteral("--home: \"%1\" is no application folder: it has neither config.ini nor themes")
            .arg(given);
    }
    return QString();
}

QString HomeInUse(const QString& folder, const QString& holder) {
    return QStringLiteral("the application folder \"%1\" is in use by %2")
        .arg(folder, holder.isEmpty() ? QStringLiteral("another jukebox") : holder);
}

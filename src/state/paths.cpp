// Paths of the jukebox's files.
#include "state/paths.h"

#include "core/path_text.h"
#include "platform/files.h"
#include "state/form_main.h"

namespace {

const QString kThemes = QStringLiteral("themes");

} // namespace

QString ConfigPath(const Form_Main& form) {
    return PathIn(form.shell.AppFolder, QStringLiteral("config.ini"));
}

QString FolderSettingsPath(const Form_Main& form) {
    return PathIn(form.shell.AppFolder, QStringLiteral("pathconfig.ini"));
}

QString StatsPath(const Form_Main& form) {
    return PathIn(form.shell.AppFolder, QStringLiteral("stats.ini"));
}

QString LogPath(const Form_Main& form) {
    return PathIn(form.shell.AppFolder, QStringLiteral("vantorix.log"));
}

QString PlaylistsFolder(const Form_Main& form) {
    return PathIn(form.shell.AppFolder, QStringLiteral("playlists"));
}

QString ThemesFolder(const Form_Main& form) {
    return PathIn(form.shell.AppFolder, kThemes);
}

QString DeliveredThemesFolder(const Form_Main& form) {
    return form.shell.shareFolder.isEmpty() ? QString() : PathIn(form.shell.shareFolder, kThemes);
}

QString ThemeFolder(Form_Main& form) {
    return FolderOfTheme(form, form.settings.Theme);
}

QString FolderOfTheme(Form_Main& form, const QString& theme) {
    return FolderOfTheme(form.files, form.shell.AppFolder, form.shell.shareFolder, theme);
}

QString FolderOfTheme(Files& files, const QString& appFolder, const QString& share, const QString& theme) {
    QString own = PathIn(PathIn(appFolder, kThemes), theme);
    if (share.isEmpty() || theme.isEmpty() || files.IsFolder(own)) {
        return own;
    }
    QString delivered = PathIn(PathIn(share, kThemes), theme);
    return files.IsFolder(delivered) ? delivered : own;
}

QString ThemeFile(Form_Main& form, const QString& name) {
    return FileIn(form.files, ThemeFolder(form), name);
}

QString FileIn(Files& files, const QString& folder, const QString& name) {
    const QString found = FindFile(files, folder, name);
    return found.isEmpty() ? PathIn(folder, name) : found;
}

QString FindFile(Files& files, const QString& folder, const QString& name) {
    QString exact = PathIn(folder, name);
    if (FileExists(files, exact)) {
        return exact;
    }
    const QString folded = name.toCaseFolded();
    QString found;
    for (const FolderEntry& entry : files.ListFolder(folder).value_or(std::vector<FolderEntry>())) {
        // Of several matches, takes the first in code order, so that the result does not depend on the
        // listing.
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

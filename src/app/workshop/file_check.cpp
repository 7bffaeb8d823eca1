// Comparing the files in a theme's folder with those that the jukebox reads.
#include "app/workshop/file_check.h"

#include "app/workshop/checked_theme.h"
#include "core/path_text.h"
#include "library/file_pattern.h"
#include "state/paths.h"
#include "theme/load_assets.h"

#include <QHash>
#include <QStringList>

#include <algorithm>

namespace {

const QString kPreview = QStringLiteral("preview.jpg");
// More files than this in one list help nobody.
constexpr qsizetype kMostNames = 20;

QStringList FilesThatAreRead() {
    return ThemePictures() + ThemeSounds() +
           QStringList{QStringLiteral("keyboard.png"), QStringLiteral("keyboard_hilight.png"), kPreview,
                       QStringLiteral("theme.ini")};
}

// Licences and notes belong to a theme that is passed on.
bool IsDocument(const QString& name) {
    static const FilePattern documents(QStringLiteral("*.txt;*.md;license*;copying*;readme*"));
    return documents.Matches(name);
}

void CheckSpelling(CheckedTheme& theme, const QString& onDisk, const QString& name) {
    TellFile(
        theme, Level::kNote, onDisk,
        QStringLiteral("The jukebox calls this file \"%1\". It finds it all the same, but searches the whole "
                       "folder for it.")
            .arg(name),
        QStringLiteral("Rename it to \"%1\".").arg(name));
}

void CheckPreview(CheckedTheme& theme) {
    const QString path = FindFile(theme.form.files, theme.folder, kPreview);
    const PicturePorts ports{theme.form.files, theme.form.zlib, theme.form.pump, theme.form.pictures};
    c32bppDIB picture;
    if (path.isEmpty()) {
        TellFile(theme, Level::kNote, kPreview,
                 QStringLiteral("The file is missing, so the configuration shows no preview of this theme."),
                 QStringLiteral("Make a small one, 480x270, from a picture that --frames writes."));
    } else if (!picture.LoadPicture_File(ports, path)) {
        TellFile(theme, Level::kWarning, NameOfPath(path),
                 QStringLiteral("The preview cannot be read, so the configuration shows none."),
                 QStringLiteral("Save it as a JPEG file."));
    }
}

} // namespace

void CheckFiles(CheckedTheme& theme) {
    QHash<QString, QString> read;
    for (const QString& name : FilesThatAreRead()) {
        read.insert(name.toCaseFolded(), name);
    }
    const FilePattern fonts(QStringLiteral("*.ttf"));
    auto entries = theme.form.files.ListFolder(theme.folder).value_or(std::vector<FolderEntry>());
    std::sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) { return a.name < b.name; });
    QStringList unread;
    for (const FolderEntry& entry : entries) {
        const QString name = read.value(entry.name.toCaseFolded());
        if (!entry.isFolder && !name.isEmpty() && entry.name != name) {
            CheckSpelling(theme, entry.name, name);
        } else if (entry.isFolder ||
                   (name.isEmpty() && !fonts.Matches(entry.name) && !IsDocument(entry.name))) {
            unread += entry.name;
        }
    }
    for (const QString& name : unread.first(std::min(unread.size(), kMostNames))) {
        TellFile(theme, Level::kNote, name, QStringLiteral("Nothing reads this file or folder."),
                 QStringLiteral("Correct its name, or remove it."));
    }
    if (unread.size() > kMostNames) {
        TellFile(
            theme, Level::kNote, QString(),
            QStringLiteral("Nothing reads %1 further files and folders.").arg(unread.size() - kMostNames),
            QStringLiteral("Keep a theme in a folder of its own."));
    }
    CheckPreview(theme);
}

// Choosing a folder.
#include "dialogs/folder_chooser.h"

#include "core/path_text.h"
#include "library/create_list.h"
#include "platform/event_pump.h"
#include "platform/files.h"
#include "state/form_main.h"
#include "state/log.h"

#include <optional>

namespace {

// The folders above a folder, from the root down, and the folder itself.
QStringList WayTo(const QString& folder) {
    QStringList way = {QStringLiteral("/")};
    for (qsizetype end = folder.indexOf(u'/', 1); end > 0; end = folder.indexOf(u'/', end + 1)) {
        way += folder.left(end);
    }
    if (folder != u"/") {
        way += folder;
    }
    return way;
}

// Returns the sub-folders as full paths in name order; nothing when the folder cannot be read, or the window
// is closed in the meantime.
std::optional<QStringList> SubFolders(Form_Main& form, const QString& folder) {
    constexpr double kLook = 20;
    const auto wait = [&] {
        form.pump.Wait(kLook);
        return form.folderDialog.Visible;
    };
    const auto entries = form.files.ListSlowFolder(folder, wait);
    return entries ? std::optional(FolderPathsOf(folder, *entries)) : std::nullopt;
}

void Show(Form_Main& form, const QString& folder, const QStringList& subFolders) {
    form.folderDialog.Dir1 = {folder, subFolders};
    form.folderDialog.Dir1Entries = WayTo(folder) + subFolders;
    form.folderDialog.Dir1Highlighted.clear();
}

// Opens a folder; one that cannot be read is empty. While it is being read, the lists take no input.
void OpenFolder(Form_Main& form, const QString& folder) {
    form.folderDialog.isReading = true;
    const std::optional<QStringList> folders = SubFolders(form, folder);
    form.folderDialog.isReading = false;
    Show(form, folder, folders.value_or(QStringList()));
}

// The folder at which the window opens: that of the music, which may be relative to the application folder.
QString StartOf(const Form_Main& form) {
    const QString& music = form.settings.StartPath;
    if (music.isEmpty()) {
        return form.shell.AppFolder;
    }
    return WithoutSeparatorAtEnd(music.startsWith(u'/') ? music : PathIn(form.shell.AppFolder, music));
}

void Close(Form_Main& form) {
    WriteLog(form, QStringLiteral(" : Quitter fenetre selection repertoire"));
    form.folderDialog.Visible = false;
}

} // namespace

void Form_SelectDirectory_Load(Form_Main& form) {
    WriteLog(form, QStringLiteral(" : Fenetre selection repertoire"));
    form.folderDialog.Drive1List = form.files.Drives();
    form.folderDialog.Drive1 = QStringLiteral("/");
    Show(form, StartOf(form), {});
    form.folderDialog.isReading = false;
    form.folderDialog.Visible = true;
}

void ReadOpenFolder(Form_Main& form) {
    const QString folder = form.folderDialog.Dir1.Path;
    form.folderDialog.isReading = true;
    const std::optional<QStringList> folders = SubFolders(form, folder);
    form.folderDialog.isReading = false;
    if (folders || !form.folderDialog.Visible || form.files.IsFolder(folder)) {
        return Show(form, folder, folders.value_or(QStringList()));
    }
    OpenFolder(form, form.shell.AppFolder);
}

void Drive1_Change(Form_Main& form) {
    OpenFolder(form, form.folderDialog.Drive1);
}

void Dir1_DblClick(Form_Main& form) {
    if (!form.folderDialog.Dir1Highlighted.isEmpty()) {
        OpenFolder(form, form.folderDialog.Dir1Highlighted);
    }
}

void Form_SelectDirectory_Command_OK_Click(Form_Main& form) {
    form.folderDialog.SelectedDirectory = ChosenFolder(form);
    WriteLog(form, QStringLiteral(" : Changement repertoire ") + form.folderDialog.SelectedDirectory);
    Close(form);
}

void Form_SelectDirectory_Command_Cancel_Click(Form_Main& form) {
    Close(form);
}

QString ChosenFolder(const Form_Main& form) {
    return form.folderDialog.Dir1Highlighted.isEmpty() ? form.folderDialog.Dir1.Path
                                                       : form.folderDialog.Dir1Highlighted;
}

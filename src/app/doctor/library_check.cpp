// Listing each folder as the jukebox does, and running the checks on it.
#include "app/doctor/library_check.h"

#include "app/doctor/checked_folder.h"
#include "app/doctor/cover_check.h"
#include "app/doctor/interruption.h"
#include "app/doctor/library_walk.h"
#include "app/doctor/music_check.h"
#include "app/doctor/name_check.h"
#include "app/doctor/progress.h"
#include "app/findings/finding_report.h"
#include "core/media_kind.h"
#include "core/path_text.h"
#include "core/run_time_error.h"
#include "library/create_list.h"
#include "library/folder_names.h"
#include "settings/folder_settings.h"
#include "state/form_main.h"
#include "state/paths.h"

namespace {

// Lists the folder as the jukebox does when it is opened. Returns false when that stops the program.
bool List(Form_Main& form, FindingReport& report, const QString& folder) {
    form.library.Dir1.Path = folder;
    try {
        CreateList(form);
        return true;
    } catch (const ProgramStop& stop) {
        report.Add({Level::kError, Subject::kMusic, folder,
                    QStringLiteral("The program stops when this folder is opened: error %1.")
                        .arg(WordsOf(stop.error)),
                    stop.error.number == kOverflow
                        ? QStringLiteral("Spread its entries over several folders.")
                        : QStringLiteral("Correct or delete the line in stats.ini.")});
    }
    return false;
}

void CountMedia(const Form_Main& form, bool isDeep, LibrarySummary& summary) {
    ++summary.folders;
    for (const ListLine& line : form.library.List_List) {
        if (line.type == u"file") {
            ++summary.files;
            if (isDeep) {
                summary.media.push_back({line.path, IsVideo(line.path)});
            }
        }
    }
}

// What is kept from folder to folder.
struct Memory {
    SeenCharacters characters;
    CoverSettingsOf coverSettings;
};

void CheckFolder(Form_Main& form, FindingReport& report, const LibraryOptions& options,
                 const WalkedFolder& walked, Memory& memory) {
    const bool isListed = List(form, report, walked.path);
    ReadFolderSettings(form);
    const FolderNames names(form.files, walked.path);
    const CheckedFolder checked{form, report, walked, names, isListed, options.isDeep};
    CheckMusic(checked);
    CheckCovers(checked, memory.coverSettings);
    if (options.hasTheme) {
        CheckNames(checked, memory.characters);
    }
}

} // namespace

LibrarySummary CheckLibrary(Form_Main& form, FindingReport& report, const LibraryOptions& options,
                            Progress& progress) {
    LibrarySummary summary;
    Memory memory;
    WalkVisitor visitor;
    visitor.visit = [&](const WalkedFolder& walked) {
        EndIfInterrupted();
        CheckFolder(form, report, options, walked, memory);
        CountMedia(form, options.isDeep, summary);
        progress.Show(QStringLiteral("%L1 folders, %L2 tracks").arg(summary.folders).arg(summary.files));
    };
    visitor.enters = [](const QString&, const QString& name) {
        return !name.startsWith(u'.') && !IsJunkFolder(name);
    };
    visitor.atLoop = [&](const QString& link, const QString& target) { ReportLoop(report, link, target); };
    visitor.atSecondPath = [&](const QString& path) { ReportSecondPath(report, path); };
    WalkLibrary(options.folder, visitor);
    progress.Clear();
    return summary;
}

void CheckPlaylistTitles(Form_Main& form, FindingReport& report) {
    const WalkedFolder playlists{PlaylistsFolder(form), 0, 0, {}};
    if (List(form, report, playlists.path)) {
        SeenCharacters characters;
        const FolderNames names(form.files, playlists.path);
        CheckNames({form, report, playlists, names, true, false}, characters);
    }
}

// Checking pathconfig.ini, stats.ini and the playlists.
#include "app/doctor/settings_check.h"
#include "app/findings/finding_report.h"
#include "core/conversions.h"
#include "core/path_text.h"
#include "core/run_time_error.h"
#include "core/text_file.h"
#include "platform/files.h"
#include "playback/playlist_file.h"
#include "settings/ini_file.h"
#include "state/form_main.h"
#include "state/paths.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::int64_t kLargestFile = std::int64_t{16} * 1024 * 1024;

struct IniText {
    QString path;
    std::vector<IniLine> lines;
};

// The lines of a file of the home; none when it is missing. Reports a file that the jukebox cannot read.
IniText ReadIni(Files& files, const QString& home, const QString& name, FindingReport& report) {
    IniText text{PathIn(home, name), {}};
    const auto bytes = files.ReadWhole(text.path, kLargestFile);
    if (bytes) {
        text.lines = IniFile(*bytes).Lines();
    } else if (files.Identity(text.path)) {
        report.Add({Level::kWarning, Subject::kSettings, text.path,
                    QStringLiteral("It counts as empty, because it cannot be read or is larger than 16 MB."),
                    QStringLiteral("Give the jukebox the right to read it, or restore a backup.")});
    }
    return text;
}

void CheckFolderSetting(const IniText& text, const IniLine& line, FindingReport& report) {
    const QString place =
        QStringLiteral("Line %1, [%2] %3=%4: ").arg(line.number).arg(line.section, line.key, line.value);
    const QString key = line.key.toLower();
    const QString value = Trim(line.value).toLower();
    static const std::array kSwitches = {QStringLiteral("showbigtitle"),   QStringLiteral("showcover"),
                                         QStringLiteral("showbigcover"),   QStringLiteral("showfoldercover"),
                                         QStringLiteral("showfilecover"),  QStringLiteral("showtracknum"),
                                         QStringLiteral("showmp3covertag")};
    if (key == u"order") {
        if (!value.isEmpty() && value != u"alpha" && value != u"playcount") {
            report.Add({Level::kWarning, Subject::kSettings, text.path,
                        place + QStringLiteral("the folder shows nothing, because this is no order."),
                        QStringLiteral("Write alpha or playcount, or delete the line."),
                        QStringLiteral("order of a folder")});
        }
    } else if (std::find(kSwitches.begin(), kSwitches.end(), key) == kSwitches.end()) {
        report.Add({Level::kNote, Subject::kSettings, text.path,
                    place + QStringLiteral("the key is unknown."), QStringLiteral("Delete the line."),
                    QStringLiteral("unknown key of a folder")});
    } else if (!value.isEmpty() && value != u"true" && value != u"false") {
        report.Add({Level::kWarning, Subject::kSettings, text.path,
                    place + QStringLiteral("this counts as false, because only \"true\" means yes."),
                    QStringLiteral("Write true or false."), QStringLiteral("switch of a folder")});
    }
}

// Reports the entries of a playlist that are skipped. The queue holds the others, in their order.
void CheckEntries(Form_Main& form, const QString& path, FindingReport& report) {
    const auto bytes = form.files.ReadWhole(path, kLargestFile);
    LineReader lines(bytes.value_or(QByteArray()), path);
    const int entries = CInt16(DecodeLine(lines.Next())).value();
    int kept = 1;
    for (int entry = 1; entry <= entries; ++entry) {
        const QByteArray line = lines.Next();
        lines.Next();
        const QString name = Trim(TextOfPath(line));
        const QString queued =
            kept <= form.queue.PlaylistCount.value() ? form.queue.PlaylistPath(kept) : QString();
        if (!queued.isEmpty() && (queued == name || queued == Trim(DecodeWindows1252(line)))) {
            ++kept;
            continue;
        }
        report.Add({Level::kWarning, Subject::kSettings, path,
                    QStringLiteral("Entry %1 is skipped, because its file is gone: %2").arg(entry).arg(name),
                    QStringLiteral("Save the playlist again, or make a link at the old path."),
                    QStringLiteral("gone entry of ") + path});
    }
}

void CheckPlaylist(Form_Main& form, const QString& path, FindingReport& report) {
    try {
        ReadPlaylistFile(form, path);
        CheckEntries(form, path, report);
    } catch (const RunTimeError& error) {
        report.Add({Level::kError, Subject::kSettings, path,
                    QStringLiteral("The jukebox locks up when this playlist is picked: error %1.")
                        .arg(WordsOf(error)),
                    QStringLiteral("Delete it, or restore it from a backup.")});
    }
}

} // namespace

void CheckFolderSettings(Files& files, const QString& home, FindingReport& report) {
    const IniText text = ReadIni(files, home, QStringLiteral("pathconfig.ini"), report);
    for (const IniLine& line : text.lines) {
        if (line.kind == IniLine::kKey) {
            CheckFolderSetting(text, line, report);
        } else if (line.kind == IniLine::kSection && !files.IsFolder(line.section)) {
            report.Add({Level::kNote, Subject::kSettings, text.path,
                        QStringLiteral("Line %1: the folder %2 is gone, so its settings have no effect.")
                            .arg(line.number)
                            .arg(line.section),
                        QStringLiteral("Delete the section, or make a link at the old path."),
                        QStringLiteral("settings of a folder that is gone")});
        }
    }
}

void CheckStats(Files& files, const QString& home, FindingReport& report) {
    const IniText text = ReadIni(files, home, QStringLiteral("stats.ini"), report);
    for (const IniLine& line : text.lines) {
        const QString value = Trim(line.value);
        const bool counts =
            line.kind == IniLine::kKey && line.section.compare(u"PayingCount", Qt::CaseInsensitive) == 0;
        if (counts && !value.isEmpty() && !IsNumeric(value)) {
            report.Add(
                {Level::kError, Subject::kSettings, text.path,
                 QStringLiteral(
                     "Line %1, [PayingCount] %2: the jukebox locks up when this is picked, and stops when it "
                     "is listed by play count, because \"%3\" is not a number.")
                     .arg(line.number)
                     .arg(line.key, value),
                 QStringLiteral("Write a number, or delete the line, while the jukebox is not running."),
                 QStringLiteral("count that is no number")});
        }
    }
}

void CheckPlaylists(Form_Main& form, FindingReport& report) {
    const QString folder = PlaylistsFolder(form);
    const auto entries = form.files.ListFolder(folder);
    if (!entries) {
        report.Add(
            {Level::kError, Subject::kSettings, folder,
             QStringLiteral(
                 "The jukebox locks up at \"load\" and \"save\", because this folder is missing or cannot "
                 "be read."),
             QStringLiteral("Make it: mkdir \"%1\"").arg(folder)});
        return;
    }
    for (const FolderEntry& entry : *entries) {
        if (!entry.isFolder && !entry.name.startsWith(u'.') &&
            entry.name.endsWith(QStringLiteral(".vtxpl"))) {
            CheckPlaylist(form, PathIn(folder, entry.name), report);
        }
    }
}

// Reading and writing playlist files.
#include "playback/playlist_file.h"

#include "core/conversions.h"
#include "core/path_text.h"
#include "core/run_time_error.h"
#include "core/text_file.h"
#include "library/find_file.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "settings/safe_write.h"
#include "shell/form_main.h"

#include <QLocale>

namespace {

constexpr std::int64_t kLargestPlaylist = 16 << 20;

// The file that a path line names: by its very bytes or, in files brought from older cabinets, by its
// Windows-1252 text. Empty when neither is there.
QString ExistingPath(Form_Main& form, const QByteArray& line) {
    for (const QString& path : {Trim(TextOfPath(line)), Trim(DecodeWindows1252(line))}) {
        if (FileExists(form.files, path)) {
            return path;
        }
    }
    return QString();
}

void AppendEntry(Form_Main& form, const QString& path, const QString& title) {
    form.PlaylistCount += 1;
    form.PlaylistPath(form.PlaylistCount) = path;
    form.PlaylistTitre(form.PlaylistCount) = title;
    form.PlaylistPlayed(form.PlaylistCount) = 0;
    form.PlaylistCredits(form.PlaylistCount) = 0;
}

// The date as it stands in a saved playlist's name, with English month names.
QString SaveDate(Form_Main& form) {
    return QLocale::c().toString(form.clock.LocalTime().date(), QStringLiteral("dd MMM yyyy"));
}

// A path as bytes of the file, a title as UTF-8; a line break inside would make two lines of one.
QByteArray Line(const QString& text) {
    return BytesOfPath(text).replace('\r', ' ').replace('\n', ' ') + "\r\n";
}

} // namespace

// Deliberate D-128: a damaged file ends the handler, with the entries read so far in the queue and InputBusy
// set. One expects the old queue. The queue is filled while the file is read, and no error restores anything.
void ReadPlaylistFile(Form_Main& form, const QString& path) {
    const std::optional<QByteArray> bytes = form.files.ReadWhole(path, kLargestPlaylist);
    if (!bytes) {
        throw RunTimeError(kPathFileAccess, path + QStringLiteral(": the playlist cannot be read"));
    }
    LineReader lines(*bytes, path);
    const QString first = DecodeLine(lines.Next());
    const auto where = [&] { return path + QStringLiteral(", line 1 (expected the number of entries)"); };
    const Integer16 entries = TellingWhere(where, [&] { return CInt16(first); });
    form.PlaylistCount = 0;
    for (Integer16 i = 1; i <= entries; i += 1) {
        const QString entryPath = ExistingPath(form, lines.Next());
        const QString title = Trim(DecodeLine(lines.Next()));
        if (!entryPath.isEmpty()) {
            TellingWhere([&] { return path + QStringLiteral(" (expected at most 1000 entries)"); },
                         [&] { AppendEntry(form, entryPath, title); });
        }
    }
}

void WritePlaylistFile(Form_Main& form, const QString& name) {
    const QString folder = PathIn(form.AppFolder, QStringLiteral("playlists"));
    if (!form.files.IsFolder(folder)) {
        throw RunTimeError(kPathNotFound, folder + QStringLiteral(": there is no such folder"));
    }
    QByteArray bytes = ' ' + QByteArray::number(form.PlaylistCount.value()) + " \r\n";
    for (int entry = 1; entry <= form.PlaylistCount.value(); ++entry) {
        bytes += Line(form.PlaylistPath(entry)) + Line(form.PlaylistTitre(entry));
    }
    const QString path =
        PathIn(folder, name + QStringLiteral(" - ") + SaveDate(form) + QStringLiteral(".vtxpl"));
    // A separator in the name would lead out of the folder.
    // Deliberate D-132: a file that cannot be written ends the handler with InputBusy set and the heartbeat
    // off. One expects a message. No error restores anything, see D-25.
    if (name.contains(u'/') || !WriteFileSafely(form.files, path, bytes)) {
        throw RunTimeError(kPathFileAccess, path + QStringLiteral(": the playlist cannot be written"));
    }
}

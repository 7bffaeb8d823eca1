// Reading and writing playlist files.
#include "playback/playlist_file.h"

#include "core/conversions.h"
#include "core/path_text.h"
#include "core/run_time_error.h"
#include "core/text_file.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "settings/safe_write.h"
#include "state/form_main.h"
#include "state/paths.h"

#include <QLocale>

namespace {

constexpr std::int64_t kLargestPlaylist = 16 << 20;

// Returns the existing file that a path line names, read as raw bytes or, for playlists from older cabinets,
// as Windows-1252 text. Empty when neither exists.
QString ExistingPath(Form_Main& form, const QByteArray& line) {
    for (const QString& path : {Trim(TextOfPath(line)), Trim(DecodeWindows1252(line))}) {
        if (FileExists(form.files, path)) {
            return path;
        }
    }
    return QString();
}

void AppendEntry(Form_Main& form, const QString& path, const QString& title) {
    form.queue.PlaylistCount += 1;
    form.queue.PlaylistPath(form.queue.PlaylistCount) = path;
    form.queue.PlaylistTitre(form.queue.PlaylistCount) = title;
    form.queue.PlaylistPlayed(form.queue.PlaylistCount) = 0;
    form.queue.PlaylistCredits(form.queue.PlaylistCount) = 0;
}

// Returns the date for a saved playlist's name, with English month names.
QString SaveDate(Form_Main& form) {
    return QLocale::c().toString(form.clock.LocalTime().date(), QStringLiteral("dd MMM yyyy"));
}

// Returns a line of the file: a path in its raw bytes, a title in UTF-8. Line breaks in it become blanks,
// because they would split the line.
QByteArray Line(const QString& text) {
    return BytesOfPath(text).replace('\r', ' ').replace('\n', ' ') + "\r\n";
}

} // namespace

// Deliberate D-128: a damaged file ends the handler with the entries read so far in the queue and InputBusy
// set. One would expect the old queue to stay; the queue is filled while the file is read, and no error
// restores anything.
void ReadPlaylistFile(Form_Main& form, const QString& path) {
    const std::optional<QByteArray> bytes = form.files.ReadWhole(path, kLargestPlaylist);
    if (!bytes) {
        throw RunTimeError(kPathFileAccess, path + QStringLiteral(": the playlist cannot be read"));
    }
    LineReader lines(*bytes, path);
    const QString first = DecodeLine(lines.Next());
    const auto where = [&] { return path + QStringLiteral(", line 1 (expected the number of entries)"); };
    const Integer16 entries = TellingWhere(where, [&] { return CInt16(first); });
    form.queue.PlaylistCount = 0;
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
    const QString folder = PlaylistsFolder(form);
    if (!form.files.IsFolder(folder)) {
        throw RunTimeError(kPathNotFound, folder + QStringLiteral(": there is no such folder"));
    }
    QByteArray bytes = ' ' + QByteArray::number(form.queue.PlaylistCount.value()) + " \r\n";
    for (int entry = 1; entry <= form.queue.PlaylistCount.value(); ++entry) {
        bytes += Line(form.queue.PlaylistPath(entry)) + Line(form.queue.PlaylistTitre(entry));
    }
    const QString path =
        PathIn(folder, name + QStringLiteral(" - ") + SaveDate(form) + QStringLiteral(".vtxpl"));
    // A separator in the name would lead out of the folder.
    // Deliberate D-132: a file that cannot be written ends the handler with InputBusy set and the heartbeat
    // off. One would expect a message; no error restores anything, see D-25.
    if (name.contains(u'/') || !WriteFileSafely(form.files, path, bytes)) {
        throw RunTimeError(kPathFileAccess, path + QStringLiteral(": the playlist cannot be written"));
    }
}

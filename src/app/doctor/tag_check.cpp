// Reading tags with the jukebox's own reader.
#include "app/doctor/tag_check.h"

#include "app/doctor/checked_folder.h"
#include "app/doctor/conversion.h"
#include "app/findings/finding_report.h"
#include "core/run_time_error.h"
#include "imaging/picture/c32bppdib.h"
#include "library/covers.h"
#include "library/folder_names.h"
#include "state/form_main.h"

namespace {

void Report(const CheckedFolder& checked, Level level, const QString& path, const QString& text,
            const QString& advice, const QString& kind) {
    checked.report.Add({level, Subject::kMusic, path, text, advice, kind});
}

// Whether the jukebox reads the tag of a track: for the list, or for the big cover.
bool IsTagRead(const CheckedFolder& checked, const QString& path) {
    const SettingsState& settings = checked.form.settings;
    const bool hasPicture = !PictureBeside(checked.names, path).isEmpty();
    const bool inList = settings.ShowCover == u"true" && settings.ShowMp3CoverTag == u"true" &&
                        !(settings.ShowFileCover == u"true" && hasPicture);
    return inList || (settings.ShowBigCover == u"true" && !hasPicture);
}

void ReportBroken(const CheckedFolder& checked, const QString& path, const ProgramStop& stop) {
    const bool isRead = IsTagRead(checked, path);
    const QString reason = QStringLiteral("the tag is broken (error %1)").arg(WordsOf(stop.error));
    Report(checked, isRead ? Level::kError : Level::kNote, path,
           isRead
               ? QStringLiteral("The program stops when this track is shown: %1.").arg(reason)
               : QStringLiteral(
                     "The program would stop when this track is shown if covers from tags were switched on: "
                     "%1.")
                     .arg(reason),
           QStringLiteral(
               "Write the tag again as ID3v2.3: ffmpeg -i %1 -c copy -id3v2_version 3 new.mp3, or switch "
               "ShowMp3CoverTag and ShowBigCover off.")
               .arg(ShellQuoted(path)),
           isRead ? QStringLiteral("broken tag") : QStringLiteral("broken tag that is not read"));
}

void CheckPicture(const CheckedFolder& checked, const QString& path, const TagCover& cover) {
    bool isShown = cover.isDecoded;
    if (isShown && checked.isDeep) {
        c32bppDIB picture;
        isShown = PictureFromStream(checked.form.pictures, cover.bytes, picture);
    }
    if (isShown) {
        return;
    }
    Report(
        checked, Level::kWarning, path,
        cover.isDecoded
            ? QStringLiteral(
                  "The cover of this track stays empty: the picture in its tag is damaged or too large.")
            : QStringLiteral(
                  "The cover of this track stays empty: only JPEG, GIF and BMP pictures are shown from tags, "
                  "and its picture is a PNG or something else."),
        QStringLiteral("Put a JPEG into the tag, or next to the track under the track's name."),
        cover.isDecoded ? QStringLiteral("damaged tag picture") : QStringLiteral("PNG in a tag"));
}

void ReportOtherPictures(const CheckedFolder& checked, const QString& path) {
    if (checked.form.library.TaggedImages.ImageCount() > 0) {
        Report(
            checked, Level::kNote, path,
            QStringLiteral("The pictures in its tag are never shown: none has the type \"Other\" or \"Cover "
                           "(front)\"."),
            QStringLiteral("Give the picture the type \"Cover (front)\" in a tag editor."),
            QStringLiteral("tag pictures of other types"));
    }
}

void CheckTag(const CheckedFolder& checked, const QString& path) {
    try {
        const auto cover = SearchTag(checked.form, path);
        if (!IsTagRead(checked, path)) {
            return;
        }
        cover ? CheckPicture(checked, path, *cover) : ReportOtherPictures(checked, path);
    } catch (const ProgramStop& stop) {
        ReportBroken(checked, path, stop);
    }
}

} // namespace

void CheckTags(const CheckedFolder& checked) {
    for (const ListLine& line : checked.form.library.List_List) {
        if (line.type == u"file") {
            CheckTag(checked, line.path);
        }
    }
}

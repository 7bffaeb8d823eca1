// Counting what is bought.
#include "playback/play_counts.h"

#include "core/conversions.h"
#include "core/path_text.h"
#include "core/run_time_error.h"
#include "settings/ini_file.h"
#include "settings/profile.h"
#include "shell/form_main.h"

#include <QStringList>

namespace {

const QString kSection = QStringLiteral("PayingCount");

// What a pick counts: the track's title, the folder shown and each folder above it but the root.
QStringList CountedKeys(const Form_Main& form, int slot) {
    QStringList keys = {form.InfoTitre(slot), form.Dir1.Path};
    QString folder = form.Dir1.Path;
    for (qsizetype cut = folder.lastIndexOf(u'/'); cut > 0; cut = folder.lastIndexOf(u'/')) {
        folder.truncate(cut);
        keys += folder;
    }
    return keys;
}

// Deliberate D-130: a count that is no number raises 13. The track is in the queue and paid by then, and
// InputBusy stays set. One expects the count to start again. Only an edited file holds such a count.
QString Raised(const QString& path, const QString& key, const QString& count) {
    const auto where = [&] {
        return QStringLiteral("%1, [PayingCount] %2 (expected a number)").arg(path, key);
    };
    const double before = TellingWhere(where, [&] { return Trim(count).isEmpty() ? 0 : CDouble(count); });
    return NumberText(before + 1);
}

} // namespace

void CountPick(Form_Main& form, int slot) {
    const QString path = PathIn(form.AppFolder, QStringLiteral("stats.ini"));
    ChangeProfile(form, path, [&](IniFile& file) {
        for (const QString& key : CountedKeys(form, slot)) {
            file.SetValue(kSection, key, Raised(path, key, file.Value(kSection, key)));
        }
    });
}

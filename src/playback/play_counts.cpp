// Counting picks in stats.ini.
#include "playback/play_counts.h"

#include "core/conversions.h"
#include "core/run_time_error.h"
#include "settings/ini_file.h"
#include "settings/profile.h"
#include "state/form_main.h"
#include "state/paths.h"

#include <QStringList>

namespace {

const QString kSection = QStringLiteral("PayingCount");

// Returns the keys that a pick increments: the track's title, the folder shown and each folder above it
// except the root.
QStringList CountedKeys(const Form_Main& form, int slot) {
    QStringList keys = {form.library.InfoTitre(slot), form.library.Dir1.Path};
    QString folder = form.library.Dir1.Path;
    for (qsizetype cut = folder.lastIndexOf(u'/'); cut > 0; cut = folder.lastIndexOf(u'/')) {
        folder.truncate(cut);
        keys += folder;
    }
    return keys;
}

// Deliberate D-130: a count that is not a number raises 13 after the track was queued and paid for, and
// InputBusy stays set. One would expect the count to start again; only an edited file contains such a count.
QString Raised(const QString& path, const QString& key, const QString& count) {
    const auto where = [&] {
        return QStringLiteral("%1, [PayingCount] %2 (expected a number)").arg(path, key);
    };
    const double before = TellingWhere(where, [&] { return Trim(count).isEmpty() ? 0 : CDouble(count); });
    return NumberText(before + 1);
}

} // namespace

void CountPick(Form_Main& form, int slot) {
    const QString path = StatsPath(form);
    ChangeProfile(form, path, [&](IniFile& file) {
        for (const QString& key : CountedKeys(form, slot)) {
            file.SetValue(kSection, key, Raised(path, key, file.Value(kSection, key)));
        }
    });
}

// The two facing pages: reading the settings of the folder, and painting both columns slot by slot.
#include "rendering/track_zone.h"

#include "core/run_time_error.h"
#include "library/folder_names.h"
#include "library/page.h"
#include "rendering/command_block.h"
#include "rendering/track_slot.h"
#include "settings/folder_settings.h"
#include "state/form_main.h"
#include "state/log.h"
#include "state/paths.h"

namespace {

void DrawBackgrounds(Form_Main& form) {
    const int x = form.theme.ZoneList.X.value();
    const int y = form.theme.ZoneList.Y.value();
    form.assets.ImgZoneList.Render(form.frame.Picture_Cache, x, y);
    form.assets.ImgZoneListHilight.Render(form.frame.Picture_CacheHilight, x, y);
}

// Returns the section of theme.ini that places a slot, and what the slot shows, for the detail of an error.
QString PlaceOfSlot(Form_Main& form, int column, int row, Integer16 slot) {
    return QStringLiteral("%1, [%2%3], showing \"%4\"")
        .arg(ThemeFile(form, QStringLiteral("theme.ini")),
             column == 1 ? QStringLiteral("zonelistGauche") : QStringLiteral("zonelistDroite"),
             QString::number(row), form.library.InfoPath(slot));
}

void DrawSlots(Form_Main& form) {
    const FolderNames names(form.files, form.library.Dir1.Path);
    const int rows = form.theme.ZoneListNbTracksParColonne.value();
    Integer16 slot = 0;
    for (int column = 1; column <= 2; ++column) {
        for (int row = 1; row <= rows; ++row) {
            if (FirstOfPage(form) + slot.value() < form.library.NumTrack.value()) {
                const auto where = [&] { return PlaceOfSlot(form, column, row, slot); };
                TellingWhere(where, [&] { DrawSlot(form, {column, row}, slot, names); });
            }
            slot += 1;
        }
    }
}

void Draw(Form_Main& form) {
    WriteLog(form, QStringLiteral(" : DrawZoneList"));
    ReadFolderSettings(form);
    DrawCommand(form);
    ClearPage(form);
    DrawBackgrounds(form);
    CountPages(form);
    FillPage(form);
    DrawSlots(form);
}

} // namespace

void DrawZoneList(Form_Main& form) {
    EndsProgram("DrawZoneList", [&] { Draw(form); });
}

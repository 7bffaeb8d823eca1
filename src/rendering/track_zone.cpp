// Painting the two pages: the page's entries, then slot by slot.
#include "rendering/track_zone.h"

#include "core/run_time_error.h"
#include "library/folder_names.h"
#include "rendering/command_block.h"
#include "rendering/track_slot.h"
#include "settings/folder_settings.h"
#include "shell/form_main.h"
#include "shell/log.h"
#include "theme/load_theme.h"

#include <algorithm>

namespace {

QString PlaceOfRows(Form_Main& form) {
    return QStringLiteral("%1, [zonelist] ZoneListNbTracksParColonne (expected 1 to 10)")
        .arg(ThemeFile(form, QStringLiteral("theme.ini")));
}

void ClearInfos(Form_Main& form) {
    const Integer16 last = form.ZoneListNbTracksParColonne * 2;
    for (int i = 0; i <= last.value(); ++i) {
        form.InfoPath(i).clear();
        form.InfoType(i).clear();
        form.InfoTitre(i).clear();
    }
}

void DrawBackgrounds(Form_Main& form) {
    const int x = form.ZoneListX.value();
    const int y = form.ZoneListY.value();
    form.ImgZoneList.Render(form.Picture_Cache, x, y);
    form.ImgZoneListHilight.Render(form.Picture_CacheHilight, x, y);
}

void CountPages(Form_Main& form) {
    const auto entries = static_cast<int>(form.List_List.size());
    const Integer32 perPage = 2 * form.ZoneListNbTracksParColonne.value();
    const int whole = TellingWhere([&] { return PlaceOfRows(form); },
                                   [&] { return IntegerDivide(Integer32(entries), perPage).value(); });
    const bool rest = static_cast<double>(entries) / perPage.value() > whole;
    form.NbPages = rest ? whole + 1 : whole;
}

// The list's entry in the page's first slot.
int FirstOfPage(const Form_Main& form) {
    return 2 * form.ZoneListNbTracksParColonne.value() * form.CurrentPage.value();
}

// Fills the page's entries. NumTrack is the loop's counter: afterwards one past the page's last entry in the
// list.
void FillPage(Form_Main& form) {
    const int first = FirstOfPage(form);
    const int last = std::min(first + 2 * form.ZoneListNbTracksParColonne.value(),
                              static_cast<int>(form.List_List.size())) -
                     1;
    int slot = 0;
    for (form.NumTrack = first; form.NumTrack.value() <= last; form.NumTrack += 1) {
        const ListLine& line = form.List_List.at(static_cast<std::size_t>(form.NumTrack.value()));
        form.InfoType(slot) = line.type;
        form.InfoPath(slot) = line.path;
        form.InfoTitre(slot) = line.title;
        ++slot;
    }
}

// The section of theme.ini that places a slot, and what the slot shows.
QString PlaceOfSlot(Form_Main& form, int column, int row, Integer16 slot) {
    return QStringLiteral("%1, [%2%3], showing \"%4\"")
        .arg(ThemeFile(form, QStringLiteral("theme.ini")),
             column == 1 ? QStringLiteral("zonelistGauche") : QStringLiteral("zonelistDroite"),
             QString::number(row), form.InfoPath(slot));
}

void DrawSlots(Form_Main& form) {
    const FolderNames names(form.files, form.Dir1.Path);
    const int rows = form.ZoneListNbTracksParColonne.value();
    Integer16 slot = 0;
    for (int column = 1; column <= 2; ++column) {
        for (int row = 1; row <= rows; ++row) {
            if (FirstOfPage(form) + slot.value() < form.NumTrack.value()) {
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
    TellingWhere([&] { return PlaceOfRows(form); }, [&] { ClearInfos(form); });
    DrawBackgrounds(form);
    CountPages(form);
    FillPage(form);
    DrawSlots(form);
}

} // namespace

void DrawZoneList(Form_Main& form) {
    EndsProgram("DrawZoneList", [&] { Draw(form); });
}

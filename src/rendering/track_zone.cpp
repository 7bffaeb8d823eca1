// Filling the page from the list and painting its two columns slot by slot.
#include "rendering/track_zone.h"

#include "core/run_time_error.h"
#include "library/folder_names.h"
#include "rendering/command_block.h"
#include "rendering/track_slot.h"
#include "settings/folder_settings.h"
#include "state/form_main.h"
#include "state/log.h"
#include "state/paths.h"

#include <algorithm>

namespace {

QString PlaceOfRows(Form_Main& form) {
    return QStringLiteral("%1, [zonelist] ZoneListNbTracksParColonne (expected 1 to 10)")
        .arg(ThemeFile(form, QStringLiteral("theme.ini")));
}

void ClearInfos(Form_Main& form) {
    const Integer16 last = form.theme.ZoneListNbTracksParColonne * 2;
    for (int i = 0; i <= last.value(); ++i) {
        form.library.InfoPath(i).clear();
        form.library.InfoType(i).clear();
        form.library.InfoTitre(i).clear();
    }
}

void DrawBackgrounds(Form_Main& form) {
    const int x = form.theme.ZoneList.X.value();
    const int y = form.theme.ZoneList.Y.value();
    form.assets.ImgZoneList.Render(form.frame.Picture_Cache, x, y);
    form.assets.ImgZoneListHilight.Render(form.frame.Picture_CacheHilight, x, y);
}

void CountPages(Form_Main& form) {
    const auto entries = static_cast<int>(form.library.List_List.size());
    const Integer32 perPage = 2 * form.theme.ZoneListNbTracksParColonne.value();
    const int whole = TellingWhere([&] { return PlaceOfRows(form); },
                                   [&] { return IntegerDivide(Integer32(entries), perPage).value(); });
    const bool rest = static_cast<double>(entries) / perPage.value() > whole;
    form.library.NbPages = rest ? whole + 1 : whole;
}

// Returns the index of the list's entry in the page's first slot.
int FirstOfPage(const Form_Main& form) {
    return 2 * form.theme.ZoneListNbTracksParColonne.value() * form.library.CurrentPage.value();
}

// Fills the page's entries. NumTrack is the loop's counter; afterwards it is the index after the page's last
// entry in the list.
void FillPage(Form_Main& form) {
    const int first = FirstOfPage(form);
    const int last = std::min(first + 2 * form.theme.ZoneListNbTracksParColonne.value(),
                              static_cast<int>(form.library.List_List.size())) -
                     1;
    int slot = 0;
    for (form.library.NumTrack = first; form.library.NumTrack.value() <= last; form.library.NumTrack += 1) {
        const ListLine& line =
            form.library.List_List.at(static_cast<std::size_t>(form.library.NumTrack.value()));
        form.library.InfoType(slot) = line.type;
        form.library.InfoPath(slot) = line.path;
        form.library.InfoTitre(slot) = line.title;
        ++slot;
    }
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

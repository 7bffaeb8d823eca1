// Cutting the list into pages, and the entries of the page that is shown.
#include "library/page.h"

#include "core/run_time_error.h"
#include "state/form_main.h"
#include "state/paths.h"

#include <algorithm>

namespace {

QString PlaceOfRows(Form_Main& form) {
    return QStringLiteral("%1, [zonelist] ZoneListNbTracksParColonne (expected 1 to 10)")
        .arg(ThemeFile(form, QStringLiteral("theme.ini")));
}

} // namespace

void ClearPage(Form_Main& form) {
    TellingWhere([&] { return PlaceOfRows(form); },
                 [&] {
                     const Integer16 last = form.theme.ZoneListNbTracksParColonne * 2;
                     for (int i = 0; i <= last.value(); ++i) {
                         form.library.InfoPath(i).clear();
                         form.library.InfoType(i).clear();
                         form.library.InfoTitre(i).clear();
                     }
                 });
}

void CountPages(Form_Main& form) {
    const auto entries = static_cast<int>(form.library.List_List.size());
    const Integer32 perPage = 2 * form.theme.ZoneListNbTracksParColonne.value();
    const int whole = TellingWhere([&] { return PlaceOfRows(form); },
                                   [&] { return IntegerDivide(Integer32(entries), perPage).value(); });
    const bool rest = static_cast<double>(entries) / perPage.value() > whole;
    form.library.NbPages = rest ? whole + 1 : whole;
}

int FirstOfPage(const Form_Main& form) {
    return 2 * form.theme.ZoneListNbTracksParColonne.value() * form.library.CurrentPage.value();
}

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

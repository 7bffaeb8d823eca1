// What the buttons of the queue do.
#include "interaction/valider_playlist.h"

#include "interaction/playlists_folder.h"
#include "platform/event_pump.h"
#include "rendering/playlist_block.h"
#include "rendering/redraw_jukebox.h"
#include "shell/form_main.h"
#include "shell/log.h"

#include <utility>

namespace {

void ShowQueue(Form_Main& form) {
    DrawPlaylist(form);
    form.pump.DoEvents();
    RedrawJukebox(form);
}

void SwapEntries(Form_Main& form, Integer16 a, Integer16 b) {
    std::swap(form.PlaylistPath(a), form.PlaylistPath(b));
    std::swap(form.PlaylistTitre(a), form.PlaylistTitre(b));
    std::swap(form.PlaylistPlayed(a), form.PlaylistPlayed(b));
    std::swap(form.PlaylistCredits(a), form.PlaylistCredits(b));
}

// Deliberate D-21: PlaylistCurrent stays a bare number when entries are swapped or removed, so that another
// track may count as current. One expects it to follow its entry; the queue is known to behave so.
void MoveEntry(Form_Main& form, Integer16 step) {
    SwapEntries(form, form.PlaylistSelected, form.PlaylistSelected + step);
    form.PlaylistSelected += step;
    ShowQueue(form);
}

void CopyEntry(Form_Main& form, Integer16 from, Integer16 to) {
    form.PlaylistPath(to) = form.PlaylistPath(from);
    form.PlaylistTitre(to) = form.PlaylistTitre(from);
    form.PlaylistPlayed(to) = form.PlaylistPlayed(from);
    form.PlaylistCredits(to) = form.PlaylistCredits(from);
}

void RemoveEntry(Form_Main& form) {
    const Integer16 entry = form.PlaylistSelected;
    if (form.PlaylistPlayed(entry) < form.PlaylistCredits(entry) && form.ManageCoin == u"true") {
        form.Credits += 1;
    }
    for (Integer16 i = entry; i < form.PlaylistCount; i += 1) {
        CopyEntry(form, i + 1, i);
    }
    form.PlaylistCount -= 1;
    if (form.PlaylistSelected > form.PlaylistCount) {
        form.PlaylistSelected = form.PlaylistCount;
    }
    ShowQueue(form);
}

void LoadPlaylists(Form_Main& form) {
    PutPlaceAside(form);
    PointAtPlaylists(form);
    form.ActiveZone = QStringLiteral("list");
    form.ActiveBtn.clear();
    form.LastDrawnSlot = -1;
    ShowPlaylists(form);
}

} // namespace

void ValiderPlaylist(Form_Main& form) {
    WriteLog(form, QStringLiteral(" : ValiderPlaylist"));
    if (form.ActiveBtn == u"down" && form.PlaylistSelected < form.PlaylistCount) {
        MoveEntry(form, 1);
    } else if (form.ActiveBtn == u"up" && form.PlaylistSelected > 1) {
        MoveEntry(form, -1);
    } else if (form.ActiveBtn == u"remove" && form.PlaylistCount > 1) {
        RemoveEntry(form);
    } else if (form.ActiveBtn == u"load") {
        LoadPlaylists(form);
    } else if (form.ActiveBtn == u"save" && form.PlaylistCount > 0) {
        SavePlaylist(form);
    }
}

// Steps back: out of a folder, out of the playlists folder.
#include "interaction/folder_moves.h"

#include "core/run_time_error.h"
#include "library/create_list.h"
#include "rendering/page_anim.h"
#include "rendering/playlist_block.h"
#include "rendering/redraw_jukebox.h"
#include "rendering/track_zone.h"
#include "shell/form_main.h"
#include "shell/log.h"

// Deliberate D-127: when the list of playlists was not reached by the button "load", there is no saved place,
// and this raises 76. One expects to stay in the folder. Playlists belong into their own folder.
void ReturnToSavedPlace(Form_Main& form) {
    const auto where = [] { return QStringLiteral("the folder left for the playlists (SavedPath)"); };
    TellingWhere(where, [&] {
        PointDir1(form, form.SavedPath);
        PointFile1(form, form.SavedPath);
    });
    form.CurrentPath = form.SavedPath;
    form.NbPages = form.SavedNbPages;
    CreateList(form);
    form.CurrentPage = form.SavedPage;
    form.IdleTicks = 1;
    form.LastDrawnSlot = -1;
    DrawZoneList(form);
    DrawPlaylist(form);
    RedrawJukebox(form);
}

void Retour(Form_Main& form) {
    WriteLog(form, QStringLiteral(" : Retour"));
    if (form.InfoType(form.NumTrack) == u"playlist") {
        ReturnToSavedPlace(form);
        return;
    }
    if (form.DirLevel <= 0) {
        return;
    }
    form.DirLevel -= 1;
    form.CurrentPage = form.DirHistoryPage(form.DirLevel);
    form.CurrentPath = form.DirHistoryPath(form.DirLevel);
    form.SelX = static_cast<float>(form.DirHistorySelX(form.DirLevel).value());
    form.SelY = static_cast<float>(form.DirHistorySelY(form.DirLevel).value());
    PointDir1(form, form.CurrentPath);
    PointFile1(form, form.CurrentPath);
    CreateList(form);
    PageAnim(form, QStringLiteral("-"));
}

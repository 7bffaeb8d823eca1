// Going back from a folder, and the folder of saved playlists.
#include "interaction/folders.h"

#include "core/run_time_error.h"
#include "library/create_list.h"
#include "platform/dialogs.h"
#include "platform/event_pump.h"
#include "playback/playlist_file.h"
#include "rendering/page_anim.h"
#include "rendering/playlist_block.h"
#include "rendering/redraw_jukebox.h"
#include "rendering/track_zone.h"
#include "state/form_main.h"
#include "state/log.h"
#include "state/paths.h"

namespace {

// Returns true when the operator has entered and accepted a name.
bool AskName(Form_Main& form) {
    form.keyboard.KeyboardTitle = QStringLiteral("Save playlist as...");
    form.keyboard.KeyboardText.clear();
    form.keyboard.KeyboardButton = QStringLiteral("save");
    form.dialogs.ShowModal(QStringLiteral("Form_KeyBoard"));
    return !form.keyboard.KeyboardText.isEmpty() && form.keyboard.KeyboardResult == 1;
}

} // namespace

// Deliberate D-127: without a saved place this raises 76, for instance for a playlist in a music folder. One
// would expect to stay in the folder; playlists belong in their own folder.
void ReturnToSavedPlace(Form_Main& form) {
    const auto where = [] { return QStringLiteral("the folder left for the playlists (SavedPath)"); };
    TellingWhere(where, [&] {
        PointDir1(form, form.library.SavedPath);
        PointFile1(form, form.library.SavedPath);
    });
    form.library.CurrentPath = form.library.SavedPath;
    form.library.NbPages = form.library.SavedNbPages;
    CreateList(form);
    form.library.CurrentPage = form.library.SavedPage;
    form.shell.IdleTicks = 1;
    form.frame.LastDrawnSlot = -1;
    DrawZoneList(form);
    DrawPlaylist(form);
    RedrawJukebox(form);
}

void Retour(Form_Main& form) {
    WriteLog(form, QStringLiteral(" : Retour"));
    if (form.library.InfoType(form.library.NumTrack) == u"playlist") {
        ReturnToSavedPlace(form);
        return;
    }
    if (form.library.DirLevel <= 0) {
        return;
    }
    form.library.DirLevel -= 1;
    form.library.CurrentPage = form.library.DirHistoryPage(form.library.DirLevel);
    form.library.CurrentPath = form.library.DirHistoryPath(form.library.DirLevel);
    form.cursor.SelX = static_cast<float>(form.library.DirHistorySelX(form.library.DirLevel).value());
    form.cursor.SelY = static_cast<float>(form.library.DirHistorySelY(form.library.DirLevel).value());
    PointDir1(form, form.library.CurrentPath);
    PointFile1(form, form.library.CurrentPath);
    CreateList(form);
    PageAnim(form, QStringLiteral("-"));
}

void PutPlaceAside(Form_Main& form) {
    form.library.SavedPath = form.library.Dir1.Path;
    form.library.SavedPage = form.library.CurrentPage;
    form.library.SavedNbPages = form.library.NbPages;
}

// Deliberate D-129: a missing folder raises 76, which leaves InputBusy set. One would expect the folder to be
// created; it is delivered with the jukebox and nothing removes it.
void PointAtPlaylists(Form_Main& form) {
    const QString folder = PlaylistsFolder(form);
    PointDir1(form, folder);
    PointFile1(form, folder);
    form.library.CurrentPath = folder;
}

void ShowPlaylists(Form_Main& form) {
    form.library.CurrentPage = 0;
    CreateList(form);
    DrawZoneList(form);
    RedrawJukebox(form);
}

void SavePlaylist(Form_Main& form) {
    form.shell.Timer1.Enabled = false;
    form.pump.DoEvents();
    FadeMain(form);
    RefreshMain(form);
    form.pump.DoEvents();
    if (AskName(form)) {
        PutPlaceAside(form);
        WritePlaylistFile(form, form.keyboard.KeyboardText);
        // Deliberate D-101: the big cover is not loaded again, so it stays the one of the track that was
        // under the cursor. One would expect the cover of the playlist there; moving the cursor loads it.
        PointAtPlaylists(form);
        ShowPlaylists(form);
    }
    form.shell.Timer1.Enabled = true;
    RedrawJukebox(form);
}

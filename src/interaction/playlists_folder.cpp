// Going to the folder of the saved playlists, and saving one there.
#include "interaction/playlists_folder.h"

#include "core/path_text.h"
#include "library/create_list.h"
#include "platform/dialogs.h"
#include "platform/event_pump.h"
#include "playback/playlist_file.h"
#include "rendering/redraw_jukebox.h"
#include "rendering/track_zone.h"
#include "shell/form_main.h"

namespace {

// True when the operator has given a name.
bool AskName(Form_Main& form) {
    form.KeyboardTitle = QStringLiteral("Save playlist as...");
    form.KeyboardText.clear();
    form.KeyboardButton = QStringLiteral("save");
    form.dialogs.ShowModal(QStringLiteral("Form_KeyBoard"));
    return !form.KeyboardText.isEmpty() && form.KeyboardResult == 1;
}

} // namespace

void PutPlaceAside(Form_Main& form) {
    form.SavedPath = form.Dir1.Path;
    form.SavedPage = form.CurrentPage;
    form.SavedNbPages = form.NbPages;
}

// Deliberate D-129: without the folder this raises 76, which leaves InputBusy set. One expects the folder to
// be made. It is delivered with the jukebox and nothing removes it.
void PointAtPlaylists(Form_Main& form) {
    const QString folder = PathIn(form.AppFolder, QStringLiteral("playlists"));
    PointDir1(form, folder);
    PointFile1(form, folder);
    form.CurrentPath = folder;
}

void ShowPlaylists(Form_Main& form) {
    form.CurrentPage = 0;
    CreateList(form);
    DrawZoneList(form);
    RedrawJukebox(form);
}

void SavePlaylist(Form_Main& form) {
    form.Timer1.Enabled = false;
    form.pump.DoEvents();
    FadeMain(form);
    RefreshMain(form);
    form.pump.DoEvents();
    if (AskName(form)) {
        PutPlaceAside(form);
        WritePlaylistFile(form, form.KeyboardText);
        // Deliberate D-101: the big cover is not looked for anew, so that it stays that of the track under
        // the cursor. One expects that of the playlist there; moving the cursor brings it.
        PointAtPlaylists(form);
        ShowPlaylists(form);
    }
    form.Timer1.Enabled = true;
    RedrawJukebox(form);
}

// What validating a folder, a playlist or a track does.
#include "interaction/valider.h"

#include "core/run_time_error.h"
#include "interaction/folder_moves.h"
#include "interaction/info_lines.h"
#include "library/create_list.h"
#include "library/find_file.h"
#include "platform/event_pump.h"
#include "playback/credits.h"
#include "playback/engine.h"
#include "playback/play_counts.h"
#include "playback/playlist_file.h"
#include "rendering/main_block.h"
#include "rendering/page_anim.h"
#include "rendering/playlist_block.h"
#include "rendering/redraw_jukebox.h"
#include "shell/form_main.h"
#include "shell/log.h"
#include "shell/pause.h"

namespace {

void EnterFolder(Form_Main& form, Integer16 slot) {
    form.CurrentPath = form.InfoPath(slot);
    PointDir1(form, form.CurrentPath);
    PointFile1(form, form.CurrentPath);
    CreateList(form);
    form.pump.DoEvents();
    form.SelX = 1;
    form.SelY = 1;
    form.CurrentPage = 0;
    form.DirLevel += 1;
    PageAnim(form, QStringLiteral("+"));
    SetInfos(form, QStringLiteral("currentpath"));
}

void StartPlaylist(Form_Main& form) {
    form.PlaylistSelected = 1;
    form.PlaylistCurrent = 1;
    form.Remain.clear();
    BassPlayFile(form, form.PlaylistPath(1));
    form.NowPlayingPath = form.PlaylistPath(1);
    form.NowPlayingTitre = form.PlaylistTitre(1);
    form.PlaylistPlayed(1) += 1;
    if (form.ManageCoin == u"true") {
        form.Credits -= 1;
        form.PlaylistCredits(1) += 1;
    }
}

void LoadPlaylist(Form_Main& form, Integer16 slot) {
    const QString path = form.InfoPath(slot);
    if (!FileExists(form.files, path)) {
        return;
    }
    ReadPlaylistFile(form, path);
    if (form.PlaylistCount > 0 && !OutOfCredit(form)) {
        StartPlaylist(form);
    } else {
        form.PlaylistSelected = 0;
        form.PlaylistCurrent = 0;
        if (form.ManageCoin == u"true" && form.Credits == 0) {
            RefuseForCredit(form);
        }
    }
    ReturnToSavedPlace(form);
}

// Deliberate D-133: an entry beyond the queue's 1000 raises 9 after the count was raised and the credit
// taken. One expects the pick to be refused. The queue is a table of this size, and only a restart empties
// it.
void AppendToQueue(Form_Main& form, Integer16 slot) {
    form.PlaylistCount += 1;
    if (form.PlaylistSelected == 0) {
        form.PlaylistSelected = 1;
    }
    if (form.ManageCoin == u"true") {
        form.Credits -= 1;
        if (form.Credits == 0) {
            SetInfos(form, QStringLiteral("insertcoin"));
        }
    }
    const auto where = [&] {
        return form.InfoPath(slot) + QStringLiteral(" for the queue (expected at most 1000 entries)");
    };
    TellingWhere(where, [&] { form.PlaylistPath(form.PlaylistCount) = form.InfoPath(slot); });
    form.PlaylistTitre(form.PlaylistCount) = form.InfoTitre(slot);
    form.PlaylistCredits(form.PlaylistCount) = 1;
    form.PlaylistPlayed(form.PlaylistCount) = 0;
}

// The slot blinks three times between its two looks, the credit counter with it.
void FlashSlot(Form_Main& form, Integer16 slot) {
    constexpr int kRounds = 3;
    for (int round = 0; round < kRounds; ++round) {
        StretchSlot(form, form.Picture_Cache, slot);
        RepaintCreditBox(form);
        RefreshMain(form);
        Pause(form, 6000);
        StretchSlot(form, form.Picture_CacheHilight, slot);
        RepaintCreditBox(form);
        WriteCredits(form);
        RefreshMain(form);
        Pause(form, 6000);
    }
}

void StartPick(Form_Main& form, Integer16 slot) {
    WriteLog(form, QStringLiteral(" : InfoPath(NumTrack)=") + form.InfoPath(slot) +
                       QStringLiteral("  NumTrack=") + QString::number(slot.value()));
    BassPlayFile(form, form.InfoPath(slot));
    form.NowPlayingPath = form.InfoPath(slot);
    form.NowPlayingTitre = form.InfoTitre(slot);
    form.VideoRunning = -1;
    form.PlaylistCurrent = form.PlaylistCount;
    if (form.ActiveZone != u"playlist") {
        form.PlaylistSelected = form.PlaylistCurrent;
    }
    SetInfos(form, QStringLiteral("nowplaying"));
    form.PlaylistPlayed(form.PlaylistCurrent) += 1;
}

void BuyTrack(Form_Main& form, Integer16 slot) {
    if (OutOfCredit(form)) {
        RefuseForCredit(form);
        return;
    }
    if (!FileExists(form.files, form.InfoPath(slot))) {
        form.pump.DoEvents();
        RedrawJukebox(form);
        return;
    }
    AppendToQueue(form, slot);
    CountPick(form, slot.value());
    SetInfos(form, QStringLiteral("addtoplaylist"));
    BlockMainRedrawInfos(form);
    DrawPlaylist(form);
    if (form.TactileMode == u"true") {
        CopyPlaylistForTouch(form);
    } else {
        FlashSlot(form, slot);
    }
    if (form.IsPlaying == 0) {
        StartPick(form, slot);
    }
    form.pump.DoEvents();
    RedrawJukebox(form);
}

} // namespace

void Valider(Form_Main& form, Integer16 NumTrack) {
    WriteLog(form, QStringLiteral(" : Valider"));
    const QString type = form.InfoType(NumTrack);
    if (type == u"dir") {
        EnterFolder(form, NumTrack);
    } else if (type == u"playlist") {
        LoadPlaylist(form, NumTrack);
    } else if (type == u"file") {
        BuyTrack(form, NumTrack);
    }
}

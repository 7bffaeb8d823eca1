// The accept key in the list, the Main block and the queue.
#include "interaction/valider.h"

#include "interaction/credits.h"
#include "interaction/folders.h"
#include "library/create_list.h"
#include "platform/event_pump.h"
#include "playback/engine.h"
#include "playback/play_counts.h"
#include "playback/play_time.h"
#include "playback/playlist_file.h"
#include "playback/queue.h"
#include "rendering/main_block.h"
#include "rendering/page_anim.h"
#include "rendering/playlist_block.h"
#include "rendering/redraw_jukebox.h"
#include "state/form_main.h"
#include "state/log.h"
#include "state/paths.h"
#include "state/pause.h"

namespace {

void EnterFolder(Form_Main& form, Integer16 slot) {
    form.library.CurrentPath = form.library.InfoPath(slot);
    PointDir1(form, form.library.CurrentPath);
    PointFile1(form, form.library.CurrentPath);
    CreateList(form);
    form.pump.DoEvents();
    form.cursor.SelX = 1;
    form.cursor.SelY = 1;
    form.library.CurrentPage = 0;
    form.library.DirLevel += 1;
    PageAnim(form, QStringLiteral("+"));
    SetInfos(form, QStringLiteral("currentpath"));
}

void StartPlaylist(Form_Main& form) {
    MakeCurrent(form, 1);
    SelectCurrent(form);
    ForgetRemain(form);
    BassPlayFile(form, form.queue.PlaylistPath(1));
    NameAfterEntry(form, 1);
    CountStart(form, 1);
    if (form.settings.ManageCoin == u"true") {
        form.coins.Credits -= 1;
        CountPayment(form, 1);
    }
}

void LoadPlaylist(Form_Main& form, Integer16 slot) {
    const QString path = form.library.InfoPath(slot);
    if (!FileExists(form.files, path)) {
        return;
    }
    ReadPlaylistFile(form, path);
    if (form.queue.PlaylistCount > 0 && !OutOfCredit(form)) {
        StartPlaylist(form);
    } else {
        MakeCurrent(form, 0);
        SelectCurrent(form);
        if (form.settings.ManageCoin == u"true" && form.coins.Credits == 0) {
            RefuseForCredit(form);
        }
    }
    ReturnToSavedPlace(form);
}

// Deliberate D-133: an entry beyond the queue's 1000 raises 9 after the count was raised and the credit
// taken. One would expect the pick to be refused; the queue is a table of this size, and played entries stay
// in it.
void AppendToQueue(Form_Main& form, Integer16 slot) {
    AddEntry(form);
    if (form.settings.ManageCoin == u"true") {
        form.coins.Credits -= 1;
        if (form.coins.Credits == 0) {
            SetInfos(form, QStringLiteral("insertcoin"));
        }
    }
    FillLastEntry(form, form.library.InfoPath(slot), form.library.InfoTitre(slot));
}

// Blinks the slot between its two looks, and the credit counter with it, three times.
void FlashSlot(Form_Main& form, Integer16 slot) {
    constexpr int kRounds = 3;
    for (int round = 0; round < kRounds; ++round) {
        StretchSlot(form, form.frame.Picture_Cache, slot);
        RepaintCreditBox(form);
        RefreshMain(form);
        Pause(form, 6000);
        StretchSlot(form, form.frame.Picture_CacheHilight, slot);
        RepaintCreditBox(form);
        WriteCredits(form);
        RefreshMain(form);
        Pause(form, 6000);
    }
}

void StartPick(Form_Main& form, Integer16 slot) {
    WriteLog(form, QStringLiteral(" : InfoPath(NumTrack)=") + form.library.InfoPath(slot) +
                       QStringLiteral("  NumTrack=") + QString::number(slot.value()));
    BassPlayFile(form, form.library.InfoPath(slot));
    NameAfterSlot(form, slot);
    form.player.VideoRunning = -1;
    MakeCurrent(form, form.queue.PlaylistCount);
    if (form.cursor.ActiveZone != u"playlist") {
        SelectCurrent(form);
    }
    SetInfos(form, QStringLiteral("nowplaying"));
    CountStart(form, form.queue.PlaylistCurrent);
}

void BuyTrack(Form_Main& form, Integer16 slot) {
    if (OutOfCredit(form)) {
        RefuseForCredit(form);
        return;
    }
    if (!FileExists(form.files, form.library.InfoPath(slot))) {
        form.pump.DoEvents();
        RedrawJukebox(form);
        return;
    }
    AppendToQueue(form, slot);
    CountPick(form, slot.value());
    SetInfos(form, QStringLiteral("addtoplaylist"));
    BlockMainRedrawInfos(form);
    DrawPlaylist(form);
    if (form.settings.TactileMode == u"true") {
        CopyPlaylistForTouch(form);
    } else {
        FlashSlot(form, slot);
    }
    if (form.player.IsPlaying == 0) {
        StartPick(form, slot);
    }
    form.pump.DoEvents();
    RedrawJukebox(form);
}

// Starts the entry PlaylistCurrent. One that cannot be paid for is refused, and PlaylistCurrent returns to
// `before`.
void StartEntry(Form_Main& form, Integer16 before) {
    const Integer16 entry = form.queue.PlaylistCurrent;
    if (IsUncovered(form, entry) && OutOfCredit(form)) {
        MakeCurrent(form, before);
        RefuseForCredit(form);
        return;
    }
    form.player.VideoRunning = 0;
    BassStopFile(form);
    form.pump.DoEvents();
    NameAfterEntry(form, entry);
    if (form.settings.ManageCoin == u"true" && IsUncovered(form, entry)) {
        form.coins.Credits -= 1;
        CountPayment(form, entry);
    }
    CountStart(form, entry);
    BassPlayFile(form, form.queue.PlaylistPath(entry));
    if (form.cursor.ActiveZone != u"playlist") {
        form.queue.PlaylistSelected = entry;
    }
}

void PlayPrevious(Form_Main& form) {
    const Integer16 before = form.queue.PlaylistCurrent;
    GoToPreviousEntry(form);
    StartEntry(form, before);
}

void PlayNext(Form_Main& form) {
    const Integer16 before = form.queue.PlaylistCurrent;
    GoToNextEntry(form);
    StartEntry(form, before);
}

void PressStop(Form_Main& form) {
    RewindPlayback(form);
    form.cursor.ActiveBtn = QStringLiteral("play");
}

void PressPlay(Form_Main& form) {
    NameAfterEntry(form, form.queue.PlaylistCurrent);
    ResumePlayback(form);
    form.cursor.ActiveBtn = QStringLiteral("pause");
}

void PressPause(Form_Main& form) {
    PausePlayback(form);
    form.cursor.ActiveBtn = QStringLiteral("play");
}

void ShowQueue(Form_Main& form) {
    DrawPlaylist(form);
    form.pump.DoEvents();
    RedrawJukebox(form);
}

void MoveEntry(Form_Main& form, Integer16 step) {
    MoveSelectedEntry(form, step);
    ShowQueue(form);
}

void RemoveEntry(Form_Main& form) {
    if (!IsUncovered(form, form.queue.PlaylistSelected) && form.settings.ManageCoin == u"true") {
        form.coins.Credits += 1;
    }
    RemoveSelectedEntry(form);
    ShowQueue(form);
}

void LoadPlaylists(Form_Main& form) {
    PutPlaceAside(form);
    PointAtPlaylists(form);
    form.cursor.ActiveZone = QStringLiteral("list");
    form.cursor.ActiveBtn.clear();
    form.frame.LastDrawnSlot = -1;
    ShowPlaylists(form);
}

} // namespace

void Valider(Form_Main& form, Integer16 NumTrack) {
    WriteLog(form, QStringLiteral(" : Valider"));
    const QString type = form.library.InfoType(NumTrack);
    if (type == u"dir") {
        EnterFolder(form, NumTrack);
    } else if (type == u"playlist") {
        LoadPlaylist(form, NumTrack);
    } else if (type == u"file") {
        BuyTrack(form, NumTrack);
    }
}

void ValiderMain(Form_Main& form) {
    WriteLog(form, QStringLiteral(" : ValiderMain"));
    if (form.cursor.ActiveBtn == u"preview") {
        PlayPrevious(form);
    } else if (form.cursor.ActiveBtn == u"next") {
        PlayNext(form);
    } else if (form.cursor.ActiveBtn == u"stop") {
        PressStop(form);
    } else if (form.cursor.ActiveBtn == u"play") {
        PressPlay(form);
    } else if (form.cursor.ActiveBtn == u"pause") {
        PressPause(form);
    }
}

void ValiderPlaylist(Form_Main& form) {
    WriteLog(form, QStringLiteral(" : ValiderPlaylist"));
    if (form.cursor.ActiveBtn == u"down" && form.queue.PlaylistSelected < form.queue.PlaylistCount) {
        MoveEntry(form, 1);
    } else if (form.cursor.ActiveBtn == u"up" && form.queue.PlaylistSelected > 1) {
        MoveEntry(form, -1);
    } else if (form.cursor.ActiveBtn == u"remove" && form.queue.PlaylistCount > 1) {
        RemoveEntry(form);
    } else if (form.cursor.ActiveBtn == u"load") {
        LoadPlaylists(form);
    } else if (form.cursor.ActiveBtn == u"save" && form.queue.PlaylistCount > 0) {
        SavePlaylist(form);
    }
}

void SetButtonInfos(Form_Main& form) {
    SetInfos(form, QStringLiteral("btn") + form.cursor.ActiveBtn);
}

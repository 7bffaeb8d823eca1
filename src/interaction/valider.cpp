// The accept key in the list, the Main block and the queue.
#include "interaction/valider.h"

#include "core/media_kind.h"
#include "core/run_time_error.h"
#include "interaction/credits.h"
#include "interaction/folders.h"
#include "library/create_list.h"
#include "platform/audio_library.h"
#include "platform/event_pump.h"
#include "platform/media_graph.h"
#include "playback/engine.h"
#include "playback/play_counts.h"
#include "playback/playlist_file.h"
#include "rendering/main_block.h"
#include "rendering/page_anim.h"
#include "rendering/playlist_block.h"
#include "rendering/redraw_jukebox.h"
#include "state/form_main.h"
#include "state/log.h"
#include "state/paths.h"
#include "state/pause.h"

#include <utility>

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
    form.queue.PlaylistSelected = 1;
    form.queue.PlaylistCurrent = 1;
    form.player.Remain.clear();
    BassPlayFile(form, form.queue.PlaylistPath(1));
    form.player.NowPlayingPath = form.queue.PlaylistPath(1);
    form.player.NowPlayingTitre = form.queue.PlaylistTitre(1);
    form.queue.PlaylistPlayed(1) += 1;
    if (form.settings.ManageCoin == u"true") {
        form.coins.Credits -= 1;
        form.queue.PlaylistCredits(1) += 1;
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
        form.queue.PlaylistSelected = 0;
        form.queue.PlaylistCurrent = 0;
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
    form.queue.PlaylistCount += 1;
    if (form.queue.PlaylistSelected == 0) {
        form.queue.PlaylistSelected = 1;
    }
    if (form.settings.ManageCoin == u"true") {
        form.coins.Credits -= 1;
        if (form.coins.Credits == 0) {
            SetInfos(form, QStringLiteral("insertcoin"));
        }
    }
    const auto where = [&] {
        return form.library.InfoPath(slot) + QStringLiteral(" for the queue (expected at most 1000 entries)");
    };
    TellingWhere(where,
                 [&] { form.queue.PlaylistPath(form.queue.PlaylistCount) = form.library.InfoPath(slot); });
    form.queue.PlaylistTitre(form.queue.PlaylistCount) = form.library.InfoTitre(slot);
    form.queue.PlaylistCredits(form.queue.PlaylistCount) = 1;
    form.queue.PlaylistPlayed(form.queue.PlaylistCount) = 0;
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
    form.player.NowPlayingPath = form.library.InfoPath(slot);
    form.player.NowPlayingTitre = form.library.InfoTitre(slot);
    form.player.VideoRunning = -1;
    form.queue.PlaylistCurrent = form.queue.PlaylistCount;
    if (form.cursor.ActiveZone != u"playlist") {
        form.queue.PlaylistSelected = form.queue.PlaylistCurrent;
    }
    SetInfos(form, QStringLiteral("nowplaying"));
    form.queue.PlaylistPlayed(form.queue.PlaylistCurrent) += 1;
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

// Deliberate D-136: the buttons go by NowPlayingPath, which still names a video after its graph is gone. This
// raises 91 and leaves InputBusy set. One would expect nothing to happen; the name is kept for the
// information lines.
MediaGraph& VideoGraph(const Form_Main& form) {
    if (!form.player.VideoControl) {
        throw RunTimeError(
            kObjectNotSet,
            QStringLiteral("VideoControl: no video is loaded for \"%1\"").arg(form.player.NowPlayingPath));
    }
    return *form.player.VideoControl;
}

// Returns true when the entry has been started as often as it was paid for.
bool IsUncovered(const Form_Main& form, Integer16 entry) {
    return form.queue.PlaylistPlayed(entry) >= form.queue.PlaylistCredits(entry);
}

// Starts the entry PlaylistCurrent. One that cannot be paid for is refused, and PlaylistCurrent returns to
// `before`.
void StartEntry(Form_Main& form, Integer16 before) {
    const Integer16 entry = form.queue.PlaylistCurrent;
    if (IsUncovered(form, entry) && OutOfCredit(form)) {
        form.queue.PlaylistCurrent = before;
        RefuseForCredit(form);
        return;
    }
    form.player.VideoRunning = 0;
    BassStopFile(form);
    form.pump.DoEvents();
    form.player.NowPlayingPath = form.queue.PlaylistPath(entry);
    form.player.NowPlayingTitre = form.queue.PlaylistTitre(entry);
    if (form.settings.ManageCoin == u"true" && IsUncovered(form, entry)) {
        form.coins.Credits -= 1;
        form.queue.PlaylistCredits(entry) += 1;
    }
    form.queue.PlaylistPlayed(entry) += 1;
    BassPlayFile(form, form.queue.PlaylistPath(entry));
    if (form.cursor.ActiveZone != u"playlist") {
        form.queue.PlaylistSelected = entry;
    }
}

void PlayPrevious(Form_Main& form) {
    const Integer16 before = form.queue.PlaylistCurrent;
    form.queue.PlaylistCurrent -= 1;
    if (form.queue.PlaylistCurrent < 1) {
        form.queue.PlaylistCurrent = form.queue.PlaylistCount;
    }
    StartEntry(form, before);
}

void PlayNext(Form_Main& form) {
    const Integer16 before = form.queue.PlaylistCurrent;
    form.queue.PlaylistCurrent += 1;
    if (form.queue.PlaylistCurrent > form.queue.PlaylistCount) {
        form.queue.PlaylistCurrent = 1;
    }
    StartEntry(form, before);
}

void Stop(Form_Main& form) {
    form.player.VideoRunning = 0;
    if (IsVideo(form.player.NowPlayingPath)) {
        VideoGraph(form).Stop();
        VideoGraph(form).SetCurrentPosition(0);
    } else {
        form.audio.BASS_ChannelStop(form.player.BassChannel);
        form.audio.BASS_ChannelSetPosition(form.player.BassChannel, 0);
    }
    form.cursor.ActiveBtn = QStringLiteral("play");
}

void Play(Form_Main& form) {
    form.player.NowPlayingPath = form.queue.PlaylistPath(form.queue.PlaylistCurrent);
    form.player.NowPlayingTitre = form.queue.PlaylistTitre(form.queue.PlaylistCurrent);
    if (IsVideo(form.player.NowPlayingPath)) {
        VideoGraph(form).Run();
        form.player.VideoRunning = -1;
    } else {
        form.audio.BASS_ChannelPlay(form.player.BassChannel, false);
    }
    form.cursor.ActiveBtn = QStringLiteral("pause");
}

void PausePlayback(Form_Main& form) {
    if (IsVideo(form.player.NowPlayingPath)) {
        VideoGraph(form).Pause();
        form.player.VideoRunning = 0;
    } else {
        form.audio.BASS_ChannelPause(form.player.BassChannel);
    }
    form.cursor.ActiveBtn = QStringLiteral("play");
}

void ShowQueue(Form_Main& form) {
    DrawPlaylist(form);
    form.pump.DoEvents();
    RedrawJukebox(form);
}

void SwapEntries(Form_Main& form, Integer16 a, Integer16 b) {
    std::swap(form.queue.PlaylistPath(a), form.queue.PlaylistPath(b));
    std::swap(form.queue.PlaylistTitre(a), form.queue.PlaylistTitre(b));
    std::swap(form.queue.PlaylistPlayed(a), form.queue.PlaylistPlayed(b));
    std::swap(form.queue.PlaylistCredits(a), form.queue.PlaylistCredits(b));
}

// Deliberate D-21: PlaylistCurrent does not change when entries are swapped or removed, so another track can
// become the current one. One would expect it to follow its entry; operators are used to this behaviour.
void MoveEntry(Form_Main& form, Integer16 step) {
    SwapEntries(form, form.queue.PlaylistSelected, form.queue.PlaylistSelected + step);
    form.queue.PlaylistSelected += step;
    ShowQueue(form);
}

void CopyEntry(Form_Main& form, Integer16 from, Integer16 to) {
    form.queue.PlaylistPath(to) = form.queue.PlaylistPath(from);
    form.queue.PlaylistTitre(to) = form.queue.PlaylistTitre(from);
    form.queue.PlaylistPlayed(to) = form.queue.PlaylistPlayed(from);
    form.queue.PlaylistCredits(to) = form.queue.PlaylistCredits(from);
}

void RemoveEntry(Form_Main& form) {
    const Integer16 entry = form.queue.PlaylistSelected;
    if (form.queue.PlaylistPlayed(entry) < form.queue.PlaylistCredits(entry) &&
        form.settings.ManageCoin == u"true") {
        form.coins.Credits += 1;
    }
    for (Integer16 i = entry; i < form.queue.PlaylistCount; i += 1) {
        CopyEntry(form, i + 1, i);
    }
    form.queue.PlaylistCount -= 1;
    if (form.queue.PlaylistSelected > form.queue.PlaylistCount) {
        form.queue.PlaylistSelected = form.queue.PlaylistCount;
    }
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
        Stop(form);
    } else if (form.cursor.ActiveBtn == u"play") {
        Play(form);
    } else if (form.cursor.ActiveBtn == u"pause") {
        PausePlayback(form);
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

void SetInfos(Form_Main& form, const QString& infos) {
    form.frame.BlockMainInfos = infos;
    form.frame.InfosBlink = 0;
    form.frame.InfosTicks = 1;
}

void SetButtonInfos(Form_Main& form) {
    SetInfos(form, QStringLiteral("btn") + form.cursor.ActiveBtn);
}

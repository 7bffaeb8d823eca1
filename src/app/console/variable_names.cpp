// The names of the program's own variables: shell, settings, library, queue, interaction, light show,
// dialogs.
#include "app/console/state_names.h"
#include "app/console/state_values.h"
#include "state/form_main.h"

namespace {

// The rows of a page: slots 0 to twice the rows of a column.
template <int Upper>
QJsonValue Slots(const Form_Main& form, const BoundedArray<QString, Upper>& array) {
    return ElementsOf(array, 0, form.theme.ZoneListNbTracksParColonne.value() * 2);
}

template <typename Element, int Upper>
QJsonValue Queue(const Form_Main& form, const BoundedArray<Element, Upper>& array) {
    return ElementsOf(array, 1, form.queue.PlaylistCount.value());
}

template <typename Element, int Upper>
QJsonValue History(const Form_Main& form, const BoundedArray<Element, Upper>& array) {
    return ElementsOf(array, 0, form.library.DirLevel.value());
}

template <typename Element, int Upper>
QJsonValue Monitors(const Form_Main& form, const BoundedArray<Element, Upper>& array) {
    return ElementsOf(array, 0, form.shell.MonitorCount.value() - 1);
}

template <typename Element, int Upper>
QJsonValue Bindings(const Form_Main& /*form*/, const BoundedArray<Element, Upper>& array) {
    return ElementsOf(array, 0, Upper);
}

QJsonValue ListLines(const Form_Main& form) {
    QJsonArray lines;
    for (const ListLine& line : form.library.List_List) {
        lines.append(line.Text());
    }
    return lines;
}

// Each row has the struct of the form that owns the variable; the names in the console have none.
#define NAME(owner, variable)                                                                                \
    {#variable, [](const Form_Main& form) { return StateValue(form.owner.variable); }},
#define LIST(owner, variable, kind)                                                                          \
    {#variable, [](const Form_Main& form) { return kind(form, form.owner.variable); }},

// clang-format off
constexpr StateName kNames[] = {
    NAME(shell, AppFolder)
    NAME(shell, InputBusy)
    NAME(shell, IdleTicks)
    NAME(shell, ScreenWidth)
    NAME(shell, ScreenHeight)
    NAME(shell, ScreenBits)
    NAME(shell, MonitorCount)
    LIST(shell, MonitorWidth, Monitors)
    LIST(shell, MonitorHeight, Monitors)

    NAME(settings, StartPath)
    NAME(settings, Theme)
    NAME(settings, Fullscreen)
    NAME(settings, FullscreenSize)
    NAME(settings, PositionLeft)
    NAME(settings, PositionTop)
    NAME(settings, PositionWidth)
    NAME(settings, PositionHeight)
    NAME(settings, Orientation)
    NAME(settings, VideoPositionLeft)
    NAME(settings, VideoPositionTop)
    NAME(settings, VideoPositionWidth)
    NAME(settings, VideoPositionHeight)
    NAME(settings, PlayTransitionSound)
    NAME(settings, DefaultOrder)
    NAME(settings, TactileMode)
    NAME(settings, ShowFolderCover)
    NAME(settings, ShowFileCover)
    NAME(settings, ShowCover)
    NAME(settings, ShowBigCover)
    NAME(settings, ShowMp3CoverTag)
    NAME(settings, ShowTrackNum)
    NAME(settings, ShowMainZone)
    NAME(settings, ActiveMainZone)
    NAME(settings, ShowPlaylistZone)
    NAME(settings, ActivePlaylistZone)
    NAME(settings, ShowCommandZone)
    NAME(settings, ActiveCommandZone)
    NAME(settings, ManageCoin)
    NAME(settings, ShowBigCoverDefault)
    NAME(settings, KeyHaut)
    NAME(settings, KeyBas)
    NAME(settings, KeyGauche)
    NAME(settings, KeyDroite)
    NAME(settings, KeyValider)
    NAME(settings, KeyRetour)
    NAME(settings, KeyConfig)
    NAME(settings, KeyQuitter)
    NAME(settings, KeyGotoNextZone)
    NAME(settings, KeyInsertCoin)
    NAME(settings, KeyAddToFav)
    NAME(settings, KeyPreview)
    NAME(settings, KeyStop)
    NAME(settings, KeyPlay)
    NAME(settings, KeyPause)
    NAME(settings, KeyNext)
    NAME(settings, RGBLedsActive)
    NAME(settings, RGBLedsCommport)
    NAME(settings, RGBLedsNbLeds)
    NAME(settings, RGBLedsStereo)
    NAME(settings, ShowBigtitle)
    NAME(settings, ShowCoverFolder)
    NAME(settings, ShowTrackNumFolder)

    NAME(library, CurrentPath)
    NAME(library, CurrentPage)
    NAME(library, NbPages)
    NAME(library, Order)
    NAME(library, DirLevel)
    LIST(library, DirHistoryPage, History)
    LIST(library, DirHistoryPath, History)
    LIST(library, DirHistorySelX, History)
    LIST(library, DirHistorySelY, History)
    NAME(library, SavedPath)
    NAME(library, SavedPage)
    NAME(library, SavedNbPages)
    NAME(library, NumTrack)
    LIST(library, InfoPath, Slots)
    LIST(library, InfoType, Slots)
    LIST(library, InfoTitre, Slots)
    {"List_List", ListLines},

    LIST(queue, PlaylistPath, Queue)
    LIST(queue, PlaylistTitre, Queue)
    // The titles of the queue go by both words.
    {"PlaylistTitle", [](const Form_Main& form) { return Queue(form, form.queue.PlaylistTitre); }},
    LIST(queue, PlaylistPlayed, Queue)
    LIST(queue, PlaylistCredits, Queue)
    NAME(queue, PlaylistCount)
    NAME(queue, PlaylistSelected)
    NAME(queue, PlaylistCurrent)
    NAME(coins, Credits)
    NAME(player, IsPlaying)
    NAME(player, NowPlayingPath)
    NAME(player, NowPlayingTitre)
    NAME(player, Remain)
    NAME(player, TrackChanging)
    NAME(player, BassChannel)
    NAME(player, TrackLengthSeconds)
    NAME(player, TrackPositionSeconds)
    NAME(player, VideoControl)
    NAME(player, VideoPosition)
    NAME(player, VideoAudio)
    NAME(player, VideoWindow)
    NAME(player, VideoRunning)

    NAME(cursor, SelX)
    NAME(cursor, SelY)
    NAME(cursor, ActiveZone)
    NAME(cursor, ActiveBtn)
    NAME(cursor, TrackNumberInput)
    NAME(touch, TouchDragging)
    NAME(touch, TouchStartY)
    NAME(touch, TouchDeltaY)
    NAME(touch, TouchScrollOffset)
    NAME(touch, TouchLastX)
    NAME(touch, TouchLastY)

    NAME(frame, BlockMainInfos)
    NAME(frame, InfosBlink)
    NAME(frame, InfosTicks)
    NAME(frame, CoverKind)
    NAME(frame, LastDrawnSlot)

    NAME(lights, SpectrumWidth)
    NAME(lights, SpectrumHeight)
    NAME(lights, SpectrumHueOffset)

    NAME(keyboard, KeyboardMainWidth)
    NAME(keyboard, KeyboardTitle)
    NAME(keyboard, KeyboardText)
    NAME(keyboard, KeyboardButton)
    NAME(keyboard, KeyboardResult)
    NAME(keyboard, KeyboardScale)
    NAME(keyboard, KeyboardSelLine)
    NAME(keyboard, KeyboardSelCol)
    NAME(keyboard, KeyboardBusy)
    NAME(keyAssign, KeyAssignIndex)
    NAME(keyAssign, KeyAssignTitle)
    NAME(keyAssign, KeyAssignCode)
    NAME(folderDialog, SelectedDirectory)
    NAME(config, ZoneListNbTracks)
    LIST(config, KeyValues, Bindings)
};
// clang-format on

#undef NAME
#undef LIST

} // namespace

std::span<const StateName> VariableNames() {
    return kNames;
}

// The names of the program's own variables: shell, settings, library, queue, interaction, light show,
// dialogs.
#include "app/console/state_names.h"
#include "app/console/state_values.h"
#include "shell/form_main.h"

namespace {

// The rows of a page: slots 0 to twice the rows of a column.
template <int Upper>
QJsonValue Slots(const Form_Main& form, const BoundedArray<QString, Upper>& array) {
    return ElementsOf(array, 0, form.ZoneListNbTracksParColonne.value() * 2);
}

template <typename Element, int Upper>
QJsonValue Queue(const Form_Main& form, const BoundedArray<Element, Upper>& array) {
    return ElementsOf(array, 1, form.PlaylistCount.value());
}

template <typename Element, int Upper>
QJsonValue History(const Form_Main& form, const BoundedArray<Element, Upper>& array) {
    return ElementsOf(array, 0, form.DirLevel.value());
}

template <typename Element, int Upper>
QJsonValue Monitors(const Form_Main& form, const BoundedArray<Element, Upper>& array) {
    return ElementsOf(array, 0, form.MonitorCount.value() - 1);
}

QJsonValue ListLines(const Form_Main& form) {
    QJsonArray lines;
    for (const ListLine& line : form.List_List) {
        lines.append(line.Text());
    }
    return lines;
}

#define NAME(variable) {#variable, [](const Form_Main& form) { return StateValue(form.variable); }},
#define LIST(variable, kind) {#variable, [](const Form_Main& form) { return kind(form, form.variable); }},

// clang-format off
constexpr StateName kNames[] = {
    NAME(AppFolder)
    NAME(InputBusy)
    NAME(IdleTicks)
    NAME(ScreenWidth)
    NAME(ScreenHeight)
    NAME(ScreenBits)
    NAME(MonitorCount)
    LIST(MonitorWidth, Monitors)
    LIST(MonitorHeight, Monitors)

    NAME(StartPath)
    NAME(Theme)
    NAME(Fullscreen)
    NAME(FullscreenSize)
    NAME(PositionLeft)
    NAME(PositionTop)
    NAME(PositionWidth)
    NAME(PositionHeight)
    NAME(Orientation)
    NAME(VideoPositionLeft)
    NAME(VideoPositionTop)
    NAME(VideoPositionWidth)
    NAME(VideoPositionHeight)
    NAME(PlayTransitionSound)
    NAME(DefaultOrder)
    NAME(TactileMode)
    NAME(ShowFolderCover)
    NAME(ShowFileCover)
    NAME(ShowCover)
    NAME(ShowBigCover)
    NAME(ShowMp3CoverTag)
    NAME(ShowTrackNum)
    NAME(ShowMainZone)
    NAME(ActiveMainZone)
    NAME(ShowPlaylistZone)
    NAME(ActivePlaylistZone)
    NAME(ShowCommandZone)
    NAME(ActiveCommandZone)
    NAME(ManageCoin)
    NAME(ShowBigCoverDefault)
    NAME(KeyHaut)
    NAME(KeyBas)
    NAME(KeyGauche)
    NAME(KeyDroite)
    NAME(KeyValider)
    NAME(KeyRetour)
    NAME(KeyConfig)
    NAME(KeyQuitter)
    NAME(KeyGotoNextZone)
    NAME(KeyInsertCoin)
    NAME(KeyAddToFav)
    NAME(KeyPreview)
    NAME(KeyStop)
    NAME(KeyPlay)
    NAME(KeyPause)
    NAME(KeyNext)
    NAME(RGBLedsActive)
    NAME(RGBLedsCommport)
    NAME(RGBLedsNbLeds)
    NAME(RGBLedsStereo)
    NAME(ShowBigtitle)
    NAME(ShowCoverFolder)
    NAME(ShowTrackNumFolder)

    NAME(CurrentPath)
    NAME(CurrentPage)
    NAME(NbPages)
    NAME(Order)
    NAME(DirLevel)
    LIST(DirHistoryPage, History)
    LIST(DirHistoryPath, History)
    LIST(DirHistorySelX, History)
    LIST(DirHistorySelY, History)
    NAME(SavedPath)
    NAME(SavedPage)
    NAME(SavedNbPages)
    NAME(NumTrack)
    LIST(InfoPath, Slots)
    LIST(InfoType, Slots)
    LIST(InfoTitre, Slots)
    {"List_List", ListLines},

    LIST(PlaylistPath, Queue)
    LIST(PlaylistTitre, Queue)
    // The titles of the queue go by both words.
    {"PlaylistTitle", [](const Form_Main& form) { return Queue(form, form.PlaylistTitre); }},
    LIST(PlaylistPlayed, Queue)
    LIST(PlaylistCredits, Queue)
    NAME(PlaylistCount)
    NAME(PlaylistSelected)
    NAME(PlaylistCurrent)
    NAME(Credits)
    NAME(IsPlaying)
    NAME(NowPlayingPath)
    NAME(NowPlayingTitre)
    NAME(Remain)
    NAME(TrackChanging)
    NAME(BassChannel)
    NAME(TrackLengthSeconds)
    NAME(TrackPositionSeconds)
    NAME(VideoControl)
    NAME(VideoPosition)
    NAME(VideoAudio)
    NAME(VideoWindow)
    NAME(VideoRunning)

    NAME(SelX)
    NAME(SelY)
    NAME(ActiveZone)
    NAME(ActiveBtn)
    NAME(TrackNumberInput)
    NAME(TouchDragging)
    NAME(TouchStartY)
    NAME(TouchDeltaY)
    NAME(TouchScrollOffset)
    NAME(TouchLastX)
    NAME(TouchLastY)

    NAME(BlockMainInfos)
    NAME(InfosBlink)
    NAME(InfosTicks)
    NAME(CoverKind)
    NAME(LastDrawnSlot)

    NAME(SpectrumWidth)
    NAME(SpectrumHeight)
    NAME(SpectrumHueOffset)

    NAME(KeyboardMainWidth)
    NAME(KeyboardTitle)
    NAME(KeyboardText)
    NAME(KeyboardButton)
    NAME(KeyboardResult)
    NAME(KeyboardScale)
    NAME(KeyboardSelLine)
    NAME(KeyboardSelCol)
    NAME(KeyboardBusy)
    NAME(KeyAssignIndex)
    NAME(KeyAssignTitle)
    NAME(KeyAssignCode)
    NAME(SelectedDirectory)
};
// clang-format on

#undef NAME
#undef LIST

} // namespace

std::span<const StateName> VariableNames() {
    return kNames;
}

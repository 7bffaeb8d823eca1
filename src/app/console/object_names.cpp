// The names of the form's objects: lists, timers, windows, surfaces, pictures, sounds, the serial port.
#include "app/console/state_names.h"
#include "app/console/state_values.h"
#include "platform/serial_port.h"
#include "state/form_main.h"

namespace {

// Each row has the struct of the form that owns the variable; the names in the console have none.
#define NAME(owner, variable)                                                                                \
    {#variable, [](const Form_Main& form) { return StateValue(form.owner.variable); }},
#define CALLED(owner, object, variable, member)                                                              \
    {#object "." #member, [](const Form_Main& form) { return StateValue(form.owner.variable.member); }},
#define SIZE(owner, object)                                                                                  \
    {#object ".Width", [](const Form_Main& form) { return StateValue(form.owner.object.Width()); }},         \
        {#object ".Height", [](const Form_Main& form) { return StateValue(form.owner.object.Height()); }},
#define FOLDERS(owner, object) CALLED(owner, object, object, Path) CALLED(owner, object, object, List)
#define TIMER(owner, object) CALLED(owner, object, object, Enabled) CALLED(owner, object, object, Interval)
#define WINDOW(owner, object, variable)                                                                      \
    CALLED(owner, object, variable, Left)                                                                    \
    CALLED(owner, object, variable, Top)                                                                     \
    CALLED(owner, object, variable, Width)                                                                   \
    CALLED(owner, object, variable, Height)                                                                  \
    CALLED(owner, object, variable, Visible)
#define SURFACE(owner, object)                                                                               \
    CALLED(owner, object, object, Left)                                                                      \
    CALLED(owner, object, object, Top)                                                                       \
    SIZE(owner, object)                                                                                      \
    CALLED(owner, object, object, Visible)

// clang-format off
constexpr StateName kNames[] = {
    FOLDERS(library, Dir1)
    FOLDERS(library, Dir2)
    FOLDERS(library, File1)
    CALLED(library, File1, File1, Pattern)
    TIMER(shell, Timer1)
    TIMER(shell, tmrSpectrum)
    WINDOW(shell, Form_Main, MainWindow)
    WINDOW(shell, Form_Video, Form_Video)
    WINDOW(shell, Form_KeyBoard, Form_KeyBoard)
    {"MSComm1.PortOpen", [](const Form_Main& form) { return StateValue(form.MSComm1.IsOpen()); }},

    SURFACE(frame, Picture_Main)
    WINDOW(frame, Picture_MainVideo, Picture_MainVideo)
    SURFACE(frame, Picture_Video)
    SURFACE(frame, Picture_Cache)
    SURFACE(frame, Picture_CacheHilight)
    SURFACE(frame, Picture_CacheTmp)
    SURFACE(frame, Picture_CacheTmp2)
    SURFACE(frame, Picture_Playlist)
    SURFACE(frame, Picture_PlaylistHilight)
    SURFACE(frame, Picture_PlaylistTmp)
    SURFACE(frame, Picture_Command)
    SURFACE(frame, Picture_CommandHilight)
    SURFACE(frame, Picture_TmpCover)
    SURFACE(keyboard, Picture_Keyboard)

    SIZE(frame, ImgCover)
    SIZE(assets, ImgFade)
    SIZE(assets, ImgWait)
    SIZE(assets, ImgZoneList)
    SIZE(assets, ImgZoneListHilight)
    SIZE(assets, ImgZoneListWithNumTrack)
    SIZE(assets, ImgZoneListWithNumTrackHilight)
    SIZE(assets, ImgZoneListNowPlaying)
    SIZE(assets, ImgZoneListComingNext)
    SIZE(assets, ImgZoneListVideo)
    SIZE(assets, ImgZoneListNavigation)
    SIZE(assets, ImgMain)
    SIZE(assets, ImgMainActiveSelected)
    SIZE(assets, ImgMainActiveSelectedHilight)
    SIZE(assets, ImgMainActiveUnselected)
    SIZE(assets, ImgMainActiveUnselectedHilight)
    SIZE(assets, ImgPlaylist)
    SIZE(assets, ImgPlaylistActiveSelected)
    SIZE(assets, ImgPlaylistActiveSelectedHilight)
    SIZE(assets, ImgPlaylistActiveUnselected)
    SIZE(assets, ImgPlaylistActiveUnselectedHilight)
    SIZE(assets, ImgPlaylistPlaylistHilight)
    SIZE(assets, ImgCommand)
    SIZE(assets, ImgCommandHilight)
    SIZE(assets, ImgCommandListbox)
    SIZE(assets, ImgCommandListboxHilight)
    SIZE(assets, ImgCommandBtn)
    SIZE(assets, ImgCommandBtnHilight)
    SIZE(keyboard, ImgKeyboard)
    SIZE(keyboard, ImgKeyboardHilight)

    NAME(assets, SoundCharge)
    NAME(assets, SoundInsertCoin)
    NAME(assets, SoundInsertCoinPosition)
    NAME(assets, SoundMove)
    NAME(assets, SoundMovePosition)
    NAME(assets, SoundNoCredit)
    NAME(assets, SoundNoCreditPosition)
    NAME(assets, SoundPageTurn)
    NAME(assets, SoundPageTurnPosition)
};
// clang-format on

#undef NAME
#undef CALLED
#undef FOLDERS
#undef TIMER
#undef WINDOW
#undef SURFACE
#undef SIZE

} // namespace

std::span<const StateName> ObjectNames() {
    return kNames;
}

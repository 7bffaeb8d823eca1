// The names of the form's objects: lists, timers, windows, surfaces, pictures, sounds, the serial port.
#include "app/console/state_names.h"
#include "app/console/state_values.h"
#include "platform/serial_port.h"
#include "shell/form_main.h"

namespace {

#define NAME(variable) {#variable, [](const Form_Main& form) { return StateValue(form.variable); }},
#define CALLED(object, variable, member)                                                                     \
    {#object "." #member, [](const Form_Main& form) { return StateValue(form.variable.member); }},
#define SIZE(object)                                                                                         \
    {#object ".Width", [](const Form_Main& form) { return StateValue(form.object.Width()); }},               \
        {#object ".Height", [](const Form_Main& form) { return StateValue(form.object.Height()); }},
#define FOLDERS(object) CALLED(object, object, Path) CALLED(object, object, List)
#define TIMER(object) CALLED(object, object, Enabled) CALLED(object, object, Interval)
#define WINDOW(object, variable)                                                                             \
    CALLED(object, variable, Left)                                                                           \
    CALLED(object, variable, Top)                                                                            \
    CALLED(object, variable, Width)                                                                          \
    CALLED(object, variable, Height)                                                                         \
    CALLED(object, variable, Visible)
#define SURFACE(object)                                                                                      \
    CALLED(object, object, Left)                                                                             \
    CALLED(object, object, Top)                                                                              \
    SIZE(object)                                                                                             \
    CALLED(object, object, Visible)

// clang-format off
constexpr StateName kNames[] = {
    FOLDERS(Dir1)
    FOLDERS(Dir2)
    FOLDERS(File1)
    CALLED(File1, File1, Pattern)
    TIMER(Timer1)
    TIMER(tmrSpectrum)
    WINDOW(Form_Main, MainWindow)
    WINDOW(Form_Video, Form_Video)
    WINDOW(Form_KeyBoard, Form_KeyBoard)
    {"MSComm1.PortOpen", [](const Form_Main& form) { return StateValue(form.MSComm1.IsOpen()); }},

    SURFACE(Picture_Main)
    WINDOW(Picture_MainVideo, Picture_MainVideo)
    SURFACE(Picture_Video)
    SURFACE(Picture_Cache)
    SURFACE(Picture_CacheHilight)
    SURFACE(Picture_CacheTmp)
    SURFACE(Picture_CacheTmp2)
    SURFACE(Picture_Playlist)
    SURFACE(Picture_PlaylistHilight)
    SURFACE(Picture_PlaylistTmp)
    SURFACE(Picture_Command)
    SURFACE(Picture_CommandHilight)
    SURFACE(Picture_TmpCover)
    SURFACE(Picture_Keyboard)

    SIZE(ImgCover)
    SIZE(ImgFade)
    SIZE(ImgWait)
    SIZE(ImgZoneList)
    SIZE(ImgZoneListHilight)
    SIZE(ImgZoneListWithNumTrack)
    SIZE(ImgZoneListWithNumTrackHilight)
    SIZE(ImgZoneListNowPlaying)
    SIZE(ImgZoneListComingNext)
    SIZE(ImgZoneListVideo)
    SIZE(ImgZoneListNavigation)
    SIZE(ImgMain)
    SIZE(ImgMainActiveSelected)
    SIZE(ImgMainActiveSelectedHilight)
    SIZE(ImgMainActiveUnselected)
    SIZE(ImgMainActiveUnselectedHilight)
    SIZE(ImgPlaylist)
    SIZE(ImgPlaylistActiveSelected)
    SIZE(ImgPlaylistActiveSelectedHilight)
    SIZE(ImgPlaylistActiveUnselected)
    SIZE(ImgPlaylistActiveUnselectedHilight)
    SIZE(ImgPlaylistPlaylistHilight)
    SIZE(ImgCommand)
    SIZE(ImgCommandHilight)
    SIZE(ImgCommandListbox)
    SIZE(ImgCommandListboxHilight)
    SIZE(ImgCommandBtn)
    SIZE(ImgCommandBtnHilight)
    SIZE(ImgKeyboard)
    SIZE(ImgKeyboardHilight)

    NAME(SoundCharge)
    NAME(SoundInsertCoin)
    NAME(SoundInsertCoinPosition)
    NAME(SoundMove)
    NAME(SoundMovePosition)
    NAME(SoundNoCredit)
    NAME(SoundNoCreditPosition)
    NAME(SoundPageTurn)
    NAME(SoundPageTurnPosition)
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

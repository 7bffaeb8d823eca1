// The buttons of the Main block and of the queue, cut from full pictures of their block.
#include "rendering/block_buttons.h"

#include "rendering/geometry.h"
#include "state/form_main.h"

#include <array>

namespace {

// The four looks of a block's buttons.
struct ButtonPictures {
    const LatePicture& available;
    const LatePicture& availableFocused;
    const LatePicture& unavailable;
    const LatePicture& unavailableFocused;
};

bool Always(const Form_Main& /*form*/) {
    return true;
}
bool SeveralQueued(const Form_Main& form) {
    return form.queue.PlaylistCount > 1;
}
bool SomethingNamed(const Form_Main& form) {
    return !form.player.NowPlayingPath.isEmpty();
}
bool NothingNamedButQueued(const Form_Main& form) {
    return form.player.NowPlayingPath.isEmpty() && form.queue.PlaylistCount > 0;
}

using T = ThemeRecord;

// clang-format off
constexpr std::array kMainButtons = {
    ButtonRow{"preview", &T::BlockMainBtnPreview,     SeveralQueued},
    ButtonRow{"stop",    &T::BlockMainBtnStop,        SomethingNamed},
    ButtonRow{"play",    &T::BlockMainBtnPlay,        NothingNamedButQueued},
    ButtonRow{"pause",   &T::BlockMainBtnPause,       SomethingNamed},
    ButtonRow{"next",    &T::BlockMainBtnNext,        SeveralQueued},
};

constexpr std::array kPlaylistButtons = {
    ButtonRow{"down",    &T::BlockPlaylistBtnDown,    SeveralQueued},
    ButtonRow{"up",      &T::BlockPlaylistBtnUp,      SeveralQueued},
    ButtonRow{"remove",  &T::BlockPlaylistBtnRemove,  SeveralQueued},
    ButtonRow{"load",    &T::BlockPlaylistBtnLoad,    Always},
    ButtonRow{"save",    &T::BlockPlaylistBtnSave,    SeveralQueued},
};
// clang-format on

const LatePicture& Look(const ButtonPictures& pictures, bool available, bool focused) {
    if (available) {
        return focused ? pictures.availableFocused : pictures.available;
    }
    return focused ? pictures.unavailableFocused : pictures.unavailable;
}

void DrawButtons(Form_Main& form, std::span<const ButtonRow> rows, const ButtonPictures& pictures,
                 const Corner16& corner) {
    for (const ButtonRow& row : rows) {
        const Box16& button = form.theme.*row.box;
        const Box from = BoxOf(button);
        const Box to = ScaledBox(form, InBlock(corner, button));
        const bool focused = form.cursor.ActiveBtn == QLatin1StringView(row.word);
        Look(pictures, row.available(form), focused)
            .Render(form.frame.Picture_Main, to.x, to.y, to.width, to.height, from.x, from.y, from.width,
                    from.height);
    }
}

} // namespace

std::span<const ButtonRow> MainButtons() {
    return kMainButtons;
}

std::span<const ButtonRow> PlaylistButtons() {
    return kPlaylistButtons;
}

void DrawMainButtons(Form_Main& form) {
    DrawButtons(form, kMainButtons,
                {form.assets.ImgMainActiveSelected, form.assets.ImgMainActiveSelectedHilight,
                 form.assets.ImgMainActiveUnselected, form.assets.ImgMainActiveUnselectedHilight},
                form.theme.BlockMain);
}

void DrawPlaylistButtons(Form_Main& form) {
    DrawButtons(form, kPlaylistButtons,
                {form.assets.ImgPlaylistActiveSelected, form.assets.ImgPlaylistActiveSelectedHilight,
                 form.assets.ImgPlaylistActiveUnselected, form.assets.ImgPlaylistActiveUnselectedHilight},
                form.theme.BlockPlaylist);
}

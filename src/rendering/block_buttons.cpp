// The buttons of the Main block and of the queue, cut from full pictures of their block.
#include "rendering/block_buttons.h"

#include "rendering/geometry.h"
#include "shell/form_main.h"

#include <array>

namespace {

struct ButtonRow {
    const char* word;
    Integer16 ThemeRecord::*x;
    Integer16 ThemeRecord::*y;
    Integer16 ThemeRecord::*width;
    Integer16 ThemeRecord::*height;
    bool (*available)(const Form_Main& form);
};

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
    return form.PlaylistCount > 1;
}
bool SomethingNamed(const Form_Main& form) {
    return !form.NowPlayingPath.isEmpty();
}
bool NothingNamedButQueued(const Form_Main& form) {
    return form.NowPlayingPath.isEmpty() && form.PlaylistCount > 0;
}

#define RECTANGLE(prefix)                                                                                    \
    &ThemeRecord::prefix##X, &ThemeRecord::prefix##Y, &ThemeRecord::prefix##W, &ThemeRecord::prefix##H

// clang-format off
constexpr std::array kMainButtons = {
    ButtonRow{"preview", RECTANGLE(BlockMainBtnPreview),     SeveralQueued},
    ButtonRow{"stop",    RECTANGLE(BlockMainBtnStop),        SomethingNamed},
    ButtonRow{"play",    RECTANGLE(BlockMainBtnPlay),        NothingNamedButQueued},
    ButtonRow{"pause",   RECTANGLE(BlockMainBtnPause),       SomethingNamed},
    ButtonRow{"next",    RECTANGLE(BlockMainBtnNext),        SeveralQueued},
};

constexpr std::array kPlaylistButtons = {
    ButtonRow{"down",    RECTANGLE(BlockPlaylistBtnDown),    SeveralQueued},
    ButtonRow{"up",      RECTANGLE(BlockPlaylistBtnUp),      SeveralQueued},
    ButtonRow{"remove",  RECTANGLE(BlockPlaylistBtnRemove),  SeveralQueued},
    ButtonRow{"load",    RECTANGLE(BlockPlaylistBtnLoad),    Always},
    ButtonRow{"save",    RECTANGLE(BlockPlaylistBtnSave),    SeveralQueued},
};
// clang-format on

#undef RECTANGLE

const LatePicture& Look(const ButtonPictures& pictures, bool available, bool focused) {
    if (available) {
        return focused ? pictures.availableFocused : pictures.available;
    }
    return focused ? pictures.unavailableFocused : pictures.unavailable;
}

void DrawButtons(Form_Main& form, const std::array<ButtonRow, 5>& rows, const ButtonPictures& pictures,
                 Integer16 blockX, Integer16 blockY) {
    for (const ButtonRow& row : rows) {
        const int x = (form.*row.x).value();
        const int y = (form.*row.y).value();
        const int width = (form.*row.width).value();
        const int height = (form.*row.height).value();
        const Box to = ScaledBox(form, blockX.value() + x, blockY.value() + y, width, height);
        const bool focused = form.ActiveBtn == QLatin1StringView(row.word);
        Look(pictures, row.available(form), focused)
            .Render(form.Picture_Main, to.x, to.y, to.width, to.height, x, y, width, height);
    }
}

} // namespace

void DrawMainButtons(Form_Main& form) {
    DrawButtons(form, kMainButtons,
                {form.ImgMainActiveSelected, form.ImgMainActiveSelectedHilight, form.ImgMainActiveUnselected,
                 form.ImgMainActiveUnselectedHilight},
                form.BlockMainX, form.BlockMainY);
}

void DrawPlaylistButtons(Form_Main& form) {
    DrawButtons(form, kPlaylistButtons,
                {form.ImgPlaylistActiveSelected, form.ImgPlaylistActiveSelectedHilight,
                 form.ImgPlaylistActiveUnselected, form.ImgPlaylistActiveUnselectedHilight},
                form.BlockPlaylistX, form.BlockPlaylistY);
}

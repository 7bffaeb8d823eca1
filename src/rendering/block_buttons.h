// The buttons of the Main block and of the queue.
#pragma once

#include "state/theme_state.h"

#include <span>

struct Form_Main;

// A button: its word in ActiveBtn, its rectangle in the block's picture, and whether it is available.
struct ButtonRow {
    const char* word;
    Box16 ThemeRecord::*box;
    bool (*available)(const Form_Main& form);
};

// The buttons of a block, in the order in which they are drawn and tested.
std::span<const ButtonRow> MainButtons();
std::span<const ButtonRow> PlaylistButtons();

// Paint the five buttons of a block. Each is cut from one of four full pictures of the block, which depends
// on focus and availability.
void DrawMainButtons(Form_Main& form);
void DrawPlaylistButtons(Form_Main& form);

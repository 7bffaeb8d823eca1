// The main form: the jukebox's shared variables, under their given names, and the ports.
#pragma once

#include "platform/ports.h"
#include "state/dialogs_state.h"
#include "state/interaction_state.h"
#include "state/keyboard_state.h"
#include "state/library_state.h"
#include "state/light_show_state.h"
#include "state/playback_state.h"
#include "state/rendering_state.h"
#include "state/roof.h"
#include "state/settings_state.h"
#include "state/shell_state.h"
#include "state/theme_state.h"

// Data without logic. Each struct is documented in the state header of the room that owns it.
struct Form_Main : Ports {
    Form_Main(const Ports& ports, const Roof& handedDown) : Ports(ports), roof(handedDown) {}

    Roof roof;

    ShellState shell;
    SettingsState settings;
    ThemeRecord theme;
    SlotRecord slots;
    CommandMenu menu;
    ThemeAssets assets;
    LibraryState library;
    QueueState queue;
    PlayerState player;
    FrameState frame;
    LightShowState lights;
    KeyboardState keyboard;
    ConfigDialogState config;
    KeyAssignState keyAssign;
    FolderDialogState folderDialog;
    CursorState cursor;
    TouchState touch;
    CoinState coins;
};

// The main form: every shared variable of the jukebox, under its given name, and the ports.
#pragma once

#include "dialogs/dialogs_state.h"
#include "interaction/interaction_state.h"
#include "library/library_state.h"
#include "lightshow/light_show_state.h"
#include "platform/ports.h"
#include "playback/playback_state.h"
#include "rendering/rendering_state.h"
#include "settings/settings_state.h"
#include "shell/shell_state.h"
#include "theme/theme_state.h"

// Each base is one room's state and is documented there. State holds data, no logic.
struct Form_Main : Ports,
                   ShellState,
                   SettingsState,
                   ThemeRecord,
                   SlotRecord,
                   CommandMenu,
                   ThemeAssets,
                   LibraryState,
                   PlaybackState,
                   InteractionState,
                   RenderingState,
                   LightShowState,
                   DialogsState {
    explicit Form_Main(const Ports& ports) : Ports(ports) {}
};

// Routines of higher rooms that lower rooms call.
#include "shell/hand_down.h"

#include "lightshow/led_link.h"
#include "rendering/video_surfaces.h"
#include "shell/display_mode.h"
#include "shell/exit.h"
#include "shell/load_config.h"
#include "shell/load_theme.h"

Roof HandDown() {
    return {.LoadConfig = LoadConfig,
            .LoadTheme = LoadTheme,
            .ChangeRes = ChangeRes,
            .ExitJukebox = ExitJukebox,
            .DrawMiniVideo = DrawMiniVideo,
            .HideMiniVideo = HideMiniVideo,
            .SendToController = SendToController};
}

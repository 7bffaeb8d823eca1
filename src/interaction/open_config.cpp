// The ways into the configuration dialog.
#include "interaction/open_config.h"

#include "core/run_time_error.h"
#include "library/create_list.h"
#include "platform/dialogs.h"
#include "platform/event_pump.h"
#include "platform/windows.h"
#include "rendering/playlist_block.h"
#include "rendering/redraw_jukebox.h"
#include "rendering/track_zone.h"
#include "rendering/video_surfaces.h"
#include "settings/config_values.h"
#include "settings/load_config.h"
#include "shell/form_main.h"
#include "shell/log.h"
#include "theme/load_theme.h"

namespace {

void FadeBehindDialog(Form_Main& form) {
    form.Timer1.Enabled = false;
    form.windows.MousePointer(QStringLiteral("Screen"), kPointerDefault);
    FadeMain(form);
    RefreshMain(form);
}

} // namespace

void OpenConfigByKey(Form_Main& form) {
    FadeBehindDialog(form);
    form.pump.DoEvents();
    form.dialogs.ShowModal(QStringLiteral("Form_Config"));
    form.windows.MousePointer(QStringLiteral("Screen"), kPointerHourglass);
    form.Timer1.Enabled = true;
    LoadConfig(form);
    LoadTheme(form);
    CreateList(form);
    DrawZoneList(form);
    DrawPlaylist(form);
    RedrawJukebox(form);
}

void OpenConfigByMenu(Form_Main& form) {
    FadeBehindDialog(form);
    form.dialogs.ShowModal(QStringLiteral("Form_Config"));
    form.CurrentPath = form.StartPath;
    WriteLog(form, QStringLiteral(" : deplacement dir1 vers ") + form.CurrentPath);
    const auto where = [&] {
        return ConfigPlace(form, u"Main", u"StartPath") + QStringLiteral(" (expected a folder)");
    };
    TellingWhere(where, [&] {
        PointDir1(form, form.CurrentPath);
        PointFile1(form, form.CurrentPath);
    });
    SetFile1Pattern(form, kMusicPattern.toString());
    LoadConfig(form);
    LoadTheme(form);
    CreateList(form);
    DrawZoneList(form);
    RedrawJukebox(form);
    if (VideoLiesBeyondScreen(form)) {
        ShowVideoForm(form);
    }
    form.windows.MousePointer(QStringLiteral("Screen"), kPointerDefault);
    form.Timer1.Enabled = true;
}

// The focus' way round the zones.
#include "interaction/next_zone.h"

#include "interaction/info_lines.h"
#include "rendering/command_block.h"
#include "rendering/playlist_block.h"
#include "rendering/redraw_jukebox.h"
#include "shell/form_main.h"
#include "shell/pause.h"

#include <algorithm>

namespace {

// Slides the queue's highlight from the selected row to the playing one, a design pixel a step.
void SlideToPlaying(Form_Main& form) {
    const int rowHeight = form.ImgPlaylistPlaylistHilight.Height();
    const int height = std::min(rowHeight * form.PlaylistCount.value(), form.BlockPlaylistPlaylistH.value());
    const int from = (form.PlaylistSelected.value() - 1) * rowHeight;
    const int to = (form.PlaylistCurrent.value() - 1) * rowHeight;
    const int step = form.PlaylistSelected > form.PlaylistCurrent ? -1 : 1;
    for (int top = from; top != to + step; top += step) {
        CopyPlaylistRows(form, form.Picture_Playlist, top, height);
        RefreshMain(form);
        Pause(form, 300);
    }
    form.PlaylistSelected = form.PlaylistCurrent;
}

void Focus(Form_Main& form, const char* zone, const char* button) {
    form.ActiveZone = QString::fromLatin1(zone);
    form.ActiveBtn = QString::fromLatin1(button);
}

void Rotate(Form_Main& form) {
    if (form.ActiveZone == u"list") {
        Focus(form, "main", "pause");
    } else if (form.ActiveZone == u"main") {
        Focus(form, "playlist", "down");
    } else if (form.ActiveZone == u"playlist") {
        Focus(form, "command", "config");
    } else if (form.ActiveZone == u"command") {
        Focus(form, "list", "");
        form.CommandCurrentMenu = 1;
        form.CommandCurrentId = 1;
        DrawCommand(form);
    }
}

bool IsOn(const QString& shown, const QString& active) {
    return shown == u"true" && active == u"true";
}

void SkipZonesSwitchedOff(Form_Main& form) {
    if (form.ActiveZone == u"main" && !IsOn(form.ShowMainZone, form.ActiveMainZone)) {
        Focus(form, "playlist", "down");
    }
    if (form.ActiveZone == u"playlist" && !IsOn(form.ShowPlaylistZone, form.ActivePlaylistZone)) {
        Focus(form, "command", "config");
    }
    if (form.ActiveZone == u"command" && !IsOn(form.ShowCommandZone, form.ActiveCommandZone)) {
        Focus(form, "list", "");
    }
}

// What the information lines say when the focus is back on the list.
QString InfosOfList(const Form_Main& form) {
    if (form.ManageCoin == u"true" && form.Credits == 0) {
        return QStringLiteral("insertcoin");
    }
    return form.PlaylistCount > 0 ? QStringLiteral("nowplaying") : QStringLiteral("selecttrack");
}

} // namespace

void GoToNextZone(Form_Main& form) {
    form.TrackNumberInput.clear();
    if (form.ActiveZone == u"playlist" && form.PlaylistSelected != form.PlaylistCurrent) {
        SlideToPlaying(form);
    }
    Rotate(form);
    SkipZonesSwitchedOff(form);
    SetButtonInfos(form);
    if (form.BlockMainInfos == u"btn") {
        SetInfos(form, InfosOfList(form));
    }
    RedrawJukebox(form);
}

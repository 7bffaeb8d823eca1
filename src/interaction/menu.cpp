// The rows of the menu, and the configuration dialog.
#include "interaction/menu.h"

#include "core/conversions.h"
#include "library/create_list.h"
#include "platform/dialogs.h"
#include "platform/event_pump.h"
#include "platform/windows.h"
#include "rendering/command_block.h"
#include "rendering/playlist_block.h"
#include "rendering/redraw_jukebox.h"
#include "rendering/track_zone.h"
#include "rendering/video_form.h"
#include "settings/profile.h"
#include "state/form_main.h"
#include "state/log.h"
#include "state/paths.h"

#include <array>
#include <utility>

namespace {

// The file and section to which an action writes its key.
enum class Scope { kFolder, kCabinet };

struct ActionRow {
    const char* action;
    Scope scope;
    const char* key;
    QString& (*variable)(Form_Main& form); // null: only the key is written
    bool rebuilds;                         // the list is rebuilt
};

QString& Order(Form_Main& form) {
    return form.library.Order;
}
QString& BigTitle(Form_Main& form) {
    return form.settings.ShowBigtitle;
}
QString& TransitionSound(Form_Main& form) {
    return form.settings.PlayTransitionSound;
}
QString& ManageCoin(Form_Main& form) {
    return form.settings.ManageCoin;
}

// clang-format off
constexpr std::array kActions = {
    ActionRow{"order",                  Scope::kFolder,  "Order",               Order,           true},
    ActionRow{"bigtitle",               Scope::kFolder,  "ShowBigtitle",        BigTitle,        false},
    ActionRow{"showcover",              Scope::kFolder,  "ShowCover",           nullptr,         false},
    ActionRow{"showtracknum",           Scope::kFolder,  "ShowTrackNum",        nullptr,         false},
    ActionRow{"generaltransitionsound", Scope::kCabinet, "PlayTransitionSound", TransitionSound, false},
    ActionRow{"generalmanagecoin",      Scope::kCabinet, "ManageCoin",          ManageCoin,      false},
    ActionRow{"generaldefaultorder",    Scope::kCabinet, "Defaultorder",        Order,           true},
    ActionRow{"generalshowfoldercover", Scope::kCabinet, "Showfoldercover",     nullptr,         false},
    ActionRow{"generalshowfilecover",   Scope::kCabinet, "Showfilecover",       nullptr,         false},
    ActionRow{"generalshowcover",       Scope::kCabinet, "Showcover",           nullptr,         false},
    ActionRow{"generalshowbigcover",    Scope::kCabinet, "Showbigcover",        nullptr,         false},
    ActionRow{"generalshowmp3covertag", Scope::kCabinet, "Showmp3covertag",     nullptr,         false},
    ActionRow{"generalshowtracknum",    Scope::kCabinet, "Showtracknum",        nullptr,         false},
};
// clang-format on

void WriteSetting(Form_Main& form, const ActionRow& row, const QString& value) {
    const QString key = QString::fromLatin1(row.key);
    if (row.scope == Scope::kFolder) {
        WritePrivateProfileString(form, FolderSettingsPath(form), form.library.Dir1.Path, key, value);
    } else {
        WritePrivateProfileString(form, ConfigPath(form), QStringLiteral("Main"), key, value);
    }
}

void ChangeSetting(Form_Main& form, const ActionRow& row, const QString& value) {
    if (row.variable != nullptr) {
        row.variable(form) = value;
    }
    WriteSetting(form, row, value);
    if (row.rebuilds) {
        CreateList(form);
    }
    DrawZoneList(form);
    DrawCommand(form);
    RedrawJukebox(form);
}

// Changes to the menu that the row names. On return to menu 1, the row from which it was left is current
// again.
void ChangeMenu(Form_Main& form, const QString& target) {
    const Integer16 menu = CInt16(target);
    form.cursor.CommandLastRow(form.menu.CommandCurrentMenu) = form.menu.CommandCurrentId;
    form.menu.CommandCurrentMenu = menu;
    const Integer16 last = form.cursor.CommandLastRow(1);
    form.menu.CommandCurrentId = menu == 1 && last > 0 ? last : Integer16(1);
    DrawCommand(form);
    RedrawJukebox(form);
}

bool HasChoice(const Form_Main& form, Integer16 choice) {
    return !form.menu.CommandChoiceValue(form.menu.CommandCurrentMenu, form.menu.CommandCurrentId, choice)
                .isEmpty();
}

Integer16 LastChoice(const Form_Main& form) {
    constexpr int kMostChoices = 10;
    int choice = 1;
    while (choice <= kMostChoices && HasChoice(form, choice)) {
        ++choice;
    }
    return choice - 1;
}

void FadeBehindDialog(Form_Main& form) {
    form.shell.Timer1.Enabled = false;
    form.windows.MousePointer(QStringLiteral("Screen"), kPointerDefault);
    FadeMain(form);
    RefreshMain(form);
}

} // namespace

void ValiderCommand(Form_Main& form) {
    WriteLog(form, QStringLiteral(" : ValiderCommand"));
    const Integer16 menu = form.menu.CommandCurrentMenu;
    const Integer16 row = form.menu.CommandCurrentId;
    const QString action = form.menu.CommandAction(menu, row);
    for (const ActionRow& known : kActions) {
        if (action == QLatin1StringView(known.action)) {
            const QString value = form.menu.CommandChoiceValue(menu, row, form.menu.CommandChoice(menu, row));
            return ChangeSetting(form, known, value);
        }
    }
    if (action == u"changecommandcurrentid") {
        ChangeMenu(form, form.menu.CommandParam(menu, row));
    } else if (action == u"config") {
        OpenConfigByMenu(form);
    } else if (action == u"quit") {
        // Deliberate D-27: the screen keeps the jukebox's mode. One would expect the mode at start to be
        // restored, as by the quit key; the menu goes straight to the exit.
        form.roof.ExitJukebox(form);
    }
}

bool OnListboxRow(const Form_Main& form) {
    return form.cursor.ActiveZone == u"command" &&
           form.menu.CommandType(form.menu.CommandCurrentMenu, form.menu.CommandCurrentId) == u"listbox";
}

void StepChoiceBack(Form_Main& form) {
    Integer16& choice = form.menu.CommandChoice(form.menu.CommandCurrentMenu, form.menu.CommandCurrentId);
    choice -= 1;
    if (choice < 1) {
        choice = LastChoice(form);
    }
}

void StepChoiceForward(Form_Main& form) {
    Integer16& choice = form.menu.CommandChoice(form.menu.CommandCurrentMenu, form.menu.CommandCurrentId);
    choice += 1;
    if (!HasChoice(form, choice)) {
        choice = 1;
    }
}

void OpenConfigByKey(Form_Main& form) {
    FadeBehindDialog(form);
    form.pump.DoEvents();
    form.dialogs.ShowModal(QStringLiteral("Form_Config"));
    form.windows.MousePointer(QStringLiteral("Screen"), kPointerHourglass);
    form.shell.Timer1.Enabled = true;
    form.roof.LoadConfig(form);
    form.roof.LoadTheme(form);
    CreateList(form);
    DrawZoneList(form);
    DrawPlaylist(form);
    RedrawJukebox(form);
}

void OpenConfigByMenu(Form_Main& form) {
    FadeBehindDialog(form);
    form.dialogs.ShowModal(QStringLiteral("Form_Config"));
    PointAtStartFolder(form);
    form.roof.LoadConfig(form);
    form.roof.LoadTheme(form);
    CreateList(form);
    DrawZoneList(form);
    RedrawJukebox(form);
    if (VideoLiesBeyondScreen(form)) {
        ShowVideoForm(form);
    }
    form.windows.MousePointer(QStringLiteral("Screen"), kPointerDefault);
    form.shell.Timer1.Enabled = true;
}

// What the rows of the menu do.
#include "interaction/valider_command.h"

#include "core/conversions.h"
#include "core/path_text.h"
#include "interaction/open_config.h"
#include "library/create_list.h"
#include "rendering/command_block.h"
#include "rendering/redraw_jukebox.h"
#include "rendering/track_zone.h"
#include "settings/profile.h"
#include "shell/exit.h"
#include "shell/form_main.h"
#include "shell/log.h"

#include <array>

namespace {

// Which file and section an action writes its key to.
enum class Scope { kFolder, kCabinet };

struct ActionRow {
    const char* action;
    Scope scope;
    const char* key;
    QString Form_Main::*variable; // none: the key alone
    bool rebuilds;                // the list is built anew
};

// clang-format off
constexpr std::array kActions = {
    ActionRow{"order",                  Scope::kFolder,  "Order",               &Form_Main::Order,               true},
    ActionRow{"bigtitle",               Scope::kFolder,  "ShowBigtitle",        &Form_Main::ShowBigtitle,        false},
    ActionRow{"showcover",              Scope::kFolder,  "ShowCover",           nullptr,                         false},
    ActionRow{"showtracknum",           Scope::kFolder,  "ShowTrackNum",        nullptr,                         false},
    ActionRow{"generaltransitionsound", Scope::kCabinet, "PlayTransitionSound", &Form_Main::PlayTransitionSound, false},
    ActionRow{"generalmanagecoin",      Scope::kCabinet, "ManageCoin",          &Form_Main::ManageCoin,          false},
    ActionRow{"generaldefaultorder",    Scope::kCabinet, "Defaultorder",        &Form_Main::Order,               true},
    ActionRow{"generalshowfoldercover", Scope::kCabinet, "Showfoldercover",     nullptr,                         false},
    ActionRow{"generalshowfilecover",   Scope::kCabinet, "Showfilecover",       nullptr,                         false},
    ActionRow{"generalshowcover",       Scope::kCabinet, "Showcover",           nullptr,                         false},
    ActionRow{"generalshowbigcover",    Scope::kCabinet, "Showbigcover",        nullptr,                         false},
    ActionRow{"generalshowmp3covertag", Scope::kCabinet, "Showmp3covertag",     nullptr,                         false},
    ActionRow{"generalshowtracknum",    Scope::kCabinet, "Showtracknum",        nullptr,                         false},
};
// clang-format on

void WriteSetting(Form_Main& form, const ActionRow& row, const QString& value) {
    const QString key = QString::fromLatin1(row.key);
    if (row.scope == Scope::kFolder) {
        WritePrivateProfileString(form, PathIn(form.AppFolder, QStringLiteral("pathconfig.ini")),
                                  form.Dir1.Path, key, value);
    } else {
        WritePrivateProfileString(form, PathIn(form.AppFolder, QStringLiteral("config.ini")),
                                  QStringLiteral("Main"), key, value);
    }
}

void ChangeSetting(Form_Main& form, const ActionRow& row, const QString& value) {
    if (row.variable != nullptr) {
        form.*row.variable = value;
    }
    WriteSetting(form, row, value);
    if (row.rebuilds) {
        CreateList(form);
    }
    DrawZoneList(form);
    DrawCommand(form);
    RedrawJukebox(form);
}

// To the menu that the row names. Back in menu 1 the row from which it was left is current again.
void ChangeMenu(Form_Main& form, const QString& target) {
    const Integer16 menu = CInt16(target);
    form.CommandLastRow(form.CommandCurrentMenu) = form.CommandCurrentId;
    form.CommandCurrentMenu = menu;
    const Integer16 last = form.CommandLastRow(1);
    form.CommandCurrentId = menu == 1 && last > 0 ? last : Integer16(1);
    DrawCommand(form);
    RedrawJukebox(form);
}

} // namespace

void ValiderCommand(Form_Main& form) {
    WriteLog(form, QStringLiteral(" : ValiderCommand"));
    const Integer16 menu = form.CommandCurrentMenu;
    const Integer16 row = form.CommandCurrentId;
    const QString action = form.CommandAction(menu, row);
    for (const ActionRow& known : kActions) {
        if (action == QLatin1StringView(known.action)) {
            const QString value = form.CommandChoiceValue(menu, row, form.CommandChoice(menu, row));
            return ChangeSetting(form, known, value);
        }
    }
    if (action == u"changecommandcurrentid") {
        ChangeMenu(form, form.CommandParam(menu, row));
    } else if (action == u"config") {
        OpenConfigByMenu(form);
    } else if (action == u"quit") {
        // Deliberate D-27: the screen keeps the jukebox's mode. One expects the quit key's way back to the
        // mode of the start; the menu goes straight to the exit.
        ExitJukebox(form);
    }
}

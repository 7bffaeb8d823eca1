// The tables of the dialogs' controls.
#include "dialogs/controls.h"

#include "dialogs/config_dialog.h"
#include "dialogs/folder_chooser.h"
#include "dialogs/key_assignment.h"
#include "dialogs/key_bindings.h"
#include "dialogs/theme_preview.h"
#include "platform/input_event.h"
#include "state/form_main.h"

#include <array>
#include <optional>
#include <span>

namespace {

const QString kTrue = QStringLiteral("true");
const QString kFalse = QStringLiteral("false");

using LookAt = ControlLook (*)(const Form_Main& form, int index);
// Returns why the value is refused; empty when it is taken.
using Accepts = QString (*)(const Form_Main& form, const QString& value);
using Set = void (*)(Form_Main& form, int index, const QString& value);
using Act = void (*)(Form_Main& form, int index);

// A control or a control array with its elements. What is null has no effect.
struct ControlRow {
    const char* name;
    int elements; // 0: a single control
    LookAt look;
    Accepts accepts = nullptr; // null: takes no value
    Set set = nullptr;
    Act click = nullptr;
    Act doubleClick = nullptr;
};

ControlLook Text(const QString& value) {
    ControlLook look;
    look.value = value;
    return look;
}

ControlLook List(const QString& value, const QStringList& entries) {
    ControlLook look = Text(value);
    look.entries = entries;
    return look;
}

// The lists of the folder chooser are disabled while a folder is being read.
ControlLook ListOfChooser(const Form_Main& form, const QString& value, const QStringList& entries) {
    ControlLook look = List(value, entries);
    look.enabled = !form.folderDialog.isReading;
    return look;
}

ControlLook Switch(const QString& value) {
    ControlLook look = Text(value);
    look.isSwitch = true;
    return look;
}

// The value of a picture is whether there is one.
ControlLook Picture(const std::shared_ptr<const QImage>& picture) {
    ControlLook look = Switch(picture == nullptr ? kFalse : kTrue);
    look.picture = picture;
    return look;
}

ControlLook Shown(ControlLook look, bool visible) {
    look.visible = visible;
    return look;
}

QString AnyText(const Form_Main& /*form*/, const QString& /*value*/) {
    return QString();
}

QString TrueOrFalse(const Form_Main& /*form*/, const QString& value) {
    return value == kTrue || value == kFalse ? QString() : QStringLiteral("expected true or false");
}

// An option can be chosen; it is given up by choosing another one.
QString OnlyTrue(const Form_Main& /*form*/, const QString& value) {
    return value == kTrue ? QString() : QStringLiteral("expected true");
}

QString OneOf(const QStringList& entries, const QString& value) {
    return entries.contains(value) ? QString() : QStringLiteral("the list has no such entry: ") + value;
}

const QStringList kOrders = {QStringLiteral("Alpha"), QStringLiteral("Playing Count")};
const QStringList kOrientations = {QStringLiteral("horizontal"), QStringLiteral("vertical")};

#define TEXT_ROW(control)                                                                                    \
    {#control, 0, [](const Form_Main& form, int) { return Text(form.config.control); }, AnyText,             \
     [](Form_Main& form, int, const QString& value) { form.config.control = value; }},
#define YES_OR_NO_ROW(control)                                                                               \
    {#control,                                                                                               \
     0,                                                                                                      \
     [](const Form_Main& form, int) { return Switch(form.config.control); },                                 \
     TrueOrFalse,                                                                                            \
     [](Form_Main& form, int, const QString& value) { form.config.control = value; },                        \
     [](Form_Main& form, int) { form.config.control = form.config.control == kTrue ? kFalse : kTrue; }},
#define CAPTION_ROW(control)                                                                                 \
    {#control, 0, [](const Form_Main& form, int) { return Text(form.config.control); }},
// These have rows of their own.
#define ORIENTATION_ROW(control)
#define THEME_ROW(control)
#define ORDER_ROW(control)
#define CONTROL_ROW(kind, control, key) kind##_ROW(control)

#define SLOT_ROWS(side)                                                                                      \
    {"Text_ZoneList" #side, 10,                                                                              \
     [](const Form_Main& form, int i) {                                                                      \
         const SlotControls& slot = form.config.side(i);                                                     \
         ControlLook look = Shown(Text(slot.text), slot.Visible);                                            \
         look.place = QRect(slot.place.x, slot.place.y, slot.place.width, slot.place.height);                \
         return look;                                                                                        \
     },                                                                                                      \
     AnyText, [](Form_Main& form, int i, const QString& value) { form.config.side(i).text = value; }},       \
        {"Label_ZoneList" #side,                                                                             \
         10,                                                                                                 \
         [](const Form_Main& form, int i) {                                                                  \
             return Shown(Text(form.config.side(i).Caption), form.config.side(i).Visible);                   \
         },                                                                                                  \
         nullptr,                                                                                            \
         nullptr,                                                                                            \
         nullptr,                                                                                            \
         [](Form_Main& form, int i) { Label_ZoneList##side##_DblClick(form, i); }},                          \
        {"Command_ZoneList" #side,                                                                           \
         10,                                                                                                 \
         [](const Form_Main& form, int i) {                                                                  \
             return Shown(Text(QStringLiteral("Add")), form.config.side(i).Visible);                         \
         },                                                                                                  \
         nullptr,                                                                                            \
         nullptr,                                                                                            \
         [](Form_Main& form, int i) { Command_ZoneList##side##_Click(form, i); }},

ControlLook Button(const char* caption) {
    return Text(QString::fromLatin1(caption));
}

// clang-format off
constexpr ControlRow kConfigControls[] = {
    CONFIG_CONTROLS(CONTROL_ROW)
    {"Label12", 0, [](const Form_Main& form, int) {
         ControlLook look = Button("Music folder");
         look.warns = form.config.Label12IsRed;
         return look;
     }},
    {"Command_Select", 0, [](const Form_Main&, int) { return Button("Choose..."); }, nullptr, nullptr,
     [](Form_Main& form, int) { Command_Select_Click(form); }},
    {"Combo_Theme", 0, [](const Form_Main& form, int) { return List(form.config.Combo_Theme, form.config.Combo_ThemeList); },
     [](const Form_Main& form, const QString& value) { return OneOf(form.config.Combo_ThemeList, value); },
     [](Form_Main& form, int, const QString& value) {
         form.config.Combo_Theme = value;
         Combo_Theme_Click(form);
     }},
    {"Image_Theme", 0, [](const Form_Main& form, int) { return Picture(form.config.Image_Theme); }},
    {"Picture_Theme", 0, [](const Form_Main& form, int) { return Picture(form.config.Image_Theme); }},
    {"Picture_ZoneList", 0, [](const Form_Main& form, int) { return Picture(form.config.Picture_ZoneList); }},
    {"Option_Orientation", 2,
     [](const Form_Main& form, int i) { return Switch(form.config.Option_Orientation == kOrientations[i] ? kTrue : kFalse); },
     OnlyTrue,
     [](Form_Main& form, int i, const QString&) { form.config.Option_Orientation = kOrientations[i]; },
     [](Form_Main& form, int i) { form.config.Option_Orientation = kOrientations[i]; }},
    {"Combo_DefaultOrder", 0, [](const Form_Main& form, int) { return List(form.config.Combo_DefaultOrder, kOrders); },
     [](const Form_Main&, const QString& value) { return OneOf(kOrders, value); },
     [](Form_Main& form, int, const QString& value) { form.config.Combo_DefaultOrder = value; }},
    {"Label_Key", 15, [](const Form_Main&, int i) { return Text(CaptionOfBinding(i)); }},
    {"Label_KeyValue", 15, [](const Form_Main& form, int i) { return Text(form.config.Label_KeyValue(i)); }},
    {"Command_KeyAssign", 15, [](const Form_Main&, int) { return Button("Change"); }, nullptr, nullptr,
     [](Form_Main& form, int i) { Command_KeyAssign_Click(form, i); }},
    SLOT_ROWS(Gauche)
    SLOT_ROWS(Droite)
    {"Command_OK", 0, [](const Form_Main& form, int) {
         ControlLook look = Button("OK");
         look.enabled = form.config.Command_OKEnabled;
         return look;
     }, nullptr, nullptr,
     [](Form_Main& form, int) { Form_Config_Command_OK_Click(form); }},
    {"Command_Cancel", 0, [](const Form_Main&, int) { return Button("Cancel"); }, nullptr, nullptr,
     [](Form_Main& form, int) { Form_Config_Command_Cancel_Click(form); }},
};

constexpr ControlRow kKeyAssignControls[] = {
    {"Label1", 0, [](const Form_Main&, int) { return Button("Press any Key"); }},
    {"Label_Key", 0, [](const Form_Main& form, int) { return Text(form.keyAssign.Label_Key); }},
    {"Command_Cancel", 0, [](const Form_Main&, int) { return Button("Cancel"); }, nullptr, nullptr,
     [](Form_Main& form, int) { Form_KeyAssign_Command_Cancel_Click(form); }},
};

constexpr ControlRow kFolderControls[] = {
    {"Drive1", 0, [](const Form_Main& form, int) { return ListOfChooser(form, form.folderDialog.Drive1, form.folderDialog.Drive1List); },
     [](const Form_Main& form, const QString& value) { return OneOf(form.folderDialog.Drive1List, value); },
     [](Form_Main& form, int, const QString& value) {
         form.folderDialog.Drive1 = value;
         Drive1_Change(form);
     }},
    {"Dir1", 0, [](const Form_Main& form, int) { return ListOfChooser(form, ChosenFolder(form), form.folderDialog.Dir1Entries); },
     [](const Form_Main& form, const QString& value) { return OneOf(form.folderDialog.Dir1Entries, value); },
     [](Form_Main& form, int, const QString& value) { form.folderDialog.Dir1Highlighted = value; },
     nullptr,
     [](Form_Main& form, int) { Dir1_DblClick(form); }},
    {"Command_OK", 0, [](const Form_Main&, int) { return Button("OK"); }, nullptr, nullptr,
     [](Form_Main& form, int) { Form_SelectDirectory_Command_OK_Click(form); }},
    {"Command_Cancel", 0, [](const Form_Main&, int) { return Button("Cancel"); }, nullptr, nullptr,
     [](Form_Main& form, int) { Form_SelectDirectory_Command_Cancel_Click(form); }},
};
// clang-format on

#undef TEXT_ROW
#undef YES_OR_NO_ROW
#undef CAPTION_ROW
#undef ORIENTATION_ROW
#undef THEME_ROW
#undef ORDER_ROW
#undef CONTROL_ROW
#undef SLOT_ROWS

struct DialogRow {
    const char* name;
    bool (*isOpen)(const Form_Main& form);
    std::span<const ControlRow> controls;
};

// From the innermost dialog outwards.
constexpr std::array kDialogs = {
    DialogRow{"Form_KeyAssign", [](const Form_Main& form) { return form.keyAssign.Visible; },
              kKeyAssignControls},
    DialogRow{"Form_SelectDirectory", [](const Form_Main& form) { return form.folderDialog.Visible; },
              kFolderControls},
    DialogRow{"Form_Config", [](const Form_Main& form) { return form.config.Visible; }, kConfigControls},
};

const DialogRow* InnermostDialog(const Form_Main& form) {
    for (const DialogRow& dialog : kDialogs) {
        if (dialog.isOpen(form)) {
            return &dialog;
        }
    }
    return nullptr;
}

const ControlRow* FindControl(const ControlName& control) {
    for (const DialogRow& dialog : kDialogs) {
        for (const ControlRow& row : dialog.controls) {
            const bool fits =
                row.elements == 0 ? control.index == -1 : control.index >= 0 && control.index < row.elements;
            if (control.dialog == QLatin1StringView(dialog.name) &&
                control.name == QLatin1StringView(row.name) && fits) {
                return &row;
            }
        }
    }
    return nullptr;
}

bool IsUsable(const ControlLook& look) {
    return look.enabled && look.visible;
}

} // namespace

QString OpenDialog(const Form_Main& form) {
    const DialogRow* dialog = InnermostDialog(form);
    return dialog == nullptr ? QString() : QString::fromLatin1(dialog->name);
}

std::optional<ControlLook> LookOf(const Form_Main& form, const ControlName& control) {
    const ControlRow* row = FindControl(control);
    return row == nullptr ? std::nullopt : std::optional(row->look(form, control.index));
}

QString RefusalOf(const Form_Main& form, const InputEvent& event) {
    const ControlRow* row = FindControl(event.control);
    if (row == nullptr) {
        return QStringLiteral("there is no such control");
    }
    if (event.kind != InputKind::kControlSet) {
        return QString();
    }
    return row->accepts == nullptr ? QStringLiteral("this control takes no value")
                                   : row->accepts(form, event.value);
}

void HandleDialogEvent(Form_Main& form, const InputEvent& event) {
    if (event.kind == InputKind::kKeyDown && form.keyAssign.Visible) {
        return Form_KeyAssign_KeyDown(form, event.code);
    }
    const ControlRow* row = FindControl(event.control);
    if (row == nullptr || event.control.dialog != OpenDialog(form) || !RefusalOf(form, event).isEmpty() ||
        !IsUsable(row->look(form, event.control.index))) {
        return;
    }
    if (event.kind == InputKind::kControlSet) {
        row->set(form, event.control.index, event.value);
    } else if (event.kind == InputKind::kControlClick && row->click != nullptr) {
        row->click(form, event.control.index);
    } else if (event.kind == InputKind::kControlDoubleClick && row->doubleClick != nullptr) {
        row->doubleClick(form, event.control.index);
    }
}

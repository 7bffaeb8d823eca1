// Reading the controls of the open dialog, and using them.
#include "app/console/dialog_commands.h"

#include "app/console/query_commands.h"
#include "dialogs/controls.h"
#include "lightshow/led_link.h"
#include "platform/input_event.h"
#include "platform/simulated/simulated_platform.h"
#include "shell/handle_event.h"
#include "state/form_main.h"

#include <QImage>
#include <QRegularExpression>

#include <functional>
#include <optional>

namespace {

// A control as it is typed: NAME, or NAME(INDEX) for an element of a control array.
std::optional<ControlName> ControlOf(const QString& text) {
    static const QRegularExpression form(QStringLiteral("\\A([A-Za-z_0-9]+)(?:\\(([0-9]{1,4})\\))?\\z"));
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch()) {
        return std::nullopt;
    }
    return ControlName{match.captured(1), match.hasCaptured(2) ? match.captured(2).toInt() : -1};
}

JsonObject NoDialog() {
    return RefusalObject(QStringLiteral("no dialog with controls is open"));
}

JsonObject NoControl(const QString& text) {
    return RefusalObject(QStringLiteral("there is no such control: ") + text);
}

// Hands an event to the open dialog.
JsonObject Use(Console& console, InputEvent event, const QString& text) {
    event.control.dialog = OpenDialog(console.form);
    if (event.control.dialog.isEmpty()) {
        return NoDialog();
    }
    if (const QString refusal = RefusalOf(console.form, event); !refusal.isEmpty()) {
        return RefusalObject(text + QStringLiteral(": ") + refusal);
    }
    return HandOver(console, {event});
}

ParsedCommand UseControl(InputKind kind, const QString& text, const QString& value) {
    InputEvent event;
    event.kind = kind;
    event.value = value;
    const std::optional<ControlName> control = ControlOf(text);
    if (!control) {
        return {Command(), QStringLiteral("a control is a name, or a name with an index in brackets")};
    }
    event.control = *control;
    return {[event, text](Console& console) { return Use(console, event, text); }, QString()};
}

JsonObject AnswerLook(const ControlLook& look) {
    JsonObject answer = JsonObject().Add(QStringLiteral("ok"), true);
    if (look.isSwitch) {
        answer.Add(QStringLiteral("value"), look.value == u"true");
    } else {
        answer.Add(QStringLiteral("value"), look.value);
    }
    return answer.Add(QStringLiteral("enabled"), look.enabled).Add(QStringLiteral("visible"), look.visible);
}

// The buttons of the main form, which cannot be reached while a dialog is open.
JsonObject ClickMainForm(Console& console, void (*button)(Form_Main&)) {
    console.platform.pump.Stirred();
    const std::optional<RunTimeError> error = RunHandler([&] { button(console.form); });
    JsonObject answer = JsonObject().Add(QStringLiteral("ok"), true);
    return error ? answer.Add(QStringLiteral("error"), ErrorObject(*error)) : answer;
}

} // namespace

ParsedCommand ParseGet(const QString& rest) {
    const QString text = rest.trimmed();
    const std::optional<ControlName> control = ControlOf(text);
    if (!control) {
        return {Command(), QStringLiteral("get takes a control")};
    }
    const auto run = [control = *control, text](Console& console) {
        ControlName asked = control;
        asked.dialog = OpenDialog(console.form);
        const std::optional<ControlLook> look = LookOf(console.form, asked);
        return asked.dialog.isEmpty() ? NoDialog() : look ? AnswerLook(*look) : NoControl(text);
    };
    return {run, QString()};
}

ParsedCommand ParseSet(const QString& rest) {
    const QString text = rest.section(u' ', 0, 0);
    return UseControl(InputKind::kControlSet, text, rest.mid(text.size() + 1));
}

ParsedCommand ParseClick(const QString& rest) {
    const QString text = rest.trimmed();
    void (*button)(Form_Main&) = text == u"Command1"   ? Command1_Click
                                 : text == u"Command2" ? Command2_Click
                                                       : nullptr;
    if (button == nullptr) {
        return UseControl(InputKind::kControlClick, text, QString());
    }
    const auto run = [button](Console& console) {
        if (console.form.shell.Form_KeyBoard.Visible) {
            return RefusalObject(QStringLiteral("the on-screen keyboard is open"));
        }
        return OpenDialog(console.form).isEmpty() ? ClickMainForm(console, button)
                                                  : RefusalObject(QStringLiteral("a dialog is open"));
    };
    return {run, QString()};
}

ParsedCommand ParseDoubleclick(const QString& rest) {
    return UseControl(InputKind::kControlDoubleClick, rest.trimmed(), QString());
}

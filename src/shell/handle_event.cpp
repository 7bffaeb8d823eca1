// Dispatching events to their handlers.
#include "shell/handle_event.h"

#include "dialogs/controls.h"
#include "dialogs/keyboard.h"
#include "interaction/keys.h"
#include "interaction/touch.h"
#include "lightshow/spectrum.h"
#include "shell/exit.h"
#include "shell/heartbeat.h"
#include "state/form_main.h"

namespace {

// Whether an event comes from a person. While a dialog or the on-screen keyboard is open, it receives all of
// these.
bool IsInput(InputKind kind) {
    return kind != InputKind::kTimer1 && kind != InputKind::kTmrSpectrum && kind != InputKind::kClose;
}

void DispatchToKeyboard(Form_Main& form, const InputEvent& event) {
    const auto x = static_cast<float>(event.x);
    const auto y = static_cast<float>(event.y);
    switch (event.kind) {
    case InputKind::kKeyDown:
        return Form_KeyBoard_KeyDown(form, event.code, 0);
    case InputKind::kMouseDown:
        return Picture_Keyboard_MouseDown(form, event.button, 0, x, y);
    case InputKind::kMouseBeside:
        return Form_KeyBoard_MouseDown(form);
    case InputKind::kMouseUp:
        return Picture_Keyboard_MouseUp(form, event.button, 0, x, y);
    default:
        return;
    }
}

void Dispatch(Form_Main& form, const InputEvent& event) {
    if (IsInput(event.kind) && form.shell.Form_KeyBoard.Visible) {
        return DispatchToKeyboard(form, event);
    }
    if (IsInput(event.kind) && !OpenDialog(form).isEmpty()) {
        return HandleDialogEvent(form, event);
    }
    const auto x = static_cast<float>(event.x);
    const auto y = static_cast<float>(event.y);
    switch (event.kind) {
    case InputKind::kKeyDown:
        return Form_KeyDown(form, event.code, 0);
    case InputKind::kMouseDown:
        return Picture_Main_MouseDown(form, event.button, 0, x, y);
    case InputKind::kMouseBeside:
    case InputKind::kControlSet:
    case InputKind::kControlClick:
    case InputKind::kControlDoubleClick:
        return;
    case InputKind::kMouseMove:
        return Picture_Main_MouseMove(form, event.button, 0, x, y);
    case InputKind::kMouseUp:
        return Picture_Main_MouseUp(form, event.button, 0, x, y);
    case InputKind::kDblClick:
        return Picture_Main_DblClick(form);
    case InputKind::kTimer1:
        if (form.shell.Timer1.Enabled) {
            Timer1_Timer(form);
        }
        return;
    case InputKind::kTmrSpectrum:
        if (form.shell.tmrSpectrum.Enabled) {
            tmrSpectrum_Timer(form);
        }
        return;
    case InputKind::kClose:
        return ExitJukebox(form);
    }
}

} // namespace

std::optional<RunTimeError> RunHandler(const std::function<void()>& handler) {
    try {
        handler();
    } catch (const RunTimeError& error) {
        return error;
    }
    return std::nullopt;
}

std::optional<RunTimeError> HandleEvent(Form_Main& form, const InputEvent& event) {
    return RunHandler([&] { Dispatch(form, event); });
}

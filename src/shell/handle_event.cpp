// From an event to its handler.
#include "shell/handle_event.h"

#include "interaction/key_dispatcher.h"
#include "interaction/touch.h"
#include "lightshow/spectrum.h"
#include "shell/exit.h"
#include "shell/form_main.h"
#include "shell/heartbeat.h"

namespace {

void Dispatch(Form_Main& form, const InputEvent& event) {
    const auto x = static_cast<float>(event.x);
    const auto y = static_cast<float>(event.y);
    switch (event.kind) {
    case InputKind::kKeyDown:
        return Form_KeyDown(form, event.code, 0);
    case InputKind::kMouseDown:
        return Picture_Main_MouseDown(form, event.button, 0, x, y);
    case InputKind::kMouseMove:
        return Picture_Main_MouseMove(form, event.button, 0, x, y);
    case InputKind::kMouseUp:
        return Picture_Main_MouseUp(form, event.button, 0, x, y);
    case InputKind::kDblClick:
        return Picture_Main_DblClick(form);
    case InputKind::kTimer1:
        if (form.Timer1.Enabled) {
            Timer1_Timer(form);
        }
        return;
    case InputKind::kTmrSpectrum:
        if (form.tmrSpectrum.Enabled) {
            UpdateSpectrum(form);
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

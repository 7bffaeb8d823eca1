// The border around every event: a run-time error ends the handler but not the program.
#pragma once

#include "core/run_time_error.h"
#include "platform/input_event.h"

#include <functional>
#include <optional>

struct Form_Main;

// Runs one handler. A run-time error ends it and is returned; the state stays as the handler left it.
// ProgramStop and ProgramEnd pass through.
std::optional<RunTimeError> RunHandler(const std::function<void()>& handler);

// Passes an event to its handler inside RunHandler. The tick of a disabled timer does nothing.
std::optional<RunTimeError> HandleEvent(Form_Main& form, const InputEvent& event);

// The border around every event: a run-time error ends the handler, the program goes on.
#pragma once

#include "core/run_time_error.h"
#include "platform/input_event.h"

#include <functional>
#include <optional>

struct Form_Main;

// Runs one handler. A run-time error ends it and is returned; everything stands as the handler left it.
// ProgramStop and ProgramEnd pass.
std::optional<RunTimeError> RunHandler(const std::function<void()>& handler);

// Hands an event to its handler inside RunHandler. The tick of a timer that is not enabled does nothing.
std::optional<RunTimeError> HandleEvent(Form_Main& form, const InputEvent& event);

// Input events: keys, pointer, timers, controls of dialogs, the request to close.
#pragma once

#include "platform/dialog_controls.h"

#include <functional>

enum class InputKind {
    kKeyDown,     // code: virtual-key code; auto-repeat counts as a key
    kMouseDown,   // button, x, y
    kMouseBeside, // a press outside the on-screen keyboard
    kMouseMove,   // button: the held one, 0 for none; x, y
    kMouseUp,     // button, x, y
    kDblClick,    // no position
    kTimer1,      // the heartbeat's interval has passed
    kTmrSpectrum, // the light show's interval has passed
    // What a person does with a control of the open dialog.
    kControlSet,         // control, value: types a text, picks an entry, ticks a box ("true", "false")
    kControlClick,       // control
    kControlDoubleClick, // control
    kClose,              // the window system, or a signal, asks the program to end
};

// Positions are pixels of Picture_Main, or of Picture_Keyboard while the on-screen keyboard is open. Buttons:
// 1 left, 2 right, 4 middle.
struct InputEvent {
    InputKind kind = InputKind::kTimer1;
    int code = 0;
    int button = 0;
    double x = 0;
    double y = 0;
    ControlName control = {};
    QString value = {};
};

// Processes one event. ProgramStop and ProgramEnd pass through.
using EventSink = std::function<void(const InputEvent&)>;

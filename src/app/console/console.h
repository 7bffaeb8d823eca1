// The console: a jukebox on a simulated machine, driven by lines of text.
#pragma once

#include "app/console/command_reader.h"
#include "core/json_text.h"

#include <QString>

#include <deque>
#include <functional>

struct Form_Main;
class SimulatedPlatform;

// Carries out a command and returns its answer.
struct Console;
using Command = std::function<JsonObject(Console&)>;

// How the running command is answered.
struct Answering {
    // It was kept by "later".
    bool later = false;
    // The dialog that it opened has already written its answer.
    bool answered = false;
};

// A session. The parts outlive it.
struct Console {
    // The most commands that are kept.
    static constexpr std::size_t kKeptCommands = 10'000;
    // The deepest nesting of kept commands; at deeper points they keep waiting.
    static constexpr int kDeepest = 16;

    SimulatedPlatform& platform;
    Form_Main& form;
    CommandReader& input;

    std::deque<Command> kept;
    int depth = 0;
    Answering answering;
};

// Runs start-up and then every command until the input or the program ends. Returns the process's exit code:
// 0 at the end of the input and after the exit routine, 1 after a run-time error that ended the program, 3
// for a wait that can never end.
int RunConsole(Console& console);

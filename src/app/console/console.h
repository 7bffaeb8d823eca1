// The console: a jukebox on a simulated machine, driven by lines of text.
#pragma once

#include "app/console/command_reader.h"
#include "app/console/json_text.h"

#include <QString>

#include <deque>
#include <functional>

struct Form_Main;
class SimulatedPlatform;

// Carries a command out and gives its answer.
struct Console;
using Command = std::function<JsonObject(Console&)>;

// How the command that is being carried out is answered.
struct Answering {
    // It was kept by "later".
    bool later = false;
    // Its answer has been written already, by the dialog that it opened.
    bool answered = false;
};

// A session. The parts outlive it.
struct Console {
    // More commands than this are not kept.
    static constexpr std::size_t kKeptCommands = 10'000;
    // Kept commands run inside one another no deeper than this: at deeper points they go on waiting.
    static constexpr int kDeepest = 16;

    SimulatedPlatform& platform;
    Form_Main& form;
    CommandReader& input;

    std::deque<Command> kept;
    int depth = 0;
    Answering answering;
};

// Runs start-up and then every command until the input or the program ends. The process's exit code: 0 at the
// end of the input and after the exit routine, 1 after a run-time error that ended the program, 3 for a wait
// that can never end.
int RunConsole(Console& console);

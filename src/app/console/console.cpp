// Running a session: start-up, commands in turn, kept commands while events are processed, the end.
#include "app/console/console.h"

#include "app/console/commands.h"
#include "core/run_time_error.h"
#include "dialogs/config_dialog.h"
#include "dialogs/folder_chooser.h"
#include "dialogs/key_assignment.h"
#include "dialogs/keyboard.h"
#include "platform/simulated/simulated_platform.h"
#include "shell/start_up.h"
#include "state/form_main.h"

#include <cstdio>
#include <exception>
#include <utility>

namespace {

constexpr int kStopped = 1;
constexpr int kHung = 3;

void WriteAnswer(const JsonObject& answer) {
    const QByteArray line = answer.Text() + '\n';
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stdout);
    std::fflush(stdout);
}

// Answers the running command. When the dialog that it opened has answered it already, a later error can only
// be reported on standard error.
void Answer(Console& console, JsonObject answer) {
    if (console.answering.answered) {
        if (answer.Has(QStringLiteral("error"))) {
            std::fprintf(stderr, "vantorix-console: after the dialog: %s\n", answer.Text().constData());
        }
        return;
    }
    if (console.answering.later) {
        answer.AddSecond(QStringLiteral("later"), true);
    }
    WriteAnswer(answer);
    console.answering.answered = true;
}

void CarryOut(Console& console, const Command& command, bool later) {
    const Answering outer = std::exchange(console.answering, Answering{later, false});
    Answer(console, command(console));
    console.answering = outer;
}

// Runs the oldest kept command, at a point where a handler lets pending events run.
bool RunKept(Console& console) {
    if (console.kept.empty() || console.depth >= Console::kDeepest) {
        return false;
    }
    const Command command = std::move(console.kept.front());
    console.kept.pop_front();
    ++console.depth;
    CarryOut(console, command, true);
    --console.depth;
    return true;
}

// Returns the next command of the input, or nothing at its end.
std::optional<Command> NextCommand(Console& console) {
    while (const std::optional<InputLine> line = console.input.Next()) {
        if (line->fault.isEmpty() && IsNoCommand(line->text)) {
            continue;
        }
        const ParsedCommand parsed =
            line->fault.isEmpty() ? ParseCommand(line->text) : ParsedCommand{Command(), line->fault};
        return parsed.command ? parsed.command : Refuse(parsed.reason);
    }
    return std::nullopt;
}

// The input has ended while a dialog was open, so its opener's handler never ends.
struct InputEnded {};

// Sends commands to the dialog until one of them closes it. That one is not answered here: the end of the
// opener's handler answers it.
void ReadDialogCommands(Console& console, const bool& open) {
    while (open) {
        const std::optional<Command> command = NextCommand(console);
        if (!command) {
            throw InputEnded();
        }
        console.answering = Answering{};
        const JsonObject answer = (*command)(console);
        if (open) {
            Answer(console, answer);
        }
    }
}

// A dialog: how it opens, and whether it is still open.
struct DialogRow {
    const char* name;
    void (*load)(Form_Main& form);
    const bool& (*isOpen)(const Form_Main& form);
};

void LoadFolderDialog(Form_Main& form) {
    Form_SelectDirectory_Load(form);
    ReadOpenFolder(form);
}

// clang-format off
constexpr DialogRow kDialogs[] = {
    {"Form_KeyBoard",        Form_KeyBoard_Load,  [](const Form_Main& f) -> const bool& { return f.shell.Form_KeyBoard.Visible; }},
    {"Form_Config",          Form_Config_Load,    [](const Form_Main& f) -> const bool& { return f.config.Visible; }},
    {"Form_KeyAssign",       Form_KeyAssign_Load, [](const Form_Main& f) -> const bool& { return f.keyAssign.Visible; }},
    {"Form_SelectDirectory", LoadFolderDialog,    [](const Form_Main& f) -> const bool& { return f.folderDialog.Visible; }},
};
// clang-format on

// Shows a modal dialog. The command that opened it is answered with its name.
void ShowModal(Console& console, const QString& dialog) {
    for (const DialogRow& row : kDialogs) {
        if (dialog == QLatin1StringView(row.name)) {
            row.load(console.form);
            Answer(console,
                   JsonObject().Add(QStringLiteral("ok"), true).Add(QStringLiteral("dialog"), dialog));
            ReadDialogCommands(console, row.isOpen(console.form));
        }
    }
}

void ReadCommands(Console& console) {
    while (const std::optional<Command> command = NextCommand(console)) {
        CarryOut(console, *command, false);
    }
}

void Run(Console& console) {
    console.platform.pump.runPending = [&console] { return RunKept(console); };
    console.platform.dialogs.showModal = [&console](const QString& dialog) { ShowModal(console, dialog); };
    Form_Load(console.form);
    WriteAnswer(JsonObject().Add(QStringLiteral("ready"), true));
    ReadCommands(console);
}

int Exit(int code, const QString& name, const JsonObject& value) {
    WriteAnswer(JsonObject().Add(QStringLiteral("exit"), code).Add(name, value));
    return code;
}

} // namespace

int RunConsole(Console& console) {
    try {
        Run(console);
        return 0;
    } catch (const InputEnded&) {
        return 0;
    } catch (const ProgramEnd& end) {
        WriteAnswer(JsonObject().Add(QStringLiteral("exit"), end.exitCode));
        return end.exitCode;
    } catch (const ProgramStop& stop) {
        return Exit(kStopped, QStringLiteral("error"), ErrorObject(stop.error));
    } catch (const SimulatedHang& hang) {
        WriteAnswer(JsonObject().Add(QStringLiteral("exit"), kHung).Add(QStringLiteral("hung"), hang.wait));
        return kHung;
    } catch (const std::exception& error) {
        return Exit(kStopped, QStringLiteral("error"), ErrorObject(RunTimeErrorOf(error)));
    }
}

// Running a session: start-up, commands in turn, kept commands while events are processed, the end.
#include "app/console/console.h"

#include "app/console/commands.h"
#include "core/run_time_error.h"
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

// Shows a modal dialog. The command that opened it is answered with its name. A dialog that the console does
// not have closes at once, like a cancelled one.
void ShowModal(Console& console, const QString& dialog) {
    const bool isKeyboard = dialog == u"Form_KeyBoard";
    if (isKeyboard) {
        Form_KeyBoard_Load(console.form);
    }
    Answer(console, JsonObject().Add(QStringLiteral("ok"), true).Add(QStringLiteral("dialog"), dialog));
    if (isKeyboard) {
        ReadDialogCommands(console, console.form.shell.Form_KeyBoard.Visible);
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

// Running vantorix-leds: the command line, the signals, and the loop of the terminal.
#include "app/leds/run.h"

#include "app/leds/options.h"
#include "app/leds/simulator.h"
#include "app/leds/terminal_view.h"
#include "app/leds/window_view.h"

#include <csignal>
#include <cstdio>
#include <poll.h>

namespace {

constexpr int kFailed = 1;
constexpr int kWrongCommandLine = 2;
constexpr std::chrono::milliseconds kDrawEvery{40};

volatile std::sig_atomic_t isEnded = 0;

void CatchSignals() {
    struct sigaction action = {};
    action.sa_handler = [](int) { isEnded = 1; };
    sigemptyset(&action.sa_mask);
    // A signal that the parent has switched off stays off.
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction before = {};
        sigaction(number, nullptr, &before);
        if (before.sa_handler != SIG_IGN) {
            sigaction(number, &action, nullptr);
        }
    }
    std::signal(SIGPIPE, SIG_IGN);
}

Time Now() {
    return std::chrono::steady_clock::now();
}

void Print(const std::string& text) {
    std::fputs(text.c_str(), stdout);
    std::fflush(stdout);
}

void Rest(const Simulator& simulator) {
    pollfd wire = {simulator.Descriptor(), POLLIN, 0};
    poll(&wire, 1, static_cast<int>(simulator.Rest().count()));
}

// Returns the events of the last step, which the screen did not show.
std::string RunInTerminal(Simulator& simulator) {
    const TerminalScreen screen;
    const std::string introduction = simulator.Introduction();
    std::string events;
    Time next = Now();
    while (!simulator.IsOver() && isEnded == 0) {
        simulator.Step(Now());
        events = simulator.TakeEvents();
        if (Now() >= next) {
            next = Now() + kDrawEvery;
            if (!TerminalScreen::Draw(introduction, simulator.Status(Now()),
                                      simulator.Lamps().Shown(Now()))) {
                break;
            }
        }
        Rest(simulator);
    }
    return simulator.IsOver() ? events : std::string();
}

// Prints events only, for an output that is not a terminal.
void RunInLines(Simulator& simulator) {
    while (!simulator.IsOver() && isEnded == 0) {
        simulator.Step(Now());
        Print(simulator.TakeEvents());
        Rest(simulator);
    }
}

int Run(const LedsOptions& options, int argc, char** argv) {
    Simulator simulator(options, Now());
    const bool isJudgedAtOnce = !options.replay.empty() && options.check;
    std::string events;
    if (options.view != ViewKind::kTerminal && !isJudgedAtOnce) {
        Print(simulator.Introduction());
        const auto ended = [] { return isEnded != 0; };
        if (!RunWindow(argc, argv, simulator, options.view == ViewKind::kRing, ended,
                       [&] { Print(simulator.TakeEvents()); })) {
            std::fputs("vantorix-leds: --window needs a display\n", stderr);
            return kFailed;
        }
    } else if (TerminalScreen::IsPossible() && !isJudgedAtOnce) {
        events = RunInTerminal(simulator);
    } else {
        Print(simulator.Introduction());
        RunInLines(simulator);
    }
    Print(events + simulator.Summary() + "\n");
    return simulator.ExitCode();
}

} // namespace

int RunLeds(int argc, char** argv) {
    const LedsOptions options = ParseLedsOptions(std::vector<std::string>(argv + 1, argv + argc));
    if (!options.error.empty()) {
        std::fprintf(stderr, "vantorix-leds: %s; see vantorix-leds --help\n", options.error.c_str());
        return kWrongCommandLine;
    }
    if (options.showHelp) {
        Print(LedsHelpText());
        return 0;
    }
    if (options.showVersion) {
        std::printf("vantorix-leds %d.%d.%d\n", VANTORIX_VERSION_MAJOR, VANTORIX_VERSION_MINOR,
                    VANTORIX_VERSION_PATCH);
        return 0;
    }
    CatchSignals();
    try {
        return Run(options, argc, argv);
    } catch (const RecordingError& error) {
        std::fprintf(stderr, "vantorix-leds: %s\n", error.what());
        return kWrongCommandLine;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "vantorix-leds: %s\n", error.what());
        return kFailed;
    }
}

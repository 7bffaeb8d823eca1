// The strip in a terminal, in 24-bit colours.
#include "app/leds/terminal_view.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <poll.h>
#include <string_view>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

// Second screen, no cursor, colours off; and back.
constexpr std::string_view kEnter = "\x1b[?1049h\x1b[?25l\x1b[2J";
constexpr std::string_view kLeave = "\x1b[0m\x1b[?25h\x1b[?1049l";
constexpr std::array kCrashes = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT};
constexpr int kLampColumns = 2;

bool WriteAll(std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = write(STDOUT_FILENO, text.data(), text.size());
        if (count < 0 && errno != EINTR && errno != EAGAIN) {
            return false;
        }
        text.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
    }
    return true;
}

void Catch(int number, void (*handler)(int)) {
    struct sigaction action = {};
    action.sa_handler = handler;
    sigemptyset(&action.sa_mask);
    sigaction(number, &action, nullptr);
}

std::vector<std::string> LinesOf(const std::string& text) {
    std::vector<std::string> lines(1);
    for (const char c : text) {
        if (c == '\n') {
            lines.emplace_back();
        } else {
            lines.back() += c;
        }
    }
    return lines;
}

std::string Lamp(Colour colour) {
    return "\x1b[38;2;" + std::to_string(colour.red) + ';' + std::to_string(colour.green) + ';' +
           std::to_string(colour.blue) + "m\u2588\u2588";
}

} // namespace

std::string TerminalPicture(const std::string& introduction, const std::string& status,
                            const std::vector<Colour>& lamps, int columns, int rows) {
    std::vector<std::string> lines = LinesOf(introduction);
    lines.push_back(status);
    for (std::string& line : lines) {
        line.resize(std::min(line.size(), static_cast<std::size_t>(std::max(columns, 0))));
    }
    lines.emplace_back();
    const auto perRow = static_cast<std::size_t>(std::max(1, columns / kLampColumns));
    for (std::size_t at = 0; at < lamps.size(); ++at) {
        if (at % perRow == 0) {
            lines.emplace_back();
        }
        lines.back() += Lamp(lamps[at]);
    }
    lines.resize(std::min(lines.size(), static_cast<std::size_t>(std::max(rows, 0))));
    std::string picture = "\x1b[H";
    for (std::size_t i = 0; i < lines.size(); ++i) {
        picture += (i > 0 ? "\r\n" : "") + lines[i] + "\x1b[0m\x1b[K";
    }
    return picture + "\x1b[J";
}

bool TerminalScreen::IsPossible() {
    const char* const kind = std::getenv("TERM"); // NOLINT(concurrency-mt-unsafe)
    return isatty(STDOUT_FILENO) != 0 && kind != nullptr && std::string_view(kind) != "dumb";
}

TerminalScreen::TerminalScreen() {
    for (const int number : kCrashes) {
        Catch(number, OnCrash);
    }
    Catch(SIGTSTP, OnStop);
    Enter();
}

TerminalScreen::~TerminalScreen() {
    Catch(SIGTSTP, SIG_DFL);
    for (const int number : kCrashes) {
        Catch(number, SIG_DFL);
    }
    Leave();
}

void TerminalScreen::Enter() {
    WriteAll(kEnter);
}

void TerminalScreen::Leave() {
    WriteAll(kLeave);
}

void TerminalScreen::OnCrash(int number) {
    Leave();
    Catch(number, SIG_DFL);
    raise(number);
}

// Ctrl-Z: the shell gets its screen back, and the strip comes back with the process.
void TerminalScreen::OnStop(int /*number*/) {
    const int savedError = errno;
    Leave();
    raise(SIGSTOP);
    Enter();
    errno = savedError;
}

bool TerminalScreen::Draw(const std::string& introduction, const std::string& status,
                          const std::vector<Colour>& lamps) {
    pollfd terminal = {STDOUT_FILENO, POLLOUT, 0};
    if (poll(&terminal, 1, 0) <= 0) {
        return true;
    }
    if ((terminal.revents & (POLLERR | POLLHUP)) != 0) {
        return false;
    }
    winsize size = {};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) {
        size = {.ws_row = 24, .ws_col = 80, .ws_xpixel = 0, .ws_ypixel = 0};
    }
    return WriteAll(TerminalPicture(introduction, status, lamps, size.ws_col, size.ws_row));
}

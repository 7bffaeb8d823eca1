// The command line of vantorix-leds.
#include "app/leds/options.h"

#include <charconv>
#include <optional>

namespace {

constexpr int kPorts = 16;
constexpr int kFastest = 4'000'000;
constexpr int kLongestDelay = 3'600'000;
constexpr double kLongestUnplug = 86'400;

template <typename Number>
std::optional<Number> NumberIn(const std::string& text, Number least, Number most) {
    Number value{};
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && stop == end && value >= least && value <= most ? std::optional(value)
                                                                                  : std::nullopt;
}

using Take = bool (*)(LedsOptions& options, const std::string& value);

template <auto Member>
bool TakeText(LedsOptions& options, const std::string& value) {
    options.*Member = value;
    return !value.empty();
}

template <auto Member, int Least, int Most>
bool TakeNumber(LedsOptions& options, const std::string& value) {
    const auto number = NumberIn(value, Least, Most);
    options.*Member = number.value_or(0);
    return number.has_value();
}

bool TakeDelay(LedsOptions& options, const std::string& value) {
    const auto number = NumberIn(value, 0, kLongestDelay);
    options.manners.delay = std::chrono::milliseconds(number.value_or(0));
    return number.has_value();
}

bool TakeUnplug(LedsOptions& options, const std::string& value) {
    const auto number = NumberIn(value, 0.001, kLongestUnplug);
    options.unplug = number.value_or(0);
    return number.has_value();
}

struct ValueRow {
    const char* name;
    const char* expected;
    Take take;
};

// clang-format off
constexpr ValueRow kValues[] = {
    {"--link",   "a path",                                TakeText<&LedsOptions::link>},
    {"--port",   "a port number from 1 to 16",            TakeNumber<&LedsOptions::port, 1, kPorts>},
    {"--pace",   "bits a second, from 10 to 4000000",     TakeNumber<&LedsOptions::pace, 10, kFastest>},
    {"--slow",   "milliseconds, from 0 to 3600000",       TakeDelay},
    {"--unplug", "seconds, above 0 and at most 86400",    TakeUnplug},
    {"--record", "a file",                                TakeText<&LedsOptions::record>},
    {"--replay", "a file",                                TakeText<&LedsOptions::replay>},
};
// clang-format on

bool TakeFlag(LedsOptions& options, const std::string& argument) {
    if (argument == "--help" || argument == "-h") {
        options.showHelp = true;
    } else if (argument == "--version") {
        options.showVersion = true;
    } else if (argument == "--silent") {
        options.manners.isSilent = true;
    } else if (argument == "--crlf") {
        options.manners.carriageReturns = true;
    } else if (argument == "--check") {
        options.check = true;
    } else if (argument == "--window" || argument == "--window=row") {
        options.view = ViewKind::kRow;
    } else if (argument == "--window=ring") {
        options.view = ViewKind::kRing;
    } else {
        return false;
    }
    return true;
}

// An option with its value in the next argument, or after "=" in the same one. Returns false for another
// argument.
bool TakeValue(LedsOptions& options, const std::vector<std::string>& arguments, std::size_t& at) {
    for (const ValueRow& row : kValues) {
        const std::string name = row.name;
        const std::string& argument = arguments[at];
        const bool isSeparate = argument == name;
        if (!isSeparate && !argument.starts_with(name + "=")) {
            continue;
        }
        if (isSeparate && at + 1 == arguments.size()) {
            options.error = name + " needs a value";
            return true;
        }
        const std::string value = isSeparate ? arguments[++at] : argument.substr(name.size() + 1);
        if (!row.take(options, value)) {
            options.error = name;
            options.error.append(" needs ")
                .append(row.expected)
                .append(", not \"")
                .append(value)
                .append("\"");
        }
        return true;
    }
    return false;
}

void TakeDevice(LedsOptions& options, const std::string& argument) {
    if (argument.empty() || argument.starts_with("-")) {
        options.error = "unknown argument \"" + argument + "\"";
    } else if (!options.device.empty()) {
        options.error = "there can be only one device, not \"" + argument + "\" as well";
    } else {
        options.device = argument;
    }
}

// Options that exclude each other.
std::string Contradiction(const LedsOptions& options) {
    if (!options.device.empty() && (!options.link.empty() || options.unplug > 0)) {
        return "--link and --unplug are for a pseudo-terminal, not for a device";
    }
    const bool hasWire = !options.device.empty() || !options.link.empty() || options.unplug > 0 ||
                         !options.record.empty() || options.pace > 0;
    if (!options.replay.empty() && hasWire) {
        return "--replay needs no wire: it cannot be combined with a device, --link, --unplug, --pace or "
               "--record";
    }
    return {};
}

} // namespace

LedsOptions ParseLedsOptions(const std::vector<std::string>& arguments) {
    LedsOptions options;
    for (std::size_t at = 0; at < arguments.size() && options.error.empty(); ++at) {
        if (!TakeFlag(options, arguments[at]) && !TakeValue(options, arguments, at)) {
            TakeDevice(options, arguments[at]);
        }
    }
    if (options.error.empty()) {
        options.error = Contradiction(options);
    }
    return options;
}

std::string LedsHelpText() {
    return "Usage: vantorix-leds [OPTION]... [DEVICE]\n"
           "An LED controller for the jukebox, without LEDs: shows and checks what the jukebox sends.\n"
           "\n"
           "Without DEVICE it makes a pseudo-terminal and prints its name and the lines of config.ini that "
           "use\n"
           "it. The strip is shown in the terminal, in 24-bit colours; Ctrl-C ends it.\n"
           "\n"
           "  --link PATH        makes a link to the pseudo-terminal, such as HOME/COM1, and removes it at "
           "the end\n"
           "  --port N           the serial port for the lines of config.ini, 1 to 16 (default 1)\n"
           "  --window[=row]     shows the strip in a window, as a row of lamps\n"
           "  --window=ring      the same as a ring of lamps\n"
           "  --pace BITS        reads no faster than a line of this many bits a second, such as 115200\n"
           "  --silent           never answers\n"
           "  --slow MS          answers after this many milliseconds\n"
           "  --crlf             answers with carriage returns, which the jukebox does not accept\n"
           "  --unplug SECONDS   unplugs the device after this time and plugs it in a second later, "
           "repeatedly\n"
           "  --record FILE      writes what arrives to FILE, with its times\n"
           "  --replay FILE      shows a recording; with --check judges it at once without showing it\n"
           "  --check            judges every message and ends with exit code 1 at the first fault\n"
           "  --help             this text\n"
           "  --version          the version\n"
           "\n"
           "Exit code: 0 ended on request, 1 a fault of the wire or of the device, 2 wrong command line or "
           "file.\n";
}

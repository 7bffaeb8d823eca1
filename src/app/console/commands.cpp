// Parsing the console's commands, and running those that send events to the jukebox.
#include "app/console/commands.h"

#include "app/console/dialog_commands.h"
#include "app/console/query_commands.h"
#include "platform/input_event.h"
#include "platform/simulated/simulated_platform.h"
#include "shell/handle_event.h"
#include "state/form_main.h"

#include <QRegularExpression>

#include <limits>
#include <optional>

namespace {

constexpr double kHeartbeatMilliseconds = 399;
constexpr double kSpectrumMilliseconds = 99;
constexpr int kMostTicks = 1'000'000;
constexpr int kLeftButton = 1;

JsonObject Ok() {
    return JsonObject().Add(QStringLiteral("ok"), true);
}

ParsedCommand Bad(const QString& reason) {
    return {Command(), reason};
}

// A whole number in plain decimal digits, within bounds.
std::optional<int> WholeNumber(const QString& text, int least, int most) {
    static const QRegularExpression form(QStringLiteral("\\A-?[0-9]{1,10}\\z"));
    const qlonglong value = text.toLongLong();
    const bool good = form.match(text).hasMatch() && value >= least && value <= most;
    return good ? std::optional(static_cast<int>(value)) : std::nullopt;
}

struct PixelPosition {
    double x = 0;
    double y = 0;
};

// A position in pixels. Decimals are allowed, exponents are not.
std::optional<PixelPosition> Position(const QString& x, const QString& y) {
    static const QRegularExpression form(QStringLiteral("\\A-?[0-9]{1,10}(\\.[0-9]{1,6})?\\z"));
    const bool good = form.match(x).hasMatch() && form.match(y).hasMatch();
    return good ? std::optional(PixelPosition{x.toDouble(), y.toDouble()}) : std::nullopt;
}

ParsedCommand ParseKey(const QStringList& words) {
    const auto code = words.size() == 2 ? WholeNumber(words[1], std::numeric_limits<qint16>::min(),
                                                      std::numeric_limits<qint16>::max())
                                        : std::nullopt;
    if (!code) {
        return Bad(QStringLiteral("key takes one code from -32768 to 32767"));
    }
    InputEvent event;
    event.kind = InputKind::kKeyDown;
    event.code = *code;
    return {[event](Console& console) { return HandOver(console, {event}); }, QString()};
}

// A pointer event outside the on-screen keyboard. Only a press has an effect.
ParsedCommand BesideKeyboard(InputKind kind) {
    const auto run = [kind](Console& console) {
        if (!console.form.shell.Form_KeyBoard.Visible) {
            return RefusalObject(
                QStringLiteral("beside is around the on-screen keyboard, which is not open"));
        }
        InputEvent event;
        event.kind = InputKind::kMouseBeside;
        return kind == InputKind::kMouseDown ? HandOver(console, {event}) : Ok();
    };
    return {run, QString()};
}

ParsedCommand ParsePointer(const QStringList& words, InputKind kind, int button) {
    if (words.size() == 2 && words[1] == u"beside") {
        return BesideKeyboard(kind);
    }
    const auto position = words.size() == 3 ? Position(words[1], words[2]) : std::nullopt;
    if (!position) {
        return Bad(words[0] + QStringLiteral(" takes two positions in pixels"));
    }
    std::vector<InputEvent> events{InputEvent{kind, 0, button, position->x, position->y}};
    // A double tap has no position of its own, so the pointer is moved there first.
    if (kind == InputKind::kDblClick) {
        events.insert(events.begin(), InputEvent{InputKind::kMouseMove, 0, 0, position->x, position->y});
    }
    return {[events](Console& console) { return HandOver(console, events); }, QString()};
}

ParsedCommand ParseDown(const QStringList& words) {
    return ParsePointer(words, InputKind::kMouseDown, kLeftButton);
}

ParsedCommand ParseUp(const QStringList& words) {
    return ParsePointer(words, InputKind::kMouseUp, kLeftButton);
}

ParsedCommand ParseDblclick(const QStringList& words) {
    return ParsePointer(words, InputKind::kDblClick, kLeftButton);
}

ParsedCommand ParseMove(const QStringList& words) {
    const bool left = words.size() == 4 && words[3] == u"left";
    return ParsePointer(left ? words.mid(0, 3) : words, InputKind::kMouseMove, left ? kLeftButton : 0);
}

// Moves the time and sends the timer's event N times. The first error ends it.
ParsedCommand ParseTicks(const QStringList& words, double milliseconds, InputKind kind) {
    const auto count = words.size() == 1   ? std::optional(1)
                       : words.size() == 2 ? WholeNumber(words[1], 0, kMostTicks)
                                           : std::nullopt;
    if (!count) {
        return Bad(words[0] + QStringLiteral(" takes one count from 0 to %1, or none").arg(kMostTicks));
    }
    InputEvent event;
    event.kind = kind;
    const auto run = [count = *count, milliseconds, event](Console& console) {
        for (int i = 0; i < count; ++i) {
            console.platform.clock.Advance(milliseconds);
            console.platform.pump.Stirred();
            if (const std::optional<RunTimeError> error = HandleEvent(console.form, event)) {
                return Ok().Add(QStringLiteral("error"), ErrorObject(*error));
            }
        }
        return Ok();
    };
    return {run, QString()};
}

ParsedCommand ParseTick(const QStringList& words) {
    return ParseTicks(words, kHeartbeatMilliseconds, InputKind::kTimer1);
}

ParsedCommand ParseSpectrum(const QStringList& words) {
    return ParseTicks(words, kSpectrumMilliseconds, InputKind::kTmrSpectrum);
}

ParsedCommand ParseWait(const QStringList& words) {
    const auto milliseconds =
        words.size() == 2 ? WholeNumber(words[1], 0, std::numeric_limits<int>::max()) : std::nullopt;
    if (!milliseconds) {
        return Bad(QStringLiteral("wait takes one whole number of milliseconds"));
    }
    const auto run = [milliseconds = *milliseconds](Console& console) {
        console.platform.clock.Advance(milliseconds);
        return Ok();
    };
    return {run, QString()};
}

ParsedCommand ParseController(const QStringList& words) {
    const bool on = words.size() == 2 && words[1] == u"on";
    if (!on && !(words.size() == 2 && words[1] == u"off")) {
        return Bad(QStringLiteral("controller is on or off"));
    }
    const auto run = [on](Console& console) {
        console.platform.serial.controllerAnswers = on;
        return Ok();
    };
    return {run, QString()};
}

// The bytes of a text with escapes; nothing for an invalid escape.
std::optional<QByteArray> Unescaped(const QString& text) {
    static const QRegularExpression form(
        QStringLiteral("\\A(?:[^\\\\]|\\\\[rn\\\\]|\\\\x[0-9A-Fa-f]{2})*+\\z"));
    if (!form.match(text).hasMatch()) {
        return std::nullopt;
    }
    const QByteArray source = text.toUtf8();
    QByteArray bytes;
    for (qsizetype i = 0; i < source.size(); ++i) {
        if (source[i] != '\\') {
            bytes += source[i];
            continue;
        }
        ++i;
        if (source[i] == 'x') {
            bytes += QByteArray::fromHex(source.mid(i + 1, 2));
            i += 2;
        } else {
            bytes += source[i] == 'r' ? '\r' : source[i] == 'n' ? '\n' : '\\';
        }
    }
    return bytes;
}

ParsedCommand ParseSerial(const QString& rest) {
    const std::optional<QByteArray> bytes = rest.isEmpty() ? std::nullopt : Unescaped(rest);
    if (!bytes) {
        return Bad(QStringLiteral("serial takes a text with the escapes \\r, \\n, \\xHH and \\\\"));
    }
    const auto run = [bytes = *bytes](Console& console) {
        return console.platform.serial.Arrive(bytes) ? Ok()
                                                     : RefusalObject(QStringLiteral("too many bytes wait"));
    };
    return {run, QString()};
}

ParsedCommand ParseLater(const QString& rest) {
    if (rest == u"later" || rest.startsWith(QStringLiteral("later "))) {
        return Bad(QStringLiteral("later takes a command other than later"));
    }
    const ParsedCommand inner = ParseCommand(rest);
    if (!inner.command) {
        return Bad(QStringLiteral("later: ") + inner.reason);
    }
    const auto run = [command = inner.command](Console& console) {
        if (console.kept.size() >= Console::kKeptCommands) {
            return RefusalObject(QStringLiteral("too many commands are kept"));
        }
        console.kept.push_back(command);
        return Ok();
    };
    return {run, QString()};
}

struct WordRow {
    const char* word;
    ParsedCommand (*parse)(const QStringList& words);
};

struct RestRow {
    const char* word;
    // Takes the text after the word and one blank.
    ParsedCommand (*parse)(const QString& rest);
};

// clang-format off
constexpr WordRow kWordCommands[] = {
    {"key",        ParseKey},
    {"down",       ParseDown},
    {"up",         ParseUp},
    {"dblclick",   ParseDblclick},
    {"move",       ParseMove},
    {"tick",       ParseTick},
    {"spectrum",   ParseSpectrum},
    {"wait",       ParseWait},
    {"state",      ParseState},
    {"calls",      ParseCalls},
    {"controller", ParseController},
};

constexpr RestRow kRestCommands[] = {
    {"later",       ParseLater},
    {"serial",      ParseSerial},
    {"frame",       ParseFrame},
    {"surface",     ParseSurface},
    {"image",       ParseImage},
    {"tags",        ParseTags},
    {"get",         ParseGet},
    {"set",         ParseSet},
    {"click",       ParseClick},
    {"doubleclick", ParseDoubleclick},
};
// clang-format on

} // namespace

bool IsNoCommand(const QString& line) {
    return line.trimmed().isEmpty() || line.startsWith(u'#');
}

ParsedCommand ParseCommand(const QString& line) {
    static const QRegularExpression blanks(QStringLiteral("[ \\t]+"));
    const QStringList words = line.split(blanks, Qt::SkipEmptyParts);
    if (words.isEmpty()) {
        return Bad(QStringLiteral("a command is missing"));
    }
    for (const WordRow& row : kWordCommands) {
        if (words[0] == QLatin1String(row.word)) {
            return row.parse(words);
        }
    }
    for (const RestRow& row : kRestCommands) {
        if (words[0] == QLatin1String(row.word)) {
            return row.parse(line.mid(line.indexOf(words[0]) + words[0].size() + 1));
        }
    }
    return Bad(QStringLiteral("unknown command: ") + words[0]);
}

Command Refuse(const QString& reason) {
    return [reason](Console&) { return RefusalObject(reason); };
}

JsonObject HandOver(Console& console, const std::vector<InputEvent>& events) {
    for (const InputEvent& event : events) {
        console.platform.pump.Stirred();
        if (const std::optional<RunTimeError> error = HandleEvent(console.form, event)) {
            return Ok().Add(QStringLiteral("error"), ErrorObject(*error));
        }
    }
    return Ok();
}

JsonObject ErrorObject(const RunTimeError& error) {
    return JsonObject()
        .Add(QStringLiteral("number"), error.number)
        .Add(QStringLiteral("text"), RunTimeErrorText(error.number))
        .Add(QStringLiteral("detail"), error.detail);
}

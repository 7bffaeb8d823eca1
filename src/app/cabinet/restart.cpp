// Executing the program again, with a note in the environment.
#include "app/cabinet/restart.h"

#include <QList>

#include <array>
#include <climits>
#include <ctime>
#include <linux/close_range.h>
#include <unistd.h>

namespace {

constexpr char kVariable[] = "VANTORIX_RESTART";
constexpr std::int64_t kFiveMinutes = 300;
constexpr std::size_t kMostStops = 3;
constexpr int kLongestReason = 4000;
constexpr int kFirstOwnDescriptor = 3;

} // namespace

// The form "stops,separated,by,commas;lose or keep;reason in Base64".
QByteArray BytesOf(const RestartNote& note) {
    QByteArrayList stops;
    for (const std::int64_t stop : note.stops) {
        stops.append(QByteArray::number(qlonglong{stop}));
    }
    return stops.join(',') + (note.mayLoseLines ? ";lose;" : ";keep;") +
           note.reason.left(kLongestReason).toUtf8().toBase64();
}

RestartNote NoteOf(const QByteArray& bytes) {
    const QList<QByteArray> parts = bytes.split(';');
    if (parts.size() != 3) {
        return {};
    }
    RestartNote note{.reason = QString::fromUtf8(QByteArray::fromBase64(parts[2])),
                     .stops = {},
                     .mayLoseLines = parts[1] == "lose"};
    for (const QByteArray& stop : parts[0].split(',')) {
        bool isNumber = false;
        const qlonglong seconds = stop.toLongLong(&isNumber);
        if (isNumber && seconds >= 0 && note.stops.size() < kMostStops) {
            note.stops.push_back(seconds);
        }
    }
    return note;
}

RestartNote TakeRestartNote() {
    const QByteArray bytes = qgetenv(kVariable);
    qunsetenv(kVariable);
    return NoteOf(bytes);
}

std::int64_t SecondsSinceBoot() {
    timespec now = {};
    clock_gettime(CLOCK_BOOTTIME, &now);
    return now.tv_sec;
}

bool StopsTooOften(RestartNote& note, std::int64_t now) {
    std::erase_if(note.stops, [&](std::int64_t stop) { return stop > now || now - stop > kFiveMinutes; });
    note.stops.push_back(now);
    return note.stops.size() >= kMostStops;
}

void StartAgain(const RestartNote& note, char** argv) {
    qputenv(kVariable, BytesOf(note));
    // What a library has left open is closed by the system.
    ::close_range(kFirstOwnDescriptor, ~0U, CLOSE_RANGE_CLOEXEC);
    // By its path the process keeps its name, and an updated program is the one that runs. A program that has
    // been removed still runs through the link.
    constexpr char kSelf[] = "/proc/self/exe";
    std::array<char, PATH_MAX> path = {};
    if (::readlink(kSelf, path.data(), path.size() - 1) > 0) {
        ::execv(path.data(), argv);
    }
    ::execv(kSelf, argv);
    qunsetenv(kVariable);
}

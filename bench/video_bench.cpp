// CPU time and speed of players, each a process of its own.
#include "video_bench.h"

#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QStringList>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr int kRounds = 3;
// What a long run takes more than a short one is the work of the frames between them, without the start.
constexpr int kShortRun = 30;
constexpr int kLongRun = 330;
constexpr int kPacedSeconds = 20;

struct Used {
    double cpu = 0;  // milliseconds, of all threads
    double wall = 0; // milliseconds
};

double MillisecondsOf(const timeval& time) {
    return static_cast<double>(time.tv_sec) * 1000 + static_cast<double>(time.tv_usec) / 1000;
}

// Runs a program to its end, with its output thrown away.
Used Run(const QStringList& command) {
    std::vector<QByteArray> words;
    words.reserve(static_cast<std::size_t>(command.size()));
    for (const QString& word : command) {
        words.push_back(word.toLocal8Bit());
    }
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (QByteArray& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, STDOUT_FILENO, STDERR_FILENO);
    const auto start = std::chrono::steady_clock::now();
    pid_t child = 0;
    rusage usage{};
    int status = 0;
    const bool ran = posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ) == 0 &&
                     wait4(child, &status, 0, &usage) == child;
    posix_spawn_file_actions_destroy(&actions);
    if (!ran) {
        std::fprintf(stderr, "vantorix-bench: cannot run %s\n", arguments[0]);
        std::exit(1);
    }
    const std::chrono::duration<double, std::milli> wall = std::chrono::steady_clock::now() - start;
    return {MillisecondsOf(usage.ru_utime) + MillisecondsOf(usage.ru_stime), wall.count()};
}

struct Player {
    QString name;
    // The command that shows this many frames as fast as it can; empty when the player cannot.
    QStringList (*frames)(const QString& program, const QString& clip, int count);
    // The command that plays for this many seconds.
    QStringList (*seconds)(const QString& program, const QString& clip, int count);
    QString program;
};

QStringList OurFrames(const QString& program, const QString& clip, int count) {
    return {program, clip, QStringLiteral("frames"), QString::number(count)};
}

QStringList OurSeconds(const QString& program, const QString& clip, int count) {
    return {program, clip, QStringLiteral("seconds"), QString::number(count)};
}

QStringList MpvWords(const QString& program, const QString& clip) {
    return {program,
            QStringLiteral("--no-config"),
            QStringLiteral("--vo=x11"),
            QStringLiteral("--hwdec=no"),
            QStringLiteral("--fs"),
            clip};
}

QStringList MpvFrames(const QString& program, const QString& clip, int count) {
    return MpvWords(program, clip) + QStringList{QStringLiteral("--no-audio"), QStringLiteral("--untimed"),
                                                 QStringLiteral("--video-sync=display-desync"),
                                                 QStringLiteral("--framedrop=no"),
                                                 QStringLiteral("--frames=%1").arg(count)};
}

QStringList MpvSeconds(const QString& program, const QString& clip, int count) {
    return MpvWords(program, clip) +
           QStringList{QStringLiteral("--ao=null"), QStringLiteral("--length=%1").arg(count)};
}

// This player has no way to show frames as fast as it can.
QStringList NoFrames(const QString& /*program*/, const QString& /*clip*/, int /*count*/) {
    return {};
}

QStringList FfplaySeconds(const QString& program, const QString& clip, int count) {
    return {QStringLiteral("env"),
            QStringLiteral("SDL_AUDIODRIVER=dummy"),
            program,
            QStringLiteral("-v"),
            QStringLiteral("0"),
            QStringLiteral("-fs"),
            QStringLiteral("-t"),
            QString::number(count),
            QStringLiteral("-autoexit"),
            clip};
}

std::vector<Player> InstalledPlayers(const QString& programs) {
    std::vector<Player> players = {
        {QStringLiteral("ours"), OurFrames, OurSeconds, programs + QStringLiteral("/vantorix-plain-player")}};
    const QString mpv = QStandardPaths::findExecutable(QStringLiteral("mpv"));
    const QString ffplay = QStandardPaths::findExecutable(QStringLiteral("ffplay"));
    if (!mpv.isEmpty()) {
        players.push_back({QStringLiteral("mpv --vo=x11"), MpvFrames, MpvSeconds, mpv});
    }
    if (!ffplay.isEmpty()) {
        players.push_back({QStringLiteral("ffplay"), NoFrames, FfplaySeconds, ffplay});
    }
    return players;
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

// A clip with much motion; with a tone if the players are to play it at its pace.
QString MakeClip(const QString& folder, const QString& size, const QString& rate, bool tone) {
    const QString clip = folder + QLatin1Char('/') + size +
                         (tone ? QStringLiteral("-tone.avi") : QStringLiteral("-silent.avi"));
    QStringList words = {QStringLiteral("-nostdin"), QStringLiteral("-v"), QStringLiteral("error")};
    words += {QStringLiteral("-f"), QStringLiteral("lavfi"), QStringLiteral("-i"),
              QStringLiteral("testsrc2=size=%1:rate=30:d=25,noise=alls=12:allf=t").arg(size)};
    if (tone) {
        words += {QStringLiteral("-f"),        QStringLiteral("lavfi"), QStringLiteral("-i"),
                  QStringLiteral("sine=d=25"), QStringLiteral("-c:a"),  QStringLiteral("mp2")};
    }
    words += {QStringLiteral("-c:v"), QStringLiteral("mpeg4"), QStringLiteral("-b:v"), rate, clip};
    return QProcess::execute(QStringLiteral("ffmpeg"), words) == 0 ? clip : QString();
}

void PrintTitle(const QString& title) {
    std::printf("%s\n", qPrintable(title));
}

// Ratios are those of the same round, with ours as 1.
void BenchUnpaced(const std::vector<Player>& players, const QString& clip, const QString& size) {
    std::vector<std::vector<double>> cpu(players.size());
    std::vector<std::vector<double>> speed(players.size());
    for (int round = 0; round < kRounds; ++round) {
        for (std::size_t i = 0; i < players.size(); ++i) {
            const QStringList command = players[i].frames(players[i].program, clip, kShortRun);
            if (!command.isEmpty()) {
                const Used few = Run(command);
                const Used many = Run(players[i].frames(players[i].program, clip, kLongRun));
                cpu[i].push_back((many.cpu - few.cpu) / (kLongRun - kShortRun));
                speed[i].push_back(1000 * (kLongRun - kShortRun) / (many.wall - few.wall));
            }
        }
    }
    PrintTitle(QStringLiteral("Video %1 over the whole screen, as fast as it goes, a frame").arg(size));
    for (std::size_t i = 0; i < players.size(); ++i) {
        if (!cpu[i].empty()) {
            std::printf("  %-44s %10.3f ms CPU   x %.2f   %6.1f frames/s\n", qPrintable(players[i].name),
                        Median(cpu[i]), Median(cpu[i]) / Median(cpu[0]), Median(speed[i]));
        }
    }
}

void BenchPaced(const std::vector<Player>& players, const QString& clip, const QString& size) {
    std::vector<std::vector<double>> cpu(players.size());
    for (int round = 0; round < kRounds; ++round) {
        for (std::size_t i = 0; i < players.size(); ++i) {
            const Used few = Run(players[i].seconds(players[i].program, clip, 2));
            const Used many = Run(players[i].seconds(players[i].program, clip, 2 + kPacedSeconds));
            cpu[i].push_back((many.cpu - few.cpu) / kPacedSeconds);
        }
    }
    PrintTitle(QStringLiteral("Video %1 over the whole screen, 30 frames a second, a second").arg(size));
    for (std::size_t i = 0; i < players.size(); ++i) {
        std::printf("  %-44s %10.3f ms CPU   x %.2f\n", qPrintable(players[i].name), Median(cpu[i]),
                    Median(cpu[i]) / Median(cpu[0]));
    }
    std::fflush(stdout);
}

} // namespace

void BenchVideos(const QString& programs) {
    if (qEnvironmentVariableIsEmpty("DISPLAY")) {
        PrintTitle(QStringLiteral("Videos: left out, there is no X display"));
        return;
    }
    const QTemporaryDir folder;
    const std::vector<Player> players = InstalledPlayers(programs);
    for (const auto& [size, rate] : {std::pair(QStringLiteral("1280x720"), QStringLiteral("3500k")),
                                     std::pair(QStringLiteral("1920x1080"), QStringLiteral("7000k"))}) {
        const QString silent = MakeClip(folder.path(), size, rate, false);
        const QString clip = MakeClip(folder.path(), size, rate, true);
        if (silent.isEmpty() || clip.isEmpty()) {
            PrintTitle(QStringLiteral("Videos: left out, ffmpeg makes no clip"));
            return;
        }
        BenchUnpaced(players, silent, size);
        BenchPaced(players, clip, size);
    }
}

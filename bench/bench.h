// Measuring: contenders that do the same work, run in turn, compared round by round.
#pragma once

#include <QString>

#include <functional>
#include <vector>

// One way to do a piece of work. The first contender of a row is ours, or what ours is measured against.
struct Contender {
    QString name;
    std::function<void()> work;
    // What has to be done before each run and is not measured.
    std::function<void()> before = [] {};
};

// How a contender did: the median of its times, and the median of its time divided by the first contender's
// of the same round.
struct Figure {
    QString name;
    double milliseconds = 0;
    double ratio = 0;
};

// The time and the CPU time of the process so far, in milliseconds.
double WallMilliseconds();
double ProcessorMilliseconds();

// Runs all contenders once to warm up, then `rounds` times in turn (A B C A B C ...), so that a change of the
// machine's speed affects all of them equally.
std::vector<Figure> RunInTurn(const std::vector<Contender>& contenders, int rounds,
                              double (*now)() = WallMilliseconds);

// Prints a row: the title, then a line a contender with its time and its ratio to the first.
void PrintRow(const QString& title, const std::vector<Figure>& figures);

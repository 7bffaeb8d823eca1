// The signals that ask the program to end: SIGTERM, SIGINT, SIGHUP.
#pragma once

#include <QSocketNotifier>

#include <array>
#include <csignal>
#include <functional>
#include <memory>

// Catches the signals for as long as it lives; one object at a time, on the event thread. The first signal
// calls `asked` from the event loop. A second one ends the process at once, with code 128 + its number,
// unless Answered() has been called in between.
class TerminationSignals {
public:
    explicit TerminationSignals(std::function<void()> asked);
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

    // The wish has been dealt with and the program still runs: the next signal asks anew.
    static void Answered();

private:
    static constexpr std::array kSignals = {SIGTERM, SIGINT, SIGHUP};

    void Catch();

    int readEnd_ = -1;
    int writeEnd_ = -1;
    std::unique_ptr<QSocketNotifier> notifier_;
    std::function<void()> asked_;
    // What the signals did before.
    std::array<struct sigaction, kSignals.size()> before_ = {};
};

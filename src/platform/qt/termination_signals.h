// The signals that ask the program to end: SIGTERM, SIGINT, SIGHUP.
#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

// Makes a thread that takes the signals, and blocks them in the calling thread and in all threads that it
// makes later; so it is called before any other thread is made, and once. The first signal is passed on to
// the TerminationWish. The process ends at once, with code 128 + the signal's number, when a second signal
// comes before TerminationWish::Answered, and when it has not ended by itself four seconds after a signal: a
// system call that hangs on a dead disk holds the event thread and nothing else. Without another thread or a
// pipe the signals keep their usual effect. SIGHUP stays ignored when it was ignored at the start.
void WatchTerminationSignals();

// The event loop's side, on the event thread. A signal that came before this object was made is passed on,
// too.
class TerminationWish {
public:
    // `asked` is called from the event loop for each signal that is passed on.
    explicit TerminationWish(std::function<void()> asked);

    // The wish has been dealt with and the program still runs: the next signal is passed on again.
    static void Answered();
    // A signal has come at some time; the program has seconds to live.
    static bool HasCome();

private:
    std::unique_ptr<QSocketNotifier> notifier_;
    std::function<void()> asked_;
};

// The signals that request the program's end: SIGTERM, SIGINT, SIGHUP.
#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

// Starts a thread that receives the signals, and blocks them in the calling thread and in all threads that it
// starts later. Call it once, before any other thread exists. The first signal is passed to TerminationWish.
// The process ends immediately, with code 128 + the signal's number, when a second signal comes before
// TerminationWish::Answered, and when it has not ended by itself four seconds after a signal: a system call
// that hangs on a dead disk blocks only the event thread. Without a thread or a pipe the signals keep their
// default action. SIGHUP stays ignored when it was ignored at the start.
void WatchTerminationSignals();

// The number of the first signal; 0 while there was none. Tasks without an event loop look here between two
// steps.
int TerminationSignal();
// The exit code of a task that a signal has ended early: 128 + its number.
int TerminationExitCode();
// Blocks until the first signal and returns its number. For a thread that may still wait when the process
// ends.
int WaitForTerminationSignal();

// The event loop's side; event thread only. A signal that came before this object was made is passed on, too.
class TerminationWish {
public:
    // Calls `asked` from the event loop for each signal that is passed on.
    explicit TerminationWish(std::function<void()> asked);

    // The request has been handled and the program continues: the next signal is passed on again.
    static void Answered();
    // True once any signal has come; the program has only seconds left then.
    static bool HasCome();

private:
    std::unique_ptr<QSocketNotifier> notifier_;
    std::function<void()> asked_;
};

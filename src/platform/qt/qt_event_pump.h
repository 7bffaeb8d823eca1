// The event pump of the cabinet: from the window system's events to the jukebox.
#pragma once

#include "platform/event_pump.h"
#include "platform/input_event.h"
#include "platform/posix/termination_signals.h"

#include <QTimer>

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>

// Handlers of the toolkit only call Post. DoEvents and Run deliver the queue outside the toolkit's call
// stack, because no exception may pass through it.
class QtEventPump : public EventPump {
public:
    QtEventPump();

    // The intervals of Timer1 and tmrSpectrum in milliseconds. Set before Run.
    void SetIntervals(int timer1, int tmrSpectrum);
    // Sets the receiver of the events. Called before the first DoEvents.
    void SetSink(EventSink sink) { sink_ = std::move(sink); }
    // Sets the test whether the light show needs its ticks; without it they never come. Called before and
    // after each event, so that an idle jukebox sleeps.
    void SetSpectrumWanted(std::function<bool()> wanted) { spectrumWanted_ = std::move(wanted); }

    // Sets a routine that is called at least every five seconds while WaitForInput waits.
    void SetWaiting(std::function<void()> waiting) { waiting_ = std::move(waiting); }

    // Runs the toolkit once and delivers what is pending then. What arrives in the meantime waits for the
    // next call. A close request that arrives while another one is being handled waits until that handler has
    // ended.
    void DoEvents() override;
    void Wait(double milliseconds) override;

    // The main loop of the jukebox: sleeps until something happens and delivers it. Only ProgramStop and
    // ProgramEnd leave it.
    [[noreturn]] void Run();
    // The same inside a handler, for a modal dialog: runs while `wanted` returns true.
    void RunWhile(const std::function<bool()>& wanted);

    // Appends an event. Merges pointer moves and pending ticks. Drops a tick of the light show while another
    // one is being handled, and keys and presses beyond 1000 pending events.
    void Post(const InputEvent& event);

    // Waits for a key or a press of the pointer and drops everything else except a close request. Returns
    // nothing on timeout or when the program is to close.
    std::optional<InputEvent> WaitForInput(int milliseconds);

private:
    struct Pending {
        std::uint64_t number;
        InputEvent event;
    };

    void RunOnce();
    void HandOn();
    std::deque<Pending>::iterator NextBefore(std::uint64_t limit);
    bool Merged(const InputEvent& event);
    bool IsDroppedTick(InputKind kind) const;
    bool IsBeingHandled(InputKind kind) const;
    void Deliver(const InputEvent& event);
    void FollowSpectrum();

    EventSink sink_;
    std::function<bool()> spectrumWanted_;
    std::function<void()> waiting_;
    std::deque<Pending> pending_;
    std::uint64_t nextNumber_ = 0;
    bool spectrumRuns_ = false;
    bool closeRuns_ = false;
    QTimer timer1_;
    QTimer tmrSpectrum_;
    TerminationWish wish_;
};

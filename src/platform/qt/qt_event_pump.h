// The event pump of the cabinet: from the window system's events to the jukebox.
#pragma once

#include "platform/event_pump.h"
#include "platform/input_event.h"
#include "platform/qt/termination_signals.h"

#include <QTimer>

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>

// Handlers of the toolkit only call Post. The queue is handed on by DoEvents and Run, outside of the
// toolkit's call stack, because no exception may pass through it.
class QtEventPump : public EventPump {
public:
    QtEventPump();

    // The intervals of Timer1 and tmrSpectrum in milliseconds. Set before Run.
    void SetIntervals(int timer1, int tmrSpectrum);
    // Who takes the events. Set before the first DoEvents.
    void SetSink(EventSink sink) { sink_ = std::move(sink); }
    // Tells whether the ticks of the light show are wanted now; without it they never come. Asked after each
    // event, so that an idle jukebox sleeps.
    void SetSpectrumWanted(std::function<bool()> wanted) { spectrumWanted_ = std::move(wanted); }

    // Runs the toolkit once and hands on what is pending then; what arrives meanwhile waits for the next
    // call. A tick of the light show, or a wish to close, that comes while one is being handled waits until
    // that has ended.
    void DoEvents() override;
    void Wait(double milliseconds) override;

    // The life of the jukebox: sleeps until something happens and hands it on. Left only by ProgramStop and
    // ProgramEnd.
    [[noreturn]] void Run();
    // The same inside a handler, for the time of a modal dialog: until `wanted` is no longer true.
    void RunWhile(const std::function<bool()>& wanted);

    // Appends an event. Moves of the pointer and pending ticks are merged. Keys and presses beyond 1000
    // pending events are dropped.
    void Post(const InputEvent& event);

    // Waits for a key or a press of the pointer while everything else but the wish to close is dropped.
    // Nothing when the time is over or the program is to close.
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
    bool IsBeingHandled(InputKind kind) const;
    void Deliver(const InputEvent& event);
    void FollowSpectrum();

    EventSink sink_;
    std::function<bool()> spectrumWanted_;
    std::deque<Pending> pending_;
    std::uint64_t nextNumber_ = 0;
    bool spectrumRuns_ = false;
    bool closeRuns_ = false;
    QTimer timer1_;
    QTimer tmrSpectrum_;
    TerminationWish wish_;
};

// The simulated time: a clock, positions that move with it, and the event pump that waits in it.
#pragma once

#include "platform/clock.h"
#include "platform/event_pump.h"

#include <QString>

#include <cstdint>
#include <exception>
#include <functional>

class CallRecord;

// Moves only on Advance. Time since the start is kept in whole microseconds. The wall clock has no daylight
// saving and no time zone: it shows its start plus the elapsed time.
class SimulatedClock : public Clock {
public:
    explicit SimulatedClock(const QDateTime& start);

    QDateTime LocalTime() override;
    std::int64_t timeGetTime() override { return microseconds_ / 1000; }

    // Microseconds since the start.
    std::int64_t Microseconds() const { return microseconds_; }
    // Moves the time forward, rounded to the nearest microsecond. Ignores values that are not above 0. The
    // time stops after 10,000 years.
    void Advance(double milliseconds);

private:
    QDateTime start_;
    std::int64_t microseconds_ = 0;
};

// What a position does at its end.
enum class AtEnd { kWraps, kStands };

// A position inside a length, which advances `unitsPerSecond` units a second while it runs. Reading it never
// loses a fraction of a unit.
class PlayHead {
public:
    // The clock outlives the head. A length below 1 counts as 1.
    PlayHead(const SimulatedClock& clock, std::int64_t unitsPerSecond, std::int64_t length, AtEnd atEnd);

    std::int64_t Length() const { return length_; }
    bool Running() const { return running_; }
    // 0 to length - 1, or to length with kStands.
    std::int64_t Position() const;

    void Run();
    // Stops at the current position.
    void Halt();
    // Moves a position outside the length to the nearer end.
    void MoveTo(std::int64_t position);

private:
    std::int64_t Bounded(std::int64_t position) const;
    void Settle();

    const SimulatedClock* clock_;
    std::int64_t unitsPerSecond_;
    std::int64_t length_;
    AtEnd atEnd_;
    bool running_ = false;
    // The position at the last update, in units and millionths of a unit, and the time of that update.
    std::int64_t base_ = 0;
    std::int64_t millionths_ = 0;
    std::int64_t since_ = 0;
};

// A wait that can never end, because nothing is pending and nothing arrives. Passes through every handler
// border.
class SimulatedHang : public std::exception {
public:
    explicit SimulatedHang(QString text) : wait(std::move(text)) {}
    const char* what() const noexcept override { return "hung"; }

    // Describes the wait, as far as it is known.
    QString wait;
};

// Each DoEvents runs at most one pending event. A wait first moves the time.
class SimulatedPump : public EventPump {
public:
    // This many calls in a row with nothing pending and nothing arriving are a hang.
    static constexpr int kIdlePoints = 10'000;

    // Clock and record outlive the pump.
    SimulatedPump(SimulatedClock& clock, const CallRecord& record) : clock_(clock), record_(record) {}

    // Throws SimulatedHang at idle call number kIdlePoints.
    void DoEvents() override;
    void Wait(double milliseconds) override;

    // Something arrived or a new handler began, so a wait may end: restarts the count of idle calls.
    void Stirred() { idlePoints_ = 0; }

    // Runs one pending event; returns false when there is none. When this is empty, nothing is ever pending.
    std::function<bool()> runPending;

private:
    SimulatedClock& clock_;
    const CallRecord& record_;
    int idlePoints_ = 0;
};

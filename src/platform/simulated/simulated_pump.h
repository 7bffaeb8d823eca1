// The simulated event pump: the points at which kept commands are carried out.
#pragma once

#include "platform/event_pump.h"

#include <QString>

#include <exception>
#include <functional>

class CallRecord;
class SimulatedClock;

// A wait that can never end, since nothing is pending and nothing arrives. It passes every handler border.
class SimulatedHang : public std::exception {
public:
    explicit SimulatedHang(QString text) : wait(std::move(text)) {}
    const char* what() const noexcept override { return "hung"; }

    // Which wait it was, as far as that is known.
    QString wait;
};

// Each DoEvents is one point: at most one pending event runs there. A wait moves the time first.
class SimulatedPump : public EventPump {
public:
    // So many points in a row with nothing pending and nothing arriving are a hang.
    static constexpr int kIdlePoints = 10'000;

    // Clock and record outlive the pump.
    SimulatedPump(SimulatedClock& clock, const CallRecord& record) : clock_(clock), record_(record) {}

    // Throws SimulatedHang at the last of kIdlePoints idle points.
    void DoEvents() override;
    void Wait(double milliseconds) override;

    // Something arrived, or a new handler began: what waits now has reason to.
    void Stirred() { idlePoints_ = 0; }

    // Runs one pending event; false when there is none. Empty: nothing is ever pending.
    std::function<bool()> runPending;

private:
    SimulatedClock& clock_;
    const CallRecord& record_;
    int idlePoints_ = 0;
};

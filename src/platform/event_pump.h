// Port: the points at which a running handler lets pending events run.
#pragma once

// Called on the event thread alone.
struct EventPump {
    virtual ~EventPump() = default;

    // Hands every pending event to the jukebox, each inside a handler border of its own, and returns.
    // ProgramStop and ProgramEnd of a nested handler come through.
    virtual void DoEvents() = 0;
    // Lets pending events run until `milliseconds` have passed; at least one DoEvents, after the time has
    // moved.
    virtual void Wait(double milliseconds) = 0;
};

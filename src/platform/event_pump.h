// Port: the points at which a running handler processes pending events.
#pragma once

// Event thread only.
struct EventPump {
    virtual ~EventPump() = default;

    // Hands every pending event to the jukebox, each inside its own handler border, and returns. ProgramStop
    // and ProgramEnd of a nested handler pass through.
    virtual void DoEvents() = 0;
    // Processes pending events until `milliseconds` have passed. Calls DoEvents at least once, after the time
    // has moved.
    virtual void Wait(double milliseconds) = 0;
};

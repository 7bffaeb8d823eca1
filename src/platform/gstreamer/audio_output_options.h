// The settings of an always-running sound output.
#pragma once

#include <QByteArray>

#include <cstdint>

struct AudioOutputOptions {
    // What the sound sink holds ahead, and the length of one period, both in microseconds. Together they are
    // the time from a command to its effect in the loudspeaker.
    std::int64_t bufferTime = 60000;
    std::int64_t latencyTime = 10000;
    // The sinks: the one that is heard, and the one that keeps time while that one cannot be had.
    QByteArray sink = "autoaudiosink";
    QByteArray silentSink = "fakesink";
};

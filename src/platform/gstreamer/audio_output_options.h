// The settings of an always-running sound output.
#pragma once

#include <QByteArray>

#include <cstdint>

struct AudioOutputOptions {
    // The sink's buffer and the length of one period, both in microseconds. Their sum is the delay from a
    // command to its effect in the loudspeaker.
    std::int64_t bufferTime = 60000;
    std::int64_t latencyTime = 10000;
    // The audible sink, and the silent sink that keeps time while the audible one is not available.
    QByteArray sink = "autoaudiosink";
    QByteArray silentSink = "fakesink";
};

// Position, length and remaining time of the running track.
#pragma once

#include <QString>

#include <cstdint>

struct Form_Main;

// Position and length of the running track in seconds. ReadPlayTime also stores the audio position in
// TrackPositionSeconds.
struct PlayTime {
    double position = 0;
    double length = 0;
};
PlayTime ReadPlayTime(Form_Main& form);

// Empties the remaining time that is shown.
void ForgetRemain(Form_Main& form);

// Format whole minutes, ":" and the remaining seconds, each with at least two digits. The heartbeat truncates
// the time to whole seconds first. The frame rounds the seconds, so 59.7 reads "00:60" there.
QString RemainOfHeartbeat(double seconds);
QString RemainOfFrame(double seconds);

// Returns the low 32 bits of a number of bytes.
// Deliberate D-30: the high word is dropped, so times beyond 6.7 hours of sound are wrong. One would expect
// all 64 bits; nobody plays such a track.
constexpr std::int64_t LowWord(std::int64_t bytes) {
    return static_cast<std::int64_t>(static_cast<std::uint32_t>(bytes));
}

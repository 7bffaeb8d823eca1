// A position that moves with the simulated time.
#pragma once

#include <cstdint>

class SimulatedClock;

// What a position does at its end.
enum class AtEnd { kWraps, kStands };

// A position inside a length, counted in units of which `unitsPerSecond` pass in a second while it runs. It
// never loses a part of a unit, however often it is read.
class PlayHead {
public:
    // The clock outlives the head. A length below 1 counts as 1.
    PlayHead(const SimulatedClock& clock, std::int64_t unitsPerSecond, std::int64_t length, AtEnd atEnd);

    std::int64_t Length() const { return length_; }
    bool Running() const { return running_; }
    // 0 to length - 1, or to length for a head that stands at its end.
    std::int64_t Position() const;

    void Run();
    // Stays where it is.
    void Halt();
    // A position outside is moved to the nearer end.
    void MoveTo(std::int64_t position);

private:
    std::int64_t Bounded(std::int64_t position) const;
    void Settle();

    const SimulatedClock* clock_;
    std::int64_t unitsPerSecond_;
    std::int64_t length_;
    AtEnd atEnd_;
    bool running_ = false;
    // Where it stood, in units and millionths of a unit, and when.
    std::int64_t base_ = 0;
    std::int64_t millionths_ = 0;
    std::int64_t since_ = 0;
};

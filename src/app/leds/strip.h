// The LED strip at the end of the wire.
#pragma once

#include "app/leds/message.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <vector>

using Time = std::chrono::steady_clock::time_point;

enum class StripMode { kUnknown, kFreeRunning, kNormal };

// Shows a frame when its last message has come. In free-running mode it shows a rainbow that wanders.
class Strip {
public:
    void Take(const Message& message, Time now);

    StripMode Mode() const { return mode_; }
    // The LEDs as they shine now. As many as have been named so far, 256 at most.
    std::vector<Colour> Shown(Time now) const;
    // Frames of the last two seconds, per second.
    double Rate(Time now) const;
    // The longest time between two frames without a command between them, in milliseconds.
    double LongestGap() const { return longestGap_; }

private:
    void ShowFrame(Time now);

    StripMode mode_ = StripMode::kUnknown;
    std::vector<Colour> coming_;
    std::vector<Colour> shown_;
    std::deque<Time> frames_;
    bool isFirst_ = true;
    double longestGap_ = 0;
};

// "normal", "free running", "unknown".
const char* NameOf(StripMode mode);

// Judging what the jukebox sends: the order of the commands and of the colours.
#pragma once

#include "app/leds/message.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// The jukebox sends "AT+R-0" before the first frame and again before each track, and "AT+R-1" at a video and
// at its end. A frame has one colour for each LED: 0, 1, 2, ... on a plain strip, 0, h, 1, h + 1, ... on a
// strip of two halves of h LEDs, all of them modulo 256. Only its last message has the mark 00. Commands may
// come inside a frame, which then continues. A frame that has not ended may be left only by closing the wire
// after "AT+R-1".
class Judge {
public:
    // `sawStart`: the wire was watched from its opening, so a frame before the first command is a fault.
    explicit Judge(bool sawStart) : normal_(!sawStart) {}

    // Takes the next message; returns what is wrong with it.
    std::optional<std::string> Take(const Message& message);
    // The jukebox has closed the wire. Returns what is wrong.
    std::optional<std::string> Close();

    // Frames that were complete and in order.
    std::uint64_t Frames() const { return frames_; }
    // LEDs of the last complete frame.
    std::size_t FrameSize() const { return frameSize_; }

private:
    std::optional<std::string> TakeColour(const ColourMessage& message);
    bool IsPlain() const;
    bool IsStereo() const;

    // The LEDs of the frame that has begun.
    std::vector<int> frame_;
    bool isPlain_ = true;
    bool isStereo_ = true;
    bool normal_;
    bool freed_ = false;
    std::uint64_t frames_ = 0;
    std::size_t frameSize_ = 0;
};

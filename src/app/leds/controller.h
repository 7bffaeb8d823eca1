// The answers of an LED controller, good and bad.
#pragma once

#include "app/leds/message.h"

#include <chrono>
#include <deque>
#include <string>

// How the controller answers "AT+R-0". It answers nothing else.
struct Manners {
    bool isSilent = false;
    // A carriage return before each line feed, which the jukebox does not accept.
    bool carriageReturns = false;
    std::chrono::milliseconds delay{0};
};

class Controller {
public:
    using Time = std::chrono::steady_clock::time_point;

    explicit Controller(Manners manners) : manners_(manners) {}

    void Take(const Message& message, Time now);
    // The bytes of the answers that are due.
    std::string Due(Time now);

private:
    Manners manners_;
    std::deque<Time> answers_;
};

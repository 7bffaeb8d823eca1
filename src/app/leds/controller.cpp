// The answers of an LED controller, good and bad.
#include "app/leds/controller.h"

namespace {

// A jukebox that gets no answer repeats its command without end.
constexpr std::size_t kMostAnswers = 1000;

} // namespace

void Controller::Take(const Message& message, Time now) {
    const auto* command = std::get_if<Command>(&message);
    const bool isAnswered = command != nullptr && *command == Command::kNormal && !manners_.isSilent;
    if (isAnswered && answers_.size() < kMostAnswers) {
        answers_.push_back(now + manners_.delay);
    }
}

std::string Controller::Due(Time now) {
    std::string bytes;
    while (!answers_.empty() && answers_.front() <= now) {
        answers_.pop_front();
        bytes += manners_.carriageReturns ? "Mode Normal\r\nOK\r\n" : "Mode Normal\nOK\n";
    }
    return bytes;
}

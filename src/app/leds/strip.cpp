// The LED strip at the end of the wire.
#include "app/leds/strip.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr std::chrono::seconds kRateTime{2};
// One turn of the rainbow.
constexpr double kTurnSeconds = 6;

std::uint8_t Channel(double turn) {
    const double value = 127 + 127 * std::cos(2 * 3.14159265358979323846 * turn);
    return static_cast<std::uint8_t>(value);
}

} // namespace

void Strip::Take(const Message& message, Time now) {
    if (const auto* command = std::get_if<Command>(&message)) {
        if (*command == Command::kNormal || *command == Command::kFreeRunning) {
            mode_ = *command == Command::kNormal ? StripMode::kNormal : StripMode::kFreeRunning;
            isFirst_ = true;
        }
        return;
    }
    const auto* colour = std::get_if<ColourMessage>(&message);
    if (colour == nullptr) {
        return;
    }
    const auto at = static_cast<std::size_t>(colour->led);
    coming_.resize(std::max(coming_.size(), at + 1));
    coming_[at] = colour->colour;
    if (colour->isLast) {
        ShowFrame(now);
    }
}

void Strip::ShowFrame(Time now) {
    if (!isFirst_ && !frames_.empty()) {
        const std::chrono::duration<double, std::milli> gap = now - frames_.back();
        longestGap_ = std::max(longestGap_, gap.count());
    }
    isFirst_ = false;
    shown_ = coming_;
    frames_.push_back(now);
    while (now - frames_.front() > kRateTime) {
        frames_.pop_front();
    }
}

std::vector<Colour> Strip::Shown(Time now) const {
    if (mode_ != StripMode::kFreeRunning) {
        return shown_;
    }
    std::vector<Colour> rainbow(shown_.size());
    const double start = std::chrono::duration<double>(now.time_since_epoch()).count() / kTurnSeconds;
    for (std::size_t i = 0; i < rainbow.size(); ++i) {
        const double turn = start + static_cast<double>(i) / static_cast<double>(rainbow.size());
        rainbow[i] = {Channel(turn), Channel(turn + 1.0 / 3), Channel(turn + 2.0 / 3)};
    }
    return rainbow;
}

double Strip::Rate(Time now) const {
    const auto recent =
        std::count_if(frames_.begin(), frames_.end(), [&](Time frame) { return now - frame <= kRateTime; });
    return static_cast<double>(recent) / static_cast<double>(kRateTime.count());
}

const char* NameOf(StripMode mode) {
    switch (mode) {
    case StripMode::kFreeRunning:
        return "free running";
    case StripMode::kNormal:
        return "normal";
    case StripMode::kUnknown:
        break;
    }
    return "unknown";
}

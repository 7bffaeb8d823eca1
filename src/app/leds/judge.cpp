// Judging what the jukebox sends: the order of the commands and of the colours.
#include "app/leds/judge.h"

namespace {

// LEDs have two hexadecimal digits.
constexpr int kLeds = 256;
// Each LED has a band, and there are 1024 bands at most; two LEDs of a stereo strip share one.
constexpr std::size_t kLongestFrame = 2048;

} // namespace

std::optional<std::string> Judge::Take(const Message& message) {
    if (const auto* refusal = std::get_if<Refusal>(&message)) {
        return refusal->reason;
    }
    if (const auto* colour = std::get_if<ColourMessage>(&message)) {
        return TakeColour(*colour);
    }
    const Command command = std::get<Command>(message);
    if (command == Command::kNormal || command == Command::kFreeRunning) {
        normal_ = command == Command::kNormal;
        freed_ = !normal_;
    }
    return std::nullopt;
}

std::optional<std::string> Judge::TakeColour(const ColourMessage& message) {
    if (frame_.empty() && !normal_) {
        return "a frame begins outside normal mode";
    }
    if (frame_.empty()) {
        isPlain_ = isStereo_ = true;
    }
    frame_.push_back(message.led);
    isPlain_ = isPlain_ && IsPlain();
    isStereo_ = isStereo_ && IsStereo();
    if (!isPlain_ && !isStereo_) {
        const std::string fault = "LED " + std::to_string(message.led) + " is out of order, as message " +
                                  std::to_string(frame_.size()) + " of its frame";
        frame_.clear();
        return fault;
    }
    if (frame_.size() > kLongestFrame) {
        frame_.clear();
        return "a frame does not end";
    }
    if (!message.isLast) {
        return std::nullopt;
    }
    const bool isWhole =
        isPlain_ || (frame_.size() % 2 == 0 && static_cast<int>(frame_.size() / 2) % kLeds == frame_[1]);
    frameSize_ = frame_.size();
    frame_.clear();
    if (!isWhole) {
        return "a frame of two halves ends too early or too late";
    }
    ++frames_;
    return std::nullopt;
}

// Whether the last LED is where a plain strip has it.
bool Judge::IsPlain() const {
    return frame_.back() == static_cast<int>((frame_.size() - 1) % kLeds);
}

// Whether the last LED is where a strip of two halves has it; the second message says how long a half is.
bool Judge::IsStereo() const {
    const auto at = static_cast<int>(frame_.size() - 1);
    const int half = at % 2 == 0 ? 0 : frame_[1];
    return frame_.back() == (at / 2 + half) % kLeds;
}

std::optional<std::string> Judge::Close() {
    const bool isTorn = !frame_.empty() && !freed_;
    frame_.clear();
    normal_ = freed_ = false;
    return isTorn ? std::optional<std::string>("the wire was closed inside a frame") : std::nullopt;
}

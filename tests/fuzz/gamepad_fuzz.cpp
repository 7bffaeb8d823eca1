// Fuzzer of gamepads: any device with any events presses and releases keys in turns.
#include "platform/evdev/gamepad_keys.h"
#include "platform/evdev/held_keys.h"
#include "run_files.h"

#include <cstdlib>
#include <cstring>

namespace {

// Hands out the fuzzer's data as numbers; zeros after its end.
class Numbers {
public:
    Numbers(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

    bool IsEmpty() const { return size_ == 0; }
    template <typename T>
    T Next() {
        T number = 0;
        const std::size_t length = std::min(sizeof(number), size_);
        std::memcpy(&number, data_, length);
        data_ += length;
        size_ -= length;
        return number;
    }

private:
    const std::uint8_t* data_;
    std::size_t size_;
};

GamepadParts PartsFrom(Numbers& numbers) {
    GamepadParts parts;
    const int buttons = numbers.Next<std::uint8_t>();
    const int axes = numbers.Next<std::uint8_t>() % 32;
    for (int i = 0; i < buttons; ++i) {
        parts.buttons.push_back(numbers.Next<std::int16_t>());
    }
    for (int i = 0; i < axes; ++i) {
        const int code = numbers.Next<std::uint8_t>();
        const int minimum = numbers.Next<std::int32_t>();
        parts.axes.push_back({code, minimum, numbers.Next<std::int32_t>()});
    }
    return parts;
}

void Expect(bool condition) {
    if (!condition) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Numbers numbers(data, size);
    GamepadKeys keys(PartsFrom(numbers));
    HeldKeys held;
    std::map<int, int> down;
    std::int64_t now = 0;
    const auto take = [&](const std::vector<GamepadKey>& changes) {
        for (const GamepadKey& change : changes) {
            Expect(change.code >= 195 && change.code <= 218);
            down[change.code] += change.isDown ? 1 : -1;
            Expect(down[change.code] >= 0);
            held.Take(change, now);
        }
    };
    while (!numbers.IsEmpty()) {
        now += numbers.Next<std::uint8_t>();
        const unsigned type = numbers.Next<std::uint8_t>() % 4U;
        const unsigned code = numbers.Next<std::uint16_t>();
        take(keys.Take(type, code, numbers.Next<std::int32_t>()));
        if (const std::optional<int> repeated = held.TakeRepeat(now)) {
            Expect(down[*repeated] > 0);
        }
    }
    take(keys.ReleaseAll());
    Expect(!held.NextRepeat());
    for (const auto& [code, times] : down) {
        Expect(times == 0);
    }
    return 0;
}

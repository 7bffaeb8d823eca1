// The keys of all gamepads together: presses, bouncing contacts, repeats.
#pragma once

#include "platform/evdev/gamepad_keys.h"

#include <cstdint>
#include <map>
#include <optional>

// Several gamepads act as one. As on a keyboard, the key that was pressed last repeats while it is held:
// first after 500 milliseconds, then every 33. Times are milliseconds of a clock that never jumps.
class HeldKeys {
public:
    // Returns whether the change counts as a press. A press within 15 milliseconds of the release of the same
    // key does not: the contact has bounced.
    bool Take(const GamepadKey& change, std::int64_t now);
    // The code of the key whose repeat is due, if there is one. Repeats that were missed are left out.
    std::optional<int> TakeRepeat(std::int64_t now);
    // When the next repeat is due; nothing while no key repeats.
    std::optional<std::int64_t> NextRepeat() const;

private:
    struct Held {
        // How many inputs hold the key.
        int times = 0;
        std::optional<std::int64_t> released;
    };

    std::map<int, Held> held_;
    int repeating_ = 0;
    std::int64_t nextRepeat_ = 0;
};

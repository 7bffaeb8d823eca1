// Assigning virtual-key codes to the inputs of a gamepad, and translating its events.
#include "platform/evdev/gamepad_keys.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <linux/input-event-codes.h>

namespace {

// The virtual-key codes of gamepads.
enum Key : int {
    kA = 195,
    kB,
    kX,
    kY,
    kRightShoulder,
    kLeftShoulder,
    kLeftTrigger,
    kRightTrigger,
    kUp,
    kDown,
    kLeft,
    kRight,
    kMenu,
    kView,
    kLeftStickButton,
    kRightStickButton,
    kLeftStickUp,
    kLeftStickDown,
    kLeftStickRight,
    kLeftStickLeft,
    kRightStickUp,
    kRightStickDown,
    kRightStickRight,
    kRightStickLeft
};
static_assert(kRightStickLeft == 218);

struct NamedButton {
    int code;
    Key key;
};

constexpr std::array kDirectionButtons = {
    NamedButton{BTN_DPAD_UP, kUp},
    NamedButton{BTN_DPAD_DOWN, kDown},
    NamedButton{BTN_DPAD_LEFT, kLeft},
    NamedButton{BTN_DPAD_RIGHT, kRight},
};

constexpr std::array kNamedButtons = {
    NamedButton{BTN_A, kA},
    NamedButton{BTN_B, kB},
    NamedButton{BTN_X, kX},
    NamedButton{BTN_Y, kY},
    NamedButton{BTN_TL, kLeftShoulder},
    NamedButton{BTN_TR, kRightShoulder},
    NamedButton{BTN_TL2, kLeftTrigger},
    NamedButton{BTN_TR2, kRightTrigger},
    NamedButton{BTN_SELECT, kView},
    NamedButton{BTN_START, kMenu},
    NamedButton{BTN_THUMBL, kLeftStickButton},
    NamedButton{BTN_THUMBR, kRightStickButton},
};

// How Xbox pads without a hat report their directions.
constexpr std::array kDirectionButtonsOfXbox = {
    NamedButton{BTN_TRIGGER_HAPPY1, kLeft},
    NamedButton{BTN_TRIGGER_HAPPY2, kRight},
    NamedButton{BTN_TRIGGER_HAPPY3, kUp},
    NamedButton{BTN_TRIGGER_HAPPY4, kDown},
};

// The keys of numbered buttons in their order, which is that of the labels on most encoder boards.
constexpr std::array kNumberedKeys = {kA,
                                      kB,
                                      kX,
                                      kY,
                                      kLeftShoulder,
                                      kRightShoulder,
                                      kLeftTrigger,
                                      kRightTrigger,
                                      kView,
                                      kMenu,
                                      kLeftStickButton,
                                      kRightStickButton};

// The keys of further buttons, as far as the device's own directions do not use them.
constexpr std::array kFurtherKeys = {kUp,           kDown,           kLeft,           kRight,
                                     kLeftStickUp,  kLeftStickDown,  kLeftStickLeft,  kLeftStickRight,
                                     kRightStickUp, kRightStickDown, kRightStickLeft, kRightStickRight};

bool Contains(const std::vector<int>& codes, int code) {
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}

bool IsDirection(int code) {
    return code >= BTN_DPAD_UP && code <= BTN_DPAD_RIGHT;
}

bool IsHat(int code) {
    return code >= ABS_HAT0X && code <= ABS_HAT3Y;
}

// A device with all the buttons from BTN_A to BTN_Z numbers them. Only the ones that real pads have are
// named.
bool HasNames(const std::vector<int>& buttons) {
    return Contains(buttons, BTN_SOUTH) && !Contains(buttons, BTN_C) && !Contains(buttons, BTN_Z);
}

} // namespace

GamepadKeys::GamepadKeys(const GamepadParts& parts) {
    const bool hasHat = std::any_of(parts.axes.begin(), parts.axes.end(),
                                    [](const GamepadAxis& axis) { return IsHat(axis.code); });
    if (HasNames(parts.buttons)) {
        AddNamedButtons(parts.buttons, hasHat);
        AddAxes(parts.axes);
    } else {
        AddNumberedButtons(parts.buttons);
        AddAxes(parts.axes);
        AddRemainingButtons(parts.buttons);
    }
    buttonsWithoutKey_ = static_cast<int>(parts.buttons.size() - buttons_.size());
}

void GamepadKeys::AddNamedButtons(const std::vector<int>& codes, bool hasHat) {
    const auto add = [&](const auto& table) {
        for (const NamedButton& button : table) {
            if (Contains(codes, button.code)) {
                buttons_[static_cast<unsigned>(button.code)] = {button.key};
            }
        }
    };
    add(kNamedButtons);
    add(kDirectionButtons);
    if (!hasHat && !Contains(codes, BTN_DPAD_UP)) {
        add(kDirectionButtonsOfXbox);
    }
}

void GamepadKeys::AddNumberedButtons(const std::vector<int>& codes) {
    std::size_t next = 0;
    for (const int code : codes) {
        if (IsDirection(code)) {
            const NamedButton& direction = kDirectionButtons.at(static_cast<std::size_t>(code - BTN_DPAD_UP));
            buttons_[static_cast<unsigned>(code)] = {direction.key};
        } else if (next < kNumberedKeys.size()) {
            buttons_[static_cast<unsigned>(code)] = {kNumberedKeys.at(next++)};
        }
    }
}

void GamepadKeys::AddRemainingButtons(const std::vector<int>& codes) {
    std::size_t next = 0;
    for (const int code : codes) {
        if (buttons_.contains(static_cast<unsigned>(code))) {
            continue;
        }
        while (next < kFurtherKeys.size() && HasKey(kFurtherKeys.at(next))) {
            ++next;
        }
        if (next == kFurtherKeys.size()) {
            return;
        }
        buttons_[static_cast<unsigned>(code)] = {kFurtherKeys.at(next)};
    }
}

// A pad with ABS_RX has its right stick there, and triggers on ABS_Z and ABS_RZ. Without it, ABS_Z and ABS_RZ
// are the right stick.
void GamepadKeys::AddAxes(const std::vector<GamepadAxis>& axes) {
    const bool hasSecondStick =
        std::any_of(axes.begin(), axes.end(), [](const GamepadAxis& axis) { return axis.code == ABS_RX; });
    for (const GamepadAxis& axis : axes) {
        if (IsHat(axis.code)) {
            const bool isAcross = (axis.code - ABS_HAT0X) % 2 == 0;
            AddAxis(axis, false, isAcross ? kLeft : kUp, isAcross ? kRight : kDown);
        } else if (axis.code == ABS_X) {
            AddAxis(axis, false, kLeftStickLeft, kLeftStickRight);
        } else if (axis.code == ABS_Y) {
            AddAxis(axis, false, kLeftStickUp, kLeftStickDown);
        } else if (axis.code == ABS_RX || (axis.code == ABS_Z && !hasSecondStick)) {
            AddAxis(axis, false, kRightStickLeft, kRightStickRight);
        } else if (axis.code == ABS_RY || (axis.code == ABS_RZ && !hasSecondStick)) {
            AddAxis(axis, false, kRightStickUp, kRightStickDown);
        } else if (axis.code == ABS_Z || axis.code == ABS_BRAKE) {
            AddAxis(axis, true, 0, kLeftTrigger);
        } else if (axis.code == ABS_RZ || axis.code == ABS_GAS) {
            AddAxis(axis, true, 0, kRightTrigger);
        }
    }
}

// A stick needs three positions at least, or it would have no middle.
void GamepadKeys::AddAxis(const GamepadAxis& axis, bool restsAtMinimum, int lowKey, int highKey) {
    const auto isFree = [this](int key) {
        return std::none_of(buttons_.begin(), buttons_.end(),
                            [key](const auto& button) { return button.second.key == key; });
    };
    Axis added{.minimum = axis.minimum,
               .maximum = axis.maximum,
               .restsAtMinimum = restsAtMinimum,
               .lowKey = isFree(lowKey) ? lowKey : 0,
               .highKey = isFree(highKey) ? highKey : 0};
    if (added.maximum - added.minimum >= (restsAtMinimum ? 1 : 2)) {
        axes_[static_cast<unsigned>(axis.code)] = added;
    }
}

bool GamepadKeys::HasKey(int key) const {
    return std::any_of(buttons_.begin(), buttons_.end(),
                       [key](const auto& button) { return button.second.key == key; }) ||
           std::any_of(axes_.begin(), axes_.end(), [key](const auto& axis) {
               return axis.second.lowKey == key || axis.second.highKey == key;
           });
}

int GamepadKeys::DirectionOf(const Axis& axis, int value) {
    const std::int64_t span = axis.maximum - axis.minimum;
    const std::int64_t inRange = std::clamp<std::int64_t>(value, axis.minimum, axis.maximum);
    // Between -span and span for a stick, between 0 and span for a trigger.
    const std::int64_t way =
        axis.restsAtMinimum ? inRange - axis.minimum : 2 * inRange - axis.minimum - axis.maximum;
    const auto isBeyond = [&](std::int64_t length, int direction) {
        return 10 * length >= (axis.direction == direction ? 4 : 6) * span;
    };
    if (isBeyond(way, 1)) {
        return 1;
    }
    return isBeyond(-way, -1) ? -1 : 0;
}

void GamepadKeys::Turn(Axis& axis, int direction, std::vector<GamepadKey>& changes) {
    const auto add = [&](int of, bool isDown) {
        const int key = of < 0 ? axis.lowKey : axis.highKey;
        if (of != 0 && key != 0) {
            changes.push_back({key, isDown});
        }
    };
    if (direction != axis.direction) {
        add(axis.direction, false);
        add(direction, true);
        axis.direction = direction;
    }
}

std::vector<GamepadKey> GamepadKeys::Take(unsigned type, unsigned code, int value) {
    std::vector<GamepadKey> changes;
    if (type == EV_KEY) {
        const auto found = buttons_.find(code);
        // 2 is the system's own repeat.
        if (found != buttons_.end() && value != 2 && found->second.isDown != (value != 0)) {
            found->second.isDown = value != 0;
            changes.push_back({found->second.key, value != 0});
        }
    } else if (type == EV_ABS) {
        const auto found = axes_.find(code);
        if (found != axes_.end()) {
            Turn(found->second, DirectionOf(found->second, value), changes);
        }
    }
    return changes;
}

std::vector<GamepadKey> GamepadKeys::ReleaseAll() {
    std::vector<GamepadKey> changes;
    for (auto& [code, button] : buttons_) {
        if (button.isDown) {
            button.isDown = false;
            changes.push_back({button.key, false});
        }
    }
    for (auto& [code, axis] : axes_) {
        Turn(axis, 0, changes);
    }
    return changes;
}

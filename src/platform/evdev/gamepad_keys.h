// Gamepads as keys: from the inputs of one device to virtual-key codes.
#pragma once

#include <cstdint>
#include <map>
#include <vector>

// An absolute axis and its range as the device reports it.
struct GamepadAxis {
    int code = 0;
    int minimum = 0;
    int maximum = 0;
};

// The inputs of a device, by the system's event codes (linux/input-event-codes.h), in ascending order.
struct GamepadParts {
    std::vector<int> buttons;
    std::vector<GamepadAxis> axes;
};

// A change of one key. The codes are 195 to 218, the numbers that Windows has for gamepads.
struct GamepadKey {
    int code = 0;
    bool isDown = false;
    bool operator==(const GamepadKey&) const = default;
};

// Translates the events of one device. What is held when the object is made counts as released.
//
// Buttons have fixed codes on a device whose buttons have names, such as those of an Xbox or PlayStation pad.
// On any other device, which includes most arcade encoders, they are numbered: the first one is "A". An axis
// direction is pressed at 60 percent of its way and released at 40 percent. If a button and an axis have the
// same code, the axis is not used: many pads report a trigger as both.
class GamepadKeys {
public:
    explicit GamepadKeys(const GamepadParts& parts);

    // The keys that an event changes: none, one, or a release and a press for an axis that jumps from one end
    // to the other. Accepts any numbers.
    std::vector<GamepadKey> Take(unsigned type, unsigned code, int value);
    // Releases every key that is held, for a device that is gone.
    std::vector<GamepadKey> ReleaseAll();

    // The number of buttons that have no key, because a device has more inputs than there are codes.
    int ButtonsWithoutKey() const { return buttonsWithoutKey_; }

private:
    struct Button {
        int key = 0;
        bool isDown = false;
    };
    struct Axis {
        std::int64_t minimum = 0;
        std::int64_t maximum = 0;
        bool restsAtMinimum = false;
        // The keys of the two directions; 0 for none.
        int lowKey = 0;
        int highKey = 0;
        // -1, 0 or 1.
        int direction = 0;
    };

    void AddNamedButtons(const std::vector<int>& codes, bool hasHat);
    void AddNumberedButtons(const std::vector<int>& codes);
    void AddRemainingButtons(const std::vector<int>& codes);
    void AddAxes(const std::vector<GamepadAxis>& axes);
    void AddAxis(const GamepadAxis& axis, bool restsAtMinimum, int lowKey, int highKey);
    bool HasKey(int key) const;
    static int DirectionOf(const Axis& axis, int value);
    static void Turn(Axis& axis, int direction, std::vector<GamepadKey>& changes);

    std::map<unsigned, Button> buttons_;
    std::map<unsigned, Axis> axes_;
    int buttonsWithoutKey_ = 0;
};

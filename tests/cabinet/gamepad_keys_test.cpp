// Tests of gamepads as keys: which input becomes which code, thresholds, and repeats.
#include "platform/evdev/gamepad_keys.h"

#include "platform/evdev/evdev_device.h"
#include "platform/evdev/held_keys.h"

#include <gtest/gtest.h>
#include <libevdev/libevdev.h>

#include <limits>
#include <linux/input.h>
#include <numeric>
#include <random>

namespace {

struct Event {
    unsigned type;
    unsigned code;
    int value;
};

// The inputs of devices as their drivers report them.
const GamepadParts kXboxPad = {.buttons = {BTN_SOUTH, BTN_EAST, BTN_NORTH, BTN_WEST, BTN_TL, BTN_TR,
                                           BTN_SELECT, BTN_START, BTN_MODE, BTN_THUMBL, BTN_THUMBR},
                               .axes = {{ABS_X, -32768, 32767},
                                        {ABS_Y, -32768, 32767},
                                        {ABS_Z, 0, 255},
                                        {ABS_RX, -32768, 32767},
                                        {ABS_RY, -32768, 32767},
                                        {ABS_RZ, 0, 255},
                                        {ABS_HAT0X, -1, 1},
                                        {ABS_HAT0Y, -1, 1}}};

const GamepadParts kPlayStationPad = {.buttons = {BTN_SOUTH, BTN_EAST, BTN_NORTH, BTN_WEST, BTN_TL, BTN_TR,
                                                  BTN_TL2, BTN_TR2, BTN_SELECT, BTN_START, BTN_MODE,
                                                  BTN_THUMBL, BTN_THUMBR},
                                      .axes = kXboxPad.axes};

std::vector<int> Numbers(int first, int count) {
    std::vector<int> numbers(static_cast<std::size_t>(count));
    std::iota(numbers.begin(), numbers.end(), first);
    return numbers;
}

// An encoder board with twelve buttons and a joystick of four switches.
GamepadParts Encoder() {
    return {.buttons = Numbers(BTN_TRIGGER, 12),
            .axes = {{ABS_X, 0, 255},
                     {ABS_Y, 0, 255},
                     {ABS_Z, 0, 255},
                     {ABS_RZ, 0, 255},
                     {ABS_HAT0X, -1, 1},
                     {ABS_HAT0Y, -1, 1}}};
}

// The codes that are pressed, and negative ones for those released.
std::vector<int> Replay(GamepadKeys& keys, const std::vector<Event>& events) {
    std::vector<int> codes;
    for (const Event& event : events) {
        for (const GamepadKey& change : keys.Take(event.type, event.code, event.value)) {
            codes.push_back(change.isDown ? change.code : -change.code);
        }
    }
    return codes;
}

// The code of each button, in their order; 0 for none.
std::vector<int> CodesOf(const GamepadParts& parts) {
    GamepadKeys keys(parts);
    std::vector<int> codes;
    for (const int button : parts.buttons) {
        const auto changes = keys.Take(EV_KEY, static_cast<unsigned>(button), 1);
        codes.push_back(changes.empty() ? 0 : changes.front().code);
    }
    return codes;
}

using Codes = std::vector<int>;

} // namespace

TEST(GamepadKeysTest, TheButtonsOfAnXboxPadHaveTheirCodes) {
    EXPECT_EQ(CodesOf(kXboxPad), (Codes{195, 196, 197, 198, 200, 199, 208, 207, 0, 209, 210}));
    EXPECT_EQ(GamepadKeys(kXboxPad).ButtonsWithoutKey(), 1);
}

TEST(GamepadKeysTest, SticksHatAndTriggersOfAnXboxPadHaveTheirCodes) {
    GamepadKeys keys(kXboxPad);
    EXPECT_EQ(Replay(keys, {{EV_ABS, ABS_HAT0Y, -1},
                            {EV_ABS, ABS_HAT0Y, 1},
                            {EV_ABS, ABS_HAT0X, -1},
                            {EV_ABS, ABS_HAT0X, 1}}),
              (Codes{203, -203, 204, 205, -205, 206}));
    EXPECT_EQ(Replay(keys, {{EV_ABS, ABS_Y, -32768},
                            {EV_ABS, ABS_Y, 32767},
                            {EV_ABS, ABS_X, 32767},
                            {EV_ABS, ABS_X, -32768}}),
              (Codes{211, -211, 212, 213, -213, 214}));
    EXPECT_EQ(Replay(keys, {{EV_ABS, ABS_RY, -32768},
                            {EV_ABS, ABS_RY, 32767},
                            {EV_ABS, ABS_RX, 32767},
                            {EV_ABS, ABS_RX, -32768}}),
              (Codes{215, -215, 216, 217, -217, 218}));
    EXPECT_EQ(Replay(keys, {{EV_ABS, ABS_Z, 255}, {EV_ABS, ABS_Z, 0}, {EV_ABS, ABS_RZ, 255}}),
              (Codes{201, -201, 202}));
}

TEST(GamepadKeysTest, ATriggerThatIsAlsoAButtonIsOneKey) {
    GamepadKeys keys(kPlayStationPad);
    EXPECT_EQ(Replay(keys, {{EV_ABS, ABS_Z, 10},
                            {EV_KEY, BTN_TL2, 1},
                            {EV_ABS, ABS_Z, 255},
                            {EV_ABS, ABS_Z, 0},
                            {EV_KEY, BTN_TL2, 0}}),
              (Codes{201, -201}));
}

TEST(GamepadKeysTest, TheButtonsOfAnEncoderAreNumbered) {
    EXPECT_EQ(CodesOf(Encoder()), (Codes{195, 196, 197, 198, 200, 199, 201, 202, 208, 207, 209, 210}));
    GamepadKeys keys(Encoder());
    EXPECT_EQ(Replay(keys, {{EV_ABS, ABS_X, 0}, {EV_ABS, ABS_X, 127}, {EV_ABS, ABS_Y, 255}}),
              (Codes{214, -214, 212}));
    EXPECT_EQ(Replay(keys, {{EV_ABS, ABS_Z, 255}, {EV_ABS, ABS_RZ, 0}}), (Codes{217, 215}));
}

TEST(GamepadKeysTest, APadWithNumberedButtonsIsNotTakenForOneWithNames) {
    EXPECT_EQ(CodesOf({.buttons = Numbers(BTN_SOUTH, 10), .axes = {}}),
              (Codes{195, 196, 197, 198, 200, 199, 201, 202, 208, 207}));
}

TEST(GamepadKeysTest, FurtherButtonsGetTheCodesThatTheDirectionsDoNotUse) {
    GamepadParts parts = Encoder();
    parts.buttons = Numbers(BTN_TRIGGER, 16);
    parts.axes = {{ABS_X, 0, 255}, {ABS_Y, 0, 255}};
    const Codes all = CodesOf(parts);
    EXPECT_EQ(Codes(all.begin() + 12, all.end()), (Codes{203, 204, 205, 206}));
    parts.axes = Encoder().axes;
    EXPECT_EQ(GamepadKeys(parts).ButtonsWithoutKey(), 4) << "all directions are used";
    Codes buttons = Numbers(BTN_TRIGGER, 16);
    const Codes more = Numbers(BTN_TRIGGER_HAPPY1, 12);
    buttons.insert(buttons.end(), more.begin(), more.end());
    Codes codes = CodesOf({.buttons = buttons, .axes = {}});
    EXPECT_EQ(Codes(codes.end() - 4, codes.end()), (Codes{0, 0, 0, 0}));
    codes.resize(24);
    std::sort(codes.begin(), codes.end());
    EXPECT_EQ(codes, Numbers(195, 24)) << "every code once";
}

TEST(GamepadKeysTest, AnAxisIsPressedAndReleasedAtDifferentPlaces) {
    GamepadKeys keys({.buttons = {BTN_TRIGGER}, .axes = {{ABS_X, -100, 100}}});
    EXPECT_EQ(Replay(keys, {{EV_ABS, ABS_X, 59}}), Codes{});
    EXPECT_EQ(Replay(keys, {{EV_ABS, ABS_X, 60}, {EV_ABS, ABS_X, 41}, {EV_ABS, ABS_X, 100}}), Codes{213});
    EXPECT_EQ(Replay(keys, {{EV_ABS, ABS_X, 39}, {EV_ABS, ABS_X, 59}, {EV_ABS, ABS_X, -59}}), Codes{-213});
    EXPECT_EQ(Replay(keys, {{EV_ABS, ABS_X, -60}, {EV_ABS, ABS_X, 60}}), (Codes{214, -214, 213}))
        << "from one end to the other";
}

TEST(GamepadKeysTest, ATriggerIsPressedAndReleasedAtDifferentPlaces) {
    GamepadKeys keys({.buttons = {BTN_SOUTH}, .axes = {{ABS_GAS, 0, 1000}}});
    EXPECT_EQ(Replay(keys, {{EV_ABS, ABS_GAS, 500}, {EV_ABS, ABS_GAS, 599}}), Codes{});
    EXPECT_EQ(Replay(keys, {{EV_ABS, ABS_GAS, 600}, {EV_ABS, ABS_GAS, 401}}), Codes{202});
    EXPECT_EQ(Replay(keys, {{EV_ABS, ABS_GAS, 399}, {EV_ABS, ABS_GAS, 0}}), Codes{-202});
}

TEST(GamepadKeysTest, ANoisyAxisAtItsThresholdPressesOnce) {
    GamepadKeys keys({.buttons = {BTN_TRIGGER}, .axes = {{ABS_X, 0, 255}}});
    std::vector<Event> noise;
    for (int i = 0; i < 8000; ++i) {
        noise.push_back({EV_ABS, ABS_X, 204 + (i % 2 == 0 ? 10 : -10)});
    }
    EXPECT_EQ(Replay(keys, noise), Codes{213});
}

TEST(GamepadKeysTest, AnAxisWithoutARangeIsNotUsed) {
    constexpr int kLeast = std::numeric_limits<int>::min();
    constexpr int kMost = std::numeric_limits<int>::max();
    GamepadKeys keys({.buttons = {BTN_TRIGGER},
                      .axes = {{ABS_X, 0, 0}, {ABS_Y, 5, -5}, {ABS_RX, 0, 1}, {ABS_RY, kLeast, kMost}}});
    EXPECT_EQ(Replay(keys, {{EV_ABS, ABS_X, 1}, {EV_ABS, ABS_Y, 5}, {EV_ABS, ABS_RX, 1}}), Codes{});
    EXPECT_EQ(Replay(keys, {{EV_ABS, ABS_RY, kMost}, {EV_ABS, ABS_RY, kLeast}, {EV_ABS, ABS_RY, 0}}),
              (Codes{216, -216, 215, -215}));
}

TEST(GamepadKeysTest, ADeviceThatIsGoneReleasesWhatItHeld) {
    GamepadKeys keys(kXboxPad);
    Replay(keys, {{EV_KEY, BTN_SOUTH, 1}, {EV_ABS, ABS_HAT0X, 1}});
    EXPECT_EQ(keys.ReleaseAll(), (std::vector<GamepadKey>{{195, false}, {206, false}}));
    EXPECT_TRUE(keys.ReleaseAll().empty());
}

TEST(GamepadKeysTest, RepeatsAndUnknownEventsChangeNothing) {
    GamepadKeys keys(kXboxPad);
    EXPECT_EQ(Replay(keys, {{EV_KEY, BTN_SOUTH, 2},
                            {EV_KEY, BTN_SOUTH, 0},
                            {EV_KEY, KEY_A, 1},
                            {EV_SYN, SYN_DROPPED, 0},
                            {EV_ABS, ABS_MISC, 7},
                            {0xffff, 0xffff, -1}}),
              Codes{});
    EXPECT_EQ(Replay(keys, {{EV_KEY, BTN_SOUTH, 1}, {EV_KEY, BTN_SOUTH, 1}, {EV_KEY, BTN_SOUTH, 2}}),
              Codes{195});
}

// Whatever a device has and sends: keys are pressed and released in turns, and only the known codes.
TEST(GamepadKeysTest, RandomDevicesAndEventsKeepTheRules) {
    std::mt19937 random(1);
    const auto below = [&](unsigned limit) { return static_cast<unsigned>(random() % limit); };
    for (int device = 0; device < 300; ++device) {
        GamepadParts parts;
        for (unsigned code = 0x100; code < KEY_CNT; ++code) {
            if (below(4) == 0) {
                parts.buttons.push_back(static_cast<int>(code));
            }
        }
        for (unsigned code = 0; code < ABS_CNT; ++code) {
            if (below(3) == 0) {
                parts.axes.push_back(
                    {static_cast<int>(code), static_cast<int>(random()), static_cast<int>(random())});
            }
        }
        GamepadKeys keys(parts);
        std::map<int, int> down;
        const auto note = [&](const std::vector<GamepadKey>& changes) {
            for (const GamepadKey& change : changes) {
                ASSERT_TRUE(change.code >= 195 && change.code <= 218) << change.code;
                down[change.code] += change.isDown ? 1 : -1;
                ASSERT_GE(down[change.code], 0);
            }
        };
        for (int i = 0; i < 2000; ++i) {
            note(keys.Take(below(5), below(KEY_CNT + 10),
                           static_cast<int>(below(2) == 0 ? random() : below(3))));
        }
        note(keys.ReleaseAll());
        for (const auto& [code, times] : down) {
            ASSERT_EQ(times, 0) << code;
        }
    }
}

TEST(HeldKeysTest, TheLastPressedKeyRepeatsUntilItIsReleased) {
    HeldKeys held;
    EXPECT_FALSE(held.NextRepeat());
    EXPECT_TRUE(held.Take({203, true}, 1000));
    EXPECT_EQ(held.NextRepeat(), 1500);
    EXPECT_FALSE(held.TakeRepeat(1499));
    EXPECT_EQ(held.TakeRepeat(1500), 203);
    EXPECT_EQ(held.TakeRepeat(1533), 203);
    EXPECT_TRUE(held.Take({195, true}, 1540));
    EXPECT_EQ(held.NextRepeat(), 2040);
    EXPECT_FALSE(held.Take({203, false}, 1600)) << "the key that does not repeat";
    EXPECT_EQ(held.TakeRepeat(2040), 195);
    EXPECT_FALSE(held.Take({195, false}, 2050));
    EXPECT_FALSE(held.NextRepeat());
    EXPECT_FALSE(held.TakeRepeat(9000));
}

TEST(HeldKeysTest, RepeatsThatWereMissedAreLeftOut) {
    HeldKeys held;
    held.Take({203, true}, 0);
    EXPECT_EQ(held.TakeRepeat(5000), 203);
    EXPECT_FALSE(held.TakeRepeat(5032));
    EXPECT_EQ(held.NextRepeat(), 5033);
}

TEST(HeldKeysTest, AContactThatBouncesIsPressedOnce) {
    HeldKeys held;
    EXPECT_TRUE(held.Take({195, true}, 100));
    held.Take({195, false}, 101);
    EXPECT_FALSE(held.Take({195, true}, 102));
    EXPECT_EQ(held.NextRepeat(), 602) << "it is held, and repeats";
    held.Take({195, false}, 300);
    EXPECT_FALSE(held.Take({195, true}, 314));
    held.Take({195, false}, 320);
    EXPECT_TRUE(held.Take({195, true}, 335));
    EXPECT_TRUE(held.Take({196, true}, 336)) << "another key";
}

TEST(HeldKeysTest, TwoGamepadsHoldOneKeyTogether) {
    HeldKeys held;
    EXPECT_TRUE(held.Take({203, true}, 0));
    EXPECT_TRUE(held.Take({203, true}, 100));
    held.Take({203, false}, 200);
    EXPECT_EQ(held.TakeRepeat(600), 203);
    held.Take({203, false}, 700);
    EXPECT_FALSE(held.NextRepeat());
}

namespace {

EvdevHandle Device(const std::vector<int>& buttons) {
    EvdevHandle device(libevdev_new());
    for (const int button : buttons) {
        libevdev_enable_event_code(device.get(), EV_KEY, static_cast<unsigned>(button), nullptr);
    }
    return device;
}

} // namespace

TEST(EvdevDeviceTest, OnlyTheInputsOfGamepadsCount) {
    const EvdevHandle device =
        Device({KEY_POWER, BTN_0, BTN_TRIGGER, BTN_SOUTH, BTN_DPAD_UP, BTN_TRIGGER_HAPPY40});
    const input_absinfo range = {0, -5, 9, 0, 0, 0};
    for (const unsigned axis : {ABS_X, ABS_THROTTLE, ABS_HAT3Y, ABS_VOLUME}) {
        libevdev_enable_event_code(device.get(), EV_ABS, axis, &range);
    }
    const GamepadParts parts = PartsOf(*device);
    EXPECT_EQ(parts.buttons, (Codes{BTN_0, BTN_TRIGGER, BTN_SOUTH, BTN_DPAD_UP, BTN_TRIGGER_HAPPY40}));
    ASSERT_EQ(parts.axes.size(), 2U);
    EXPECT_EQ(parts.axes[0].code, ABS_X);
    EXPECT_EQ(parts.axes[0].minimum, -5);
    EXPECT_EQ(parts.axes[0].maximum, 9);
    EXPECT_EQ(parts.axes[1].code, ABS_HAT3Y);
}

TEST(EvdevDeviceTest, WithoutUdevAGamepadIsKnownByItsInputs) {
    EXPECT_TRUE(LooksLikeGamepad(*Device({BTN_TRIGGER})));
    EXPECT_TRUE(LooksLikeGamepad(*Device({BTN_SOUTH, KEY_RECORD})));
    EXPECT_FALSE(LooksLikeGamepad(*Device({})));
    EXPECT_FALSE(LooksLikeGamepad(*Device({BTN_0})));
    EXPECT_FALSE(LooksLikeGamepad(*Device({BTN_TRIGGER, KEY_A}))) << "a keyboard";
    EXPECT_FALSE(LooksLikeGamepad(*Device({BTN_SOUTH, BTN_LEFT}))) << "a mouse";
    EXPECT_FALSE(LooksLikeGamepad(*Device({BTN_SOUTH, BTN_TOOL_FINGER}))) << "a touchpad";
    const EvdevHandle sensor = Device({BTN_TRIGGER});
    libevdev_enable_property(sensor.get(), INPUT_PROP_ACCELEROMETER);
    EXPECT_FALSE(LooksLikeGamepad(*sensor));
}

TEST(EvdevDeviceTest, APathThatIsNoDeviceIsAnError) {
    EXPECT_EQ(OpenEvdev(QStringLiteral("/nonexistent/event0")).error, ENOENT);
    const OpenedEvdev file = OpenEvdev(QStringLiteral("/dev/null"));
    EXPECT_FALSE(file.device);
    EXPECT_NE(file.error, 0);
}

// Reading a gamepad through libevdev.
#include "platform/evdev/evdev_device.h"

#include "core/path_text.h"

#include <libevdev/libevdev.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <linux/input.h>
#include <span>
#include <unistd.h>
#include <utility>

namespace {

constexpr int kMostEvents = 256;
constexpr std::chrono::milliseconds kRest{2};

struct Range {
    int first;
    int last;
};

// Numbered buttons, joysticks and pads, direction buttons, further buttons.
constexpr std::array kButtons = {Range{BTN_0, BTN_0 + 15}, Range{BTN_JOYSTICK, BTN_GAMEPAD + 15},
                                 Range{BTN_DPAD_UP, BTN_DPAD_RIGHT},
                                 Range{BTN_TRIGGER_HAPPY1, BTN_TRIGGER_HAPPY40}};
constexpr std::array kAxes = {Range{ABS_X, ABS_RZ}, Range{ABS_GAS, ABS_BRAKE}, Range{ABS_HAT0X, ABS_HAT3Y}};

bool Has(const libevdev& device, unsigned type, int code) {
    return libevdev_has_event_code(&device, type, static_cast<unsigned>(code)) != 0;
}

std::vector<int> CodesIn(const libevdev& device, unsigned type, std::span<const Range> ranges) {
    std::vector<int> codes;
    for (const Range& range : ranges) {
        for (int code = range.first; code <= range.last; ++code) {
            if (Has(device, type, code)) {
                codes.push_back(code);
            }
        }
    }
    return codes;
}

} // namespace

GamepadParts PartsOf(const libevdev& device) {
    GamepadParts parts{.buttons = CodesIn(device, EV_KEY, kButtons), .axes = {}};
    for (const int code : CodesIn(device, EV_ABS, kAxes)) {
        const auto axis = static_cast<unsigned>(code);
        parts.axes.push_back(
            {code, libevdev_get_abs_minimum(&device, axis), libevdev_get_abs_maximum(&device, axis)});
    }
    return parts;
}

bool LooksLikeGamepad(const libevdev& device) {
    constexpr std::array kOthers = {KEY_A, BTN_LEFT, BTN_TOUCH, BTN_TOOL_PEN, BTN_TOOL_FINGER};
    for (const int code : kOthers) {
        if (Has(device, EV_KEY, code)) {
            return false;
        }
    }
    return !CodesIn(device, EV_KEY, std::span(kButtons).subspan(1)).empty() &&
           libevdev_has_property(&device, INPUT_PROP_ACCELEROMETER) == 0;
}

void CloseEvdev::operator()(libevdev* device) const {
    const int descriptor = libevdev_get_fd(device);
    libevdev_free(device);
    if (descriptor >= 0) {
        close(descriptor);
    }
}

OpenedEvdev OpenEvdev(const QString& path) {
    const int descriptor = open(BytesOfPath(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) {
        return {nullptr, errno};
    }
    libevdev* device = nullptr;
    const int result = libevdev_new_from_fd(descriptor, &device);
    if (result < 0) {
        close(descriptor);
        return {nullptr, -result};
    }
    return {EvdevHandle(device), 0};
}

EvdevDevice::EvdevDevice(EvdevHandle device, Reports reports)
    : device_(std::move(device)), keys_(PartsOf(*device_)), reports_(std::move(reports)),
      notifier_(libevdev_get_fd(device_.get()), QSocketNotifier::Read) {
    QObject::connect(&notifier_, &QSocketNotifier::activated, [this] { Read(); });
    rest_.setSingleShot(true);
    rest_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&rest_, &QTimer::timeout, [this] { Continue(); });
}

EvdevDevice::~EvdevDevice() {
    for (const GamepadKey& change : keys_.ReleaseAll()) {
        reports_.change(change);
    }
}

QString EvdevDevice::Name() const {
    return TextOfPath(libevdev_get_name(device_.get()));
}

bool EvdevDevice::Grab() {
    return libevdev_grab(device_.get(), LIBEVDEV_GRAB) == 0;
}

void EvdevDevice::Read() {
    notifier_.setEnabled(false);
    for (int i = 0; i < kMostEvents; ++i) {
        if (!ReadOne()) {
            break;
        }
    }
    if (device_) {
        rest_.start(kRest);
    }
}

// The library may have read more than was taken from it.
void EvdevDevice::Continue() {
    if (isBehind_ || libevdev_has_event_pending(device_.get()) > 0) {
        Read();
    } else {
        notifier_.setEnabled(true);
    }
}

bool EvdevDevice::ReadOne() {
    input_event event = {};
    const int result = libevdev_next_event(
        device_.get(), isBehind_ ? LIBEVDEV_READ_FLAG_SYNC : LIBEVDEV_READ_FLAG_NORMAL, &event);
    if (result == -EAGAIN) {
        return std::exchange(isBehind_, false);
    }
    if (result == -EINTR) {
        return true;
    }
    if (result < 0) {
        device_.reset();
        reports_.gone();
        return false;
    }
    isBehind_ = result == LIBEVDEV_READ_STATUS_SYNC;
    for (const GamepadKey& change : keys_.Take(event.type, event.code, event.value)) {
        reports_.change(change);
    }
    return true;
}

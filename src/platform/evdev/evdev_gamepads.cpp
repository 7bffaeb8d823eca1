// Finding gamepads through udev, and collecting their keys.
#include "platform/evdev/evdev_gamepads.h"

#include "core/path_text.h"

#include <libudev.h>

#include <QDir>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <utility>

namespace {

// After the first frame.
constexpr std::chrono::milliseconds kStart{300};
// The most changes of devices that are taken at once.
constexpr int kMostChanges = 64;

constexpr const char* kEventFolder = "/dev/input";

struct UnrefEnumeration {
    void operator()(udev_enumerate* what) const { udev_enumerate_unref(what); }
};

bool Has(udev_device& device, const char* property) {
    const char* value = udev_device_get_property_value(&device, property);
    return value != nullptr && std::strcmp(value, "1") == 0;
}

// Devices that are something else, too, belong to the window system: grabbed, they would be missing there.
bool IsGamepad(udev_device& device) {
    constexpr std::array kOthers = {"ID_INPUT_ACCELEROMETER", "ID_INPUT_KEYBOARD", "ID_INPUT_MOUSE",
                                    "ID_INPUT_TABLET",        "ID_INPUT_TOUCHPAD", "ID_INPUT_TOUCHSCREEN"};
    return Has(device, "ID_INPUT_JOYSTICK") &&
           std::none_of(kOthers.begin(), kOthers.end(),
                        [&](const char* other) { return Has(device, other); });
}

// The path of an event device; empty for any other node, such as the older interface of joysticks.
QString EventPath(udev_device& device) {
    const char* node = udev_device_get_devnode(&device);
    const char* name = udev_device_get_sysname(&device);
    return node != nullptr && name != nullptr && std::strncmp(name, "event", 5) == 0 ? TextOfPath(node)
                                                                                     : QString();
}

QString NameOf(udev_device& device) {
    udev_device* input = udev_device_get_parent_with_subsystem_devtype(&device, "input", nullptr);
    const char* name = input == nullptr ? nullptr : udev_device_get_sysattr_value(input, "name");
    return name == nullptr ? QString() : TextOfPath(name);
}

} // namespace

void UnrefUdev::operator()(udev* what) const {
    udev_unref(what);
}

void UnrefUdev::operator()(udev_device* what) const {
    udev_device_unref(what);
}

void UnrefUdev::operator()(udev_monitor* what) const {
    udev_monitor_unref(what);
}

EvdevGamepads::EvdevGamepads(Press press, Log log) : press_(std::move(press)), log_(std::move(log)) {
    clock_.start();
    repeat_.setSingleShot(true);
    repeat_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&repeat_, &QTimer::timeout, [this] { Repeat(); });
    closeGone_.setSingleShot(true);
    QObject::connect(&closeGone_, &QTimer::timeout, [this] { CloseGone(); });
    start_.setSingleShot(true);
    QObject::connect(&start_, &QTimer::timeout, [this] { Start(); });
    start_.start(kStart);
}

EvdevGamepads::~EvdevGamepads() = default;

void EvdevGamepads::Start() {
    udev_.reset(udev_new());
    if (!udev_) {
        OpenAllInFolder();
        return;
    }
    WatchUdev();
    if (!OpenAllOfUdev()) {
        OpenAllInFolder();
    }
}

// Begins before the gamepads that are there are listed, so that none is missed in between.
void EvdevGamepads::WatchUdev() {
    monitor_.reset(udev_monitor_new_from_netlink(udev_.get(), "udev"));
    if (!monitor_ || udev_monitor_filter_add_match_subsystem_devtype(monitor_.get(), "input", nullptr) < 0 ||
        udev_monitor_enable_receiving(monitor_.get()) < 0) {
        log_(QStringLiteral(" : Manettes : udev ne signale pas les branchements"));
        monitor_.reset();
        return;
    }
    changes_ = std::make_unique<QSocketNotifier>(udev_monitor_get_fd(monitor_.get()), QSocketNotifier::Read);
    QObject::connect(changes_.get(), &QSocketNotifier::activated, [this] { TakeChange(); });
}

// Where udev runs, it has given every input device the property ID_INPUT.
bool EvdevGamepads::OpenAllOfUdev() {
    const std::unique_ptr<udev_enumerate, UnrefEnumeration> found(udev_enumerate_new(udev_.get()));
    if (!found || udev_enumerate_add_match_subsystem(found.get(), "input") < 0 ||
        udev_enumerate_add_match_property(found.get(), "ID_INPUT", "1") < 0 ||
        udev_enumerate_scan_devices(found.get()) < 0) {
        return false;
    }
    udev_list_entry* const first = udev_enumerate_get_list_entry(found.get());
    for (udev_list_entry* entry = first; entry != nullptr; entry = udev_list_entry_get_next(entry)) {
        const std::unique_ptr<udev_device, UnrefUdev> device(
            udev_device_new_from_syspath(udev_.get(), udev_list_entry_get_name(entry)));
        if (device) {
            OpenUdevDevice(*device);
        }
    }
    return first != nullptr;
}

void EvdevGamepads::OpenAllInFolder() {
    const QString folder = TextOfPath(kEventFolder);
    const QStringList names = QDir(folder).entryList({QStringLiteral("event*")}, QDir::System);
    int refused = 0;
    for (const QString& name : names) {
        const QString path = PathIn(folder, name);
        OpenedEvdev opened = OpenEvdev(path);
        refused += opened.error == EACCES ? 1 : 0;
        if (opened.device && LooksLikeGamepad(*opened.device)) {
            Use(path, std::move(opened.device));
        }
    }
    if (refused > 0) {
        log_(QStringLiteral(" : Manettes : accès refusé à %1 périphériques de %2, groupe input nécessaire")
                 .arg(QString::number(refused), folder));
    }
    if (!devices_.empty()) {
        log_(QStringLiteral(" : Manettes : sans udev, seules celles du démarrage sont lues"));
    }
}

void EvdevGamepads::TakeChange() {
    for (int i = 0; i < kMostChanges; ++i) {
        const std::unique_ptr<udev_device, UnrefUdev> device(udev_monitor_receive_device(monitor_.get()));
        if (!device) {
            return;
        }
        const char* action = udev_device_get_action(device.get());
        if (action != nullptr && std::strcmp(action, "remove") == 0) {
            Close(EventPath(*device));
        } else {
            OpenUdevDevice(*device);
        }
    }
}

void EvdevGamepads::OpenUdevDevice(udev_device& device) {
    const QString path = EventPath(device);
    if (!path.isEmpty() && IsGamepad(device) && !devices_.contains(path)) {
        Open(path, NameOf(device));
    }
}

void EvdevGamepads::Open(const QString& path, const QString& name) {
    OpenedEvdev opened = OpenEvdev(path);
    if (opened.device) {
        refused_.erase(path);
        Use(path, std::move(opened.device));
    } else if (refused_.insert(path).second) {
        const bool isForbidden = opened.error == EACCES || opened.error == EPERM;
        log_(QStringLiteral(" : Manette %1 (%2) : %3")
                 .arg(name, path,
                      isForbidden ? QStringLiteral("accès refusé, groupe input nécessaire")
                                  : TextOfPath(std::strerror(opened.error))));
    }
}

void EvdevGamepads::Use(const QString& path, EvdevHandle handle) {
    const auto gone = [this, path] {
        gone_.insert(path);
        closeGone_.start(0);
    };
    auto device = std::make_unique<EvdevDevice>(
        std::move(handle),
        EvdevDevice::Reports{.change = [this](const GamepadKey& change) { Take(change); }, .gone = gone});
    log_(QStringLiteral(" : Manette %1 (%2)").arg(device->Name(), path));
    if (!device->Grab()) {
        log_(QStringLiteral(" : Manette %1 : utilisée aussi par un autre programme").arg(path));
    }
    if (device->ButtonsWithoutKey() > 0) {
        log_(QStringLiteral(" : Manette %1 : %2 boutons sans touche")
                 .arg(path, QString::number(device->ButtonsWithoutKey())));
    }
    devices_[path] = std::move(device);
}

void EvdevGamepads::Close(const QString& path) {
    refused_.erase(path);
    if (devices_.erase(path) > 0) {
        log_(QStringLiteral(" : Manette %1 débranchée").arg(path));
    }
}

void EvdevGamepads::CloseGone() {
    for (const QString& path : std::exchange(gone_, {})) {
        Close(path);
    }
}

void EvdevGamepads::Take(const GamepadKey& change) {
    if (held_.Take(change, clock_.elapsed())) {
        press_(change.code, false);
    }
    FollowRepeat();
}

void EvdevGamepads::Repeat() {
    if (const std::optional<int> code = held_.TakeRepeat(clock_.elapsed())) {
        press_(*code, true);
    }
    FollowRepeat();
}

void EvdevGamepads::FollowRepeat() {
    if (const std::optional<std::int64_t> next = held_.NextRepeat()) {
        repeat_.start(static_cast<int>(std::max<std::int64_t>(*next - clock_.elapsed(), 0)));
    } else {
        repeat_.stop();
    }
}

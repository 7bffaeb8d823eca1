// One gamepad that is open.
#pragma once

#include "platform/evdev/gamepad_keys.h"

#include <QSocketNotifier>
#include <QString>
#include <QTimer>

#include <functional>
#include <memory>

struct libevdev;

// The inputs of a device that can become keys.
GamepadParts PartsOf(const libevdev& device);

// Whether a device is a gamepad by its inputs alone, for a system without udev: it has buttons of a joystick
// or gamepad, and is no mouse, keyboard, touchpad, tablet or accelerometer.
bool LooksLikeGamepad(const libevdev& device);

struct CloseEvdev {
    void operator()(libevdev* device) const;
};
// Closes the file descriptor, too.
using EvdevHandle = std::unique_ptr<libevdev, CloseEvdev>;

struct OpenedEvdev {
    EvdevHandle device;
    // The error number when there is no device.
    int error = 0;
};

// Opens an event device for reading without waiting.
OpenedEvdev OpenEvdev(const QString& path);

// Reads a gamepad from the event loop and reports changes of its keys. Reading is limited, so that a device
// that sends without end leaves time for everything else: at most 256 events at a time and 500 times a
// second.
class EvdevDevice {
public:
    // What the device reports. `gone` is called once, when the device can no longer be read; it must not
    // destroy the object at once.
    struct Reports {
        std::function<void(const GamepadKey& change)> change;
        std::function<void()> gone;
    };

    EvdevDevice(EvdevHandle device, Reports reports);
    // Releases the keys that are held.
    ~EvdevDevice();
    EvdevDevice(const EvdevDevice&) = delete;
    EvdevDevice& operator=(const EvdevDevice&) = delete;

    QString Name() const;
    int ButtonsWithoutKey() const { return keys_.ButtonsWithoutKey(); }
    // Takes the device for this program alone, so that nothing else turns it into keys or a pointer. Returns
    // false if another program has done so.
    bool Grab();

private:
    void Read();
    void Continue();
    // Returns false when there is nothing more to read now.
    bool ReadOne();

    EvdevHandle device_;
    GamepadKeys keys_;
    Reports reports_;
    // Events were lost: the library is reporting the difference.
    bool isBehind_ = false;
    QSocketNotifier notifier_;
    QTimer rest_;
};

// All gamepads of the machine as one source of key presses.
#pragma once

#include "platform/evdev/evdev_device.h"
#include "platform/evdev/held_keys.h"

#include <QElapsedTimer>
#include <QSocketNotifier>
#include <QString>
#include <QTimer>

#include <functional>
#include <map>
#include <memory>
#include <set>

struct udev;
struct udev_device;
struct udev_monitor;

struct UnrefUdev {
    void operator()(udev* what) const;
    void operator()(udev_device* what) const;
    void operator()(udev_monitor* what) const;
};

// Opens every gamepad that udev knows, and those that are plugged in later. Where udev does not run, the
// gamepads that are there at the start are found by their inputs. A gamepad that cannot be opened is
// one line of the log. Event thread only.
class EvdevGamepads {
public:
    // `press` gets a virtual-key code, 195 to 218, and whether it is the repeat of a held key.
    using Press = std::function<void(int code, bool isRepeat)>;
    using Log = std::function<void(const QString& line)>;

    // Looks for the gamepads a moment later, so that they do not delay the first frame.
    EvdevGamepads(Press press, Log log);
    ~EvdevGamepads();
    EvdevGamepads(const EvdevGamepads&) = delete;
    EvdevGamepads& operator=(const EvdevGamepads&) = delete;

private:
    void Start();
    void WatchUdev();
    // Returns false if udev does not run.
    bool OpenAllOfUdev();
    void OpenAllInFolder();
    void TakeChange();
    void OpenUdevDevice(udev_device& device);
    void Open(const QString& path, const QString& name);
    void Use(const QString& path, EvdevHandle device);
    void Close(const QString& path);
    void CloseGone();
    void Take(const GamepadKey& change);
    void Repeat();
    void FollowRepeat();

    Press press_;
    Log log_;
    QElapsedTimer clock_;
    HeldKeys held_;
    QTimer start_;
    QTimer repeat_;
    // A device cannot be destroyed inside its own report that it is gone.
    std::set<QString> gone_;
    QTimer closeGone_;
    std::unique_ptr<udev, UnrefUdev> udev_;
    std::unique_ptr<udev_monitor, UnrefUdev> monitor_;
    std::unique_ptr<QSocketNotifier> changes_;
    std::map<QString, std::unique_ptr<EvdevDevice>> devices_;
    // The paths whose refusal is in the log.
    std::set<QString> refused_;
};

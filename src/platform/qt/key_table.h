// Keys: from the window system's keys to the virtual-key codes of config.ini.
#pragma once

#include <Qt>
#include <QtGlobal>

#include <optional>

// A key as the window system reports it.
struct SystemKey {
    int key = 0;          // Qt::Key
    bool keypad = false;  // on the numeric keypad
    quint32 scanCode = 0; // position on the keyboard: evdev code + 8, as in X11 and Wayland; 0 unknown
};

// The virtual-key code of a key: the numbers of Windows, which config.ini and the themes use. Letters and
// named keys are identified by their meaning, the digit row and keys of other alphabets by their position on
// the keyboard. Returns nothing for a key without a code.
std::optional<int> VirtualKeyOf(const SystemKey& pressed);

// Keys: from what the window system reports to the virtual-key codes of config.ini.
#pragma once

#include <Qt>
#include <QtGlobal>

#include <optional>

// A key as the window system reports it.
struct SystemKey {
    int key = 0;          // Qt::Key
    bool keypad = false;  // it lies on the numeric keypad
    quint32 scanCode = 0; // place on the board, evdev's code + 8 as X11 and Wayland count it; 0 unknown
};

// The virtual-key code of a key: the numbers of Windows, which config.ini and the themes hold. Letters and
// named keys go by what they are, the digit row and keys of foreign alphabets by their place on the board.
// Nothing for a key that has no code.
std::optional<int> VirtualKeyOf(const SystemKey& pressed);

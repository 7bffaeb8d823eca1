// The settings of the cabinet program itself: how it looks after the jukebox.
#pragma once

#include <QString>

struct Files;

// The section [Cabinet] of config.ini, read once at each start. A key that is missing or empty counts as
// "true"; any other value than "true" switches its part off. The console has none of these.
struct CabinetSettings {
    // Starts the program again when an error has left the jukebox without keys.
    bool restartWhenStuck = true;
    // Starts the program again after an error has stopped it.
    bool restartAfterStop = true;
    // Reports to the service manager that the program is alive, so that a hung one is ended and started.
    bool watchdog = true;
    // Keeps credits and queue on the disk, and restores them after anything but an orderly end.
    bool keepCreditsAndQueue = true;
    // Renames a log of 32 MB to vantorix.log.1.
    bool limitLog = true;
    // Under a window manager: keeps the keyboard, and stays on top and full screen.
    bool holdScreen = true;
    // Gamepads act as keys.
    bool gamepads = true;
};

CabinetSettings ReadCabinetSettings(Files& files, const QString& appFolder);

// Checking the machine: rights, space, sound, serial line, monitors, fonts, decoders.
#pragma once

#include "app/doctor/monitor_check.h"

#include <QString>

#include <map>
#include <optional>

class FindingReport;
class IniFile;

struct MachineOptions {
    QString home;
    // Whether the application folder exists; it is made at the first start.
    bool hasHome = true;
    // Serial port number to device, from the command line.
    std::map<int, QString> serialDevices;
    // The user's runtime folder, where sound servers have their sockets; empty when there is none.
    QString runtimeFolder;
    // The root of the file systems with the devices: "/", or a folder of a test.
    QString root = QStringLiteral("/");
    // The monitors of the X server. Without them those of the kernel are checked.
    std::optional<ShownMonitors> shown = {};
    // The name of an X server that does not answer; empty when there is none.
    QString silentDisplay = {};
};

// Reports an application folder that cannot be written or is nearly full, a jukebox that runs, and missing
// devices, fonts and decoders. `config` is config.ini.
void CheckMachine(const MachineOptions& options, const IniFile& config, FindingReport& report);

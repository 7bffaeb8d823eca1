// The command line of vantorix-leds.
#pragma once

#include "app/leds/controller.h"

#include <chrono>
#include <string>
#include <vector>

enum class ViewKind { kTerminal, kRow, kRing };

struct LedsOptions {
    // Why the command line is wrong; empty if it is right.
    std::string error;
    bool showHelp = false;
    bool showVersion = false;
    // An existing device; empty: a new pseudo-terminal.
    std::string device;
    // A link to the pseudo-terminal that is made and removed; may be empty.
    std::string link;
    // The number of the serial port in the lines of config.ini.
    int port = 1;
    ViewKind view = ViewKind::kTerminal;
    // Bits a second; 0: as fast as the jukebox writes.
    int pace = 0;
    Manners manners;
    // Seconds after which the device is unplugged, again and again; 0: never.
    double unplug = 0;
    std::string record;
    std::string replay;
    bool check = false;
};

LedsOptions ParseLedsOptions(const std::vector<std::string>& arguments);

std::string LedsHelpText();

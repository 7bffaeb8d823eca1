// Checking the monitors: whether the mode and the second window that config.ini names are possible.
#pragma once

#include <QRect>
#include <QSize>
#include <QString>

#include <vector>

class FindingReport;
class IniFile;

// The monitors of an X server.
struct ShownMonitors {
    // The name of the server, like ":0".
    QString display;
    // The rectangles of all monitors in pixels of the desktop, primary monitor first.
    std::vector<QRect> places;
    // The modes of the primary monitor.
    std::vector<QSize> modes;
    int bitsPerPixel = 32;
};

// Reports the monitors of the X server, and what the jukebox cannot do with them: set the mode of
// FullscreenSize, or show videos where VideoPositionLeft says.
void CheckShownMonitors(const ShownMonitors& shown, const IniFile& config, FindingReport& report);

// Reports the monitors that the kernel knows, and a mode that none of them lists. `root` is the root of the
// file systems with the devices.
void CheckConnectedMonitors(const QString& root, const IniFile& config, FindingReport& report);

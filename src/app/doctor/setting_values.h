// What the values of config.ini mean, and which of them stop the jukebox.
#pragma once

#include "app/findings/finding.h"
#include "platform/display.h"

#include <optional>
#include <vector>

class IniFile;
struct KnownKey;

// A fault of one setting. `text` continues a sentence that names the setting.
struct SettingFault {
    Level level = Level::kWarning;
    QString text;
    QString advice;
    // See Finding::kind.
    QString kind;
};

// Returns the number of a setting in pixels; nothing when it is empty or no number.
std::optional<int> PixelsOf(const QString& value);

// Returns the mode of FullscreenSize: width, "x", height, a blank, depth and "bits". Nothing when a part is
// missing or no number.
std::optional<DisplayMode> ScreenModeOf(const QString& value);

// Returns what is wrong with the value of a key of config.ini; `isPresent` is whether the file has it.
std::optional<SettingFault> FaultOfSetting(const IniFile& config, const KnownKey& key, bool isPresent);

// Returns keys that have two actions.
std::vector<SettingFault> FaultsOfBindings(const IniFile& config);

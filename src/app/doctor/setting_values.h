// What the values of config.ini mean, and which of them stop the jukebox.
#pragma once

#include "app/findings/finding.h"

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

// Returns what is wrong with the value of a key of config.ini; `isPresent` is whether the file has it.
std::optional<SettingFault> FaultOfSetting(const IniFile& config, const KnownKey& key, bool isPresent);

// Returns keys that have two actions.
std::vector<SettingFault> FaultsOfBindings(const IniFile& config);

// Reading the section [Cabinet] of config.ini.
#include "app/cabinet/cabinet_settings.h"

#include "core/path_text.h"
#include "settings/ini_files.h"

CabinetSettings ReadCabinetSettings(Files& files, const QString& appFolder) {
    IniFiles inis;
    const IniFile& config = inis.Open(files, PathIn(appFolder, QStringLiteral("config.ini")));
    const auto isOn = [&](QStringView key) {
        const QString value = config.Value(u"Cabinet", key);
        return value.isEmpty() || value == u"true";
    };
    return {.restartWhenStuck = isOn(u"RestartWhenStuck"),
            .restartAfterStop = isOn(u"RestartAfterStop"),
            .watchdog = isOn(u"Watchdog"),
            .keepCreditsAndQueue = isOn(u"KeepCreditsAndQueue"),
            .limitLog = isOn(u"LimitLog"),
            .holdScreen = isOn(u"HoldScreen"),
            .gamepads = isOn(u"Gamepads")};
}

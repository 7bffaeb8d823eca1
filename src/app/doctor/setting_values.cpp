// The rules for the values of config.ini.
#include "app/doctor/setting_values.h"

#include "core/conversions.h"
#include "core/run_time_error.h"
#include "settings/config.h"
#include "settings/ini_file.h"

#include <array>
#include <map>

namespace {

using Fault = std::optional<SettingFault>;

constexpr int kPorts = 16;
constexpr int kKeyOfSeek = 70;
// The bands of the spectrum share 1024 bins, in stereo each half of them.
constexpr int kMostLeds = 1023;
constexpr int kMostLedsStereo = 2047;
constexpr int kLedNumbers = 256;

std::optional<int> NumberOf(const QString& value) {
    try {
        return CInt32(value).value();
    } catch (const RunTimeError&) {
        return std::nullopt;
    }
}

bool IsInteger16(const QString& value) {
    const auto number = NumberOf(value);
    return number && *number >= -32768 && *number <= 32767;
}

Fault FaultOfSwitch(const QString& value, bool isPresent) {
    const QString word = Trim(value).toLower();
    if (word == u"true" || word == u"false") {
        return std::nullopt;
    }
    if (!isPresent) {
        return SettingFault{Level::kWarning, QStringLiteral("it counts as false."),
                            QStringLiteral("Add the key with true or false."),
                            QStringLiteral("missing switch")};
    }
    return SettingFault{
        Level::kWarning,
        QStringLiteral("the value \"%1\" counts as false, because only \"true\" means yes.").arg(value),
        QStringLiteral("Write true or false."), QStringLiteral("switch")};
}

Fault FaultOfExactSwitch(const QString& value, bool isPresent) {
    if (!isPresent || value.isEmpty() || value == u"true" || value == u"false") {
        return std::nullopt;
    }
    return SettingFault{
        Level::kWarning,
        QStringLiteral("the value \"%1\" counts as false, because only \"true\" in small letters and without "
                       "blanks means yes.")
            .arg(value),
        QStringLiteral("Write true or false."), QStringLiteral("exact switch")};
}

Fault FaultOfPixels(const QString& value) {
    if (value.isEmpty() || NumberOf(value)) {
        return std::nullopt;
    }
    return SettingFault{
        Level::kError,
        QStringLiteral("the program stops at the start, because \"%1\" is not a number of pixels.")
            .arg(value),
        QStringLiteral("Write a whole number, or nothing for the usual place."), QStringLiteral("pixels")};
}

Fault FaultOfKey(const QString& value) {
    const auto number = NumberOf(value);
    if (!IsInteger16(value)) {
        return SettingFault{
            Level::kError,
            QStringLiteral("the jukebox locks up at the next key, because \"%1\" is not the number of a key.")
                .arg(value),
            QStringLiteral("Choose the key in the configuration (F9), or write its number; see the page "
                           "about keys."),
            QStringLiteral("key binding")};
    }
    if (*number == kKeyOfSeek) {
        return SettingFault{
            Level::kWarning,
            QStringLiteral("the key F always goes to ten seconds before the end of the track and has no "
                           "other action."),
            QStringLiteral("Choose another key."), QStringLiteral("key F")};
    }
    return std::nullopt;
}

Fault FaultOfOrder(const QString& value) {
    const QString word = Trim(value).toLower();
    if (word == u"alpha" || word == u"playcount") {
        return std::nullopt;
    }
    return SettingFault{
        Level::kError,
        QStringLiteral("every folder without an order of its own is empty, because \"%1\" is no order.")
            .arg(value),
        QStringLiteral("Write alpha or playcount."),
        {}};
}

Fault FaultOfOrientation(const QString& value) {
    const QString word = Trim(value).toLower();
    if (word == u"horizontal" || word == u"vertical") {
        return std::nullopt;
    }
    return SettingFault{Level::kWarning,
                        QStringLiteral("\"%1\" counts as vertical.").arg(value),
                        QStringLiteral("Write horizontal or vertical."),
                        {}};
}

Fault FaultOfScreenSize(const IniFile& config, const QString& value) {
    if (config.Value(u"Main", u"Fullscreen").toLower() != u"true") {
        return std::nullopt;
    }
    if (ScreenModeOf(value)) {
        return std::nullopt;
    }
    return SettingFault{
        Level::kError,
        QStringLiteral("the program stops at the start, because \"%1\" is no display mode.").arg(value),
        QStringLiteral("Write it like 1920x1080 32bits, or set Fullscreen=false."),
        {}};
}

Fault FaultOfPort(const IniFile& config, const QString& value) {
    const auto number = NumberOf(value);
    if (config.Value(u"RGBLeds", u"Active") != u"true" || (number && *number >= 1 && *number <= kPorts)) {
        return std::nullopt;
    }
    return SettingFault{
        Level::kError,
        QStringLiteral("the program stops at the start, because there is no serial port \"%1\".").arg(value),
        QStringLiteral("Write a number from 1 to 16, or set Active=false."),
        {}};
}

Fault FaultOfLeds(const IniFile& config, const QString& value) {
    if (config.Value(u"RGBLeds", u"Active") != u"true") {
        return std::nullopt;
    }
    const bool isStereo = config.Value(u"RGBLeds", u"Stereo") == u"true";
    const int most = isStereo ? kMostLedsStereo : kMostLeds;
    const auto number = NumberOf(value);
    if (!number || *number == 0 || (*number == 1 && isStereo) || *number > most) {
        return SettingFault{
            Level::kError,
            QStringLiteral("the program stops at the first track, because \"%1\" is no number of LEDs that "
                           "can be shown.")
                .arg(value),
            QStringLiteral("Write a number from %1 to %2, or set Active=false.")
                .arg(isStereo ? 2 : 1)
                .arg(most),
            {}};
    }
    if (*number < 0 || *number > kLedNumbers) {
        return SettingFault{
            Level::kWarning,
            *number < 0 ? QStringLiteral("with a number below 0 the LEDs show nothing.")
                        : QStringLiteral("of more than 256 LEDs the first ones flicker and the others stay "
                                         "dark."),
            QStringLiteral("Write the number of LEDs, at most 256."),
            {}};
    }
    return std::nullopt;
}

Fault FaultOfStartPath(const QString& value) {
    if (!value.isEmpty()) {
        return std::nullopt;
    }
    return SettingFault{
        Level::kWarning,
        QStringLiteral(
            "no music folder is set, so the jukebox shows the configuration at its start and waits "
            "for one."),
        QStringLiteral("vantorix --setup FOLDER"),
        {}};
}

Fault FaultInMain(const IniFile& config, const QString& key, const QString& value, bool isPresent) {
    if (key == u"StartPath") {
        return FaultOfStartPath(value);
    }
    // An empty theme counts as "default"; LastPath has no effect.
    if (key == u"LastPath" || key == u"Theme") {
        return std::nullopt;
    }
    if (key == u"FullscreenSize") {
        return FaultOfScreenSize(config, value);
    }
    if (key.contains(QStringLiteral("Position"))) {
        return FaultOfPixels(value);
    }
    if (key == u"DefaultOrder") {
        return FaultOfOrder(value);
    }
    if (key == u"Orientation") {
        return FaultOfOrientation(value);
    }
    return FaultOfSwitch(value, isPresent);
}

Fault FaultInLeds(const IniFile& config, const QString& key, const QString& value, bool isPresent) {
    if (key == u"Commport") {
        return FaultOfPort(config, value);
    }
    return key == u"NbLeds" ? FaultOfLeds(config, value) : FaultOfExactSwitch(value, isPresent);
}

// The actions in the order in which a key is compared with them.
constexpr std::array kActions = {"Preview", "Stop",    "Play",    "Pause",        "Next",
                                 "Config",  "Quitter", "Valider", "retour",       "gauche",
                                 "droite",  "haut",    "bas",     "gotonextzone", "insertcoin"};

} // namespace

std::optional<int> PixelsOf(const QString& value) {
    return value.isEmpty() ? std::nullopt : NumberOf(value);
}

std::optional<DisplayMode> ScreenModeOf(const QString& value) {
    const QString size = value.toLower();
    const qsizetype x = size.indexOf(u'x');
    const QString afterX = Trim(size.mid(x + 1));
    const qsizetype blank = afterX.indexOf(u' ');
    if (x < 0 || blank < 0) {
        return std::nullopt;
    }
    const auto width = NumberOf(size.left(x));
    const auto height = NumberOf(afterX.left(blank));
    const auto bits = NumberOf(QString(afterX.mid(blank + 1)).remove(QStringLiteral("bits")));
    return width && height && bits ? std::optional(DisplayMode{*width, *height, *bits}) : std::nullopt;
}

std::optional<SettingFault> FaultOfSetting(const IniFile& config, const KnownKey& key, bool isPresent) {
    const QString value = config.Value(key.section, key.key);
    if (key.section == u"Main") {
        return FaultInMain(config, key.key, value, isPresent);
    }
    if (key.section == u"Key") {
        // Nothing uses these two.
        return key.key == u"addtofav" || key.key == u"fav" ? std::nullopt : FaultOfKey(value);
    }
    return key.section == u"RGBLeds" ? FaultInLeds(config, key.key, value, isPresent)
                                     : FaultOfExactSwitch(value, isPresent);
}

std::vector<SettingFault> FaultsOfBindings(const IniFile& config) {
    std::vector<SettingFault> faults;
    std::map<int, QString> actions;
    for (const char* const action : kActions) {
        const QString name = QString::fromLatin1(action);
        const auto number = NumberOf(config.Value(u"Key", name));
        if (!number) {
            continue;
        }
        const auto [earlier, isNew] = actions.try_emplace(*number, name);
        if (!isNew) {
            faults.push_back({Level::kWarning,
                              QStringLiteral("[Key] %1 and %2 have the same key %3, so %2 never happens.")
                                  .arg(earlier->second, name)
                                  .arg(*number),
                              QStringLiteral("Choose another key for one of them."),
                              QStringLiteral("doubled binding")});
        }
    }
    return faults;
}

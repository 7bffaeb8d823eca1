// Reading config.ini.
#include "settings/config.h"

#include "core/conversions.h"
#include "core/run_time_error.h"
#include "settings/ini_files.h"
#include "settings/profile.h"
#include "state/form_main.h"
#include "state/paths.h"

#include <array>
#include <span>

namespace {

// How a value is changed before it is stored.
enum Treatment : unsigned {
    kAsRead = 0,
    kTrimmed = 1,
    kLowered = 2,
    // A missing or empty value leaves the variable unchanged.
    kKept = 4,
};

struct ConfigKey {
    const char* key;
    QString SettingsState::*variable; // nullptr: read and discarded
    unsigned treatment;
};

using S = SettingsState;

// clang-format off
constexpr std::array kScreenKeys = {
    ConfigKey{"LastPath",            nullptr,                 kAsRead},
    ConfigKey{"Theme",               &S::Theme,               kAsRead},
    ConfigKey{"Fullscreen",          &S::Fullscreen,          kLowered | kKept},
    ConfigKey{"FullscreenSize",      &S::FullscreenSize,      kLowered | kKept},
};

constexpr std::array kPlacementKeys = {
    ConfigKey{"PositionLeft",        &S::PositionLeft,        kAsRead},
    ConfigKey{"PositionTop",         &S::PositionTop,         kAsRead},
    ConfigKey{"PositionWidth",       &S::PositionWidth,       kAsRead},
    ConfigKey{"PositionHeight",      &S::PositionHeight,      kAsRead},
    ConfigKey{"Orientation",         &S::Orientation,         kTrimmed | kLowered | kKept},
    ConfigKey{"VideoPositionLeft",   &S::VideoPositionLeft,   kAsRead},
    ConfigKey{"VideoPositionTop",    &S::VideoPositionTop,    kAsRead},
    ConfigKey{"VideoPositionWidth",  &S::VideoPositionWidth,  kAsRead},
    ConfigKey{"VideoPositionHeight", &S::VideoPositionHeight, kAsRead},
    ConfigKey{"PlayTransitionSound", &S::PlayTransitionSound, kTrimmed | kLowered},
    ConfigKey{"DefaultOrder",        &S::DefaultOrder,        kTrimmed | kLowered},
    ConfigKey{"tactilemode",         &S::TactileMode,         kTrimmed | kLowered},
};

constexpr std::array kDisplayKeys = {
    ConfigKey{"ShowFolderCover",     &S::ShowFolderCover,     kTrimmed | kLowered},
    ConfigKey{"ShowFileCover",       &S::ShowFileCover,       kTrimmed | kLowered},
    ConfigKey{"ShowCover",           &S::ShowCover,           kTrimmed | kLowered},
    ConfigKey{"ShowBigCover",        &S::ShowBigCover,        kTrimmed | kLowered},
    ConfigKey{"ShowMp3CoverTag",     &S::ShowMp3CoverTag,     kTrimmed | kLowered},
    ConfigKey{"ShowTrackNum",        &S::ShowTrackNum,        kTrimmed | kLowered},
    ConfigKey{"ShowMainZone",        &S::ShowMainZone,        kTrimmed | kLowered},
    ConfigKey{"ActiveMainZone",      &S::ActiveMainZone,      kTrimmed | kLowered},
    ConfigKey{"ShowPlaylistZone",    &S::ShowPlaylistZone,    kTrimmed | kLowered},
    ConfigKey{"ActivePlaylistZone",  &S::ActivePlaylistZone,  kTrimmed | kLowered},
    ConfigKey{"ShowCommandZone",     &S::ShowCommandZone,     kTrimmed | kLowered},
    ConfigKey{"ActiveCommandZone",   &S::ActiveCommandZone,   kTrimmed | kLowered},
    ConfigKey{"ManageCoin",          &S::ManageCoin,          kTrimmed | kLowered},
    ConfigKey{"ShowBigCover",        &S::ShowBigCoverDefault, kTrimmed | kLowered},
};

constexpr std::array kKeyKeys = {
    ConfigKey{"haut",                &S::KeyHaut,             kAsRead},
    ConfigKey{"bas",                 &S::KeyBas,              kAsRead},
    ConfigKey{"gauche",              &S::KeyGauche,           kAsRead},
    ConfigKey{"droite",              &S::KeyDroite,           kAsRead},
    ConfigKey{"Valider",             &S::KeyValider,          kAsRead},
    ConfigKey{"retour",              &S::KeyRetour,           kAsRead},
    ConfigKey{"Config",              &S::KeyConfig,           kAsRead},
    ConfigKey{"Quitter",             &S::KeyQuitter,          kAsRead},
    ConfigKey{"gotonextzone",        &S::KeyGotoNextZone,     kAsRead},
    ConfigKey{"insertcoin",          &S::KeyInsertCoin,       kAsRead},
    ConfigKey{"addtofav",            &S::KeyAddToFav,         kAsRead},
    ConfigKey{"fav",                 nullptr,                 kAsRead},
    ConfigKey{"Preview",             &S::KeyPreview,          kKept},
    ConfigKey{"Stop",                &S::KeyStop,             kKept},
    ConfigKey{"Play",                &S::KeyPlay,             kKept},
    ConfigKey{"Pause",               &S::KeyPause,            kKept},
    ConfigKey{"Next",                &S::KeyNext,             kKept},
};

constexpr std::array kLedKeys = {
    ConfigKey{"Active",              &S::RGBLedsActive,       kAsRead},
    ConfigKey{"Commport",            &S::RGBLedsCommport,     kAsRead},
    ConfigKey{"NbLeds",              &S::RGBLedsNbLeds,       kAsRead},
    ConfigKey{"Stereo",              &S::RGBLedsStereo,       kAsRead},
};
// clang-format on

// Deliberate D-04: "LastPath" and "fav" are read and discarded. One would expect them to be used; files in
// the field contain them, and reading them keeps their place in the order.
static_assert(kPlacementKeys.back().variable == &S::TactileMode);
static_assert(1 + kScreenKeys.size() + kPlacementKeys.size() + kDisplayKeys.size() == 31);
static_assert(kKeyKeys.size() == 17 && kLedKeys.size() == 4);

void ReadKey(Form_Main& form, const IniFile& file, QStringView section, const ConfigKey& row) {
    QString value = file.Value(section, QString::fromLatin1(row.key));
    if (row.variable == nullptr || ((row.treatment & kKept) != 0 && value.isEmpty())) {
        return;
    }
    if ((row.treatment & kTrimmed) != 0) {
        value = Trim(value);
    }
    if ((row.treatment & kLowered) != 0) {
        value = value.toLower();
    }
    form.settings.*row.variable = value;
}

void ReadKeys(Form_Main& form, QStringView section, std::span<const ConfigKey> rows) {
    const IniFile& file = IniFilesOf(form).Open(form.files, ConfigPath(form));
    for (const ConfigKey& row : rows) {
        ReadKey(form, file, section, row);
    }
}

} // namespace

std::vector<KnownKey> KnownConfigKeys() {
    const QString main = QStringLiteral("Main");
    std::vector<KnownKey> known = {{main, QStringLiteral("StartPath")}};
    const auto add = [&](const QString& section, std::span<const ConfigKey> rows) {
        for (const ConfigKey& row : rows) {
            known.push_back({section, QString::fromLatin1(row.key)});
        }
    };
    add(main, kScreenKeys);
    add(main, kPlacementKeys);
    add(main, kDisplayKeys);
    add(QStringLiteral("Key"), kKeyKeys);
    add(QStringLiteral("RGBLeds"), kLedKeys);
    return known;
}

QString ReadStartPath(Form_Main& form) {
    return GetPrivateProfileString(form, ConfigPath(form), QStringLiteral("Main"),
                                   QStringLiteral("StartPath"));
}

void ReadScreenKeys(Form_Main& form) {
    ReadKeys(form, u"Main", kScreenKeys);
}

void ReadPlacementKeys(Form_Main& form) {
    ReadKeys(form, u"Main", kPlacementKeys);
}

void ReadOtherKeys(Form_Main& form) {
    ReadKeys(form, u"Main", kDisplayKeys);
    ReadKeyBindings(form);
    ReadKeys(form, u"RGBLeds", kLedKeys);
}

void ReadKeyBindings(Form_Main& form) {
    ReadKeys(form, u"Key", kKeyKeys);
}

void ReadTactileMode(Form_Main& form) {
    ReadKeys(form, u"Main", std::span(kPlacementKeys).last<1>());
}

QString ConfigPlace(const Form_Main& form, QStringView section, QStringView key) {
    return QStringLiteral("%1, [%2] %3").arg(ConfigPath(form), section, key);
}

double ConfigNumber(const Form_Main& form, QStringView key, const QString& value) {
    const auto where = [&] {
        return ConfigPlace(form, u"Main", key) + QStringLiteral(" (expected a number)");
    };
    return TellingWhere(where, [&] { return CDouble(value); });
}

int ConfigPixels(const Form_Main& form, QStringView key, const QString& value) {
    const double number = ConfigNumber(form, key, value);
    const auto where = [&] { return ConfigPlace(form, u"Main", key) + QStringLiteral(" (expected pixels)"); };
    return TellingWhere(where, [&] { return CInt32(number).value(); });
}

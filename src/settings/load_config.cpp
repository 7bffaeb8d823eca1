// Reading config.ini.
#include "settings/load_config.h"

#include "core/conversions.h"
#include "core/path_text.h"
#include "core/run_time_error.h"
#include "platform/dialogs.h"
#include "platform/event_pump.h"
#include "platform/windows.h"
#include "settings/profile.h"
#include "shell/display_mode.h"
#include "shell/exit.h"
#include "shell/form_main.h"
#include "shell/log.h"
#include "shell/pointers.h"

#include <array>
#include <span>

namespace {

// What is done with a value before it is stored.
enum Treatment : unsigned {
    kAsRead = 0,
    kTrimmed = 1,
    kLowered = 2,
    // A missing or empty value leaves the variable as it is.
    kKept = 4,
};

struct ConfigKey {
    const char* key;
    QString SettingsState::*variable; // none: read and thrown away
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

// Deliberate D-04: "LastPath" and "fav" are read and thrown away. One expects them to be used; files in the
// field carry them, and reading them keeps their place in the order.
static_assert(1 + kScreenKeys.size() + kPlacementKeys.size() + kDisplayKeys.size() == 31);
static_assert(kKeyKeys.size() == 17 && kLedKeys.size() == 4);

QString ConfigPath(const Form_Main& form) {
    return PathIn(form.AppFolder, QStringLiteral("config.ini"));
}

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
    form.*row.variable = value;
}

void ReadKeys(Form_Main& form, QStringView section, std::span<const ConfigKey> rows) {
    const IniFile& file = form.iniFiles.Open(form.files, ConfigPath(form));
    for (const ConfigKey& row : rows) {
        ReadKey(form, file, section, row);
    }
}

QString ReadStartPath(Form_Main& form) {
    return GetPrivateProfileString(form, ConfigPath(form), QStringLiteral("Main"),
                                   QStringLiteral("StartPath"));
}

// The first run: the operator chooses a music folder, or the program ends.
void AskStartPath(Form_Main& form) {
    form.StartPath = form.AppFolder;
    form.Timer1.Enabled = false;
    form.windows.MousePointer(QStringLiteral("Screen"), kPointerArrow);
    form.dialogs.ShowModal(QStringLiteral("Form_Config"));
    form.windows.MousePointer(QStringLiteral("Screen"), kPointerHourglass);
    form.Timer1.Enabled = true;
    form.StartPath = ReadStartPath(form);
    if (!form.StartPath.isEmpty()) {
        return;
    }
    if (form.Fullscreen == u"true") {
        WriteLog(form, QStringLiteral(" : Changement de la résolution d'écran"));
        ChangeRes(form, form.ScreenWidth.value(), form.ScreenHeight.value(), form.ScreenBits.value());
    }
    form.pump.DoEvents();
    ExitJukebox(form);
}

// Sets the mode that FullscreenSize tells: width, "x", height, one blank, depth and "bits".
void SetScreenMode(Form_Main& form) {
    const QString& size = form.FullscreenSize;
    const qsizetype x = size.indexOf(u'x');
    const QString width = x < 0 ? QString() : size.left(x);
    const QString afterX = size.mid(x + 1);
    const qsizetype blankAfterX = afterX.indexOf(u' ');
    const qsizetype blank = size.indexOf(u' ');
    const QString height = Trim(afterX.left(blankAfterX < 0 ? 0 : blankAfterX));
    QString bits = blank < 0 ? QString() : size.mid(blank + 1);
    bits.remove(QStringLiteral("bits"));
    const auto where = [&] {
        return QStringLiteral("%1, [Main] FullscreenSize \"%2\" (expected like \"1024x768 32bits\")")
            .arg(ConfigPath(form), size);
    };
    TellingWhere(where, [&] {
        const Integer32 pixelsAcross = CInt32(width);
        const Integer32 pixelsDown = CInt32(height);
        ChangeRes(form, pixelsAcross, pixelsDown, CInt32(bits));
    });
    WriteLog(form, QStringLiteral(" : Changement de la résolution d'écran"));
}

void Load(Form_Main& form) {
    WriteLog(form, QStringLiteral(
                       " : Récupération des parametres de config dans le fichier config.ini (LoadConfig)"));
    form.StartPath = ReadStartPath(form);
    if (form.StartPath.isEmpty()) {
        AskStartPath(form);
    }
    ReadKeys(form, u"Main", kScreenKeys);
    if (form.Fullscreen == u"true") {
        SetScreenMode(form);
    }
    form.pump.DoEvents();
    ReadKeys(form, u"Main", kPlacementKeys);
    SetModePointers(form);
    ReadKeys(form, u"Main", kDisplayKeys);
    ReadKeys(form, u"Key", kKeyKeys);
    ReadKeys(form, u"RGBLeds", kLedKeys);
    WriteLog(form, QStringLiteral(" : Fin chargement config "));
}

} // namespace

void LoadConfig(Form_Main& form) {
    EndsProgram("LoadConfig", [&] { Load(form); });
}

// Reading config.ini: how each key is converted, kept values, the screen mode, the first run, the log.
#include "shell/load_config.h"

#include "support/jukebox.h"

#include <QJsonDocument>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <ostream>
#include <set>
#include <string>
#include <vector>

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using S = SettingsState;

// How a value with blanks and capitals is changed.
enum class Read { kAsItIs, kLowered, kTrimmedAndLowered };

struct Row {
    const char* section;
    const char* key;
    QString S::*variable;
    Read read;
    // A missing key leaves the variable unchanged.
    bool kept;
};

constexpr Read kM = Read::kAsItIs;
constexpr Read kML = Read::kLowered;
constexpr Read kMTL = Read::kTrimmedAndLowered;

// clang-format off
constexpr std::array kRows = {
    Row{"Main",    "Theme",               &S::Theme,               kM,   false},
    Row{"Main",    "Fullscreen",          &S::Fullscreen,          kML,  true},
    Row{"Main",    "FullscreenSize",      &S::FullscreenSize,      kML,  true},
    Row{"Main",    "PositionLeft",        &S::PositionLeft,        kM,   false},
    Row{"Main",    "PositionTop",         &S::PositionTop,         kM,   false},
    Row{"Main",    "PositionWidth",       &S::PositionWidth,       kM,   false},
    Row{"Main",    "PositionHeight",      &S::PositionHeight,      kM,   false},
    Row{"Main",    "Orientation",         &S::Orientation,         kMTL, true},
    Row{"Main",    "VideoPositionLeft",   &S::VideoPositionLeft,   kM,   false},
    Row{"Main",    "VideoPositionTop",    &S::VideoPositionTop,    kM,   false},
    Row{"Main",    "VideoPositionWidth",  &S::VideoPositionWidth,  kM,   false},
    Row{"Main",    "VideoPositionHeight", &S::VideoPositionHeight, kM,   false},
    Row{"Main",    "PlayTransitionSound", &S::PlayTransitionSound, kMTL, false},
    Row{"Main",    "DefaultOrder",        &S::DefaultOrder,        kMTL, false},
    Row{"Main",    "tactilemode",         &S::TactileMode,         kMTL, false},
    Row{"Main",    "ShowFolderCover",     &S::ShowFolderCover,     kMTL, false},
    Row{"Main",    "ShowFileCover",       &S::ShowFileCover,       kMTL, false},
    Row{"Main",    "ShowCover",           &S::ShowCover,           kMTL, false},
    Row{"Main",    "ShowBigCover",        &S::ShowBigCover,        kMTL, false},
    Row{"Main",    "ShowMp3CoverTag",     &S::ShowMp3CoverTag,     kMTL, false},
    Row{"Main",    "ShowTrackNum",        &S::ShowTrackNum,        kMTL, false},
    Row{"Main",    "ShowMainZone",        &S::ShowMainZone,        kMTL, false},
    Row{"Main",    "ActiveMainZone",      &S::ActiveMainZone,      kMTL, false},
    Row{"Main",    "ShowPlaylistZone",    &S::ShowPlaylistZone,    kMTL, false},
    Row{"Main",    "ActivePlaylistZone",  &S::ActivePlaylistZone,  kMTL, false},
    Row{"Main",    "ShowCommandZone",     &S::ShowCommandZone,     kMTL, false},
    Row{"Main",    "ActiveCommandZone",   &S::ActiveCommandZone,   kMTL, false},
    Row{"Main",    "ManageCoin",          &S::ManageCoin,          kMTL, false},
    Row{"Main",    "ShowBigCover",        &S::ShowBigCoverDefault, kMTL, false},
    Row{"Key",     "haut",                &S::KeyHaut,             kM,   false},
    Row{"Key",     "bas",                 &S::KeyBas,              kM,   false},
    Row{"Key",     "gauche",              &S::KeyGauche,           kM,   false},
    Row{"Key",     "droite",              &S::KeyDroite,           kM,   false},
    Row{"Key",     "Valider",             &S::KeyValider,          kM,   false},
    Row{"Key",     "retour",              &S::KeyRetour,           kM,   false},
    Row{"Key",     "Config",              &S::KeyConfig,           kM,   false},
    Row{"Key",     "Quitter",             &S::KeyQuitter,          kM,   false},
    Row{"Key",     "gotonextzone",        &S::KeyGotoNextZone,     kM,   false},
    Row{"Key",     "insertcoin",          &S::KeyInsertCoin,       kM,   false},
    Row{"Key",     "addtofav",            &S::KeyAddToFav,         kM,   false},
    Row{"Key",     "Preview",             &S::KeyPreview,          kM,   true},
    Row{"Key",     "Stop",                &S::KeyStop,             kM,   true},
    Row{"Key",     "Play",                &S::KeyPlay,             kM,   true},
    Row{"Key",     "Pause",               &S::KeyPause,            kM,   true},
    Row{"Key",     "Next",                &S::KeyNext,             kM,   true},
    Row{"RGBLeds", "Active",              &S::RGBLedsActive,       kM,   false},
    Row{"RGBLeds", "Commport",            &S::RGBLedsCommport,     kM,   false},
    Row{"RGBLeds", "NbLeds",              &S::RGBLedsNbLeds,       kM,   false},
    Row{"RGBLeds", "Stereo",              &S::RGBLedsStereo,       kM,   false},
};
// clang-format on

// A form with an application folder, before start-up.
class LoadConfigTest : public ::testing::Test {
protected:
    void SetKey(const char* section, const char* key, const QString& value) {
        jukebox.SetKey(QStringLiteral("config.ini"), QString::fromLatin1(section), QString::fromLatin1(key),
                       value);
    }
    void SetMain(const char* key, const char* value) { SetKey("Main", key, QString::fromLatin1(value)); }
    // Returns the calls of an operation, each as one line of JSON.
    std::vector<std::string> CallsOf(const char* operation) {
        std::vector<std::string> found;
        for (const QJsonArray& call : jukebox.platform.calls.Entries()) {
            if (call[0] == QLatin1String(operation)) {
                found.push_back(Text(call));
            }
        }
        return found;
    }
    static std::string Text(const QJsonArray& call) {
        return QJsonDocument(call).toJson(QJsonDocument::Compact).toStdString();
    }

    Jukebox jukebox;
    Form_Main& form = jukebox.form;
};

std::string Pointer(const char* object, int number) {
    return "[\"MousePointer\",\"" + std::string(object) + "\"," + std::to_string(number) + "]";
}

std::string Mode(int width, int height, int bits) {
    return "[\"ChangeDisplaySettings\"," + std::to_string(width) + ',' + std::to_string(height) + ',' +
           std::to_string(bits) + ']';
}

QString Treated(const QString& value, Read read) {
    return read == Read::kAsItIs    ? value
           : read == Read::kLowered ? value.toLower()
                                    : value.trimmed().toLower();
}

TEST_F(LoadConfigTest, EveryKeyIsReadWithItsTreatment) {
    std::set<QString> named;
    for (const Row& row : kRows) {
        const QString value =
            QStringLiteral("%1 OF %2  ").arg(QLatin1String(row.key), QLatin1String(row.section));
        SetKey(row.section, row.key, value);
        named.insert(QString::fromLatin1(row.section) + u'/' + QString::fromLatin1(row.key));
    }
    EXPECT_EQ(named.size(), 48U);
    LoadConfig(form);
    EXPECT_EQ(form.settings.StartPath, jukebox.Music());
    for (const Row& row : kRows) {
        const QString value =
            QStringLiteral("%1 OF %2  ").arg(QLatin1String(row.key), QLatin1String(row.section));
        EXPECT_EQ(form.settings.*row.variable, Treated(value, row.read)) << row.section << ' ' << row.key;
    }
}

TEST_F(LoadConfigTest, AMissingKeyClearsItsVariableUnlessItIsKept) {
    for (const Row& row : kRows) {
        form.settings.*row.variable = QStringLiteral("before");
    }
    jukebox.platform.files.Write(jukebox.Home(QStringLiteral("config.ini")),
                                 "[Main]\nStartPath=" + jukebox.Music().toUtf8() + "\n", false);
    LoadConfig(form);
    for (const Row& row : kRows) {
        EXPECT_EQ(form.settings.*row.variable, row.kept ? QStringLiteral("before") : QString())
            << row.section << ' ' << row.key;
    }
}

TEST_F(LoadConfigTest, AnEmptyKeyCountsAsMissingWhereOneIsKept) {
    for (const Row& row : kRows) {
        form.settings.*row.variable = QStringLiteral("before");
        SetKey(row.section, row.key, QString());
    }
    LoadConfig(form);
    for (const Row& row : kRows) {
        EXPECT_EQ(form.settings.*row.variable, row.kept ? QStringLiteral("before") : QString())
            << row.section << ' ' << row.key;
    }
}

TEST_F(LoadConfigTest, LogsItsBeginningTheChangeOfTheModeAndItsEnd) {
    SetMain("Fullscreen", "true");
    SetMain("FullscreenSize", "800x600 16bits");
    LoadConfig(form);
    const QStringList expected = {
        QStringLiteral(" : Récupération des parametres de config dans le fichier config.ini (LoadConfig)"),
        QStringLiteral(" : Changement de la résolution d'écran"),
        QStringLiteral(" : Fin chargement config "),
    };
    EXPECT_EQ(jukebox.Log(), expected);
}

TEST_F(LoadConfigTest, TheModeIsSetAgainAtEachReload) {
    SetMain("Fullscreen", "true");
    SetMain("FullscreenSize", "800x600 16bits");
    LoadConfig(form);
    LoadConfig(form);
    EXPECT_THAT(CallsOf("ChangeDisplaySettings"), ElementsAre(Mode(800, 600, 16), Mode(800, 600, 16)));
}

TEST_F(LoadConfigTest, WithoutFullscreenTheModeIsNeverTouched) {
    SetMain("FullscreenSize", "800x600 16bits");
    LoadConfig(form);
    EXPECT_THAT(CallsOf("ChangeDisplaySettings"), IsEmpty());
}

TEST_F(LoadConfigTest, BlanksAroundTheNumbersOfTheModeDoNoHarm) {
    SetMain("Fullscreen", "true");
    for (const char* size : {"1024 x 768 32bits", "1024x768   32 bits", "1024 x768 32bits "}) {
        SetMain("FullscreenSize", size);
        LoadConfig(form);
    }
    EXPECT_THAT(CallsOf("ChangeDisplaySettings"), ::testing::Each(Mode(1024, 768, 32)));
    EXPECT_EQ(CallsOf("ChangeDisplaySettings").size(), 3U);
}

struct SizeFault {
    const char* name;
    const char* size;
    int number;
};

// clang-format off
constexpr std::array kSizeFaults = {
    SizeFault{"NoBlank",                "1024x76832bits",        kTypeMismatch},
    SizeFault{"NoX",                    "1024 768 32bits",       kTypeMismatch},
    SizeFault{"NoBlankBeforeTheDepth",  "1024 x 768",            kTypeMismatch},
    SizeFault{"NoWidth",                "x768 32bits",           kTypeMismatch},
    SizeFault{"NoHeight",               "1024x 32bits",          kTypeMismatch},
    SizeFault{"NoDepth",                "1024x768 bits",         kTypeMismatch},
    SizeFault{"NothingBehindTheHeight", "1024x768",              kTypeMismatch},
    SizeFault{"AWord",                  "wide",                  kTypeMismatch},
    SizeFault{"WidthBeyond32Bits",      "2147483648x768 32bits", kOverflow},
};
// clang-format on

void PrintTo(const SizeFault& fault, std::ostream* out) {
    *out << fault.size;
}

class ScreenSize : public LoadConfigTest, public ::testing::WithParamInterface<SizeFault> {};

TEST_P(ScreenSize, ThatIsNoneStopsTheProgramAndIsNamed) {
    SetMain("Fullscreen", "true");
    SetMain("FullscreenSize", GetParam().size);
    const std::optional<ProgramStop> stop = StopOf([&] { LoadConfig(form); });
    ASSERT_TRUE(stop);
    EXPECT_EQ(stop->error.number, GetParam().number);
    EXPECT_EQ(stop->routine, QStringLiteral("LoadConfig"));
    const QString& detail = stop->error.detail;
    EXPECT_TRUE(detail.contains(jukebox.Home(QStringLiteral("config.ini")))) << detail.toStdString();
    EXPECT_TRUE(detail.contains(QStringLiteral("[Main]"))) << detail.toStdString();
    EXPECT_TRUE(detail.contains(QStringLiteral("FullscreenSize"))) << detail.toStdString();
    EXPECT_THAT(CallsOf("ChangeDisplaySettings"), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Sizes, ScreenSize, ::testing::ValuesIn(kSizeFaults),
                         [](const auto& fault) { return fault.param.name; });

TEST_F(LoadConfigTest, TheFormsOwnPointerNeedsTheWordFalse) {
    LoadConfig(form);
    EXPECT_THAT(CallsOf("MousePointer"), ElementsAre(Pointer("Form_Main", 99), Pointer("Picture_Main", 99),
                                                     Pointer("Picture_MainVideo", 99)));
    for (const char* mode : {"true", "", "no"}) {
        jukebox.platform.calls.Clear();
        SetMain("TactileMode", mode);
        LoadConfig(form);
        EXPECT_THAT(CallsOf("MousePointer"), ElementsAre(Pointer("Form_Main", 0), Pointer("Picture_Main", 0),
                                                         Pointer("Picture_MainVideo", 0)))
            << mode;
    }
}

TEST_F(LoadConfigTest, EventsRunOnceBehindTheScreenKeysAndAheadOfTheRest) {
    SetMain("PositionLeft", "7");
    QStringList seen;
    jukebox.platform.pump.runPending = [&] {
        seen += form.settings.Theme + u'/' + form.settings.Fullscreen + u'/' + form.settings.PositionLeft;
        return false;
    };
    LoadConfig(form);
    EXPECT_EQ(seen, QStringList{QStringLiteral("default/false/")});
    EXPECT_EQ(form.settings.PositionLeft, QStringLiteral("7"));
}

TEST_F(LoadConfigTest, TheFirstRunOpensTheDialogInTheProgramsFolder) {
    SetMain("StartPath", "");
    form.shell.Timer1.Enabled = true;
    int dialogs = 0;
    jukebox.platform.dialogs.showModal = [&](const QString& dialog) {
        ++dialogs;
        EXPECT_EQ(dialog, QStringLiteral("Form_Config"));
        EXPECT_EQ(form.settings.StartPath, jukebox.Home());
        EXPECT_FALSE(form.shell.Timer1.Enabled);
        EXPECT_EQ(Text(jukebox.platform.calls.Last()), Pointer("Screen", 1));
        SetKey("Main", "StartPath", jukebox.Music());
    };
    LoadConfig(form);
    EXPECT_EQ(dialogs, 1);
    EXPECT_EQ(form.settings.StartPath, jukebox.Music());
    EXPECT_TRUE(form.shell.Timer1.Enabled);
    EXPECT_EQ(CallsOf("MousePointer").at(1), Pointer("Screen", 11));
    EXPECT_EQ(jukebox.Log().last(), QStringLiteral(" : Fin chargement config "));
}

TEST_F(LoadConfigTest, ACancelledFirstRunRestoresTheModeAndRunsTheExitRoutine) {
    SetMain("StartPath", "");
    // The state in which a running cabinet loads its configuration again.
    form.settings.Fullscreen = QStringLiteral("true");
    form.shell.ScreenWidth = 1024;
    form.shell.ScreenHeight = 768;
    form.shell.ScreenBits = 24;
    int points = 0;
    jukebox.platform.pump.runPending = [&] {
        ++points;
        return false;
    };
    EXPECT_THROW(LoadConfig(form), ProgramEnd);
    EXPECT_EQ(points, 1);
    EXPECT_EQ(jukebox.Log().last(), QStringLiteral(" : Changement de la résolution d'écran"));
    EXPECT_EQ(jukebox.platform.calls.Last(), QJsonArray{QStringLiteral("BASS_Free")});
    EXPECT_THAT(CallsOf("ChangeDisplaySettings"), ElementsAre(Mode(1024, 768, 24)));
}

TEST_F(LoadConfigTest, ACancelledFirstRunTouchesNoModeOnAFirstStart) {
    SetMain("StartPath", "");
    SetMain("Fullscreen", "true");
    EXPECT_THROW(LoadConfig(form), ProgramEnd);
    EXPECT_THAT(CallsOf("ChangeDisplaySettings"), IsEmpty());
    EXPECT_EQ(jukebox.Log().size(), 2);
    EXPECT_EQ(jukebox.Log().last(), QStringLiteral(" : Aucun dossier de musique choisi, fin du programme"));
}

TEST_F(LoadConfigTest, AMissingFileIsAFirstRun) {
    jukebox.platform.files.Remove(jukebox.Home(QStringLiteral("config.ini")));
    int dialogs = 0;
    jukebox.platform.dialogs.showModal = [&](const QString&) { ++dialogs; };
    EXPECT_THROW(LoadConfig(form), ProgramEnd);
    EXPECT_EQ(dialogs, 1);
}

TEST_F(LoadConfigTest, TheReloadGivesTheBigCoverTheCabinetsValue) {
    LoadConfig(form);
    form.settings.ShowBigCover = QStringLiteral("true");
    LoadConfig(form);
    EXPECT_EQ(form.settings.ShowBigCover, QStringLiteral("false"));
    EXPECT_EQ(form.settings.ShowBigCoverDefault, QStringLiteral("false"));
}

} // namespace

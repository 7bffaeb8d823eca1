// Start-up, checked by its log, its platform calls and its errors.
#include "support/jukebox.h"

#include <gtest/gtest.h>

#include <array>
#include <ostream>

namespace {

// Returns the last argument of each call of an operation.
QStringList CallsOf(const SimulatedPlatform& platform, const QString& operation) {
    QStringList found;
    for (const QJsonArray& call : platform.calls.Entries()) {
        if (call[0] == operation) {
            found += call[call.size() - 1].toString();
        }
    }
    return found;
}

int ExitCodeOf(Jukebox& jukebox) {
    try {
        jukebox.Start();
    } catch (const ProgramEnd& end) {
        return end.exitCode;
    }
    return -1;
}

TEST(StartUp, EmptiesAnOldLogAndBeginsWithTheLaunchAndTheVersion) {
    Jukebox jukebox;
    jukebox.platform.files.Write(jukebox.Home(QStringLiteral("vantorix.log")), "an old line\r\n", false);
    jukebox.Start();
    const QStringList log = jukebox.Log();
    ASSERT_GE(log.size(), 2);
    EXPECT_EQ(log[0], QStringLiteral(" : Lancement de l'application"));
    EXPECT_EQ(log[1], QStringLiteral(" : Vantorix-Jukebox version %1.%2.%3")
                          .arg(VANTORIX_VERSION_MAJOR)
                          .arg(VANTORIX_VERSION_MINOR)
                          .arg(VANTORIX_VERSION_PATCH));
}

TEST(StartUp, LogsSettingsFolderMenuAndThemeInThisOrder) {
    Jukebox jukebox;
    jukebox.Start();
    const QStringList expected = {
        QStringLiteral(" : Récupération des parametres de config dans le fichier config.ini (LoadConfig)"),
        QStringLiteral(" : Fin chargement config "),
        QStringLiteral(" : deplacement dir1 vers ") + jukebox.Music(),
        QStringLiteral(" : Configuration de la zone de commandes (LoadCommand)"),
        QStringLiteral(" : Fin de configuration de la zone commande"),
        QStringLiteral(" : Chargement du theme default (LoadTheme)"),
    };
    EXPECT_EQ(jukebox.Log().mid(2, expected.size()), expected);
}

TEST(StartUp, TellsAWrongAudioLibraryAndEndsAtOnce) {
    Jukebox jukebox;
    jukebox.platform.failures.Add(QStringLiteral("BASS_GetVersion"));
    EXPECT_EQ(ExitCodeOf(jukebox), 0);
    EXPECT_EQ(CallsOf(jukebox.platform, QStringLiteral("MsgBox")),
              QStringList{QStringLiteral("An incorrect version of BASS.DLL was loaded")});
    // Freed once, before the version is checked; the exit routine, which would free it again, does not run.
    EXPECT_EQ(CallsOf(jukebox.platform, QStringLiteral("BASS_Free")).size(), 1);
    EXPECT_EQ(CallsOf(jukebox.platform, QStringLiteral("BASS_Init")).size(), 0);
}

TEST(StartUp, TellsNothingWhenThereIsNoOutput) {
    Jukebox jukebox;
    jukebox.platform.failures.Add(QStringLiteral("BASS_Init"));
    EXPECT_EQ(ExitCodeOf(jukebox), 0);
    EXPECT_EQ(CallsOf(jukebox.platform, QStringLiteral("MsgBox")).size(), 0);
    EXPECT_EQ(jukebox.platform.calls.Last(), QJsonArray{QStringLiteral("BASS_Init")});
    EXPECT_EQ(jukebox.Log().last(), QStringLiteral(" : Fin chargement config "));
}

TEST(StartUp, KeepsTheWindowHiddenUntilTheFirstFrameIsDrawn) {
    Jukebox jukebox;
    jukebox.SetKey(QStringLiteral("config.ini"), QStringLiteral("Main"), QStringLiteral("StartPath"), {});
    std::optional<bool> visible;
    std::optional<int> busy;
    jukebox.platform.dialogs.showModal = [&](const QString&) {
        visible = jukebox.form.shell.MainWindow.Visible;
        busy = jukebox.form.shell.InputBusy.value();
        jukebox.SetKey(QStringLiteral("config.ini"), QStringLiteral("Main"), QStringLiteral("StartPath"),
                       jukebox.Music());
    };
    jukebox.Start();
    EXPECT_EQ(visible, false);
    EXPECT_EQ(busy, 1);
    EXPECT_TRUE(jukebox.form.shell.MainWindow.Visible);
    EXPECT_EQ(jukebox.form.shell.InputBusy, 0);
}

// An error must tell the operator where to look: the file, the section and the key.
struct Fault {
    const char* name;
    const char* section;
    const char* key;
    const char* value;
    int number;
};

// clang-format off
constexpr std::array kFaults = {
    Fault{"APortThatIsAWord",       "RGBLeds", "Commport",          "first", kTypeMismatch},
    Fault{"NoPort",                 "RGBLeds", "Commport",          "",      kTypeMismatch},
    Fault{"APortBeyond16Bits",      "RGBLeds", "Commport",          "40000", kOverflow},
    Fault{"APortThatIsRefused",     "RGBLeds", "Commport",          "99",    kInvalidPortNumber},
    Fault{"APlaceThatIsAWord",      "Main",    "PositionLeft",      "left",  kTypeMismatch},
    Fault{"AVideoPlaceThatIsAWord", "Main",    "VideoPositionLeft", "right", kTypeMismatch},
};
// clang-format on

void PrintTo(const Fault& fault, std::ostream* out) {
    *out << fault.key << '=' << fault.value;
}

class StartUpFault : public ::testing::TestWithParam<Fault> {};

TEST_P(StartUpFault, NamesFileSectionAndKey) {
    Jukebox jukebox;
    const QString section = QString::fromLatin1(GetParam().section);
    const QString key = QString::fromLatin1(GetParam().key);
    jukebox.SetKey(QStringLiteral("config.ini"), QStringLiteral("RGBLeds"), QStringLiteral("Active"),
                   QStringLiteral("true"));
    jukebox.SetKey(QStringLiteral("config.ini"), section, key, QString::fromLatin1(GetParam().value));
    const std::optional<ProgramStop> stop = StopOf([&] { jukebox.Start(); });
    ASSERT_TRUE(stop);
    EXPECT_EQ(stop->error.number, GetParam().number);
    const QString& detail = stop->error.detail;
    EXPECT_TRUE(detail.contains(QStringLiteral("config.ini"))) << detail.toStdString();
    EXPECT_TRUE(detail.contains(u'[' + section + u']')) << detail.toStdString();
    EXPECT_TRUE(detail.contains(key)) << detail.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Keys, StartUpFault, ::testing::ValuesIn(kFaults),
                         [](const auto& fault) { return fault.param.name; });

} // namespace

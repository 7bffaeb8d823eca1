// Tests of the check of the settings.
#include "app/doctor/findings_of.h"
#include "app/doctor/settings_check.h"
#include "support/home_folder.h"
#include "support/jukebox.h"

#include <gtest/gtest.h>

#include <QFile>

namespace {

QByteArray DeliveredConfig() {
    QFile file(QStringLiteral(TESTS_FOLDER "/../home/config.ini"));
    file.open(QIODevice::ReadOnly);
    return file.readAll().replace("StartPath=\n", "StartPath=/music\n");
}

// What is reported when a line of the delivered config.ini is replaced.
struct Row {
    const char* line;
    const char* replacement;
    const char* level;
    const char* words;
};

class ConfigCheckTest : public testing::TestWithParam<Row> {};

} // namespace

TEST_P(ConfigCheckTest, IsReportedOnce) {
    const Row& row = GetParam();
    QByteArray config = DeliveredConfig();
    ASSERT_TRUE(config.contains(QByteArray("\n") + row.line + "\n")) << row.line;
    config.replace(QByteArray("\n") + row.line + "\n", QByteArray("\n") + row.replacement + "\n");
    HomeFolder home;
    home.Write(QStringLiteral("config.ini"), config);
    FindingsOf found;
    CheckConfig(home.files(), home.Path(), found.report);
    EXPECT_EQ(found.Count(row.level, row.words), 1);
    EXPECT_EQ(found.All().size(), 1U);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Rows, ConfigCheckTest, testing::Values(
    Row{"StartPath=/music", "StartPath=", "warning", "no music folder is set"},
    Row{"ShowCover=true", "ShowCover=yes", "warning", "counts as false"},
    Row{"ShowMainZone=true", "", "warning", "ShowMainZone is missing"},
    Row{"PositionWidth=", "PositionWidth=wide", "error", "not a number of pixels"},
    Row{"VideoPositionTop=", "VideoPositionTop=99999999999", "error", "not a number of pixels"},
    Row{"DefaultOrder=alpha", "DefaultOrder=date", "error", "is no order"},
    Row{"Orientation=horizontal", "Orientation=upright", "warning", "counts as vertical"},
    Row{"Fullscreen=false\nFullscreenSize=1920x1080 32bits", "Fullscreen=true\nFullscreenSize=big", "error", "no display mode"},
    Row{"haut=38", "haut=", "error", "locks up at the next key"},
    Row{"Preview=113", "Preview=99999", "error", "locks up at the next key"},
    Row{"Next=117", "Next=70", "warning", "the key F always"},
    Row{"bas=40", "bas=38", "warning", "haut and bas have the same key"},
    Row{"Active=false\nCommport=1", "Active=true\nCommport=17", "error", "no serial port"},
    Row{"Active=false", "Active=TRUE", "warning", "in small letters"},
    Row{"Active=false\nCommport=1\nNbLeds=30", "Active=true\nCommport=1\nNbLeds=0", "error", "no number of LEDs"},
    Row{"Active=false\nCommport=1\nNbLeds=30", "Active=true\nCommport=1\nNbLeds=1024", "error", "no number of LEDs"},
    Row{"Active=false\nCommport=1\nNbLeds=30", "Active=true\nCommport=1\nNbLeds=300", "warning", "flicker"},
    Row{"Active=false\nCommport=1\nNbLeds=30", "Active=true\nCommport=1\nNbLeds=-1", "warning", "show nothing"},
    Row{"Watchdog=true", "Watchdog=1", "warning", "counts as false"},
    Row{"Watchdog=true", "Watchdogs=true", "warning", "Watchdogs: the key is unknown"},
    Row{"[RGBLeds]", "[Leds]", "warning", "[Leds] is unknown"},
    Row{"LastPath=", "LastPath", "warning", "has no effect"}));
// clang-format on

TEST(SettingsCheckTest, TheDeliveredSettingsHaveNoFault) {
    HomeFolder home;
    home.Write(QStringLiteral("config.ini"), DeliveredConfig());
    FindingsOf found;
    CheckConfig(home.files(), home.Path(), found.report);
    EXPECT_EQ(found.All().size(), 0U);
}

TEST(SettingsCheckTest, AMissingConfigIsAnError) {
    HomeFolder home;
    FindingsOf found;
    CheckConfig(home.files(), home.Path(), found.report);
    EXPECT_EQ(found.Count("error", "There are no settings"), 1);
}

TEST(SettingsCheckTest, ADoubledKeyAndALongValueAreNamedWithTheirLines) {
    HomeFolder home;
    home.Write(
        QStringLiteral("config.ini"),
        DeliveredConfig().replace("LastPath=\n", "LastPath=" + QByteArray(300, 'x') + "\nlastpath=2\n"));
    FindingsOf found;
    CheckConfig(home.files(), home.Path(), found.report);
    EXPECT_EQ(found.Count("warning", "[Main] lastpath is there twice"), 1);
    EXPECT_EQ(found.Count("warning", "only the first 254 characters"), 1);
}

TEST(SettingsCheckTest, AFolderThatConfigCannotHoldIsAnError) {
    for (const QString& folder : {QString(255, u'x'), QStringLiteral(" /music"), QStringLiteral("/a\nb")}) {
        FindingsOf found;
        CheckFolderName(folder, found.report);
        EXPECT_EQ(found.Count("error", "cannot be the music folder"), 1);
    }
    FindingsOf found;
    CheckFolderName(QString(254, u'x'), found.report);
    EXPECT_EQ(found.All().size(), 0U);
}

TEST(SettingsCheckTest, SettingsOfFoldersAndCounts) {
    HomeFolder home;
    home.Write(QStringLiteral("pathconfig.ini"),
               "[/gone/folder]\r\nOrder=date\r\nShowCover=1\r\nColour=red\r\n[/]\r\nOrder=alpha\r\n");
    home.Write(QStringLiteral("stats.ini"),
               "[PayingCount]\r\na.mp3=3\r\nb.mp3=x\r\nc.mp3=\r\n[Other]\r\nd=x\r\n");
    FindingsOf found;
    CheckFolderSettings(home.files(), home.Path(), found.report);
    CheckStats(home.files(), home.Path(), found.report);
    EXPECT_EQ(found.Count("note", "/gone/folder is gone"), 1);
    EXPECT_EQ(found.Count("warning", "this is no order"), 1);
    EXPECT_EQ(found.Count("warning", "counts as false"), 1);
    EXPECT_EQ(found.Count("note", "Colour=red: the key is unknown"), 1);
    EXPECT_EQ(found.Count("error", "b.mp3"), 1);
    EXPECT_EQ(found.All().size(), 5U);
}

TEST(SettingsCheckTest, Playlists) {
    Jukebox jukebox;
    jukebox.Track(QStringLiteral("a.mp3"));
    const QByteArray kept = jukebox.Music(QStringLiteral("a.mp3")).toUtf8();
    const auto write = [&](const char* name, const QByteArray& bytes) {
        jukebox.platform.realFiles.Write(
            jukebox.Home(QStringLiteral("playlists/") + QString::fromLatin1(name)), bytes, false);
    };
    write("good.vtxpl", " 1 \r\n" + kept + "\r\nA\r\n");
    write("gone.vtxpl", " 3 \r\n/gone/1.mp3\r\nX\r\n" + kept + "\r\nA\r\n/gone/2.mp3\r\nY\r\n");
    write("cut.vtxpl", " 2 \r\n" + kept + "\r\n");
    write("word.vtxpl", "many\r\n");
    FindingsOf found;
    CheckPlaylists(jukebox.form, found.report);
    EXPECT_EQ(found.Count("warning", "Entry 1 is skipped, because its file is gone: /gone/1.mp3"), 1);
    EXPECT_EQ(found.Count("warning", "Entry 3 is skipped, because its file is gone: /gone/2.mp3"), 1);
    EXPECT_EQ(found.Count("error", "cut.vtxpl"), 1);
    EXPECT_EQ(found.Count("error", "word.vtxpl"), 1);
    EXPECT_EQ(found.All().size(), 4U);
    QDir(jukebox.Home(QStringLiteral("playlists"))).removeRecursively();
    FindingsOf missing;
    CheckPlaylists(jukebox.form, missing.report);
    EXPECT_EQ(missing.Count("error", "\"load\" and \"save\""), 1);
}

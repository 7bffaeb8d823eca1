// Tests of finding and filling the application folder.
#include "app/home/app_folder.h"

#include "platform/posix/posix_files.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class AppFolderTest : public testing::Test {
protected:
    QString Path(const char* relative) const { return folder.filePath(QString::fromLatin1(relative)); }
    void MakeFile(const char* relative, const QByteArray& bytes) {
        QDir().mkpath(QFileInfo(Path(relative)).path());
        QFile file(Path(relative));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    QByteArray Content(const char* relative) const {
        QFile file(Path(relative));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
    }
    void MakeShare(const char* where) {
        MakeFile((QByteArray(where) + "/config.ini").constData(), "[Main]\r\n");
        MakeFile((QByteArray(where) + "/themes/default/theme.ini").constData(), "[zonelist]\n");
        MakeFile((QByteArray(where) + "/playlists/.keep").constData(), "");
    }
    AppFolderResult Find() { return FindAppFolder(files, sources); }

    QTemporaryDir folder;
    PosixFiles files;
    AppFolderSources sources{.home = std::nullopt,
                             .programFolder = Path("bin"),
                             .dataHome = Path("data"),
                             .userHome = Path("user"),
                             .shareFolder = Path("share")};
};

} // namespace

TEST_F(AppFolderTest, TheGivenFolderIsTakenAndLeftAsItIs) {
    MakeFile("given/config.ini", "");
    sources.home = Path("given") + QStringLiteral("/../given/");
    const AppFolderResult found = Find();
    EXPECT_EQ(found.error, QString());
    EXPECT_EQ(found.folder, QFileInfo(Path("given")).canonicalFilePath());
    EXPECT_EQ(QDir(found.folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList(QStringLiteral("config.ini")));
}

TEST_F(AppFolderTest, AGivenFolderWithThemesAndNoSettingsIsAFirstRun) {
    MakeFile("given/themes/default/theme.ini", "");
    sources.home = Path("given");
    EXPECT_EQ(Find().error, QString());
}

TEST_F(AppFolderTest, AGivenFolderThatHoldsNoJukeboxIsRefusedAndLeftAsItIs) {
    MakeShare("share");
    QDir().mkpath(Path("given"));
    sources.home = Path("given");
    const AppFolderResult found = Find();
    EXPECT_TRUE(found.error.contains(Path("given"))) << found.error.toStdString();
    EXPECT_TRUE(found.error.contains(QStringLiteral("neither config.ini nor themes")))
        << found.error.toStdString();
    EXPECT_TRUE(QDir(Path("given")).isEmpty());
}

TEST_F(AppFolderTest, AGivenFolderThatIsMissingIsToldByItsName) {
    sources.home = Path("nowhere");
    EXPECT_TRUE(Find().error.contains(Path("nowhere")));
}

TEST_F(AppFolderTest, TheProgramsFolderServesWhenItHoldsAJukebox) {
    MakeFile("bin/themes/default/theme.ini", "");
    EXPECT_EQ(Find().folder, Path("bin"));
}

TEST_F(AppFolderTest, TheUsersFolderIsFilledAtTheFirstStart) {
    MakeShare("share");
    const AppFolderResult found = Find();
    EXPECT_EQ(found.error, QString());
    EXPECT_EQ(found.folder, QFileInfo(Path("data/vantorix")).canonicalFilePath());
    EXPECT_EQ(Content("data/vantorix/config.ini"), "[Main]\r\n");
    EXPECT_EQ(Content("data/vantorix/playlists/.keep"), "");
    EXPECT_FALSE(QFileInfo::exists(Path("data/vantorix/themes")));
    EXPECT_EQ(found.share, QFileInfo(Path("share")).canonicalFilePath());
}

TEST_F(AppFolderTest, AFilledFolderIsNotTouchedAgain) {
    MakeShare("share");
    Find();
    MakeFile("data/vantorix/config.ini", "[Main]\nTheme=mine\n");
    QFile::remove(Path("data/vantorix/playlists/.keep"));
    Find();
    EXPECT_EQ(Content("data/vantorix/config.ini"), "[Main]\nTheme=mine\n");
    EXPECT_EQ(Content("data/vantorix/playlists/.keep"), "missing");
}

TEST_F(AppFolderTest, AFillingThatBrokeOffGoesOnAndKeepsWhatIsThere) {
    MakeShare("share");
    MakeFile("data/vantorix/themes/default/theme.ini", "mine");
    EXPECT_EQ(Find().error, QString());
    EXPECT_EQ(Content("data/vantorix/themes/default/theme.ini"), "mine");
    EXPECT_EQ(Content("data/vantorix/config.ini"), "[Main]\r\n");
}

TEST_F(AppFolderTest, ACopyOfAThemeThatAnEarlierVersionBeganIsCompleted) {
    MakeShare("share");
    MakeFile("share/themes/default/logo.png", "picture");
    MakeFile("share/themes/touch/theme.ini", "[touch]");
    MakeFile("data/vantorix/themes/default/theme.ini", "[zonelist]\n");
    EXPECT_EQ(Find().error, QString());
    EXPECT_EQ(Content("data/vantorix/themes/default/logo.png"), "picture");
    EXPECT_FALSE(QFileInfo::exists(Path("data/vantorix/themes/touch")));
}

TEST_F(AppFolderTest, TheDeliveredThemesServeEveryFolderButTheProgramsOwn) {
    MakeShare("share");
    MakeFile("given/config.ini", "");
    const QString share = QFileInfo(Path("share")).canonicalFilePath();
    sources.home = Path("given");
    EXPECT_EQ(Find().share, share);
    sources.home.reset();
    EXPECT_EQ(Find().share, share) << "filled";
    EXPECT_EQ(Find().share, share) << "found";
    MakeFile("bin/config.ini", "");
    EXPECT_EQ(Find().share, QString());
}

TEST_F(AppFolderTest, WithoutDeliveredFilesThereIsNoShareFolder) {
    MakeFile("given/config.ini", "");
    sources.home = Path("given");
    EXPECT_EQ(Find().error, QString());
    EXPECT_EQ(Find().share, QString());
}

TEST_F(AppFolderTest, WithoutDataHomeTheCustomaryPlaceBelowHomeIsUsed) {
    MakeShare("share");
    for (const char* unset : {"", "relative"}) {
        sources.dataHome = QString::fromLatin1(unset);
        const QString found = Find().folder;
        EXPECT_EQ(found, QFileInfo(Path("user/.local/share/vantorix")).canonicalFilePath());
    }
}

TEST_F(AppFolderTest, TheShareFolderBesideTheProgramIsTheSecondChoice) {
    MakeShare("share/vantorix");
    sources.shareFolder = Path("not installed");
    EXPECT_TRUE(Find().error.contains(QStringLiteral("--home"))) << "the program's folder does not exist yet";
    QDir().mkpath(Path("bin"));
    EXPECT_EQ(Find().error, QString());
    EXPECT_EQ(Content("data/vantorix/config.ini"), "[Main]\r\n");
}

TEST_F(AppFolderTest, WhatIsMissingIsTold) {
    EXPECT_TRUE(Find().error.contains(Path("share")));
    sources.dataHome.clear();
    sources.userHome.clear();
    EXPECT_TRUE(Find().error.contains(QStringLiteral("HOME")));
}

TEST_F(AppFolderTest, AFolderThatCannotBeFilledIsTold) {
    MakeShare("share");
    MakeFile("data", "a file in the way");
    EXPECT_TRUE(Find().error.contains(QStringLiteral("could not be filled")));
}

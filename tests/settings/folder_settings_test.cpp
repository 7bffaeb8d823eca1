// A folder's own settings and their fallbacks.
#include "settings/folder_settings.h"

#include "support/jukebox.h"

#include <gtest/gtest.h>

namespace {

// A form with the music folder as its current folder, before start-up.
class FolderSettingsTest : public ::testing::Test {
protected:
    FolderSettingsTest() {
        form.library.Dir1.Path = jukebox.Music();
        form.settings.DefaultOrder = QStringLiteral("alpha");
    }
    void SetFolder(const char* key, const char* value) {
        jukebox.SetKey(QStringLiteral("pathconfig.ini"), jukebox.Music(), QString::fromLatin1(key),
                       QString::fromLatin1(value));
    }
    void SetCabinet(const char* key, const char* value) {
        jukebox.SetKey(QStringLiteral("config.ini"), QStringLiteral("Main"), QString::fromLatin1(key),
                       QString::fromLatin1(value));
    }

    Jukebox jukebox;
    Form_Main& form = jukebox.form;
};

TEST_F(FolderSettingsTest, AFolderWithoutASectionTakesTheCabinetsValues) {
    SetCabinet("ShowCover", "TRUE");
    SetCabinet("ShowBigCover", " true ");
    SetCabinet("ShowFolderCover", "false");
    SetCabinet("ShowFileCover", "True");
    SetCabinet("ShowTrackNum", "");
    SetCabinet("ShowMp3CoverTag", "no");
    SetCabinet("ShowBigtitle", "true");
    form.settings.DefaultOrder = QStringLiteral("playcount");
    ReadStartFolderSettings(form);
    EXPECT_EQ(form.library.Order, QStringLiteral("playcount"));
    ReadFolderSettings(form);
    EXPECT_EQ(form.settings.ShowCover, QStringLiteral("true"));
    EXPECT_EQ(form.settings.ShowBigCover, QStringLiteral("true"));
    EXPECT_EQ(form.settings.ShowFolderCover, QStringLiteral("false"));
    EXPECT_EQ(form.settings.ShowFileCover, QStringLiteral("true"));
    EXPECT_EQ(form.settings.ShowTrackNum, QString());
    EXPECT_EQ(form.settings.ShowMp3CoverTag, QStringLiteral("no"));
    // Only the big title takes no value from the cabinet's file.
    EXPECT_EQ(form.settings.ShowBigtitle, QStringLiteral("false"));
}

TEST_F(FolderSettingsTest, AFoldersOwnValuesWin) {
    SetFolder("Order", "playcount");
    SetFolder("ShowBigtitle", "true");
    SetFolder("ShowCover", "false");
    SetFolder("ShowBigCover", "true");
    SetFolder("ShowFolderCover", "false");
    SetFolder("ShowFileCover", "false");
    SetFolder("ShowTrackNum", "false");
    SetFolder("ShowMp3CoverTag", "false");
    ReadStartFolderSettings(form);
    EXPECT_EQ(form.library.Order, QStringLiteral("playcount"));
    ReadFolderSettings(form);
    EXPECT_EQ(form.settings.ShowBigtitle, QStringLiteral("true"));
    EXPECT_EQ(form.settings.ShowBigCover, QStringLiteral("true"));
    for (const QString* value :
         {&form.settings.ShowCover, &form.settings.ShowFolderCover, &form.settings.ShowFileCover,
          &form.settings.ShowTrackNum, &form.settings.ShowMp3CoverTag}) {
        EXPECT_EQ(*value, QStringLiteral("false"));
    }
}

TEST_F(FolderSettingsTest, AnotherFoldersSectionIsNotRead) {
    jukebox.SetKey(QStringLiteral("pathconfig.ini"), jukebox.Music(QStringLiteral("rock")),
                   QStringLiteral("Order"), QStringLiteral("playcount"));
    ReadStartFolderSettings(form);
    EXPECT_EQ(form.library.Order, QStringLiteral("alpha"));
}

TEST_F(FolderSettingsTest, AKeyOfBlanksCountsAsMissing) {
    SetFolder("Order", "   ");
    SetFolder("ShowBigtitle", "  ");
    SetFolder("ShowCover", " ");
    ReadStartFolderSettings(form);
    ReadFolderSettings(form);
    EXPECT_EQ(form.library.Order, QStringLiteral("alpha"));
    EXPECT_EQ(form.settings.ShowBigtitle, QStringLiteral("false"));
    EXPECT_EQ(form.settings.ShowCover, QStringLiteral("true"));
}

TEST_F(FolderSettingsTest, BlanksBehindAValueAreDropped) {
    SetFolder("Order", "playcount  ");
    SetFolder("ShowBigtitle", "true ");
    ReadStartFolderSettings(form);
    EXPECT_EQ(form.library.Order, QStringLiteral("playcount"));
    EXPECT_EQ(form.settings.ShowBigtitle, QStringLiteral("true"));
}

// Start-up converts the big title to lower case; a drawing uses it as it is spelled. All other switches are
// converted every time.
TEST_F(FolderSettingsTest, OnlyStartUpLowersTheBigTitle) {
    SetFolder("ShowBigtitle", "TRUE");
    SetFolder("ShowTrackNum", "FALSE");
    ReadStartFolderSettings(form);
    EXPECT_EQ(form.settings.ShowBigtitle, QStringLiteral("true"));
    ReadFolderSettings(form);
    EXPECT_EQ(form.settings.ShowBigtitle, QStringLiteral("TRUE"));
    EXPECT_EQ(form.settings.ShowTrackNum, QStringLiteral("false"));
}

TEST_F(FolderSettingsTest, StartUpKeepsTheFoldersCoverAndNumberApartAndLeavesTheBigCover) {
    SetFolder("ShowCover", "FALSE");
    SetFolder("ShowTrackNum", "False");
    SetFolder("ShowBigCover", "true");
    form.settings.ShowCover = form.settings.ShowTrackNum = form.settings.ShowBigCover =
        QStringLiteral("before");
    ReadStartFolderSettings(form);
    EXPECT_EQ(form.settings.ShowCoverFolder, QStringLiteral("false"));
    EXPECT_EQ(form.settings.ShowTrackNumFolder, QStringLiteral("false"));
    EXPECT_EQ(form.settings.ShowBigCover, QStringLiteral("before"));
}

} // namespace

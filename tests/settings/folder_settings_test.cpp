// A folder's own settings and what stands in for them.
#include "settings/folder_settings.h"

#include "support/jukebox.h"

#include <gtest/gtest.h>

namespace {

// A form that shows the music folder and is not started.
class FolderSettingsTest : public ::testing::Test {
protected:
    FolderSettingsTest() {
        form.Dir1.Path = jukebox.Music();
        form.DefaultOrder = QStringLiteral("alpha");
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
    form.DefaultOrder = QStringLiteral("playcount");
    ReadStartFolderSettings(form);
    EXPECT_EQ(form.Order, QStringLiteral("playcount"));
    ReadFolderSettings(form);
    EXPECT_EQ(form.ShowCover, QStringLiteral("true"));
    EXPECT_EQ(form.ShowBigCover, QStringLiteral("true"));
    EXPECT_EQ(form.ShowFolderCover, QStringLiteral("false"));
    EXPECT_EQ(form.ShowFileCover, QStringLiteral("true"));
    EXPECT_EQ(form.ShowTrackNum, QString());
    EXPECT_EQ(form.ShowMp3CoverTag, QStringLiteral("no"));
    // The big title alone has no value in the cabinet's file.
    EXPECT_EQ(form.ShowBigtitle, QStringLiteral("false"));
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
    EXPECT_EQ(form.Order, QStringLiteral("playcount"));
    ReadFolderSettings(form);
    EXPECT_EQ(form.ShowBigtitle, QStringLiteral("true"));
    EXPECT_EQ(form.ShowBigCover, QStringLiteral("true"));
    for (const QString* value : {&form.ShowCover, &form.ShowFolderCover, &form.ShowFileCover,
                                 &form.ShowTrackNum, &form.ShowMp3CoverTag}) {
        EXPECT_EQ(*value, QStringLiteral("false"));
    }
}

TEST_F(FolderSettingsTest, AnotherFoldersSectionIsNotRead) {
    jukebox.SetKey(QStringLiteral("pathconfig.ini"), jukebox.Music(QStringLiteral("rock")),
                   QStringLiteral("Order"), QStringLiteral("playcount"));
    ReadStartFolderSettings(form);
    EXPECT_EQ(form.Order, QStringLiteral("alpha"));
}

TEST_F(FolderSettingsTest, AKeyOfBlanksCountsAsMissing) {
    SetFolder("Order", "   ");
    SetFolder("ShowBigtitle", "  ");
    SetFolder("ShowCover", " ");
    ReadStartFolderSettings(form);
    ReadFolderSettings(form);
    EXPECT_EQ(form.Order, QStringLiteral("alpha"));
    EXPECT_EQ(form.ShowBigtitle, QStringLiteral("false"));
    EXPECT_EQ(form.ShowCover, QStringLiteral("true"));
}

TEST_F(FolderSettingsTest, BlanksBehindAValueAreDropped) {
    SetFolder("Order", "playcount  ");
    SetFolder("ShowBigtitle", "true ");
    ReadStartFolderSettings(form);
    EXPECT_EQ(form.Order, QStringLiteral("playcount"));
    EXPECT_EQ(form.ShowBigtitle, QStringLiteral("true"));
}

// Start-up lowers the big title; a drawing takes it as it stands. All other switches are lowered each time.
TEST_F(FolderSettingsTest, OnlyStartUpLowersTheBigTitle) {
    SetFolder("ShowBigtitle", "TRUE");
    SetFolder("ShowTrackNum", "FALSE");
    ReadStartFolderSettings(form);
    EXPECT_EQ(form.ShowBigtitle, QStringLiteral("true"));
    ReadFolderSettings(form);
    EXPECT_EQ(form.ShowBigtitle, QStringLiteral("TRUE"));
    EXPECT_EQ(form.ShowTrackNum, QStringLiteral("false"));
}

TEST_F(FolderSettingsTest, StartUpKeepsTheFoldersCoverAndNumberApartAndLeavesTheBigCover) {
    SetFolder("ShowCover", "FALSE");
    SetFolder("ShowTrackNum", "False");
    SetFolder("ShowBigCover", "true");
    form.ShowCover = form.ShowTrackNum = form.ShowBigCover = QStringLiteral("before");
    ReadStartFolderSettings(form);
    EXPECT_EQ(form.ShowCoverFolder, QStringLiteral("false"));
    EXPECT_EQ(form.ShowTrackNumFolder, QStringLiteral("false"));
    EXPECT_EQ(form.ShowBigCover, QStringLiteral("before"));
}

} // namespace

// Which folder a theme is read from: the application folder's own, or the delivered one.
#include "state/paths.h"

#include "support/failing_files.h"
#include "support/home_folder.h"
#include "support/jukebox.h"
#include "theme/theme_reader.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class ThemeFolderTest : public testing::Test {
protected:
    void SetUp() override {
        for (const QString& folder :
             {u"own"_s, u"own/themes"_s, u"share"_s, u"share/themes"_s, u"share/themes/walnut"_s}) {
            home.MakeFolder(folder);
        }
    }
    QString Find(const QString& theme) {
        return FolderOfTheme(files, home.Path(u"own"_s), home.Path(u"share"_s), theme);
    }

    HomeFolder home;
    FailingFiles files{home.files()};
};

TEST_F(ThemeFolderTest, ADeliveredThemeIsReadFromTheShareFolder) {
    EXPECT_EQ(Find(u"walnut"_s), home.Path(u"share/themes/walnut"_s));
}

TEST_F(ThemeFolderTest, AFolderOfTheSameNameInTheApplicationFolderWins) {
    home.MakeFolder(u"own/themes/walnut"_s);
    EXPECT_EQ(Find(u"walnut"_s), home.Path(u"own/themes/walnut"_s));
}

TEST_F(ThemeFolderTest, AThemeThatExistsNowhereBelongsIntoTheApplicationFolder) {
    EXPECT_EQ(Find(u"oak"_s), home.Path(u"own/themes/oak"_s));
    EXPECT_EQ(Find(QString()), home.Path(u"own/themes/"_s));
}

TEST_F(ThemeFolderTest, WithoutShareFolderNoFolderIsTested) {
    const QString own = home.Path(u"own"_s);
    EXPECT_EQ(FolderOfTheme(files, own, QString(), u"walnut"_s), own + u"/themes/walnut"_s);
    EXPECT_EQ(files.Calls("IsFolder"), 0);
}

TEST_F(ThemeFolderTest, TheErrorForAMissingThemeNamesBothFolders) {
    Jukebox box;
    box.form.shell.shareFolder = home.Path(u"share"_s);
    box.form.settings.Theme = u"oak"_s;
    try {
        ThemeReader(box.form).Integer(u"zonelist"_s, "X");
        FAIL() << "no error";
    } catch (const RunTimeError& error) {
        const std::string detail = error.detail.toStdString();
        EXPECT_TRUE(error.detail.contains(box.Home(u"themes/oak"_s))) << detail;
        EXPECT_TRUE(error.detail.contains(home.Path(u"share/themes/oak"_s))) << detail;
    }
}

} // namespace

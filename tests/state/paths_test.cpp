// Finding files whatever the case of their names.
#include "state/paths.h"

#include "library/folder_names.h"
#include "support/failing_files.h"
#include "support/home_folder.h"

#include <gtest/gtest.h>

namespace {

class FindFileTest : public testing::Test {
protected:
    QString Find(const char* name) { return FindFile(files, home.Path(), QString::fromUtf8(name)); }

    HomeFolder home;
    FailingFiles files{home.files()};
};

TEST_F(FindFileTest, TheExactNameFirst) {
    home.Write(QStringLiteral("Folder.jpg"));
    const QString exact = home.Write(QStringLiteral("folder.jpg"));
    home.Write(QStringLiteral("FOLDER.JPG"));
    EXPECT_EQ(Find("folder.jpg"), exact);
    EXPECT_EQ(files.Calls("ListFolder"), 0) << "the folder is read only when needed";
}

TEST_F(FindFileTest, ElseTheFirstOfThoseThatDifferInCaseOnly) {
    home.Write(QStringLiteral("folder.JPG"));
    const QString first = home.Write(QStringLiteral("FOLDER.jpg"));
    EXPECT_EQ(Find("folder.jpg"), first);
    const QString accent = home.Write(QString::fromUtf8("ÉTÉ.jpg"));
    EXPECT_EQ(Find("été.jpg"), accent);
}

TEST_F(FindFileTest, NothingIsEmpty) {
    EXPECT_EQ(Find("folder.jpg"), QString());
    EXPECT_EQ(FindFile(files, home.Path(QStringLiteral("none")), QStringLiteral("x")), QString());
    home.Write(QStringLiteral("FOLDER.jpg"));
    files.Fail("ListFolder");
    EXPECT_EQ(Find("folder.jpg"), QString());
}

TEST_F(FindFileTest, AFolderIsNoFile) {
    home.MakeFolder(QStringLiteral("folder.jpg"));
    home.MakeFolder(QStringLiteral("FOLDER.JPG"));
    EXPECT_EQ(Find("folder.jpg"), QString());
}

TEST_F(FindFileTest, NamesOfAFolderAreReadOnceAndFoundInAnyCase) {
    home.Write(QStringLiteral("Folder.jpg"));
    home.Write(QStringLiteral("FOLDER.jpg"));
    const QString exact = home.Write(QStringLiteral("song.jpg"));
    home.Write(QStringLiteral("SONG.jpg"));
    home.MakeFolder(QStringLiteral("album.jpg"));
    const FolderNames names(files, home.Path());
    EXPECT_EQ(names.FindFile(exact), exact);
    EXPECT_EQ(names.FindFile(home.Path(QStringLiteral("folder.jpg"))),
              home.Path(QStringLiteral("FOLDER.jpg")));
    EXPECT_EQ(names.FindFile(home.Path(QStringLiteral("album.jpg"))), QString());
    EXPECT_EQ(names.FindFile(home.Path(QStringLiteral("none.jpg"))), QString());
    EXPECT_EQ(files.Calls("ListFolder"), 1);
}

TEST_F(FindFileTest, FileExistsTakesTheExactPathOfAFile) {
    const QString path = home.Write(QStringLiteral("a.mp3"));
    EXPECT_TRUE(FileExists(files, path));
    EXPECT_FALSE(FileExists(files, home.Path(QStringLiteral("A.mp3"))));
    EXPECT_FALSE(FileExists(files, home.MakeFolder(QStringLiteral("b.mp3"))));
    EXPECT_FALSE(FileExists(files, QString()));
}

} // namespace

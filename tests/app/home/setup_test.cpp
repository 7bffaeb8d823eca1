// Setting the music folder without a screen.
#include "app/home/setup.h"

#include "support/failing_files.h"
#include "support/home_folder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

class SetupTest : public testing::Test {
protected:
    void SetUp() override {
        box.MakeFolder(u"home"_s);
        box.MakeFolder(u"music"_s);
        box.MakeFolder(u"music/Rock"_s);
        box.MakeFolder(u"music/.hidden"_s);
        for (const char* const track : {"music/a.mp3", "music/b.FLAC", "music/Rock/c.avi", "music/mix.vtxpl",
                                        "music/cover.jpg", "music/.hidden/d.mp3"}) {
            box.Write(QString::fromLatin1(track));
        }
        box.Write(u"home/config.ini"_s, "; mine\r\n[Main]\r\nstartpath= /old\r\nTheme=oak\r\n");
    }
    SetupResult Set(const QString& folder) {
        return SetMusicFolder(files, Home(), box.Path(u"share"_s), folder, 10s);
    }
    QString Home() const { return box.Path(u"home"_s); }
    QString Music() const { return box.Path(u"music"_s); }
    QByteArray Config() { return box.Read(u"home/config.ini"_s); }

    HomeFolder box;
    FailingFiles files{box.files()};
};

TEST_F(SetupTest, ChangesOneKeyAndCountsWhatTheJukeboxLists) {
    const SetupResult result = Set(Music() + u'/');
    EXPECT_EQ(result.error, QString());
    EXPECT_EQ(result.folder, Music());
    EXPECT_EQ(result.tracks, 3);
    EXPECT_FALSE(result.isMore);
    EXPECT_EQ(Config(), "; mine\r\n[Main]\r\nstartpath= " + Music().toUtf8() + "\r\nTheme=oak\r\n");
}

TEST_F(SetupTest, AMissingFileStartsFromTheDeliveredSettings) {
    files.Remove(box.Path(u"home/config.ini"_s));
    EXPECT_TRUE(Set(Music()).error.contains(u"does not exist"_s));
    box.MakeFolder(u"share"_s);
    box.Write(u"share/config.ini"_s, "[Main]\nTheme=walnut\nStartPath=\n[Key]\n");
    EXPECT_EQ(Set(Music()).error, QString());
    EXPECT_EQ(Config(), "[Main]\nTheme=walnut\nStartPath=" + Music().toUtf8() + "\n[Key]\n");
    EXPECT_EQ(box.Read(u"share/config.ini"_s), "[Main]\nTheme=walnut\nStartPath=\n[Key]\n");
}

TEST_F(SetupTest, ARelativeFolderIsWrittenWithItsWholePath) {
    const QString before = files.RealPath(u"."_s);
    ASSERT_EQ(::chdir(BytesOfPath(box.Path()).constData()), 0);
    const SetupResult result = Set(u"music"_s);
    ASSERT_EQ(::chdir(BytesOfPath(before).constData()), 0);
    EXPECT_EQ(result.error, QString());
    EXPECT_EQ(result.folder, files.RealPath(Music()));
}

TEST_F(SetupTest, FoldersThatAreMissingOrUnreadableAreRefused) {
    const QByteArray before = Config();
    EXPECT_TRUE(Set(box.Path(u"none"_s)).error.contains(u"there is no folder"_s));
    EXPECT_TRUE(Set(box.Path(u"music/a.mp3"_s)).error.contains(u"there is no folder"_s));
    files.Fail("ListFolder");
    EXPECT_TRUE(Set(Music()).error.contains(u"cannot be read"_s));
    EXPECT_EQ(Config(), before);
}

TEST_F(SetupTest, APathThatConfigIniCannotHoldIsRefused) {
    const QByteArray before = Config();
    QString deep = Music();
    while (deep.size() < 260) {
        deep += u'/' + QString(100, u'x');
        QDir().mkpath(deep);
    }
    box.MakeFolder(u"two\nlines"_s);
    EXPECT_TRUE(Set(deep).error.contains(u"config.ini cannot hold"_s));
    EXPECT_TRUE(Set(box.Path(u"two\nlines"_s)).error.contains(u"config.ini cannot hold"_s));
    EXPECT_EQ(Config(), before);
}

TEST_F(SetupTest, NamesWithBrokenBytesAreKept) {
    const QString broken = TextOfPath(BytesOfPath(box.Path()) + "/caf\xe9");
    files.MakeFolder(broken);
    EXPECT_EQ(Set(broken).error, QString());
    EXPECT_EQ(Set(broken).folder, broken);
}

TEST_F(SetupTest, AWriteThatFailsLeavesTheFile) {
    const QByteArray before = Config();
    for (const char* const operation : {"Write", "Rename", "ReadWhole"}) {
        files.Fail(operation);
        EXPECT_NE(Set(Music()).error, QString()) << operation;
        files.FailNothing();
        EXPECT_EQ(Config(), before);
    }
}

TEST_F(SetupTest, ASearchWithoutTimeSaysThatThereMayBeMore) {
    const SetupResult result = SetMusicFolder(files, Home(), QString(), Music(), 0ms);
    EXPECT_EQ(result.error, QString());
    EXPECT_TRUE(result.isMore);
    EXPECT_EQ(result.tracks, 2) << "the folder itself, without the one in it";
}

TEST_F(SetupTest, TheFileKeepsItsOwnerAndRights) {
    // Only the superuser can give files away.
    const bool isSuperuser = ::geteuid() == 0;
    const uid_t somebody = isSuperuser ? 12345 : ::geteuid();
    const gid_t group = isSuperuser ? 12346 : ::getegid();
    const QByteArray path = BytesOfPath(box.Path(u"home/config.ini"_s));
    ASSERT_EQ(::chown(path.constData(), somebody, group), 0);
    ASSERT_EQ(::chmod(path.constData(), 0640), 0);
    EXPECT_EQ(Set(Music()).error, QString());
    struct stat status {};
    ASSERT_EQ(::stat(path.constData(), &status), 0);
    EXPECT_EQ(status.st_uid, somebody);
    EXPECT_EQ(status.st_gid, group);
    EXPECT_EQ(status.st_mode & 07777, 0640U);
}

TEST_F(SetupTest, CopiesOfDeliveredThemesAreNamed) {
    for (const char* const folder :
         {"share/themes/oak", "share/themes/touch", "home/themes/oak", "home/themes/mine"}) {
        QDir().mkpath(box.Path(QString::fromLatin1(folder)));
    }
    EXPECT_EQ(ThemesThatHideDelivered(files, Home(), box.Path(u"share"_s)), QStringList(u"oak"_s));
    EXPECT_EQ(ThemesThatHideDelivered(files, Home(), QString()), QStringList());
}

} // namespace

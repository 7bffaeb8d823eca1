// The cached INI files: when they are parsed again, and what a failed write leaves.
#include "settings/ini_files.h"

#include "core/run_time_error.h"
#include "support/failing_files.h"
#include "support/home_folder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

class IniFilesTest : public testing::Test {
protected:
    QString Value(const QString& key = QStringLiteral("k")) { return ini.Open(files, path).Value(u"A", key); }
    bool Write(const QString& value) {
        return ini.Write(files, path, QStringLiteral("A"), QStringLiteral("k"), value);
    }

    HomeFolder home;
    QString path = home.Path(QStringLiteral("config.ini"));
    FailingFiles files{home.files()};
    IniFiles ini;
};

TEST_F(IniFilesTest, AMissingFileIsEmpty) {
    EXPECT_EQ(Value(), QString());
    EXPECT_EQ(home.Count(), 0U) << "reading creates no file";
}

TEST_F(IniFilesTest, AnUnchangedFileIsLookedAtOnceAReadAndParsedOnce) {
    home.Write(QStringLiteral("config.ini"), "[A]\nk=1\n");
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(Value(), QStringLiteral("1"));
    }
    EXPECT_EQ(files.Calls("ReadWhole"), 1);
    EXPECT_EQ(files.Calls("Identity"), 10);
}

TEST_F(IniFilesTest, ManyReadsOfOneBatchCostOneLook) {
    home.Write(QStringLiteral("config.ini"), "[A]\nk=1\nz=2\n");
    const IniFile& file = ini.Open(files, path);
    EXPECT_EQ(file.Value(u"A", u"k") + file.Value(u"A", u"z"), QStringLiteral("12"));
    EXPECT_EQ(files.Calls("Identity"), 1);
}

TEST_F(IniFilesTest, AFileChangedByOthersIsReadAgain) {
    home.Write(QStringLiteral("config.ini"), "[A]\nk=1\n");
    EXPECT_EQ(Value(), QStringLiteral("1"));
    home.Write(QStringLiteral("config.ini"), "[A]\nk=22\n");
    EXPECT_EQ(Value(), QStringLiteral("22"));
    home.files().Remove(path);
    EXPECT_EQ(Value(), QString());
    home.Write(QStringLiteral("config.ini"), "[A]\nk=3\n");
    EXPECT_EQ(Value(), QStringLiteral("3"));
}

TEST_F(IniFilesTest, AChangeOfTheTimeAloneIsSeen) {
    home.Write(QStringLiteral("config.ini"), "[A]\nk=1\n");
    EXPECT_EQ(Value(), QStringLiteral("1"));
    home.Write(QStringLiteral("config.ini"), "[A]\nk=2\n");
    const timespec times[] = {{1000, 0}, {1000, 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, path.toUtf8().constData(), times, 0), 0);
    EXPECT_EQ(Value(), QStringLiteral("2"));
}

TEST_F(IniFilesTest, EachPathHasItsOwnCopy) {
    home.Write(QStringLiteral("config.ini"), "[A]\nk=1\n");
    const QString other = home.Write(QStringLiteral("stats.ini"), "[A]\nk=2\n");
    const IniFile& first = ini.Open(files, path);
    for (int i = 0; i < 100; ++i) {
        ini.Open(files, home.Path(QString::number(i)));
    }
    EXPECT_EQ(ini.Open(files, other).Value(u"A", u"k"), QStringLiteral("2"));
    EXPECT_EQ(first.Value(u"A", u"k"), QStringLiteral("1"));
}

TEST_F(IniFilesTest, WriteMakesTheFileAndReadsBackWithoutParsingAgain) {
    EXPECT_TRUE(Write(QStringLiteral("1")));
    EXPECT_EQ(home.Read(QStringLiteral("config.ini")), "[A]\r\nk=1\r\n");
    EXPECT_EQ(home.Count(), 1U) << "no temporary file is left";
    const int reads = files.Calls("ReadWhole");
    EXPECT_EQ(Value(), QStringLiteral("1"));
    EXPECT_EQ(files.Calls("ReadWhole"), reads);
}

TEST_F(IniFilesTest, WriteChangesWhatIsOnDiskNow) {
    home.Write(QStringLiteral("config.ini"), "[A]\nk=1\n");
    EXPECT_EQ(Value(), QStringLiteral("1"));
    home.Write(QStringLiteral("config.ini"), "[A]\nk=1\nz=by hand\n");
    EXPECT_TRUE(Write(QStringLiteral("2")));
    EXPECT_EQ(home.Read(QStringLiteral("config.ini")), "[A]\nk=2\nz=by hand\n");
}

TEST_F(IniFilesTest, AValueThatIsThereAlreadyIsNotWritten) {
    home.Write(QStringLiteral("config.ini"), "[A]\nk=1\n");
    EXPECT_TRUE(Write(QStringLiteral("1")));
    EXPECT_EQ(files.Calls("Write"), 0);
}

TEST_F(IniFilesTest, ManyChangesCostOneWrite) {
    home.Write(QStringLiteral("config.ini"), "[A]\nk=1\n");
    EXPECT_TRUE(ini.Change(files, path, [](IniFile& file) {
        for (int i = 0; i < 50; ++i) {
            file.SetValue(QStringLiteral("A"), QStringLiteral("k"), file.Value(u"A", u"k") + u'1');
            file.SetValue(QStringLiteral("B"), QString::number(i), QStringLiteral("x"));
        }
    }));
    EXPECT_EQ(files.Calls("Write"), 1);
    EXPECT_TRUE(
        home.Read(QStringLiteral("config.ini")).startsWith("[A]\nk=" + QByteArray(51, '1') + "\n[B]\n0=x\n"));
    EXPECT_TRUE(home.Read(QStringLiteral("config.ini")).endsWith("\n49=x\n"));
}

TEST_F(IniFilesTest, AChangeThatBreaksOffIsWrittenAsFarAsItCame) {
    home.Write(QStringLiteral("config.ini"), "[A]\nk=1\nz=2\n");
    EXPECT_THROW(ini.Change(files, path,
                            [](IniFile& file) {
                                file.SetValue(QStringLiteral("A"), QStringLiteral("k"), QStringLiteral("3"));
                                throw RunTimeError(kTypeMismatch, QString());
                            }),
                 RunTimeError);
    EXPECT_EQ(home.Read(QStringLiteral("config.ini")), "[A]\nk=3\nz=2\n");
    EXPECT_EQ(Value(), QStringLiteral("3"));
}

TEST_F(IniFilesTest, AChangeOfNothingMakesNoFile) {
    EXPECT_TRUE(ini.Change(files, path, [](IniFile& /*file*/) {}));
    EXPECT_EQ(home.Count(), 0U);
}

TEST_F(IniFilesTest, AWriteThatFailsLeavesFileAndCopyAsTheyWere) {
    home.Write(QStringLiteral("config.ini"), "[A]\nk=1\n");
    for (const char* const operation : {"Write", "SyncFolder", "Rename"}) {
        files.Fail(operation);
        EXPECT_FALSE(Write(QStringLiteral("2"))) << operation;
        files.FailNothing();
        EXPECT_EQ(Value(), QStringLiteral("1")) << operation;
        EXPECT_EQ(home.Read(QStringLiteral("config.ini")), "[A]\nk=1\n") << operation;
        EXPECT_EQ(home.Count(), 1U) << operation;
    }
    EXPECT_TRUE(Write(QStringLiteral("2")));
    EXPECT_EQ(home.Read(QStringLiteral("config.ini")), "[A]\nk=2\n");
}

TEST_F(IniFilesTest, AFileThatCannotBeReadIsNeverReplaced) {
    home.Write(QStringLiteral("config.ini"), "[A]\nk=1\nz=2\n");
    files.Fail("ReadWhole");
    EXPECT_EQ(Value(), QString());
    EXPECT_FALSE(Write(QStringLiteral("2")));
    files.FailNothing();
    EXPECT_EQ(Value(), QStringLiteral("1")) << "the file is read as soon as that is possible";
    files.Fail("Identity", 1, 1);
    EXPECT_FALSE(Write(QStringLiteral("2"))) << "Identity fails although the file exists";
    files.FailNothing();
    EXPECT_EQ(home.Read(QStringLiteral("config.ini")), "[A]\nk=1\nz=2\n");
}

TEST_F(IniFilesTest, AFileBeyondAllReasonIsEmptyAndKept) {
    home.Write(QStringLiteral("config.ini"), "[A]\nk=1\n" + QByteArray(17 * 1024 * 1024, ';'));
    EXPECT_EQ(Value(), QString());
    EXPECT_FALSE(Write(QStringLiteral("2")));
    EXPECT_TRUE(home.Read(QStringLiteral("config.ini")).startsWith("[A]\nk=1\n"));
}

} // namespace

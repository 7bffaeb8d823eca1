// Tests of the command line.
#include "app/start/command_line.h"

#include <gtest/gtest.h>

namespace {

CommandLine Parse(std::initializer_list<const char*> arguments) {
    QStringList list;
    for (const char* argument : arguments) {
        list += QString::fromUtf8(argument);
    }
    return ParseCommandLine(list);
}

} // namespace

TEST(CommandLineTest, NothingIsFine) {
    const CommandLine line = Parse({});
    EXPECT_TRUE(line.error.isEmpty());
    EXPECT_FALSE(line.home);
    EXPECT_FALSE(line.showHelp || line.showVersion);
}

TEST(CommandLineTest, TakesTheHomeInBothForms) {
    EXPECT_EQ(Parse({"--home", "/a b"}).home, QStringLiteral("/a b"));
    EXPECT_EQ(Parse({"--home=/x=y"}).home, QStringLiteral("/x=y"));
    EXPECT_EQ(Parse({"--home", "/a", "--home", "/b"}).home, QStringLiteral("/b"));
}

TEST(CommandLineTest, TakesSerialDevicesByNumber) {
    const CommandLine line = Parse({"--serial", "1=/dev/ttyUSB0", "--serial=12=/dev/a=b"});
    ASSERT_TRUE(line.error.isEmpty());
    EXPECT_EQ(line.serialDevices.at(1), QStringLiteral("/dev/ttyUSB0"));
    EXPECT_EQ(line.serialDevices.at(12), QStringLiteral("/dev/a=b"));
}

TEST(CommandLineTest, HelpAndVersion) {
    EXPECT_TRUE(Parse({"--help"}).showHelp);
    EXPECT_TRUE(Parse({"-h"}).showHelp);
    EXPECT_TRUE(Parse({"--version"}).showVersion);
    EXPECT_TRUE(HelpText().contains(QStringLiteral("--serial")));
}

TEST(CommandLineTest, EachMistakeIsNamed) {
    EXPECT_EQ(Parse({"--home"}).error, QStringLiteral("--home needs a value"));
    EXPECT_EQ(Parse({"--home", ""}).error, QStringLiteral("--home needs a folder"));
    EXPECT_EQ(Parse({"--hom", "/a"}).error, QStringLiteral("unknown argument \"--hom\""));
    EXPECT_EQ(Parse({"/music"}).error, QStringLiteral("unknown argument \"/music\""));
    for (const char* wrong :
         {"1", "=/dev/x", "0=/dev/x", "x=/dev/x", "1=", "-1=/dev/x", "17=/dev/x", "99999=/dev/x", ""}) {
        EXPECT_TRUE(Parse({"--serial", wrong}).error.startsWith(QStringLiteral("--serial needs"))) << wrong;
    }
}

TEST(CommandLineTest, TakesOneTask) {
    EXPECT_EQ(Parse({"--setup", "/music"}).setupFolder, QStringLiteral("/music"));
    EXPECT_EQ(Parse({"--backup=/b=c", "--home", "/h"}).backupFile, QStringLiteral("/b=c"));
    EXPECT_EQ(Parse({"--home", "/h", "--restore", "/b"}).restoreFile, QStringLiteral("/b"));
    EXPECT_FALSE(Parse({"--home", "/h"}).setupFolder);
    for (const auto& wrong :
         {Parse({"--setup", "/a", "--backup", "/b"}), Parse({"--restore", "/a", "--restore", "/b"}),
          Parse({"--setup="}), Parse({"--backup", ""}), Parse({"--restore"})}) {
        EXPECT_FALSE(wrong.error.isEmpty());
    }
    EXPECT_TRUE(Parse({"--setup="}).error.contains(QStringLiteral("--setup needs a folder")));
}

TEST(CommandLineTest, TakesChecks) {
    EXPECT_EQ(Parse({"--check"}).checkedFolder, QString());
    EXPECT_EQ(Parse({"--check", "/music", "--deep"}).checkedFolder, QStringLiteral("/music"));
    EXPECT_EQ(Parse({"--check=-a"}).checkedFolder, QStringLiteral("-a"));
    const CommandLine deep = Parse({"--check", "--deep", "--json"});
    EXPECT_TRUE(deep.error.isEmpty() && deep.isDeep && deep.asJson && deep.checkedFolder->isEmpty());
    const CommandLine frames =
        Parse({"--check-theme", "mine", "--frames", "/f", "--size", "1920x1080", "--size=1080x1920"});
    EXPECT_EQ(frames.checkedTheme, QStringLiteral("mine"));
    EXPECT_EQ(frames.framesFolder, QStringLiteral("/f"));
    EXPECT_EQ(frames.sizes, (std::vector<QSize>{{1920, 1080}, {1080, 1920}}));
    EXPECT_TRUE(Parse({"--watch", "--check-theme=mine"}).isWatching);
}

TEST(CommandLineTest, RefusesOptionsWithoutTheirTask) {
    for (const auto& wrong :
         {Parse({"--json"}), Parse({"--json", "--setup", "/m"}), Parse({"--deep", "--check-theme", "a"}),
          Parse({"--watch"}), Parse({"--frames", "/f"}), Parse({"--check-theme", "a", "--size", "10x10"}),
          Parse({"--check-theme", "a", "--frames", "/f", "--watch"}), Parse({"--check", "/m", "/n"}),
          Parse({"--check-theme"}), Parse({"--check-theme="}), Parse({"--json=1", "--check"}),
          Parse({"--check", "--check-theme", "a"})}) {
        EXPECT_FALSE(wrong.error.isEmpty());
    }
    for (const char* size : {"1920", "0x10", "10x", "x", "16385x1", "1x1x1", "-1x5", ""}) {
        EXPECT_TRUE(Parse({"--check-theme", "a", "--frames", "/f", "--size", size})
                        .error.startsWith(QStringLiteral("--size needs")))
            << size;
    }
}

TEST(CommandLineTest, TheHelpNamesEveryOption) {
    for (const char* option :
         {"--home", "--serial", "--setup", "--backup", "--restore", "--check", "--check-theme", "--json",
          "--deep", "--frames", "--size", "--watch", "--help", "--version"}) {
        EXPECT_TRUE(HelpText().contains(QString::fromLatin1(option))) << option;
    }
}

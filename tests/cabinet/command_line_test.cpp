// Tests of the command line.
#include "app/cabinet/command_line.h"

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

TEST(CommandLineTest, TheHelpNamesEveryOption) {
    for (const char* option :
         {"--home", "--serial", "--setup", "--backup", "--restore", "--help", "--version"}) {
        EXPECT_TRUE(HelpText().contains(QString::fromLatin1(option))) << option;
    }
}

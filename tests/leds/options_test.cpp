// Tests of the command line of vantorix-leds, and of its recordings.
#include "app/leds/options.h"
#include "app/leds/recording.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace {

std::string ErrorOf(const std::vector<std::string>& arguments) {
    return ParseLedsOptions(arguments).error;
}

class RecordingTest : public testing::Test {
protected:
    RecordingTest() {
        std::string name = testing::TempDir() + "leds-XXXXXX";
        EXPECT_NE(mkdtemp(name.data()), nullptr);
        folder = name;
    }
    ~RecordingTest() override { std::filesystem::remove_all(folder); }
    std::string ErrorOfFile(const std::string& text) const {
        std::ofstream(Path()) << text;
        try {
            ReadRecording(Path());
        } catch (const RecordingError& error) {
            return error.what();
        }
        return "";
    }
    std::string Path() const { return folder / "recording"; }
    std::filesystem::path folder;
};

} // namespace

TEST(LedsOptions, DefaultsAreAGoodControllerInTheTerminal) {
    const LedsOptions options = ParseLedsOptions({});
    EXPECT_EQ(options.error, "");
    EXPECT_EQ(options.view, ViewKind::kTerminal);
    EXPECT_EQ(options.port, 1);
    EXPECT_EQ(options.pace, 0);
    EXPECT_FALSE(options.manners.isSilent || options.manners.carriageReturns || options.check);
}

TEST(LedsOptions, EveryOptionIsTaken) {
    const LedsOptions options =
        ParseLedsOptions({"--link", "/h/COM2", "--port=2", "--window=ring", "--pace", "115200", "--slow=20",
                          "--crlf", "--silent", "--unplug", "1.5", "--record", "f", "--check"});
    EXPECT_EQ(options.error, "");
    EXPECT_EQ(options.link, "/h/COM2");
    EXPECT_EQ(options.port, 2);
    EXPECT_EQ(options.view, ViewKind::kRing);
    EXPECT_EQ(options.pace, 115200);
    EXPECT_EQ(options.manners.delay.count(), 20);
    EXPECT_TRUE(options.manners.carriageReturns && options.manners.isSilent && options.check);
    EXPECT_EQ(options.unplug, 1.5);
    EXPECT_EQ(options.record, "f");
    EXPECT_EQ(ParseLedsOptions({"--window"}).view, ViewKind::kRow);
    EXPECT_EQ(ParseLedsOptions({"--replay", "f"}).replay, "f");
    EXPECT_EQ(ParseLedsOptions({"/dev/ttyUSB0"}).device, "/dev/ttyUSB0");
}

TEST(LedsOptions, EachMistakeIsNamed) {
    EXPECT_EQ(ErrorOf({"--pace"}), "--pace needs a value");
    EXPECT_EQ(ErrorOf({"--pace", "fast"}), "--pace needs bits a second, from 10 to 4000000, not \"fast\"");
    EXPECT_EQ(ErrorOf({"--pace=9"}), "--pace needs bits a second, from 10 to 4000000, not \"9\"");
    EXPECT_EQ(ErrorOf({"--port", "17"}), "--port needs a port number from 1 to 16, not \"17\"");
    EXPECT_EQ(ErrorOf({"--slow", "-1"}), "--slow needs milliseconds, from 0 to 3600000, not \"-1\"");
    EXPECT_EQ(ErrorOf({"--unplug", "0"}), "--unplug needs seconds, above 0 and at most 86400, not \"0\"");
    EXPECT_EQ(ErrorOf({"--unplug", "nan"}), "--unplug needs seconds, above 0 and at most 86400, not \"nan\"");
    EXPECT_EQ(ErrorOf({"--record="}), "--record needs a file, not \"\"");
    EXPECT_EQ(ErrorOf({"--window=square"}), "unknown argument \"--window=square\"");
    EXPECT_EQ(ErrorOf({""}), "unknown argument \"\"");
    EXPECT_EQ(ErrorOf({"/dev/a", "/dev/b"}), "there can be only one device, not \"/dev/b\" as well");
    EXPECT_NE(ErrorOf({"/dev/a", "--link", "b"}), "");
    EXPECT_NE(ErrorOf({"--replay", "a", "--pace", "9600"}), "");
    EXPECT_NE(LedsHelpText().find("--unplug"), std::string::npos);
}

TEST_F(RecordingTest, WhatIsWrittenIsReadBack) {
    {
        Recorder recorder(Path());
        recorder.Take("AT+I\r\n", std::chrono::milliseconds(0));
        recorder.Take(std::string("\0\\\xff", 3), std::chrono::microseconds(1'500'001));
    }
    const std::vector<RecordedPiece> pieces = ReadRecording(Path());
    ASSERT_EQ(pieces.size(), 2U);
    EXPECT_EQ(pieces[0].bytes, "AT+I\r\n");
    EXPECT_EQ(pieces[1].bytes, std::string("\0\\\xff", 3));
    EXPECT_NEAR(static_cast<double>(pieces[1].since.count()), 1'500'001, 1);
}

TEST_F(RecordingTest, WrongFilesAreRefusedByLine) {
    EXPECT_NE(ErrorOfFile("").find("recording"), std::string::npos);
    EXPECT_NE(ErrorOfFile("hello\n").find("this is not a recording"), std::string::npos);
    const std::string head = "# vantorix-leds recording 1\n1.0 a\n";
    for (const char* line : {"x a", "0.5 a", "2.0", "2.0 \\q", "-1 a", "1e300 a", "nan a", ""}) {
        EXPECT_NE(ErrorOfFile(head + line + "\n").find("line 3"), std::string::npos) << line;
    }
    EXPECT_EQ(ErrorOfFile(head), "");
    EXPECT_THROW(ReadRecording("/there/is/no/such/file"), RecordingError);
    EXPECT_THROW(Recorder("/there/is/no/such/file"), RecordingError);
}

// Tests of the wire's messages, and of cutting bytes into lines.
#include "app/leds/message.h"
#include "app/leds/wire_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using ::testing::ElementsAre;
using ::testing::Pair;

std::string RefusalOf(std::string_view line) {
    const Message message = ReadMessage(line);
    const auto* refusal = std::get_if<Refusal>(&message);
    return refusal != nullptr ? refusal->reason : "";
}

} // namespace

TEST(Message, CommandsAreExact) {
    EXPECT_EQ(std::get<Command>(ReadMessage("AT+R-0\r\n")), Command::kNormal);
    EXPECT_EQ(std::get<Command>(ReadMessage("AT+R-1\r\n")), Command::kFreeRunning);
    EXPECT_EQ(std::get<Command>(ReadMessage("AT+I\r\n")), Command::kButton1);
    EXPECT_EQ(std::get<Command>(ReadMessage("AT+T\r\n")), Command::kButton2);
    for (const char* line : {"AT+R-2\r\n", "at+r-0\r\n", " AT+R-0\r\n", "AT+R-0 \r\n", "\r\n", "AT+\r\n"}) {
        EXPECT_EQ(RefusalOf(line), "unknown message") << line;
    }
}

TEST(Message, AColourHasFiveFields) {
    const auto colour = std::get<ColourMessage>(ReadMessage("AT+B-0A3A00C4FF\r\n"));
    EXPECT_EQ(colour.led, 10);
    EXPECT_EQ(colour.colour, (Colour{0x3A, 0, 0xC4}));
    EXPECT_FALSE(colour.isLast);
    EXPECT_TRUE(std::get<ColourMessage>(ReadMessage("AT+B-FFFEFEFE00\r\n")).isLast);
}

TEST(Message, EachFaultIsNamed) {
    EXPECT_EQ(RefusalOf("AT+R-0\n"), "it does not end with carriage return and line feed");
    EXPECT_EQ(RefusalOf("AT+R-0"), "it does not end with carriage return and line feed");
    EXPECT_EQ(RefusalOf(""), "it does not end with carriage return and line feed");
    EXPECT_EQ(RefusalOf("AT+B-0A3A00C4F\r\n"), "a colour has ten digits, not 9");
    EXPECT_EQ(RefusalOf("AT+B-0A3A00C4FFF\r\n"), "a colour has ten digits, not 11");
    EXPECT_EQ(RefusalOf("AT+B-0a3A00C4FF\r\n"), "a field is not two hexadecimal digits in upper case");
    EXPECT_EQ(RefusalOf("AT+B-0G3A00C4FF\r\n"), "a field is not two hexadecimal digits in upper case");
    EXPECT_EQ(RefusalOf("AT+B-00FF000000\r\n"), "a colour is above FE");
    EXPECT_EQ(RefusalOf("AT+B-0000000001\r\n"), "the mark is neither FF nor 00");
}

TEST(Message, BytesAreEscapedAndBack) {
    const std::string bytes("a\\b\r\n\0\x7f\xff", 8);
    EXPECT_EQ(Escaped(bytes), "a\\\\b\\r\\n\\x00\\x7F\\xFF");
    std::string back;
    EXPECT_TRUE(Unescape(Escaped(bytes), back));
    EXPECT_EQ(back, bytes);
    EXPECT_TRUE(Unescape("\\xff", back));
    EXPECT_EQ(back, "\xff");
    for (const char* wrong : {"\\", "\\x", "\\x1", "\\xG0", "\\q"}) {
        EXPECT_FALSE(Unescape(wrong, back)) << wrong;
    }
}

TEST(WireReader, CutsLinesWhereverTheBytesAreCut) {
    std::vector<std::pair<std::string, std::uint64_t>> lines;
    WireReader reader([&](std::string_view line, std::uint64_t first) { lines.emplace_back(line, first); });
    for (const char* part : {"AT", "+I\r", "\nAT+T\r\nrest"}) {
        reader.Take(part);
    }
    EXPECT_THAT(lines, ElementsAre(Pair("AT+I\r\n", 0), Pair("AT+T\r\n", 6)));
    reader.Close();
    reader.Close();
    EXPECT_EQ(lines.size(), 3U);
    EXPECT_EQ(lines.back(), std::make_pair(std::string("rest"), std::uint64_t{12}));
    EXPECT_EQ(reader.Bytes(), 16U);
}

TEST(WireReader, AWireWithoutLineEndsIsCut) {
    std::size_t longest = 0;
    int lines = 0;
    WireReader reader([&](std::string_view line, std::uint64_t) {
        longest = std::max(longest, line.size());
        ++lines;
    });
    reader.Take(std::string(1000, '\0'));
    EXPECT_EQ(longest, WireReader::kLongestLine);
    EXPECT_EQ(lines, 1000 / 64);
}

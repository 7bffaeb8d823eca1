// The messages of the wire from the jukebox to an LED controller.
#include "app/leds/message.h"

#include <cstddef>
#include <optional>

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kColour = "AT+B-";
constexpr std::size_t kFields = 5;
constexpr std::uint8_t kMark = 0xFF;
constexpr std::uint8_t kBrightest = 0xFE;

struct CommandRow {
    std::string_view text;
    Command command;
};

constexpr std::array kCommands = {
    CommandRow{"AT+R-1", Command::kFreeRunning},
    CommandRow{"AT+R-0", Command::kNormal},
    CommandRow{"AT+I", Command::kButton1},
    CommandRow{"AT+T", Command::kButton2},
};

std::optional<int> DigitValue(char digit, bool lowerToo) {
    if (digit >= '0' && digit <= '9') {
        return digit - '0';
    }
    if (digit >= 'A' && digit <= 'F') {
        return digit - 'A' + 10;
    }
    if (lowerToo && digit >= 'a' && digit <= 'f') {
        return digit - 'a' + 10;
    }
    return std::nullopt;
}

std::optional<std::uint8_t> ByteValue(std::string_view digits, bool lowerToo = false) {
    const auto high = DigitValue(digits[0], lowerToo);
    const auto low = DigitValue(digits[1], lowerToo);
    return high && low ? std::optional(static_cast<std::uint8_t>(*high * 16 + *low)) : std::nullopt;
}

Message ReadColour(std::string_view digits) {
    if (digits.size() != 2 * kFields) {
        return Refusal{"a colour has ten digits, not " + std::to_string(digits.size())};
    }
    std::array<std::uint8_t, kFields> values = {};
    for (std::size_t i = 0; i < kFields; ++i) {
        const auto value = ByteValue(digits.substr(2 * i, 2));
        if (!value) {
            return Refusal{"a field is not two hexadecimal digits in upper case"};
        }
        values.at(i) = *value;
    }
    const auto [led, red, green, blue, mark] = values;
    if (red > kBrightest || green > kBrightest || blue > kBrightest) {
        return Refusal{"a colour is above FE"};
    }
    if (mark != 0 && mark != kMark) {
        return Refusal{"the mark is neither FF nor 00"};
    }
    return ColourMessage{led, {red, green, blue}, mark == 0};
}

} // namespace

Message ReadMessage(std::string_view line) {
    if (!line.ends_with(kLineEnd)) {
        return Refusal{"it does not end with carriage return and line feed"};
    }
    line.remove_suffix(kLineEnd.size());
    for (const CommandRow& row : kCommands) {
        if (line == row.text) {
            return row.command;
        }
    }
    if (line.starts_with(kColour)) {
        return ReadColour(line.substr(kColour.size()));
    }
    return Refusal{"unknown message"};
}

std::string Escaped(std::string_view bytes) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '\r' || c == '\n') {
            text += c == '\r' ? "\\r" : "\\n";
        } else if (c == '\\') {
            text += "\\\\";
        } else if (byte < 0x20 || byte > 0x7E) {
            text += {'\\', 'x', kDigits[byte >> 4], kDigits[byte & 15]};
        } else {
            text += c;
        }
    }
    return text;
}

bool Unescape(std::string_view text, std::string& bytes) {
    bytes.clear();
    while (!text.empty()) {
        if (text[0] != '\\') {
            bytes += text[0];
            text.remove_prefix(1);
            continue;
        }
        const char letter = text.size() > 1 ? text[1] : '\0';
        const auto value =
            letter == 'x' && text.size() > 3 ? ByteValue(text.substr(2, 2), true) : std::nullopt;
        if (!value && letter != 'r' && letter != 'n' && letter != '\\') {
            return false;
        }
        bytes += value ? static_cast<char>(*value) : letter == 'r' ? '\r' : letter == 'n' ? '\n' : '\\';
        text.remove_prefix(value ? 4 : 2);
    }
    return true;
}

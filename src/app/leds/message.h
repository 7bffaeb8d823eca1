// The messages of the wire from the jukebox to an LED controller.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

struct Colour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    bool operator==(const Colour&) const = default;
};

enum class Command { kFreeRunning, kNormal, kButton1, kButton2 };

struct ColourMessage {
    int led = 0;
    Colour colour;
    // No more messages of the same frame follow.
    bool isLast = false;
};

// Why a line is no message.
struct Refusal {
    std::string reason;
};

using Message = std::variant<Command, ColourMessage, Refusal>;

// Reads a line with its line end. A message ends with carriage return and line feed and has nothing else
// after its fields; digits are hexadecimal, in upper case.
Message ReadMessage(std::string_view line);

// The text with bytes that cannot be printed as \r, \n, \\ and \xHH.
std::string Escaped(std::string_view bytes);
// The reverse; false for an invalid escape.
bool Unescape(std::string_view text, std::string& bytes);

// The message that sets the colour of one LED.
#include "lightshow/colour_message.h"

#include <array>

namespace {

constexpr char kMessage[] = "AT+B-0000000000\r\n";
constexpr std::size_t kFields = 5;

// Deliberate D-150: only the low two digits are sent, so LED 256 is LED 0 again. One would expect a longer
// field; the controller takes two digits.
void WriteHex(char* at, int value) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    at[0] = kDigits[value >> 4 & 15];
    at[1] = kDigits[value & 15];
}

} // namespace

QByteArray NewColourMessage() {
    return QByteArray(kMessage);
}

void WriteColourMessage(QByteArray& message, int led, const LedColour& colour, LedMark mark) {
    char* at = message.data() + kFields;
    const std::array<int, 5> fields = {led, colour.red.value(), colour.green.value(), colour.blue.value(),
                                       static_cast<int>(mark)};
    for (const int field : fields) {
        WriteHex(at, field);
        at += 2;
    }
}

// The message that sets the colour of one LED.
#pragma once

#include "core/integer.h"

#include <QByteArray>

struct LedColour {
    Integer16 red;
    Integer16 green;
    Integer16 blue;
};

// Whether more messages of the same tick follow.
enum class LedMark : unsigned char { kLast = 0x00, kMore = 0xFF };

// A message of 17 bytes with all fields 0: "AT+B-", five fields of two upper-case hexadecimal digits (LED,
// red, green, blue, mark), carriage return and line feed.
QByteArray NewColourMessage();

// Writes the fields of such a message. Of a number above 255 only the low two digits are sent.
void WriteColourMessage(QByteArray& message, int led, const LedColour& colour, LedMark mark);

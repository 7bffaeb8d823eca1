// The messages and the file content that the power-cut test and its writer agree on.
#pragma once

#include <QByteArray>

// Returns the whole content for a number: the number, as many letters as its size says, and the size, so that
// any truncation or mixture is detected. Sizes vary between one byte and 200 kB.
inline QByteArray PowerCutContent(int number) {
    const int size = 1 + static_cast<int>((static_cast<unsigned>(number) * 2654435761U) % 200'000);
    const char letter = static_cast<char>('a' + number % 26);
    return QByteArray::number(number) + '\n' + QByteArray(size, letter) + QByteArray::number(size);
}

// A message of the writer on its standard output.
struct PowerCutMessage {
    enum Kind : int {
        kProcess, // the process that is now writing
        kWritten, // the number whose content has been written completely
        kEnded,   // that process has ended
    };
    int kind = kEnded;
    int value = 0;
};

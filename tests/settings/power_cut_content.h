// What the power-cut test and its writer tell each other.
#pragma once

#include <QByteArray>

// The whole content of a number: the number, then as many letters as it says, so that any cut or mixture
// shows. Sizes go up and down between one byte and 200 kB.
inline QByteArray PowerCutContent(int number) {
    const int size = 1 + static_cast<int>((static_cast<unsigned>(number) * 2654435761U) % 200'000);
    const char letter = static_cast<char>('a' + number % 26);
    return QByteArray::number(number) + '\n' + QByteArray(size, letter) + QByteArray::number(size);
}

// What the writer tells on its standard output.
struct PowerCutMessage {
    enum Kind : int {
        kProcess, // the process that is now writing
        kWritten, // the number whose content has been written
        kEnded,   // that process is gone
    };
    int kind = kEnded;
    int value = 0;
};

// Reads lines of commands from a file descriptor, whatever bytes arrive.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// One line, or the reason why it cannot be a command.
struct InputLine {
    QString text;
    // Not empty when the line cannot be a command.
    QString fault;
};

// Reads a line as soon as it has arrived. A line ends with LF or CR LF, the last one also at the end of the
// input. A line that begins with "#" is a comment, whatever it contains, and is cut to that sign. Never keeps
// more than kLongestLine bytes of a line.
class CommandReader {
public:
    static constexpr qsizetype kLongestLine = 65'536;

    explicit CommandReader(int descriptor) : descriptor_(descriptor) {}

    // Returns the next line, or nothing at the end of the input.
    std::optional<InputLine> Next();

private:
    bool Fill();

    int descriptor_;
    QByteArray waiting_;
    bool ended_ = false;
};

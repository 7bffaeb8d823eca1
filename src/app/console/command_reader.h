// Lines of commands from a file descriptor, whatever bytes come.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// One line, or why it cannot be a command.
struct InputLine {
    QString text;
    // Not empty: the line is no text that a command could be.
    QString fault;
};

// A line that begins with "#" is a comment, whatever else it holds, and is cut to that sign. Reads a line as
// soon as it has arrived. A line ends with LF or CR LF, the last one also with the end of the input. No more
// than kLongestLine bytes of a line are ever kept.
class CommandReader {
public:
    static constexpr qsizetype kLongestLine = 65'536;

    explicit CommandReader(int descriptor) : descriptor_(descriptor) {}

    // The next line; nothing at the end of the input.
    std::optional<InputLine> Next();

private:
    bool Fill();

    int descriptor_;
    QByteArray waiting_;
    bool ended_ = false;
};

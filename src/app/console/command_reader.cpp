// Reading lines of commands.
#include "app/console/command_reader.h"

#include <QStringDecoder>

#include <array>
#include <cerrno>

#include <poll.h>
#include <unistd.h>

namespace {

InputLine Checked(const QByteArray& bytes) {
    if (bytes.contains('\0')) {
        return {QString(), QStringLiteral("the line holds a zero byte")};
    }
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(bytes);
    if (decoder.hasError()) {
        return {QString(), QStringLiteral("the line is not valid UTF-8")};
    }
    return {text, QString()};
}

} // namespace

std::optional<InputLine> CommandReader::Next() {
    bool tooLong = false;
    bool comment = false;
    qsizetype lineEnd = waiting_.indexOf('\n');
    while (lineEnd < 0 && !ended_) {
        if (waiting_.size() > kLongestLine + 1) {
            comment = tooLong ? comment : waiting_.startsWith('#');
            tooLong = true;
            waiting_.clear();
        }
        const qsizetype looked = waiting_.size();
        ended_ = !Fill();
        lineEnd = waiting_.indexOf('\n', looked);
    }
    if (lineEnd < 0 && waiting_.isEmpty() && !tooLong) {
        return std::nullopt;
    }
    QByteArray line = lineEnd < 0 ? waiting_ : waiting_.left(lineEnd);
    waiting_.remove(0, lineEnd < 0 ? waiting_.size() : lineEnd + 1);
    if (comment || (!tooLong && line.startsWith('#'))) {
        return InputLine{QStringLiteral("#"), QString()};
    }
    if (line.endsWith('\r')) {
        line.chop(1);
    }
    if (tooLong || line.size() > kLongestLine) {
        return InputLine{QString(), QStringLiteral("the line is longer than %1 bytes").arg(kLongestLine)};
    }
    return Checked(line);
}

// Waits for the next bytes, even on a non-blocking descriptor.
bool CommandReader::Fill() {
    std::array<char, 4096> piece;
    ssize_t count = read(descriptor_, piece.data(), piece.size());
    while (count < 0 && (errno == EINTR || errno == EAGAIN)) {
        pollfd waiting{descriptor_, POLLIN, 0};
        poll(&waiting, 1, -1);
        count = read(descriptor_, piece.data(), piece.size());
    }
    if (count > 0) {
        waiting_.append(piece.data(), count);
    }
    return count > 0;
}

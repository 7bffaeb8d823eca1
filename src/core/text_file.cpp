// Splitting text files into lines and decoding them.
#include "core/text_file.h"

#include "core/run_time_error.h"

#include <QStringDecoder>

#include <array>
#include <utility>

namespace {

// The characters of the bytes 0x80..0x9F, from the Unicode Consortium's mapping table CP1252. Unassigned
// bytes map to the same code.
constexpr std::array<char16_t, 32> kWindows1252 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

} // namespace

QString DecodeWindows1252(const QByteArray& bytes) {
    QString text(bytes.size(), Qt::Uninitialized);
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const auto byte = static_cast<uchar>(bytes[i]);
        const bool mapped = byte >= 0x80 && byte <= 0x9F;
        text[i] = QChar(mapped ? kWindows1252[byte - 0x80U] : static_cast<char16_t>(byte));
    }
    return text;
}

QString DecodeLine(const QByteArray& bytes) {
    QStringDecoder utf8(QStringDecoder::Utf8, QStringConverter::Flag::Stateless);
    const QString text = utf8(bytes);
    return utf8.hasError() ? DecodeWindows1252(bytes) : text;
}

LineReader::LineReader(QByteArray bytes, QString path) : bytes_(std::move(bytes)), path_(std::move(path)) {
    constexpr char kByteOrderMark[] = "\xEF\xBB\xBF";
    position_ = bytes_.startsWith(kByteOrderMark) ? 3 : 0;
}

QByteArray LineReader::Next() {
    line_ += 1;
    if (position_ >= bytes_.size()) {
        throw RunTimeError(
            kInputPastEnd,
            QStringLiteral("%1, line %2: the file ends before it").arg(path_, QString::number(line_)));
    }
    const qsizetype feed = bytes_.indexOf('\n', position_);
    qsizetype end = feed < 0 ? bytes_.size() : feed;
    const qsizetype next = feed < 0 ? end : feed + 1;
    if (end > position_ && bytes_[end - 1] == '\r') {
        --end;
    }
    QByteArray line = bytes_.mid(position_, end - position_);
    position_ = next;
    return line;
}

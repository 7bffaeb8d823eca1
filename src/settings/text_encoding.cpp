// Telling UTF-8 from Windows-1252, and converting text to and from both.
#include "settings/text_encoding.h"

#include "core/text_file.h"

#include <QStringDecoder>
#include <QUtf8StringView>

namespace {

constexpr char16_t kFirstEscape = 0xDC80;
constexpr char16_t kLastEscape = 0xDCFF;

// Returns the position of the next three-byte form of an escaped file name byte, or the end.
qsizetype NextEscape(QByteArrayView bytes, qsizetype from) {
    qsizetype at = bytes.indexOf('\xED', from);
    for (; at >= 0 && at + 2 < bytes.size(); at = bytes.indexOf('\xED', at + 1)) {
        const auto second = static_cast<uchar>(bytes[at + 1]);
        const auto third = static_cast<uchar>(bytes[at + 2]);
        if ((second == 0xB2 || second == 0xB3) && third >= 0x80 && third <= 0xBF) {
            return at;
        }
    }
    return bytes.size();
}

// Keeps a byte order mark, which QString::fromUtf8 drops.
QString DecodeUtf8(QByteArrayView bytes) {
    using Flag = QStringDecoder::Flag;
    QStringDecoder decode(QStringDecoder::Utf8, Flag::Stateless | Flag::ConvertInitialBom);
    return decode(bytes);
}

char16_t EscapeAt(QByteArrayView bytes, qsizetype at) {
    return static_cast<char16_t>(0xD000 | (static_cast<uchar>(bytes[at + 1]) & 0x3F) << 6 |
                                 (static_cast<uchar>(bytes[at + 2]) & 0x3F));
}

// Calls `plain` for each part between escapes and `escape` for each escape.
template <typename Plain, typename Escape>
void ForEachPart(QByteArrayView bytes, Plain&& plain, Escape&& escape) {
    qsizetype at = 0;
    while (at < bytes.size()) {
        const qsizetype end = NextEscape(bytes, at);
        plain(bytes.sliced(at, end - at));
        if (end < bytes.size()) {
            escape(EscapeAt(bytes, end));
        }
        at = end + 3;
    }
}

bool IsValidUtf8(QByteArrayView bytes) {
    return QUtf8StringView(bytes.data(), bytes.size()).isValidUtf8();
}

// The characters of the bytes 0x80..0x9F. Every other byte equals the code of its character.
QString HighControls() {
    QByteArray bytes;
    for (int byte = 0x80; byte <= 0x9F; ++byte) {
        bytes += static_cast<char>(byte);
    }
    return DecodeWindows1252(bytes);
}

std::optional<QByteArray> EncodeWindows1252(const QString& text) {
    const QString highControls = HighControls();
    QByteArray bytes;
    for (const QChar c : text) {
        const qsizetype place = c.unicode() < 0x80 ? -1 : highControls.indexOf(c);
        if (place >= 0) {
            bytes += static_cast<char>(0x80 + place);
        } else if (c.unicode() < 0x80 || (c.unicode() >= 0xA0 && c.unicode() <= 0xFF)) {
            bytes += static_cast<char>(c.unicode());
        } else {
            return std::nullopt;
        }
    }
    return bytes;
}

QByteArray EncodeUtf8(const QString& text) {
    QByteArray bytes;
    qsizetype plain = 0;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const char16_t code = text[at].unicode();
        if (code >= kFirstEscape && code <= kLastEscape && (at == 0 || !text[at - 1].isHighSurrogate())) {
            bytes += QStringView(text).sliced(plain, at - plain).toUtf8();
            bytes += '\xED';
            bytes += static_cast<char>(0x80 | (code >> 6 & 0x3F));
            bytes += static_cast<char>(0x80 | (code & 0x3F));
            plain = at + 1;
        }
    }
    return bytes + QStringView(text).sliced(plain).toUtf8();
}

} // namespace

bool HasByteOrderMark(QByteArrayView bytes) {
    return bytes.startsWith("\xEF\xBB\xBF");
}

TextEncoding EncodingOf(QByteArrayView bytes) {
    if (IsValidUtf8(bytes)) {
        return TextEncoding::kUtf8;
    }
    bool valid = true;
    ForEachPart(
        bytes, [&](QByteArrayView part) { valid = valid && IsValidUtf8(part); }, [](char16_t) {});
    return valid ? TextEncoding::kUtf8 : TextEncoding::kWindows1252;
}

QString DecodeAs(TextEncoding encoding, QByteArrayView bytes) {
    if (encoding == TextEncoding::kWindows1252) {
        return DecodeWindows1252(bytes.toByteArray());
    }
    if (NextEscape(bytes, 0) == bytes.size()) {
        return DecodeUtf8(bytes);
    }
    QString text;
    ForEachPart(
        bytes, [&](QByteArrayView part) { text += DecodeUtf8(part); },
        [&](char16_t escape) { text += QChar(escape); });
    return text;
}

std::optional<QByteArray> EncodeAs(TextEncoding encoding, const QString& text) {
    return encoding == TextEncoding::kUtf8 ? EncodeUtf8(text) : EncodeWindows1252(text);
}

// The encoding of our text files: UTF-8, or Windows-1252 in files brought from older cabinets.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

enum class TextEncoding { kUtf8, kWindows1252 };

// Whether the bytes begin with the byte order mark of UTF-8, which is kByteOrderMarkLength bytes long.
bool HasByteOrderMark(QByteArrayView bytes);
constexpr qsizetype kByteOrderMarkLength = 3;

// UTF-8 when all bytes are valid UTF-8 (RFC 3629), else Windows-1252. The three-byte forms of U+DC80..U+DCFF
// count as valid: they keep the bytes of a file name that is no valid UTF-8 (see TextOfPath).
TextEncoding EncodingOf(QByteArrayView bytes);

// Bytes as text. Never fails: Windows-1252 is that of the WHATWG Encoding Standard, where the five bytes that
// stand for nothing become the control characters of the same number; bytes that are no UTF-8 become U+FFFD.
QString DecodeAs(TextEncoding encoding, QByteArrayView bytes);

// Text as bytes. Nothing when the encoding has no place for a character. UTF-8 has one for each; half of a
// surrogate pair other than U+DC80..U+DCFF becomes "?".
std::optional<QByteArray> EncodeAs(TextEncoding encoding, const QString& text);

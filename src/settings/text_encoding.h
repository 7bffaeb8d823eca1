// The encoding of our text files: UTF-8, or Windows-1252 for files from older cabinets.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

enum class TextEncoding { kUtf8, kWindows1252 };

// Whether the bytes begin with the UTF-8 byte order mark, which has kByteOrderMarkLength bytes.
bool HasByteOrderMark(QByteArrayView bytes);
constexpr qsizetype kByteOrderMarkLength = 3;

// UTF-8 when all bytes are valid UTF-8 (RFC 3629), otherwise Windows-1252. The three-byte forms of
// U+DC80..U+DCFF count as valid: they preserve the bytes of a file name that is not valid UTF-8 (see
// TextOfPath).
TextEncoding EncodingOf(QByteArrayView bytes);

// Decodes bytes. Never fails: Windows-1252 follows the WHATWG Encoding Standard, where the five unassigned
// bytes become the control characters of the same code; bytes that are not UTF-8 become U+FFFD.
QString DecodeAs(TextEncoding encoding, QByteArrayView bytes);

// Encodes text. Returns nothing when the encoding lacks one of its characters. UTF-8 has them all; half of a
// surrogate pair other than U+DC80..U+DCFF becomes "?".
std::optional<QByteArray> EncodeAs(TextEncoding encoding, const QString& text);

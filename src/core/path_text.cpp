// Reversible conversion between file names and text, and splitting of paths.
#include "core/path_text.h"

#include <algorithm>

namespace {

constexpr ushort kEscapeBase = 0xDC00;

// Returns the length of the valid UTF-8 sequence at `at` (RFC 3629), 0 when there is none.
qsizetype SequenceLength(const QByteArray& bytes, qsizetype at) {
    const auto byte = [&](qsizetype i) { return static_cast<uchar>(i < bytes.size() ? bytes[i] : 0); };
    const auto follows = [&](qsizetype i, uchar low = 0x80, uchar high = 0xBF) {
        return byte(i) >= low && byte(i) <= high;
    };
    const uchar lead = byte(at);
    if (lead < 0x80) {
        return 1;
    }
    if (lead >= 0xC2 && lead <= 0xDF) {
        return follows(at + 1) ? 2 : 0;
    }
    if (lead >= 0xE0 && lead <= 0xEF) {
        const uchar low = lead == 0xE0 ? 0xA0 : 0x80;
        const uchar high = lead == 0xED ? 0x9F : 0xBF;
        return follows(at + 1, low, high) && follows(at + 2) ? 3 : 0;
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        const uchar low = lead == 0xF0 ? 0x90 : 0x80;
        const uchar high = lead == 0xF4 ? 0x8F : 0xBF;
        return follows(at + 1, low, high) && follows(at + 2) && follows(at + 3) ? 4 : 0;
    }
    return 0;
}

} // namespace

QString TextOfPath(const QByteArray& bytes) {
    QString text;
    text.reserve(bytes.size());
    qsizetype valid = 0;
    qsizetype at = 0;
    while (at < bytes.size()) {
        const qsizetype length = SequenceLength(bytes, at);
        if (length > 0) {
            at += length;
            continue;
        }
        text += QString::fromUtf8(bytes.constData() + valid, at - valid);
        text += QChar(static_cast<ushort>(kEscapeBase + static_cast<uchar>(bytes[at])));
        valid = ++at;
    }
    text += QString::fromUtf8(bytes.constData() + valid, at - valid);
    return text;
}

QByteArray BytesOfPath(const QString& text) {
    QByteArray bytes;
    qsizetype plain = 0;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const ushort code = text[at].unicode();
        const bool escaped = code >= kEscapeBase + 0x80 && code <= kEscapeBase + 0xFF &&
                             (at == 0 || !text[at - 1].isHighSurrogate());
        if (escaped) {
            bytes += QStringView(text).mid(plain, at - plain).toUtf8();
            bytes += static_cast<char>(code - kEscapeBase);
            plain = at + 1;
        }
    }
    return bytes + QStringView(text).mid(plain).toUtf8();
}

QString PathIn(const QString& folder, const QString& name) {
    return folder.endsWith(u'/') ? folder + name : folder + u'/' + name;
}

QString FolderOfPath(const QString& path) {
    const qsizetype separator = path.lastIndexOf(u'/');
    return separator == 0 ? path.left(1) : path.left(std::max<qsizetype>(separator, 0));
}

QString NameOfPath(const QString& path) {
    return path.mid(path.lastIndexOf(u'/') + 1);
}

QString WithoutSeparatorAtEnd(const QString& path) {
    qsizetype end = path.size();
    while (end > 1 && path[end - 1] == u'/') {
        --end;
    }
    return path.left(end);
}

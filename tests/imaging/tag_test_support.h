// Tags built byte by byte, and a reader for them.
#pragma once

#include "imaging/tags/tagged_images.h"
#include "support/home_folder.h"

#include <QByteArray>
#include <QString>

#include <initializer_list>

// Bytes from numbers.
inline QByteArray Bytes(std::initializer_list<int> numbers) {
    QByteArray bytes;
    for (const int number : numbers) {
        bytes.append(static_cast<char>(number));
    }
    return bytes;
}

inline QByteArray SyncSafe(qsizetype value) {
    return Bytes({static_cast<int>(value >> 21 & 127), static_cast<int>(value >> 14 & 127),
                  static_cast<int>(value >> 7 & 127), static_cast<int>(value & 127)});
}

inline QByteArray BigEndian(qsizetype value) {
    return Bytes({static_cast<int>(value >> 24 & 255), static_cast<int>(value >> 16 & 255),
                  static_cast<int>(value >> 8 & 255), static_cast<int>(value & 255)});
}

// Padding after the frames of most tags here, so that the loss of the last ten bytes does not matter.
inline QByteArray Padding() {
    return QByteArray(20, '\0');
}

// A file that starts with a tag whose contents are `body`.
inline QByteArray Id3File(int version, const QByteArray& body, int flags = 0) {
    return "ID3" + Bytes({version, 0, flags}) + SyncSafe(body.size()) + body + QByteArray(40, '\x55');
}

struct PictureFrame {
    int category = 3;
    int encoding = 0;
    QByteArray mime = "image/jpeg";
    // The description with its final zero.
    QByteArray description = QByteArray(1, '\0');
    int flags = 0;
};

// A picture frame of version 2.3 or 2.4.
inline QByteArray Apic(int version, const QByteArray& picture, const PictureFrame& of = {}) {
    const QByteArray body =
        Bytes({of.encoding}) + of.mime + Bytes({0, of.category}) + of.description + picture;
    return "APIC" + (version == 3 ? BigEndian(body.size()) : SyncSafe(body.size())) + Bytes({0, of.flags}) +
           body;
}

// A reader of files that a test makes.
class TagReader {
public:
    int Load(const QByteArray& file) {
        return tag.LoadTagged_Images(home_.files(), home_.Write(QStringLiteral("song"), file));
    }
    QByteArray Data(int index) const {
        const auto data = tag.ExtractImageData(index);
        return data ? QByteArray(reinterpret_cast<const char*>(data->data()),
                                 static_cast<qsizetype>(data->size()))
                    : QByteArray("(nothing)");
    }

    cTaggedImages tag;

private:
    HomeFolder home_;
};

// The image object of a cover. It decodes its file when it is drawn, and only as large as it is drawn.
#pragma once

#include "imaging/picture/c32bppdib.h"
#include "imaging/picture/ready_pictures.h"

#include <optional>

// The file whose tag contains the picture of a surface that is decoded late. Without a path, the picture is
// what was drawn on the surface.
struct LateTagPicture {
    QString path;
    FileIdentity identity;
    // The picture is on the surface.
    bool isSettled = false;
};

// Behaves like the image object, but reads its file only when necessary. Keeps what it has drawn ready in
// that size.
class CoverPicture {
public:
    // `ready` must outlive this object.
    explicit CoverPicture(ReadyPictures& ready) : ready_(ready) {}

    // Forgets the previous file and takes a new one. Lets pending events run once if there is a file. Returns
    // false when it is missing, shorter than 57 bytes or larger than 256 MiB. Drawing shows whether it can be
    // decoded. The ports must outlive this object.
    bool LoadPicture_File(const PicturePorts& ports, const QString& FileName);

    // Size of the whole picture, 0 when there is none.
    int Width() const { return Whole().Width(); }
    int Height() const { return Whole().Height(); }

    // Draws the whole picture with alpha into a rectangle. A size of 0 means the picture's own, a negative
    // size mirrors. Returns false when there is no picture.
    bool Render(Surface& destinationDC, int destX, int destY, int destWidth = 0, int destHeight = 0) const;

private:
    struct Source {
        PicturePorts ports;
        ReadyKey key;
    };

    const c32bppDIB& Whole() const;
    ReadyPicture Ready(int width, int height) const;

    ReadyPictures& ready_;
    std::optional<Source> source_;
    // The whole picture, after its first use.
    mutable bool isWhole_ = false;
    mutable c32bppDIB whole_;
};

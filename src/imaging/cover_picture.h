// The image object of a cover: a file that is decoded when it is drawn, and only as large as it is drawn.
#pragma once

#include "imaging/c32bppdib.h"
#include "imaging/ready_pictures.h"

#include <optional>

// Where the picture of a surface comes from that is decoded late: the tag of a file. Without a path it is
// what was drawn on the surface.
struct LateTagPicture {
    QString path;
    FileIdentity identity;
    // The surface holds it.
    bool isSettled = false;
};

// Answers and draws as the image object would, but reads its file when it has to. What it draws is kept ready
// in that size.
class CoverPicture {
public:
    // `ready` outlives this object.
    explicit CoverPicture(ReadyPictures& ready) : ready_(ready) {}

    // Takes a file; what was held is forgotten. Lets pending events run once when there is one to try. False
    // when it is missing, shorter than 57 bytes or larger than 256 MiB; whether it can be decoded shows when
    // it is drawn. The ports outlive this object.
    bool LoadPicture_File(const PicturePorts& ports, const QString& FileName);

    // Size of the whole picture, 0 when there is none.
    int Width() const { return Whole().Width(); }
    int Height() const { return Whole().Height(); }

    // Draws the whole picture with alpha into a rectangle; a size of 0 means the picture's own, a negative
    // one mirrors. False when there is no picture.
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
    // The whole picture, once it has been asked for.
    mutable bool isWhole_ = false;
    mutable c32bppDIB whole_;
};

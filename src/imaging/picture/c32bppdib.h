// The image object: any picture file as one buffer of 32-bit premultiplied pixels, drawn scaled and blended.
#pragma once

#include "imaging/picture_pixels.h"

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>

struct EventPump;
struct Files;
struct PictureDrawing;
struct Surface;
struct SystemPictures;
struct ZlibLibrary;

// The ports for decoding bytes. Both may be called from any thread.
struct DecodingPorts {
    ZlibLibrary& zlib;
    SystemPictures& pictures;
};

// The ports for loading a picture.
struct PicturePorts {
    Files& files;
    ZlibLibrary& zlib;
    EventPump& pump;
    SystemPictures& pictures;

    operator DecodingPorts() const { return {zlib, pictures}; } // NOLINT(google-explicit-constructor)
};

// Whether a picture file may have this size: 57 bytes to 256 MiB.
bool IsPictureFileSize(std::int64_t size);

// Returns the bytes of a picture file, or nothing when it is missing, shorter than 57 bytes or longer than
// 256 MiB.
std::optional<QByteArray> ReadPictureFile(const PicturePorts& ports, const QString& FileName);

// Only one thread at a time may use an object, even its const members: drawing changes cached data.
class c32bppDIB {
public:
    c32bppDIB();
    ~c32bppDIB();
    // An object that was moved from is empty.
    c32bppDIB(c32bppDIB&& other) noexcept;
    c32bppDIB& operator=(c32bppDIB&& other) noexcept;
    c32bppDIB(const c32bppDIB&) = delete;
    c32bppDIB& operator=(const c32bppDIB&) = delete;

    // Loads a file of any supported format, detected by its content. Returns false and leaves the object
    // empty when the file is missing, shorter than 57 bytes, larger than 256 MiB or not decodable; raises no
    // error. Lets pending events run once if there was a file to decode.
    bool LoadPicture_File(const PicturePorts& ports, const QString& FileName, int iconCx = 0, int iconCy = 0,
                          bool SaveFormat = false);
    // The same from `streamLength` bytes at `streamStart`; a length of 0 means up to the end. Reads no file
    // and runs no events, so it may be called on any thread.
    bool LoadPicture_Stream(const DecodingPorts& ports, std::span<const std::uint8_t> inStream,
                            int iconCx = 0, int iconCy = 0, std::size_t streamStart = 0,
                            std::size_t streamLength = 0, bool SaveFormat = false);

    // Empties the object and makes a zero-filled buffer; see PicturePixels::InitializeDIB.
    bool InitializeDIB(int width, int height);
    // Empties the object and takes over the pixels of a parser with their `alpha` and `ImageType`.
    void TakePixels(PicturePixels pixels);
    // Empties the object: removes the pixels and the original bytes.
    void DestroyDIB();

    // Size in pixels, 0 when empty.
    int Width() const { return pixels_.Width(); }
    int Height() const { return pixels_.Height(); }
    // Non-zero when the object holds a picture.
    int Handle() const { return pixels_.IsEmpty() ? 0 : 1; }
    // The pixels contain real transparency.
    bool alpha() const { return pixels_.alpha; }
    // One of ImageKind.
    int ImageType() const { return pixels_.ImageType; }
    // Bytes from one row to the next, and of all rows.
    std::size_t ScanWidth() const { return pixels_.ScanWidth(); }
    std::size_t ByteCount() const { return pixels_.ByteCount(); }
    // The pixels, bottom row first. Null when empty. Invalidated by Render.
    std::uint8_t* BitsPointer();
    const std::uint8_t* BitsPointer() const;
    // The source file's bytes, kept on request.
    const QByteArray& OriginalBytes() const { return originalBytes_; }

    // Draws a rectangle of the picture (top-down coordinates) scaled into a rectangle of the surface, with
    // alpha. Opacity is its absolute value modulo 100, with 0 as 100; an Opacity of exactly 0 draws nothing
    // and returns true. Widths and heights of 0 mean the picture's own. A negative destWidth or destHeight
    // mirrors; the source rectangle then refers to the mirrored picture. Returns false and draws nothing for
    // an empty object, a negative source size or a source rectangle that passes the picture's edge. Blend has
    // an effect only without HighQualityInterpolation: false then ignores the picture's alpha. SetHalfTone
    // has no effect, because only StretchBlt uses a surface's stretch mode.
    bool Render(Surface& destinationDC, int destX, int destY, int destWidth = 0, int destHeight = 0,
                int srcX = 0, int srcY = 0, int srcWidth = 0, int srcHeight = 0, int Opacity = 100,
                bool Blend = true, bool SetHalfTone = true) const;

    // Prepares the first Render ahead of time; may be called on any thread.
    void PrepareRender() const;
    // The picture in the form in which it is drawn: a view of the pixels, valid until they change or
    // BitsPointer is called. Requires a picture.
    const PictureDrawing& Drawing() const { return DrawingOf(); }

    // The scaling quality of Render: smooth if true, otherwise nearest neighbour.
    bool HighQualityInterpolation = true;

private:
    bool Load(const DecodingPorts& ports, std::span<const std::uint8_t> bytes, int iconCx, int iconCy);
    PictureDrawing& DrawingOf() const;

    // Mutable because drawing reorders the rows.
    mutable PicturePixels pixels_;
    QByteArray originalBytes_;
    // A view of the pixels in the form in which they are drawn, made by the first Render.
    mutable std::unique_ptr<PictureDrawing> drawing_;
};

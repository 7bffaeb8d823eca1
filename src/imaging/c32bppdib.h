// The image object: any picture file as one buffer of 32-bit premultiplied pixels, drawn scaled and blended.
#pragma once

#include "platform/pixel_memory.h"

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

// What decoding bytes needs from the platform. Both may be called from any thread.
struct DecodingPorts {
    ZlibLibrary& zlib;
    SystemPictures& pictures;
};

// What loading a picture needs from the platform.
struct PicturePorts {
    Files& files;
    ZlibLibrary& zlib;
    EventPump& pump;
    SystemPictures& pictures;

    operator DecodingPorts() const { return {zlib, pictures}; } // NOLINT(google-explicit-constructor)
};

// A picture file may be this large: 57 bytes to 256 MiB.
bool IsPictureFileSize(std::int64_t size);

// The bytes of a picture file. Nothing when it is missing, shorter than 57 bytes or longer than 256 MiB.
std::optional<QByteArray> ReadPictureFile(const PicturePorts& ports, const QString& FileName);

// Source kinds of a loaded picture.
enum ImageKind : int { kImageNone = 0, kImageBitmap = 1, kImageGif = 9, kImagePng = 10, kImageIcon = 11 };

// One thread at a time uses an object, its const members included: drawing keeps the form in which it draws.
class c32bppDIB {
public:
    c32bppDIB();
    ~c32bppDIB();
    // The object moved from is empty.
    c32bppDIB(c32bppDIB&& other) noexcept;
    c32bppDIB& operator=(c32bppDIB&& other) noexcept;
    c32bppDIB(const c32bppDIB&) = delete;
    c32bppDIB& operator=(const c32bppDIB&) = delete;

    // Loads a file of any supported kind, told by its content alone. False, and an empty object, when it is
    // missing, shorter than 57 bytes, larger than 256 MiB or not decodable; no error is raised. Lets pending
    // events run once when there was a file to try.
    bool LoadPicture_File(const PicturePorts& ports, const QString& FileName, int iconCx = 0, int iconCy = 0,
                          bool SaveFormat = false);
    // The same from `streamLength` bytes at `streamStart`; a length of 0 means to the end. No file is read
    // and no event runs, so this may be called on any thread.
    bool LoadPicture_Stream(const DecodingPorts& ports, std::span<const std::uint8_t> inStream,
                            int iconCx = 0, int iconCy = 0, std::size_t streamStart = 0,
                            std::size_t streamLength = 0, bool SaveFormat = false);

    // Empties the object and makes a zero-filled buffer. False for a height of 0, a width below 1 or more
    // than 1 GiB of pixels; a negative height counts by its absolute value.
    bool InitializeDIB(int width, int height);
    // The same with pixels of any content, for who writes every one of them, best by Line.
    bool InitializeUnset(int width, int height);
    // Empties the object and takes over pixels of AllocatePixels: rows without gaps, the highest first. Both
    // sizes are 1 or more.
    void TakePixels(PixelMemory pixels, int width, int height);
    // Empties the object: no pixels, no original bytes, `alpha` false, `ImageType` none.
    void DestroyDIB();

    // Size in pixels, 0 when empty.
    int Width() const { return width_; }
    int Height() const { return height_; }
    // Non-zero when the object holds a picture.
    int Handle() const { return pixels_ ? 1 : 0; }
    // Bytes from one row to the next.
    std::size_t ScanWidth() const { return static_cast<std::size_t>(width_) * 4; }
    // The pixels: rows bottom-up, blue, green, red, alpha, colour multiplied by alpha. Null when empty. To be
    // asked for anew after a Render.
    std::uint8_t* BitsPointer();
    const std::uint8_t* BitsPointer() const;
    // A row of the pixels, the highest being 0. Costs nothing, unlike BitsPointer behind InitializeUnset.
    std::span<std::uint8_t> Line(int row);
    // The source file's bytes, kept on request.
    const QByteArray& OriginalBytes() const { return originalBytes_; }

    // Draws a rectangle of the picture (top-down coordinates) scaled into a rectangle of the surface, with
    // alpha. Opacity counts by its absolute value modulo 100, a rest of 0 being 100; the plain value 0 draws
    // nothing and is true. Widths and heights of 0 mean the picture's own; a negative destWidth or destHeight
    // mirrors, and the source rectangle is then one of the mirrored picture. False, and nothing drawn, for an
    // empty object, a negative source size or a source rectangle that passes the picture's edge. Blend plays
    // a part only without HighQualityInterpolation: when false, the picture's own alpha is then left out.
    // SetHalfTone plays none, as no drawing looks at a surface's stretch mode but StretchBlt.
    bool Render(Surface& destinationDC, int destX, int destY, int destWidth = 0, int destHeight = 0,
                int srcX = 0, int srcY = 0, int srcWidth = 0, int srcHeight = 0, int Opacity = 100,
                bool Blend = true, bool SetHalfTone = true) const;

    // Does now, on whatever thread, what the first Render would have to do.
    void PrepareRender() const;
    // The picture in the form in which it is drawn: a view that ends with the pixels, and when they are asked
    // for. For who holds a picture only.
    const PictureDrawing& Drawing() const { return DrawingOf(); }

    // The pixels hold real transparency.
    bool alpha = false;
    // One of ImageKind.
    int ImageType = kImageNone;
    // Picks the scaling quality of Render: smooth, or nearest neighbour.
    bool HighQualityInterpolation = true;

private:
    bool Allocate(int width, int height, void* (*allocate)(std::size_t bytes));
    bool Load(const DecodingPorts& ports, std::span<const std::uint8_t> bytes, int iconCx, int iconCy);
    PictureDrawing& DrawingOf() const;
    void KeepRows(bool isTurned) const;

    PixelMemory pixels_;
    // The highest row comes first now, as it does in drawing.
    mutable bool isTurned_ = false;
    int width_ = 0;
    int height_ = 0;
    QByteArray originalBytes_;
    // A view of the pixels as they are drawn, made by the first Render.
    mutable std::unique_ptr<PictureDrawing> drawing_;
};

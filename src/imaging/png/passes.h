// The rows of a PNG, pass by pass: unfiltered and written into the host.
#pragma once

#include "imaging/png/pixels.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

class PicturePixels;

// Size of the inflated data in bytes, filter bytes included. Returns nothing when it exceeds 2,147,483,647.
std::optional<std::size_t> PngInflatedSize(const PngHeader& header);

// Whether a picture of inflated size `size` may be decoded from `compressed` bytes: the number of pixels is
// allowed, pixels and row buffers fit in memory, and the data can fill the pixels.
bool IsPngAffordable(const PngHeader& header, std::size_t size, std::size_t compressed);

// The position of a pass's pixels in the picture.
struct PngPass {
    int firstRow = 0;
    int firstColumn = 0;
    int rowStep = 1;
    int columnStep = 1;
};

// Draws the rows of all passes as inflated data arrive.
class PngRows {
public:
    // The host has the size that the header states, and no pixel has been written yet: rows without a visible
    // pixel are left as they are. The host and the writer must outlive this object.
    PngRows(const PngHeader& header, const PngPixelWriter& writer, PicturePixels& cHost);

    // Takes the next inflated data, any number of bytes. Ignores data after the last row. Returns false for
    // an unknown filter or a sample without a colour, and from then on.
    bool Take(std::span<const std::uint8_t> data);
    // Draws the missing rows from zeros. Returns false as Take does.
    bool Finish();

    // A row has been refused.
    bool IsBroken() const { return isBroken_; }

private:
    void BeginPass();
    bool IsDone() const { return number_ > last_; }
    bool DrawRow();

    const PngHeader& header_;
    const PngPixelWriter& writer_;
    PicturePixels& host_;
    int number_;
    int last_;
    PngPass pass_;
    // Number of rows of the pass, and the index of the next row.
    int rows_ = 0;
    int row_ = 0;
    // Bytes of a row with its filter byte, and how many of them have arrived.
    std::size_t rowBytes_ = 0;
    std::size_t filled_ = 0;
    std::unique_ptr<std::uint8_t[]> bytes_;
    std::unique_ptr<std::uint8_t[]> prior_;
    // One row of an Adam7 pass before it is spread over the row of the picture.
    std::vector<std::uint8_t> spread_;
    bool isBroken_ = false;
};

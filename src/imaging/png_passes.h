// The rows of a PNG, pass by pass: unfiltered and put into the host.
#pragma once

#include "imaging/png_pixels.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

class c32bppDIB;

// Draws the rows of all passes as their inflated data come in.
class PngRows {
public:
    // The host has the header's size. It and the writer outlive this object.
    PngRows(const PngHeader& header, const PngPixelWriter& writer, c32bppDIB& host);

    // Takes the next inflated data, any number of bytes. What is behind the last row is left alone. False for
    // an unknown filter or a sample without a colour; then nothing more can be taken.
    bool Take(std::span<const std::uint8_t> data);
    // Draws what has not come as if it were zeros. False as above.
    bool Finish();

    // A row was refused.
    bool IsBroken() const { return isBroken_; }

private:
    void BeginPass();
    bool IsDone() const { return number_ > last_; }
    bool DrawRow();

    const PngHeader& header_;
    const PngPixelWriter& writer_;
    c32bppDIB& host_;
    int number_;
    int last_;
    PngPass pass_;
    // Rows of the pass, and the one that comes next.
    int rows_ = 0;
    int row_ = 0;
    // Bytes of a row with its filter in front, and how many of the next one are here.
    std::size_t rowBytes_ = 0;
    std::size_t filled_ = 0;
    std::unique_ptr<std::uint8_t[]> bytes_;
    std::unique_ptr<std::uint8_t[]> prior_;
    // The pixels of a row that are spread over the picture's.
    std::vector<std::uint8_t> spread_;
    bool isBroken_ = false;
};

// The row filters of PNG.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

// Removes a filter from a row in place (W3C PNG document, "Filtering"): 0 none, 1 Sub, 2 Up, 3 Average, 4
// Paeth. `prior` is the unfiltered row above, of the same length, or null for the first row of a pass.
// `pixelBytes` is the distance of a pixel to its left neighbour: 1, 2, 3, 4, 6 or 8. Returns false for any
// other filter.
bool Unfilter(int filter, std::span<std::uint8_t> row, const std::uint8_t* prior, std::size_t pixelBytes);

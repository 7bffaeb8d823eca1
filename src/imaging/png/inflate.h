// Our own Inflate. It decompresses picture data on machines with and without the compression library.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>

// Inflates a zlib stream (RFC 1950, RFC 1951) into `target` and returns the number of bytes written. Skips
// the two bytes of the header, ignores the checksum, and stops successfully when `target` is full. Returns
// nothing for data that are malformed before that point: a missing end, unknown blocks and codes, code
// lengths that do not form a prefix code, distances before the first byte. Never reads or writes outside the
// two ranges. Can change up to fifteen bytes of `target` after the bytes written.
std::optional<std::size_t> Inflate(std::span<const std::uint8_t> source, std::span<std::uint8_t> target);

// Receives inflated bytes, piece by piece. Returns false to stop.
using InflatedTaker = std::function<bool(std::span<const std::uint8_t> bytes)>;

// The same for at most `most` bytes, passed on in pieces of any size while they are still in the cache.
// Returns false for malformed data and when the taker stops.
bool InflateInPieces(std::span<const std::uint8_t> source, std::size_t most, const InflatedTaker& taker);

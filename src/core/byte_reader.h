// A reader over untrusted bytes that cannot read past their end.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

// Reads forward through a range of bytes. A read either succeeds completely or returns nothing and leaves the
// position unchanged. Each method's name gives the byte order.
class ByteReader {
public:
    explicit ByteReader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    std::size_t position() const { return position_; }
    std::size_t remaining() const { return bytes_.size() - position_; }

    std::optional<std::uint8_t> ReadByte() {
        const auto range = Read(1);
        return range ? std::optional((*range)[0]) : std::nullopt;
    }
    std::optional<std::uint16_t> ReadBigEndian16() {
        const auto range = Read(2);
        return range ? std::optional(static_cast<std::uint16_t>((*range)[0] << 8 | (*range)[1]))
                     : std::nullopt;
    }
    std::optional<std::uint32_t> ReadBigEndian32() {
        const auto range = Read(4);
        return range ? std::optional(Join((*range)[0], (*range)[1], (*range)[2], (*range)[3])) : std::nullopt;
    }
    std::optional<std::uint16_t> ReadLittleEndian16() {
        const auto range = Read(2);
        return range ? std::optional(static_cast<std::uint16_t>((*range)[1] << 8 | (*range)[0]))
                     : std::nullopt;
    }
    std::optional<std::uint32_t> ReadLittleEndian32() {
        const auto range = Read(4);
        return range ? std::optional(Join((*range)[3], (*range)[2], (*range)[1], (*range)[0])) : std::nullopt;
    }
    // Returns the next `count` bytes without copying them.
    std::optional<std::span<const std::uint8_t>> Read(std::size_t count) {
        if (count > remaining()) {
            return std::nullopt;
        }
        const auto range = bytes_.subspan(position_, count);
        position_ += count;
        return range;
    }
    bool Skip(std::size_t count) { return Read(count).has_value(); }

private:
    static std::uint32_t Join(std::uint32_t a, std::uint32_t b, std::uint32_t c, std::uint32_t d) {
        return a << 24 | b << 16 | c << 8 | d;
    }

    std::span<const std::uint8_t> bytes_;
    std::size_t position_ = 0;
};

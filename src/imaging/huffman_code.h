// Bits and prefix codes of RFC 1951, for Inflate.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>

// Reads bits, the lowest of each byte first, and cannot pass the end of its bytes.
class BitReader {
public:
    explicit BitReader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    // The next bits without taking them, at least 15, zeros behind the end.
    std::uint64_t Peek() {
        if (count_ < kWanted) {
            Fill();
        }
        return bits_;
    }
    // Takes `count` of the bits that Peek showed. False when there are not so many left.
    bool Drop(unsigned count) {
        if (count > count_) {
            return false;
        }
        bits_ >>= count;
        count_ -= count;
        return true;
    }
    // The next `count` bits, at most 16, as a number. Nothing when there are not so many left.
    std::optional<unsigned> Take(unsigned count) {
        const auto value = static_cast<unsigned>(Peek() & ((std::uint64_t{1} << count) - 1));
        return Drop(count) ? std::optional(value) : std::nullopt;
    }
    // Drops the rest of a byte that has been taken in part.
    void SkipToByte() { Drop(count_ % 8); }
    // The next whole bytes, without a copy. Only behind SkipToByte.
    std::optional<std::span<const std::uint8_t>> TakeBytes(std::size_t count) {
        next_ -= count_ / 8;
        bits_ = 0;
        count_ = 0;
        if (count > bytes_.size() - next_) {
            return std::nullopt;
        }
        next_ += count;
        return bytes_.subspan(next_ - count, count);
    }

private:
    static constexpr unsigned kWanted = 32;

    void Fill() {
        if (std::endian::native == std::endian::little && bytes_.size() - next_ >= sizeof(std::uint64_t)) {
            std::uint64_t word = 0;
            std::memcpy(&word, bytes_.data() + next_, sizeof word);
            const unsigned taken = (64 - count_) / 8;
            const std::uint64_t kept = taken == 8 ? word : word & ((std::uint64_t{1} << (taken * 8)) - 1);
            bits_ |= kept << count_;
            next_ += taken;
            count_ += taken * 8;
            return;
        }
        while (count_ <= 56 && next_ < bytes_.size()) {
            bits_ |= std::uint64_t{bytes_[next_++]} << count_;
            count_ += 8;
        }
    }

    std::span<const std::uint8_t> bytes_;
    std::size_t next_ = 0;
    std::uint64_t bits_ = 0;
    unsigned count_ = 0;
};

// A canonical prefix code of at most 288 symbols and 15 bits.
class HuffmanCode {
public:
    // Makes the code from the length of each symbol's code, 0 for a symbol without one. False when the
    // lengths make no prefix code, or leave codes without a symbol; a lone code of one bit and a code without
    // any symbol are allowed.
    bool Build(std::span<const std::uint8_t> lengths);

    // The next symbol. Nothing for a code without a symbol and at the end of the data.
    std::optional<unsigned> Decode(BitReader& bits) const {
        const std::uint64_t ahead = bits.Peek();
        const std::uint16_t entry = quick_[ahead & (kQuickSize - 1)];
        if (entry != 0) {
            return bits.Drop(entry & kLengthMask) ? std::optional<unsigned>(entry >> kLengthBits)
                                                  : std::nullopt;
        }
        return DecodeLong(bits, ahead);
    }

private:
    static constexpr unsigned kLongest = 15;
    static constexpr unsigned kQuickBits = 10;
    static constexpr unsigned kQuickSize = 1U << kQuickBits;
    static constexpr unsigned kLengthBits = 4;
    static constexpr unsigned kLengthMask = (1U << kLengthBits) - 1;

    std::optional<unsigned> DecodeLong(BitReader& bits, std::uint64_t ahead) const;
    void FillQuick(unsigned symbol, unsigned code, unsigned length);

    // Symbol and length for each value of the next ten bits, 0 where the code is longer.
    std::array<std::uint16_t, kQuickSize> quick_{};
    // Symbols in the order of their codes, and how many codes of each length there are.
    std::array<std::uint16_t, 288> symbols_{};
    std::array<std::uint16_t, kLongest + 1> counts_{};
};

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
    // Whether QuickPeek may be called twice: there are two words ahead.
    bool HasWords() const {
        return std::endian::native == std::endian::little &&
               bytes_.size() - next_ >= 2 * sizeof(std::uint64_t);
    }
    // As Peek, at least 56 bits. Only where HasWords is true.
    std::uint64_t QuickPeek() {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes_.data() + next_, sizeof word);
        // Bits above the count are those of the next byte, and come in again with it.
        bits_ |= word << count_;
        next_ += (63 - count_) / 8;
        count_ |= 56U;
        return bits_;
    }
    // Takes `count` of the bits that QuickPeek showed.
    std::uint64_t QuickDrop(unsigned count) {
        bits_ >>= count;
        count_ -= count;
        return bits_;
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

    // At most 63 bits are held: QuickPeek counts on room for one more.
    void Fill() {
        if (std::endian::native == std::endian::little && bytes_.size() - next_ >= sizeof(std::uint64_t)) {
            std::uint64_t word = 0;
            std::memcpy(&word, bytes_.data() + next_, sizeof word);
            const unsigned taken = (63 - count_) / 8;
            bits_ |= (word & ((std::uint64_t{1} << (taken * 8)) - 1)) << count_;
            next_ += taken;
            count_ += taken * 8;
            return;
        }
        while (count_ < 56 && next_ < bytes_.size()) {
            bits_ |= std::uint64_t{bytes_[next_++]} << count_;
            count_ += 8;
        }
    }

    std::span<const std::uint8_t> bytes_;
    std::size_t next_ = 0;
    std::uint64_t bits_ = 0;
    unsigned count_ = 0;
};

// What a code stands for: a number, to which extra bits are added. Small, as tables are made of it.
struct CodeMeaning {
    enum Kind : std::uint8_t { kNone, kLiteral, kEndOfBlock, kRange };

    std::uint16_t base = 0;
    std::uint8_t extraBits : 4 = 0;
    Kind kind : 4 = kNone;
    // Bits of the code itself.
    std::uint8_t length = 0;
};

// A canonical prefix code of at most 288 symbols and 15 bits.
class HuffmanCode {
public:
    // Makes the code from the length of each symbol's code, 0 for a symbol without one. False when the
    // lengths make no prefix code, or leave codes without a symbol; a lone code of one bit and a code without
    // any symbol are allowed. The meanings, one for each symbol, outlive the code.
    bool Build(std::span<const std::uint8_t> lengths, std::span<const CodeMeaning> meanings);

    // The meaning of the short code that these bits begin with; a length of 0 where it is a long one or none.
    CodeMeaning Quick(std::uint64_t bits) const { return quick_[bits & quickMask_]; }

    // The meaning of the next code. Nothing for a code without a symbol and at the end of the data.
    std::optional<CodeMeaning> Decode(BitReader& bits) const {
        const std::uint64_t ahead = bits.Peek();
        const CodeMeaning meaning = Quick(ahead);
        if (meaning.length != 0) {
            return bits.Drop(meaning.length) ? std::optional(meaning) : std::nullopt;
        }
        return DecodeLong(bits, ahead);
    }

private:
    static constexpr unsigned kLongest = 15;
    static constexpr unsigned kMostQuickBits = 11;

    std::optional<CodeMeaning> DecodeLong(BitReader& bits, std::uint64_t ahead) const;
    void FillQuick(CodeMeaning meaning, unsigned code, unsigned length);

    // What each value of the next bits begins with, as many bits as the longest code has, up to eleven.
    std::array<CodeMeaning, std::size_t{1} << kMostQuickBits> quick_{};
    std::uint64_t quickMask_ = 0;
    unsigned quickBits_ = 0;
    // Symbols in the order of their codes, and how many codes of each length there are.
    std::array<std::uint16_t, 288> symbols_{};
    std::array<std::uint16_t, kLongest + 1> counts_{};
    std::span<const CodeMeaning> meanings_;
};

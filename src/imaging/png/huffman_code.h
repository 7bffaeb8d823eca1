// Bit reader and prefix codes of RFC 1951, for Inflate.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>

// Reads bits, the lowest bit of each byte first. Cannot read past the end of the bytes.
class BitReader {
public:
    explicit BitReader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    // Returns at least the next 15 bits without consuming them; zeros after the end.
    std::uint64_t Peek() {
        if (count_ < kWanted) {
            Fill();
        }
        return bits_;
    }
    // Consumes `count` of the bits that Peek returned. Returns false when fewer are left.
    bool Drop(unsigned count) {
        if (count > count_) {
            return false;
        }
        bits_ >>= count;
        count_ -= count;
        return true;
    }
    // Consumes the next `count` bits, at most 16, as a number. Returns nothing when fewer are left.
    std::optional<unsigned> Take(unsigned count) {
        const auto value = static_cast<unsigned>(Peek() & ((std::uint64_t{1} << count) - 1));
        return Drop(count) ? std::optional(value) : std::nullopt;
    }
    // Whether two more words are available, so that QuickPeek may be called twice.
    bool HasWords() const {
        return std::endian::native == std::endian::little &&
               bytes_.size() - next_ >= 2 * sizeof(std::uint64_t);
    }
    // Like Peek, but returns at least 56 bits. Requires HasWords.
    std::uint64_t QuickPeek() {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes_.data() + next_, sizeof word);
        // Bits above the count belong to the next byte and are read again with it.
        bits_ |= word << count_;
        next_ += (63 - count_) / 8;
        count_ |= 56U;
        return bits_;
    }
    // Consumes `count` of the bits that QuickPeek returned.
    std::uint64_t QuickDrop(unsigned count) {
        bits_ >>= count;
        count_ -= count;
        return bits_;
    }
    // Drops the rest of a partly consumed byte.
    void SkipToByte() { Drop(count_ % 8); }
    // Returns the next whole bytes without a copy. Requires SkipToByte before.
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

    // Keeps at most 63 bits, because QuickPeek needs room for one more.
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

// The meaning of a code: a number to which extra bits are added. Small, because look-up tables consist of it.
struct CodeMeaning {
    enum Kind : std::uint8_t { kNone, kLiteral, kEndOfBlock, kRange };

    std::uint16_t base = 0;
    std::uint8_t extraBits : 4 = 0;
    Kind kind : 4 = kNone;
    // Number of bits of the code itself.
    std::uint8_t length = 0;
};

// A canonical prefix code of at most 288 symbols and 15 bits.
class HuffmanCode {
public:
    // Builds the code from the code length of each symbol; 0 means that the symbol has no code. Returns false
    // when the lengths do not form a prefix code or leave codes unused. A single code of one bit and a code
    // without symbols are allowed. The meanings, one for each symbol, must outlive this object.
    bool Build(std::span<const std::uint8_t> lengths, std::span<const CodeMeaning> meanings);

    // The meaning of the short code at the start of these bits. Its length is 0 for a long or an invalid
    // code.
    CodeMeaning Quick(std::uint64_t bits) const { return quick_[bits & quickMask_]; }

    // Consumes the next code and returns its meaning. Returns nothing for an invalid code and at the end of
    // the data.
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

    // The code at the start of each value of the next bits. The table uses as many bits as the longest code
    // has, up to eleven.
    std::array<CodeMeaning, std::size_t{1} << kMostQuickBits> quick_{};
    std::uint64_t quickMask_ = 0;
    unsigned quickBits_ = 0;
    // The symbols in the order of their codes, and the number of codes of each length.
    std::array<std::uint16_t, 288> symbols_{};
    std::array<std::uint16_t, kLongest + 1> counts_{};
    std::span<const CodeMeaning> meanings_;
};

// Canonical prefix codes of RFC 1951, 3.2.2: short codes use a table, long codes are decoded bit by bit.
#include "imaging/png/huffman_code.h"

#include <algorithm>

bool HuffmanCode::Build(std::span<const std::uint8_t> lengths, std::span<const CodeMeaning> meanings) {
    meanings_ = meanings;
    counts_.fill(0);
    for (const std::uint8_t length : lengths) {
        ++counts_[length];
    }
    counts_[0] = 0;

    std::array<unsigned, kLongest + 2> nextCode{};
    std::array<unsigned, kLongest + 2> nextPlace{};
    unsigned free = 1;
    unsigned longest = 1;
    for (unsigned length = 1; length <= kLongest; ++length) {
        free *= 2;
        if (counts_[length] > free) {
            return false;
        }
        free -= counts_[length];
        longest = counts_[length] != 0 ? length : longest;
        nextCode[length + 1] = (nextCode[length] + counts_[length]) * 2;
        nextPlace[length + 1] = nextPlace[length] + counts_[length];
    }
    const unsigned symbols = nextPlace[kLongest + 1];
    const bool isLone = symbols == 1 && counts_[1] == 1;
    if (free != 0 && symbols != 0 && !isLone) {
        return false;
    }
    quickBits_ = std::min(longest, kMostQuickBits);
    quickMask_ = (std::uint64_t{1} << quickBits_) - 1;
    std::fill_n(quick_.begin(), std::size_t{1} << quickBits_, CodeMeaning());
    for (unsigned symbol = 0; symbol < lengths.size(); ++symbol) {
        const unsigned length = lengths[symbol];
        if (length != 0) {
            symbols_[nextPlace[length]++] = static_cast<std::uint16_t>(symbol);
            FillQuick(meanings[symbol], nextCode[length]++, length);
        }
    }
    return true;
}

// The data contain the highest bit of a code first, so the index into the table is the reversed code.
void HuffmanCode::FillQuick(CodeMeaning meaning, unsigned code, unsigned length) {
    if (length > quickBits_) {
        return;
    }
    meaning.length = static_cast<std::uint8_t>(length);
    unsigned turned = 0;
    for (unsigned i = 0; i < length; ++i) {
        turned |= (code >> i & 1U) << (length - 1 - i);
    }
    for (std::size_t place = turned; place <= quickMask_; place += std::size_t{1} << length) {
        quick_[place] = meaning;
    }
}

std::optional<CodeMeaning> HuffmanCode::DecodeLong(BitReader& bits, std::uint64_t ahead) const {
    unsigned code = 0;
    unsigned firstCode = 0;
    unsigned firstPlace = 0;
    for (unsigned length = 1; length <= kLongest; ++length) {
        code |= static_cast<unsigned>(ahead & 1U);
        ahead >>= 1;
        const unsigned count = counts_[length];
        if (code < firstCode + count) {
            return bits.Drop(length) ? std::optional(meanings_[symbols_[firstPlace + code - firstCode]])
                                     : std::nullopt;
        }
        firstPlace += count;
        firstCode = (firstCode + count) * 2;
        code *= 2;
    }
    return std::nullopt;
}

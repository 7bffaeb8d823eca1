// Inflate: stored, fixed and dynamic blocks of RFC 1951. Each code has one look-up table. A fast loop runs
// while the ends of input and output are far away.
#include "imaging/png/inflate.h"

#include "imaging/png/huffman_code.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>

namespace {

// Length and distance codes of RFC 1951, 3.2.5. Code 285 never has extra bits.
struct Range {
    std::uint16_t base;
    std::uint8_t extraBits;
};
// clang-format off
constexpr std::array<Range, 29> kLengths = {{
    {3, 0},  {4, 0},  {5, 0},  {6, 0},  {7, 0},  {8, 0},  {9, 0},   {10, 0},  {11, 1},  {13, 1},
    {15, 1}, {17, 1}, {19, 2}, {23, 2}, {27, 2}, {31, 2}, {35, 3},  {43, 3},  {51, 3},  {59, 3},
    {67, 4}, {83, 4}, {99, 4}, {115, 4}, {131, 5}, {163, 5}, {195, 5}, {227, 5}, {258, 0},
}};
constexpr std::array<Range, 30> kDistances = {{
    {1, 0},     {2, 0},     {3, 0},     {4, 0},     {5, 1},     {7, 1},      {9, 2},      {13, 2},
    {17, 3},    {25, 3},    {33, 4},    {49, 4},    {65, 5},    {97, 5},     {129, 6},    {193, 6},
    {257, 7},   {385, 7},   {513, 8},   {769, 8},   {1025, 9},  {1537, 9},   {2049, 10},  {3073, 10},
    {4097, 11}, {6145, 11}, {8193, 12}, {12289, 12}, {16385, 13}, {24577, 13},
}};
// The order in which a dynamic block stores the lengths of its code length code.
constexpr std::array<std::uint8_t, 19> kLengthOrder = {16, 17, 18, 0, 8, 7, 9, 6, 10, 5, 11, 4, 12, 3, 13, 2, 14, 1, 15};
// clang-format on
constexpr std::size_t kEndOfBlock = 256;
constexpr std::size_t kFirstLength = 257;
constexpr std::size_t kMostLiterals = 286;
constexpr std::size_t kMostDistances = 30;

// The meanings of the symbols. Length symbols 286 and 287 and distance symbols 30 and 31 have codes in the
// fixed codes, but no meaning.
template <std::size_t Symbols>
using Meanings = std::array<CodeMeaning, Symbols>;

template <std::size_t Count>
constexpr void PutRanges(const std::array<Range, Count>& ranges, CodeMeaning* to) {
    for (const Range& range : ranges) {
        *to++ = {range.base, static_cast<std::uint8_t>(range.extraBits & 15U), CodeMeaning::kRange, 0};
    }
}

constexpr Meanings<288> LiteralMeanings() {
    Meanings<288> meanings{};
    for (std::uint16_t i = 0; i < kEndOfBlock; ++i) {
        meanings[i] = {i, 0, CodeMeaning::kLiteral, 0};
    }
    meanings[kEndOfBlock].kind = CodeMeaning::kEndOfBlock;
    PutRanges(kLengths, meanings.data() + kFirstLength);
    return meanings;
}

constexpr Meanings<32> DistanceMeanings() {
    Meanings<32> meanings{};
    PutRanges(kDistances, meanings.data());
    return meanings;
}

// The code length code: the lengths themselves, and three symbols that repeat.
constexpr Meanings<19> LengthMeanings() {
    Meanings<19> meanings{};
    for (std::uint16_t i = 0; i < 19; ++i) {
        meanings[i] = {i, 0, CodeMeaning::kLiteral, 0};
    }
    meanings[16] = {3, 2, CodeMeaning::kRange, 0};
    meanings[17] = {3, 3, CodeMeaning::kNone, 0};
    meanings[18] = {11, 7, CodeMeaning::kNone, 0};
    return meanings;
}

constexpr Meanings<288> kLiteralMeanings = LiteralMeanings();
constexpr Meanings<32> kDistanceMeanings = DistanceMeanings();
constexpr Meanings<19> kLengthMeanings = LengthMeanings();

enum class Step { kGoesOn, kFull, kMalformed };

// Free room after the output, so that copies of sixteen bytes can pass the end of a repeat.
constexpr std::size_t kLongestRepeat = 258;
constexpr std::size_t kPiece = 16;
constexpr std::size_t kQuickRoom = kLongestRepeat + 2 * kPiece;

// The largest distance of a repeat, and the size of the window for output in pieces: small enough for the
// second-level cache, large enough that moving the last 32 KiB to its front costs little.
constexpr std::size_t kFarthest = 32768;
constexpr std::size_t kWindow = 8 * kFarthest;

// The output. Without a taker, `bytes` receives all of it in order. With a taker, `bytes` is a window that is
// filled repeatedly.
struct Output {
    std::span<std::uint8_t> bytes;
    std::size_t used = 0;
    const InflatedTaker* taker = nullptr;
    // With a taker: the number of bytes in the window that it has received, and the number of bytes still to
    // come after the end of the window.
    std::size_t taken = 0;
    std::size_t beyond = 0;

    bool isRefused = false;

    std::size_t Room() const { return bytes.size() - used; }
    // Makes room if there is none. Returns false when there is no more room.
    bool FindRoom() { return Room() > 0 || MakeRoom(); }
    bool HandOver();
    bool MakeRoom();
};

bool Output::HandOver() {
    isRefused = isRefused || !(*taker)(bytes.subspan(taken, used - taken));
    taken = used;
    return !isRefused;
}

// Moves the bytes that a repeat can reach to the front. Returns false at the end of the output.
bool Output::MakeRoom() {
    if (beyond == 0 || !HandOver()) {
        return false;
    }
    std::memmove(bytes.data(), bytes.data() + used - kFarthest, kFarthest);
    const std::size_t next = std::min(beyond, kWindow - kFarthest);
    bytes = {bytes.data(), kFarthest + next};
    beyond -= next;
    used = kFarthest;
    taken = kFarthest;
    return true;
}

struct BlockCodes {
    HuffmanCode literals;
    HuffmanCode distances;
};

// Repeats `length` bytes from `distance` bytes back. There must be room for them. Source and target can
// overlap: a distance of 1 repeats one byte.
void RepeatInRoom(Output& output, std::size_t distance, std::size_t length) {
    std::uint8_t* const to = output.bytes.data() + output.used;
    const std::uint8_t* const from = to - distance;
    if (distance >= length) {
        std::memcpy(to, from, length);
    } else if (distance == 1) {
        std::memset(to, *from, length);
    } else {
        for (std::size_t i = 0; i < length; ++i) {
            to[i] = from[i];
        }
    }
    output.used += length;
}

void Repeat(Output& output, std::size_t distance, std::size_t length) {
    while (length > 0 && output.FindRoom()) {
        const std::size_t now = std::min(length, output.Room());
        RepeatInRoom(output, distance, now);
        length -= now;
    }
}

// Source and target can overlap: all bytes are read before any is written.
void CopyPiece(std::uint8_t* to, const std::uint8_t* from) {
    std::array<std::uint8_t, kPiece> piece;
    std::memcpy(piece.data(), from, kPiece);
    std::memcpy(to, piece.data(), kPiece);
}

// Repeats fewer bytes than a piece, from a copy that is long enough for any piece. Reading bytes that have
// just been written would stall.
void RepeatPattern(std::uint8_t* to, std::size_t distance, std::size_t length) {
    std::array<std::uint8_t, 2 * kPiece> pattern{};
    std::memcpy(pattern.data(), to - distance, distance);
    for (std::size_t i = distance; i < pattern.size(); ++i) {
        pattern[i] = pattern[i - distance];
    }
    const std::size_t step = kPiece % distance;
    const std::uint8_t* const end = to + length;
    for (std::size_t first = 0; to < end; to += kPiece) {
        std::memcpy(to, pattern.data() + first, kPiece);
        first += step;
        first -= first >= distance ? distance : 0;
    }
}

// Like Repeat, but sixteen bytes at a time. Overwrites up to fifteen bytes after the end.
void QuickRepeat(std::uint8_t* to, std::size_t distance, std::size_t length) {
    const std::uint8_t* from = to - distance;
    if (distance == 1) {
        std::memset(to, *from, length);
    } else if (distance < kPiece && length > distance) {
        RepeatPattern(to, distance, length);
    } else {
        for (const std::uint8_t* const end = to + length; to < end; to += kPiece, from += kPiece) {
            CopyPiece(to, from);
        }
    }
}

// The number of a meaning, given the bits that follow its code.
std::size_t Value(CodeMeaning meaning, std::uint64_t bits) {
    return meaning.base + static_cast<std::size_t>(bits & ((std::uint64_t{1} << meaning.extraBits) - 1));
}

std::optional<std::size_t> Value(CodeMeaning meaning, BitReader& bits) {
    const std::uint64_t ahead = bits.Peek();
    return bits.Drop(meaning.extraBits) ? std::optional(Value(meaning, ahead)) : std::nullopt;
}

// Reads a length and a distance and repeats. Returns false, and consumes nothing, for a distance with a long
// or invalid code or before the first byte.
bool RepeatQuickly(BitReader& reader, CodeMeaning lengthCode, const HuffmanCode& distances, Output& output) {
    BitReader bits = reader;
    std::uint64_t ahead = bits.QuickDrop(lengthCode.length);
    const std::size_t length = Value(lengthCode, ahead);
    ahead = bits.QuickDrop(lengthCode.extraBits);
    const CodeMeaning code = distances.Quick(ahead);
    ahead = bits.QuickDrop(code.length);
    const std::size_t distance = Value(code, ahead);
    if (code.kind != CodeMeaning::kRange || distance > output.used) {
        return false;
    }
    bits.QuickDrop(code.extraBits);
    reader = bits;
    QuickRepeat(output.bytes.data() + output.used, distance, length);
    output.used += length;
    return true;
}

// Decodes while both ends are far away and all codes are short. It tests the ends once per round of up to
// three literals and a repeat. A length and a distance with their extra bits take at most 40 bits, three
// literals 33. Anything else stays in the input.
void InflateQuickly(BitReader& reader, const BlockCodes& codes, Output& output) {
    constexpr int kLiteralsOfARound = 3;
    BitReader bits = reader;
    Output made = output;
    while (made.Room() >= kQuickRoom && bits.HasWords()) {
        CodeMeaning meaning = codes.literals.Quick(bits.QuickPeek());
        int literals = 0;
        for (; literals < kLiteralsOfARound && meaning.kind == CodeMeaning::kLiteral; ++literals) {
            made.bytes[made.used++] = static_cast<std::uint8_t>(meaning.base);
            meaning = codes.literals.Quick(bits.QuickDrop(meaning.length));
        }
        if (meaning.kind == CodeMeaning::kLiteral) {
            continue;
        }
        if (literals > 0) {
            bits.QuickPeek();
        }
        if (meaning.kind != CodeMeaning::kRange || !RepeatQuickly(bits, meaning, codes.distances, made)) {
            break;
        }
    }
    reader = bits;
    output = made;
}

Step RepeatFor(BitReader& bits, CodeMeaning lengthCode, const HuffmanCode& distances, Output& output) {
    const auto length = Value(lengthCode, bits);
    const auto code = length ? distances.Decode(bits) : std::nullopt;
    if (!code || code->kind != CodeMeaning::kRange) {
        return Step::kMalformed;
    }
    const auto distance = Value(*code, bits);
    if (!distance || *distance > output.used) {
        return Step::kMalformed;
    }
    Repeat(output, *distance, *length);
    return Step::kGoesOn;
}

Step InflateCoded(BitReader& bits, const BlockCodes& codes, Output& output) {
    while (output.FindRoom()) {
        InflateQuickly(bits, codes, output);
        const auto code = codes.literals.Decode(bits);
        if (!code || code->kind == CodeMeaning::kNone) {
            return Step::kMalformed;
        }
        if (code->kind == CodeMeaning::kLiteral) {
            output.bytes[output.used++] = static_cast<std::uint8_t>(code->base);
        } else if (code->kind == CodeMeaning::kEndOfBlock) {
            return Step::kGoesOn;
        } else if (RepeatFor(bits, *code, codes.distances, output) == Step::kMalformed) {
            return Step::kMalformed;
        }
    }
    return Step::kFull;
}

Step InflateStored(BitReader& bits, Output& output) {
    bits.SkipToByte();
    const auto length = bits.Take(16);
    const auto complement = bits.Take(16);
    if (!length || !complement || (*length ^ *complement) != 0xFFFF) {
        return Step::kMalformed;
    }
    for (std::size_t left = *length; left > 0 && output.FindRoom();) {
        const std::size_t now = std::min(left, output.Room());
        const auto stored = bits.TakeBytes(now);
        if (!stored) {
            return Step::kMalformed;
        }
        std::memcpy(output.bytes.data() + output.used, stored->data(), now);
        output.used += now;
        left -= now;
    }
    return output.FindRoom() ? Step::kGoesOn : Step::kFull;
}

// The fixed codes of RFC 1951, 3.2.6.
BlockCodes FixedCodes() {
    std::array<std::uint8_t, 288> literals{};
    for (std::size_t i = 0; i < literals.size(); ++i) {
        literals[i] = i < 144 ? 8 : i < 256 ? 9 : i < 280 ? 7 : 8;
    }
    std::array<std::uint8_t, 32> distances{};
    distances.fill(5);
    BlockCodes codes;
    codes.literals.Build(literals, kLiteralMeanings);
    codes.distances.Build(distances, kDistanceMeanings);
    return codes;
}

// Reads the run-length encoded lengths of both codes of a dynamic block.
bool ReadLengths(BitReader& bits, const HuffmanCode& lengthCode, std::span<std::uint8_t> lengths) {
    std::size_t count = 0;
    while (count < lengths.size()) {
        const auto code = lengthCode.Decode(bits);
        if (!code) {
            return false;
        }
        if (code->kind == CodeMeaning::kLiteral) {
            lengths[count++] = static_cast<std::uint8_t>(code->base);
            continue;
        }
        const bool copies = code->kind == CodeMeaning::kRange;
        const auto times = Value(*code, bits);
        if (!times || (copies && count == 0) || *times > lengths.size() - count) {
            return false;
        }
        const std::uint8_t value = copies ? lengths[count - 1] : std::uint8_t{0};
        std::fill_n(lengths.begin() + static_cast<std::ptrdiff_t>(count), *times, value);
        count += *times;
    }
    return true;
}

// Reads the codes of a dynamic block (RFC 1951, 3.2.7).
bool ReadCodes(BitReader& bits, BlockCodes& codes) {
    const auto literalCount = bits.Take(5);
    const auto distanceCount = bits.Take(5);
    const auto orderCount = bits.Take(4);
    if (!literalCount || !distanceCount || !orderCount) {
        return false;
    }
    const std::size_t literals = *literalCount + 257;
    const std::size_t distances = *distanceCount + 1;
    if (literals > kMostLiterals || distances > kMostDistances) {
        return false;
    }
    std::array<std::uint8_t, 19> order{};
    for (std::size_t i = 0; i < *orderCount + 4; ++i) {
        const auto length = bits.Take(3);
        if (!length) {
            return false;
        }
        order[kLengthOrder[i]] = static_cast<std::uint8_t>(*length);
    }
    HuffmanCode lengthCode;
    std::array<std::uint8_t, kMostLiterals + kMostDistances> lengths{};
    const auto all = std::span(lengths).first(literals + distances);
    return lengthCode.Build(order, kLengthMeanings) && ReadLengths(bits, lengthCode, all) &&
           lengths[kEndOfBlock] != 0 && codes.literals.Build(all.first(literals), kLiteralMeanings) &&
           codes.distances.Build(all.subspan(literals), kDistanceMeanings);
}

Step InflateBlock(BitReader& bits, unsigned type, Output& output) {
    if (type == 0) {
        return InflateStored(bits, output);
    }
    if (type == 1) {
        static const BlockCodes fixed = FixedCodes();
        return InflateCoded(bits, fixed, output);
    }
    BlockCodes codes;
    return type == 2 && ReadCodes(bits, codes) ? InflateCoded(bits, codes, output) : Step::kMalformed;
}

// Inflates until the last block ends or the output is full. Returns false for malformed data before that
// point.
bool InflateBlocks(std::span<const std::uint8_t> source, Output& output) {
    constexpr std::size_t kHeader = 2;
    if (source.size() < kHeader) {
        return false;
    }
    BitReader bits(source.subspan(kHeader));
    bool isLast = false;
    while (!isLast && output.FindRoom()) {
        const auto last = bits.Take(1);
        const auto type = bits.Take(2);
        if (!last || !type || InflateBlock(bits, *type, output) == Step::kMalformed) {
            return false;
        }
        isLast = *last == 1;
    }
    // Deliberate D-36: the Adler-32 after the data is not compared, and the two bytes of the header are
    // ignored.
    // One would expect a damaged stream to be refused because of its checksum. Pictures that the library
    // refuses only for these bytes are still shown, with the library and without it.
    return true;
}

} // namespace

std::optional<std::size_t> Inflate(std::span<const std::uint8_t> source, std::span<std::uint8_t> target) {
    Output output{target};
    return InflateBlocks(source, output) ? std::optional(output.used) : std::nullopt;
}

bool InflateInPieces(std::span<const std::uint8_t> source, std::size_t most, const InflatedTaker& taker) {
    const std::size_t size = std::min(most, kWindow);
    const auto window = std::make_unique_for_overwrite<std::uint8_t[]>(size);
    Output output{{window.get(), size}};
    output.taker = &taker;
    output.beyond = most - size;
    return InflateBlocks(source, output) && output.HandOver();
}

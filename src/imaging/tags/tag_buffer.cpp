// Checked reads of a tag's bytes, and the removal of unsynchronisation in place.
#include "imaging/tags/tag_buffer.h"

#include <algorithm>
#include <cstring>

namespace {

[[noreturn]] void RaiseOutside(std::int64_t at, std::size_t size) {
    throw RunTimeError(kSubscriptOutOfRange, QStringLiteral("byte %1 of %2").arg(at).arg(size));
}

Integer32 WithSign(std::uint32_t value) {
    return Integer32::From(static_cast<std::int32_t>(value));
}

std::uint32_t Join(int a, int b, int c, int d) {
    return static_cast<std::uint32_t>(a) << 24 | static_cast<std::uint32_t>(b) << 16 |
           static_cast<std::uint32_t>(c) << 8 | static_cast<std::uint32_t>(d);
}

using Bytes = std::span<const std::uint8_t>;

// Returns the first zero byte in first..end, or `end` when there is none.
std::size_t ZeroByte(Bytes bytes, std::size_t first, std::size_t end) {
    if (first >= end) {
        return end;
    }
    const void* const found = std::memchr(bytes.data() + first, 0, end - first);
    return found == nullptr
               ? end
               : static_cast<std::size_t>(static_cast<const std::uint8_t*>(found) - bytes.data());
}

// Returns the first zero unit that begins in first..end, in steps of two bytes, or `end` when there is none.
std::size_t ZeroUnit(Bytes bytes, std::size_t first, std::size_t end) {
    for (std::size_t i = first; i < end && i + 1 < bytes.size(); i += 2) {
        if (bytes[i] == 0 && bytes[i + 1] == 0) {
            return i;
        }
    }
    return end;
}

// Returns the first zero at `at` or after it, or the size of the bytes when there is none. Skips what
// `search` knows.
template <typename Find>
std::size_t FindZero(Bytes bytes, std::size_t at, ZeroSearch& search, Find find) {
    const bool isKnown = search.first <= search.zero;
    if (isKnown && search.first <= at && at <= search.zero) {
        return search.zero;
    }
    std::size_t zero = bytes.size();
    if (isKnown && at < search.first) {
        const std::size_t before = find(bytes, at, search.first);
        if (before < search.first) {
            return before;
        }
        zero = search.zero;
    } else {
        zero = find(bytes, at, bytes.size());
    }
    search = {at, zero};
    return zero;
}

} // namespace

std::size_t TagBuffer::Checked(Integer32 at, int count) const {
    const auto first = static_cast<std::int64_t>(at.value());
    if (first < 0 || first > static_cast<std::int64_t>(bytes_.size()) - count) {
        RaiseOutside(first, bytes_.size());
    }
    return static_cast<std::size_t>(first);
}

Integer32 TagBuffer::ReadInt32BE(Integer32 at) const {
    const auto four = Bytes(at, 4);
    return WithSign(Join(four[0], four[1], four[2], four[3]));
}

Integer32 TagBuffer::ReadInt24BE(Integer32 at) const {
    Integer32 value;
    PassOver([&] {
        const auto three = Bytes(at, 3);
        value = WithSign(Join(0, three[0], three[1], three[2]));
    });
    return value;
}

Integer32 TagBuffer::ReadSyncSafe(Integer32 at) const {
    std::uint32_t value = 0;
    for (const int byte : Bytes(at, 4)) {
        value = value << 7 | (static_cast<std::uint32_t>(byte) & 0x7F);
    }
    return WithSign(value);
}

int TagBuffer::ReadInt16LE(Integer32 at) const {
    const auto two = Bytes(at, 2);
    return two[0] | two[1] << 8;
}

Integer32 TagBuffer::ReadInt32LE(Integer32 at) const {
    const auto four = Bytes(at, 4);
    return WithSign(Join(four[3], four[2], four[1], four[0]));
}

Integer32 TagBuffer::StringLength(Integer32 at, ZeroSearch& search) const {
    const std::size_t first = Checked(at, 0);
    const std::size_t zero = FindZero(bytes_, first, search, ZeroByte);
    if (zero >= bytes_.size()) {
        RaiseOutside(static_cast<std::int64_t>(bytes_.size()), bytes_.size());
    }
    return Integer32::From(static_cast<std::int64_t>(zero - first));
}

Integer32 TagBuffer::WideLength(Integer32 at, WideZeroSearch& search) const {
    const std::size_t first = Checked(at, 0);
    const std::size_t zero = FindZero(bytes_, first, search.at(first % 2), ZeroUnit);
    if (zero >= bytes_.size()) {
        RaiseOutside(static_cast<std::int64_t>(bytes_.size()), bytes_.size());
    }
    return Integer32::From(static_cast<std::int64_t>((zero - first) / 2));
}

Integer32 TagBuffer::AnsiLength(Integer32 at, Integer32 maxLength) const {
    Integer32 length = 0;
    while (length < maxLength && Byte(at + length) >= 32) {
        length += 1;
    }
    return length;
}

// Deliberate D-80: the last byte of a shortened area becomes zero.
// One would expect all bytes as they were before unsynchronisation. The byte is mostly padding; a picture
// that ends there loses its last byte, which no decoder needs.
Integer32 TagBuffer::RemoveUnsync(Integer32 start, Integer32 length) {
    // An area of at most one byte is not checked, not even its position.
    if (length <= 1) {
        return 0;
    }
    const std::size_t first = Checked(start, 0);
    const std::size_t end = first + static_cast<std::size_t>(length.value());
    const std::size_t seen = std::min(end, bytes_.size());
    std::uint8_t* const data = bytes_.data();
    std::size_t blockStart = first;
    std::size_t to = first;
    for (std::size_t i = first; i + 1 < seen;) {
        const void* const mark = std::memchr(data + i, 0xFF, seen - 1 - i);
        if (mark == nullptr) {
            break;
        }
        i = static_cast<std::size_t>(static_cast<const std::uint8_t*>(mark) - data) + 1;
        if (data[i] == 0) {
            std::memmove(data + to, data + blockStart, i - blockStart);
            to += i - blockStart;
            blockStart = ++i;
        }
    }
    if (seen < end) {
        RaiseOutside(static_cast<std::int64_t>(seen), bytes_.size());
    }
    const std::size_t removed = blockStart - to;
    if (removed > 0) {
        std::memmove(data + to, data + blockStart, end - blockStart);
        data[end - removed - 1] = 0;
    }
    return Integer32::From(static_cast<std::int64_t>(removed));
}

void ForgetBefore(ZeroSearch& search, Integer32 end) {
    const auto first = static_cast<std::size_t>(std::max(0, end.value()));
    search.first = std::max(search.first, first);
}

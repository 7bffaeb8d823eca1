// The bytes of a tag: checked reads by index, strings, and the removal of unsynchronisation.
#pragma once

#include "core/integer.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

// Bytes of a format's text that are kept.
inline constexpr int kMostMimeBytes = 4096;
// Pictures of one tag that are kept; a tag that claims more is a hostile one.
inline constexpr std::size_t kMostTagImages = 1 << 20;

// A picture found in a tag, as ranges of the tag's bytes. Whatever the tag claims is kept: a length may be
// negative or reach past the bytes.
struct TagImage {
    // Index of the first image byte, and the number of image bytes.
    Integer32 Offset;
    Integer32 Length;
    // The picture type as in the frame, 0 to 255.
    int Category = 0;
    // The format text as stored: bytes of one character each, or wide characters, low byte first.
    Integer32 MimeOffset;
    Integer32 MimeLength;
    bool MimeIsWide = false;
};

// What a search for the end of a string has found out, so that no byte of a hostile tag is searched twice:
// no unit from `first` on is zero before the one at `zero`. Nothing is known while `first` is above `zero`.
struct ZeroSearch {
    std::size_t first = 1;
    std::size_t zero = 0;
};

// Searches for wide strings, apart for even and odd places.
using WideZeroSearch = std::array<ZeroSearch, 2>;

// Indices and lengths are 32-bit values as the tag's own arithmetic gives them. A read outside the bytes
// raises 9, its detail naming the byte.
class TagBuffer {
public:
    explicit TagBuffer(std::span<std::uint8_t> bytes) : bytes_(bytes) {}

    Integer32 Size() const { return Integer32::From(static_cast<std::int64_t>(bytes_.size())); }

    int Byte(Integer32 at) const { return bytes_[Checked(at, 1)]; }
    // `count` bytes, without a copy.
    std::span<const std::uint8_t> Bytes(Integer32 at, int count) const {
        return bytes_.subspan(Checked(at, count), static_cast<std::size_t>(count));
    }

    // Big-endian; bit 31 gives a negative value.
    Integer32 ReadInt32BE(Integer32 at) const;
    // Big-endian. 0 when one of the bytes lies outside.
    Integer32 ReadInt24BE(Integer32 at) const;
    // Four bytes of 7 bits each, the first one the most significant.
    Integer32 ReadSyncSafe(Integer32 at) const;
    // Little-endian: 0 to 65535, and with a sign.
    int ReadInt16LE(Integer32 at) const;
    Integer32 ReadInt32LE(Integer32 at) const;

    // Bytes before the zero byte at or behind `at`. Raises 9 when there is none. `search` is one for all
    // strings of a kind.
    Integer32 StringLength(Integer32 at, ZeroSearch& search) const;
    // 16-bit units before the zero unit at or behind `at`, in steps of a unit. Raises 9 when there is none.
    Integer32 WideLength(Integer32 at, WideZeroSearch& search) const;
    // How many bytes a text of one-byte characters has: it ends before the first byte below 32, or after
    // `maxLength` bytes.
    Integer32 AnsiLength(Integer32 at, Integer32 maxLength) const;

    // Drops each zero byte behind a byte of 255 in an area, which thereby grows shorter at its end; the bytes
    // behind the shortened area keep their old values. Returns the number of bytes dropped.
    Integer32 RemoveUnsync(Integer32 start, Integer32 length);

private:
    // The index of `count` bytes that lie inside.
    std::size_t Checked(Integer32 at, int count) const;

    std::span<std::uint8_t> bytes_;
};

// Forgets what a search knows about the bytes before `end`, which have changed.
void ForgetBefore(ZeroSearch& search, Integer32 end);

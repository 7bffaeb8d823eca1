// The bytes of a tag: checked reads by index, strings, and the removal of unsynchronisation.
#pragma once

#include "core/integer.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

// The most bytes that are kept of a MIME type.
inline constexpr int kMostMimeBytes = 4096;
// The most pictures that are kept of one tag; only a hostile tag claims more.
inline constexpr std::size_t kMostTagImages = 1 << 20;

// A picture found in a tag, as ranges of the tag's bytes. The values are those that the tag claims: a length
// can be negative or pass the end of the bytes.
struct TagImage {
    // Index of the first image byte, and the number of image bytes.
    Integer32 Offset;
    Integer32 Length;
    // The picture type in the frame, 0 to 255.
    int Category = 0;
    // The MIME type as stored: one byte per character, or 16-bit characters, low byte first.
    Integer32 MimeOffset;
    Integer32 MimeLength;
    bool MimeIsWide = false;
};

// The result of a search for the end of a string, kept so that no byte of a hostile tag is searched twice:
// the first zero unit from `first` on is at `zero`. Nothing is known while `first` is above `zero`.
struct ZeroSearch {
    std::size_t first = 1;
    std::size_t zero = 0;
};

// Searches for wide strings, separate for even and odd positions.
using WideZeroSearch = std::array<ZeroSearch, 2>;

// Indices and lengths are 32-bit values, like those that the tag contains. A read outside the bytes raises 9
// with the position in its detail.
class TagBuffer {
public:
    explicit TagBuffer(std::span<std::uint8_t> bytes) : bytes_(bytes) {}

    Integer32 Size() const { return Integer32::From(static_cast<std::int64_t>(bytes_.size())); }

    int Byte(Integer32 at) const { return bytes_[Checked(at, 1)]; }
    // Returns `count` bytes without a copy.
    std::span<const std::uint8_t> Bytes(Integer32 at, int count) const {
        return bytes_.subspan(Checked(at, count), static_cast<std::size_t>(count));
    }

    // Big-endian. Bit 31 gives a negative value.
    Integer32 ReadInt32BE(Integer32 at) const;
    // Big-endian. Returns 0 when one of the bytes is outside.
    Integer32 ReadInt24BE(Integer32 at) const;
    // Four bytes of 7 bits each, the most significant first.
    Integer32 ReadSyncSafe(Integer32 at) const;
    // Little-endian: the first is 0 to 65535, the second signed.
    int ReadInt16LE(Integer32 at) const;
    Integer32 ReadInt32LE(Integer32 at) const;

    // Number of bytes before the first zero byte at `at` or after it. Raises 9 when there is none. All
    // strings of a kind share one `search`.
    Integer32 StringLength(Integer32 at, ZeroSearch& search) const;
    // Number of 16-bit units before the first zero unit at `at` or after it. Raises 9 when there is none.
    Integer32 WideLength(Integer32 at, WideZeroSearch& search) const;
    // Number of bytes of a text with one byte per character. The text ends before the first byte below 32 or
    // after `maxLength` bytes.
    Integer32 AnsiLength(Integer32 at, Integer32 maxLength) const;

    // Removes each zero byte that follows a byte of 255 in an area and so shortens the area at its end. The
    // bytes after the shortened area keep their old values. Returns the number of bytes removed.
    Integer32 RemoveUnsync(Integer32 start, Integer32 length);

private:
    // Returns `at` as an index. Raises 9 when `count` bytes from there are not all inside.
    std::size_t Checked(Integer32 at, int count) const;

    std::span<std::uint8_t> bytes_;
};

// Forgets what a search knows about the bytes before `end`, which have changed.
void ForgetBefore(ZeroSearch& search, Integer32 end);

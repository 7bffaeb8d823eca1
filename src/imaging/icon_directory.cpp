// Icon directories: reading, and choosing among the pictures of a file.
#include "imaging/icon_directory.h"

#include "core/byte_reader.h"

#include <cstddef>
#include <cstdlib>

namespace {

constexpr std::uint16_t kIcon = 1;
constexpr std::uint16_t kCursor = 2;
constexpr std::size_t kEntryBytes = 16;
constexpr int kDeepest = 32;
constexpr std::int64_t kTooDeep = -10000;

// A byte has no room for 256.
int Extent(std::uint8_t stored) {
    return stored == 0 ? 256 : stored;
}

std::optional<IconEntry> ReadEntry(ByteReader reader, std::span<const std::uint8_t> file) {
    IconEntry entry;
    const auto width = reader.ReadByte();
    const auto height = reader.ReadByte();
    // The number of colours, an unused byte and the number of planes tell nothing that the picture does not.
    reader.Skip(4);
    const auto bitDepth = reader.ReadLittleEndian16();
    const auto size = reader.ReadLittleEndian32();
    const auto offset = reader.ReadLittleEndian32();
    if (!offset || *offset > file.size() || *size > file.size() - *offset) {
        return std::nullopt;
    }
    entry.width = Extent(*width);
    entry.height = Extent(*height);
    entry.bitDepth = *bitDepth;
    entry.data = file.subspan(*offset, *size);
    return entry;
}

// Deliberate D-63: without a desired size the smallest picture wins, a picture that is larger than desired
// counts less than one that is smaller, and the place of a cursor's hot spot counts as its depth. One would
// expect the best picture. Icons with several pictures have always been shown so.
std::int64_t Distance(int given, int desired) {
    const std::int64_t difference = std::int64_t{given} - desired;
    return desired > given ? difference * 2 : difference;
}

std::int64_t Score(const IconEntry& entry, int desiredWidth, int desiredHeight) {
    if (entry.bitDepth > kDeepest) {
        return kTooDeep;
    }
    return Distance(entry.width, desiredWidth) + Distance(entry.height, desiredHeight) +
           std::abs(kDeepest - entry.bitDepth);
}

} // namespace

std::optional<std::vector<IconEntry>> ReadIconDirectory(std::span<const std::uint8_t> file) {
    ByteReader reader(file);
    const auto reserved = reader.ReadLittleEndian16();
    const auto type = reader.ReadLittleEndian16();
    const auto count = reader.ReadLittleEndian16();
    if (!count || *reserved != 0 || (*type != kIcon && *type != kCursor) || *count < 1 ||
        reader.remaining() < *count * kEntryBytes) {
        return std::nullopt;
    }
    std::vector<IconEntry> entries;
    for (unsigned i = 0; i < *count; ++i) {
        const auto bytes = reader.Read(kEntryBytes);
        const auto entry = bytes ? ReadEntry(ByteReader(*bytes), file) : std::nullopt;
        if (!entry) {
            return std::nullopt;
        }
        entries.push_back(*entry);
    }
    return entries;
}

const IconEntry* ChooseIconEntry(std::span<const IconEntry> entries, int desiredWidth, int desiredHeight) {
    if (entries.size() == 1) {
        return entries[0].data.empty() ? nullptr : &entries[0];
    }
    const IconEntry* chosen = nullptr;
    std::int64_t lowest = 0;
    for (const IconEntry& entry : entries) {
        const std::int64_t score = Score(entry, desiredWidth, desiredHeight);
        if (score == 0) {
            return &entry;
        }
        if (score > 0 && (chosen == nullptr || score < lowest)) {
            chosen = &entry;
            lowest = score;
        }
    }
    return chosen;
}

// The directory of an icon or cursor file.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

// One picture of the file, as its directory tells it.
struct IconEntry {
    // 1 to 256.
    int width = 0;
    int height = 0;
    int bitDepth = 0;
    // The picture's bytes.
    std::span<const std::uint8_t> data;
};

// Reads the directory. Nothing for other files, for a directory without an entry, and when the directory or
// an entry's bytes pass the end of the file.
std::optional<std::vector<IconEntry>> ReadIconDirectory(std::span<const std::uint8_t> file);

// The entry to show. Null when none will do.
const IconEntry* ChooseIconEntry(std::span<const IconEntry> entries, int desiredWidth, int desiredHeight);

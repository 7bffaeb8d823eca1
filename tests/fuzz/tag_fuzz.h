// Shared by the fuzzers of the tag readers: a file in memory, read as the jukebox reads it.
#pragma once

#include "core/run_time_error.h"
#include "imaging/tags/tagged_images.h"
#include "platform/posix/posix_files.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <span>

using FuzzBytes = std::span<const std::uint8_t>;

class MemoryFile : public OpenFile {
public:
    explicit MemoryFile(FuzzBytes bytes) : bytes_(bytes), rest_(bytes) {}
    std::int64_t Size() const override { return static_cast<std::int64_t>(bytes_.size()); }
    bool Read(std::span<std::uint8_t> to) override {
        if (to.size() > rest_.size()) {
            return false;
        }
        std::ranges::copy(rest_.first(to.size()), to.begin());
        rest_ = rest_.subspan(to.size());
        return true;
    }

private:
    FuzzBytes bytes_;
    FuzzBytes rest_;
};

class MemoryFiles : public PosixFiles {
public:
    explicit MemoryFiles(FuzzBytes bytes) : bytes_(bytes) {}
    std::unique_ptr<OpenFile> Open(const QString& /*path*/) override {
        return std::make_unique<MemoryFile>(bytes_);
    }

private:
    FuzzBytes bytes_;
};

// Reads a tag and touches every byte of every picture. Run-time errors 6 and 9 are valid results.
inline void ReadTag(cTaggedImages& tag, FuzzBytes bytes) {
    MemoryFiles files(bytes);
    try {
        tag.LoadTagged_Images(files, QString());
    } catch (const ProgramStop& stop) {
        stop.error.number == 6 || stop.error.number == 9 ? void() : std::abort();
    }
    std::uint64_t sum = 0;
    for (int i = 0; i <= std::min(tag.ImageCount() + 1, 1000); ++i) {
        sum += static_cast<std::uint64_t>(tag.ImageType(i).size() + tag.ImageCategory(i));
        const auto data = tag.ExtractImageData(i);
        if (data && data->size() > bytes.size()) {
            std::abort();
        }
        for (const std::uint8_t byte : data.value_or(FuzzBytes())) {
            sum += byte;
        }
    }
    volatile std::uint64_t seen = sum;
    static_cast<void>(seen);
}

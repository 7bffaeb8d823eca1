// The compression library, looked up at run time.
#pragma once

#include "platform/zlib_library.h"

#include <mutex>
#include <string>

// Opens the library at its first use and keeps it open until the object is destroyed. A missing library is
// looked for again at the next call.
class DlopenedZlib : public ZlibLibrary {
public:
    explicit DlopenedZlib(std::string library = "libz.so.1");
    ~DlopenedZlib() override;
    DlopenedZlib(const DlopenedZlib&) = delete;
    DlopenedZlib& operator=(const DlopenedZlib&) = delete;

    bool Has(const char* routine) override;
    // Returns Z_VERSION_ERROR, -6, without the library.
    int Uncompress(std::span<std::uint8_t> target, std::size_t& written,
                   std::span<const std::uint8_t> source) override;
    // Returns `start` without the library.
    std::uint32_t Crc32(std::uint32_t start, std::span<const std::uint8_t> bytes) override;

private:
    void* Find(const char* routine);

    const std::string library_;
    // Guards the handle: pictures are decoded on several threads.
    std::mutex mutex_;
    void* handle_ = nullptr;
};

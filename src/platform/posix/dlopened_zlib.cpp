// Calling zlib's "uncompress" and "crc32" through dlopen. The types are those of zlib 1.2, written out so
// that its header is not needed.
#include "platform/posix/dlopened_zlib.h"

#include <dlfcn.h>

#include <algorithm>
#include <utility>

namespace {

using UncompressRoutine = int (*)(unsigned char*, unsigned long*, const unsigned char*, unsigned long);
using Crc32Routine = unsigned long (*)(unsigned long, const unsigned char*, unsigned int);

constexpr int kVersionError = -6;
constexpr std::size_t kMostBytesAtOnce = 1U << 30;

} // namespace

DlopenedZlib::DlopenedZlib(std::string library) : library_(std::move(library)) {}

DlopenedZlib::~DlopenedZlib() {
    if (handle_ != nullptr) {
        dlclose(handle_);
    }
}

void* DlopenedZlib::Find(const char* routine) {
    const std::lock_guard lock(mutex_);
    if (handle_ == nullptr) {
        handle_ = dlopen(library_.c_str(), RTLD_NOW | RTLD_LOCAL);
    }
    return handle_ == nullptr ? nullptr : dlsym(handle_, routine);
}

bool DlopenedZlib::Has(const char* routine) {
    return Find(routine) != nullptr;
}

int DlopenedZlib::Uncompress(std::span<std::uint8_t> target, std::size_t& written,
                             std::span<const std::uint8_t> source) {
    written = 0;
    const auto routine = reinterpret_cast<UncompressRoutine>(Find("uncompress"));
    if (routine == nullptr) {
        return kVersionError;
    }
    unsigned long length = target.size();
    const int result = routine(target.data(), &length, source.data(), source.size());
    written = std::min<std::size_t>(length, target.size());
    return result;
}

std::uint32_t DlopenedZlib::Crc32(std::uint32_t start, std::span<const std::uint8_t> bytes) {
    const auto routine = reinterpret_cast<Crc32Routine>(Find("crc32"));
    if (routine == nullptr) {
        return start;
    }
    unsigned long checksum = start;
    while (!bytes.empty()) {
        const std::size_t count = std::min(bytes.size(), kMostBytesAtOnce);
        checksum = routine(checksum, bytes.data(), static_cast<unsigned int>(count));
        bytes = bytes.subspan(count);
    }
    return static_cast<std::uint32_t>(checksum);
}

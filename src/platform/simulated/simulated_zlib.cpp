// The compression library that can be missing.
#include "platform/simulated/simulated_zlib.h"

#include "platform/simulated/failures.h"

namespace {

// The library's own number for damaged data.
constexpr int kDataError = -3;

} // namespace

bool SimulatedZlib::Has(const char* routine) {
    return !failures_.Has(routine) && real_.Has(routine);
}

int NoZlib::Uncompress(std::span<std::uint8_t> /*target*/, std::size_t& written,
                       std::span<const std::uint8_t> /*source*/) {
    written = 0;
    return kDataError;
}

std::uint32_t NoZlib::Crc32(std::uint32_t start, std::span<const std::uint8_t> /*bytes*/) {
    return start;
}

// The real compression library, its routines able to be missing on demand.
#pragma once

#include "platform/zlib_library.h"

class Failures;

// A failing routine is not there. The routines are called only after Has has told that they are.
class SimulatedZlib : public ZlibLibrary {
public:
    // The real library and the failures outlive this object.
    SimulatedZlib(ZlibLibrary& real, const Failures& failures) : real_(real), failures_(failures) {}

    bool Has(const char* routine) override;
    int Uncompress(std::span<std::uint8_t> target, std::size_t& written,
                   std::span<const std::uint8_t> source) override {
        return real_.Uncompress(target, written, source);
    }
    std::uint32_t Crc32(std::uint32_t start, std::span<const std::uint8_t> bytes) override {
        return real_.Crc32(start, bytes);
    }

private:
    ZlibLibrary& real_;
    const Failures& failures_;
};

// A machine without the library.
class NoZlib : public ZlibLibrary {
public:
    bool Has(const char* /*routine*/) override { return false; }
    int Uncompress(std::span<std::uint8_t> target, std::size_t& written,
                   std::span<const std::uint8_t> source) override;
    std::uint32_t Crc32(std::uint32_t start, std::span<const std::uint8_t> bytes) override;
};

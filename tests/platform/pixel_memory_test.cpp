// Tests of memory of every size for pixels.
#include "platform/pixel_memory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <span>

namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

TEST(PixelMemory, EverySizeCanBeWrittenFromEndToEnd) {
    for (const std::size_t bytes :
         {1U, 4095U, (1U << 22) - 1, 1U << 22, (1U << 22) + 1, 5'529'600U, 30'000'001U}) {
        const std::unique_ptr<void, Free> memory(AllocatePixels(bytes));
        ASSERT_NE(memory, nullptr) << bytes;
        std::memset(memory.get(), 7, bytes);
        EXPECT_EQ(static_cast<const std::uint8_t*>(memory.get())[bytes - 1], 7) << bytes;
    }
}

// Freed memory can be used again, with its old contents.
TEST(PixelMemory, ClearMemoryContainsZeros) {
    for (const std::size_t bytes :
         {1U, 4095U, (1U << 22) - 1, 1U << 22, (1U << 22) + 1, 5'529'601U, 30'000'001U}) {
        for (int round = 0; round < 3; ++round) {
            const std::unique_ptr<void, Free> memory(AllocateClearPixels(bytes));
            ASSERT_NE(memory, nullptr) << bytes;
            const std::span pixels(static_cast<const std::uint8_t*>(memory.get()), bytes);
            EXPECT_EQ(std::count(pixels.begin(), pixels.end(), 0), static_cast<std::ptrdiff_t>(bytes));
            std::memset(memory.get(), 7, bytes);
        }
    }
}

} // namespace

// Tests of the start when the system has no more threads.
#include "app/cabinet/early_start.h"

#include "../platform/no_more_threads.h"

#include <gtest/gtest.h>

namespace {

TEST(EarlyStart, WorkThatOnlySavesTimeIsLeftOut) {
    bool ran = false;
    {
        const NoMoreThreads full;
        const std::future<void> none = RunAlongside([&ran] { ran = true; });
        EXPECT_FALSE(none.valid());
    }
    EXPECT_FALSE(ran);
    RunAlongside([&ran] { ran = true; }).wait();
    EXPECT_TRUE(ran);
}

} // namespace

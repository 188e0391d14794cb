#include "zvi/host/internal/LargeMemory.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace host = zvi::host;

TEST(LargeMemory, BeginsAtALargePageAndMayBeRefused) {
    for (std::size_t const bytes : {std::size_t{1}, host::kLargePage, 3 * host::kLargePage + 1}) {
        auto *const memory = static_cast<unsigned char *>(host::AllocateLarge(bytes));
        ASSERT_TRUE(memory);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(memory) % host::kLargePage, 0u);
        memory[0] = memory[bytes - 1] = 1;
        host::ReleaseLarge(memory);
    }
    EXPECT_FALSE(host::AllocateLarge(std::numeric_limits<std::size_t>::max()));
    host::ReleaseLarge(nullptr);
}

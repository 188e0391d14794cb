#include "zvi/core/internal/GrowingMemory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <utility>
#include <vector>

namespace zvi::lib::test {

using core::GrowingMemory;

/// Pieces of many sizes, up to several large blocks in all.
TEST(GrowingMemory, PiecesAreAlignedAndDoNotOverlap) {
    constexpr std::size_t kAlignment = 64;
    std::mt19937 random(7);
    GrowingMemory memory(kAlignment);
    for (int round = 0; round < 2; ++round) {
        std::vector<std::pair<std::byte *, std::size_t>> pieces;
        for (std::size_t taken = 0; taken < 20'000'000; taken += pieces.back().second) {
            std::size_t const bytes = kAlignment * (1 + random() % (random() % 50 == 0 ? 50000 : 30));
            auto *const piece = static_cast<std::byte *>(memory.Take(bytes));
            ASSERT_NE(piece, nullptr);
            ASSERT_EQ(reinterpret_cast<std::uintptr_t>(piece) % kAlignment, 0U);
            std::memset(piece, static_cast<int>(pieces.size() % 251), bytes);
            pieces.emplace_back(piece, bytes);
        }
        for (std::size_t i = 0; i < pieces.size(); ++i) {
            auto const [piece, bytes] = pieces[i];
            auto const mark = static_cast<std::byte>(i % 251);
            ASSERT_TRUE(std::all_of(piece, piece + bytes, [=](std::byte each) { return each == mark; })) << i;
        }
        memory.ReleaseAll();
    }
}

TEST(GrowingMemory, RefusesWhatCannotBeHadAndGoesOn) {
    GrowingMemory memory(16);
    void *const before = memory.Take(16);
    EXPECT_EQ(memory.Take(std::numeric_limits<std::size_t>::max() - 8), nullptr);
    void *const after = memory.Take(16);
    ASSERT_NE(before, nullptr);
    ASSERT_NE(after, nullptr);
    EXPECT_NE(before, after);
}

} // namespace zvi::lib::test

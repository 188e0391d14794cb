#include "zvi/core/CSimpleMemMgr.h"
#include "zvi/core/MFixedSizeMemMgr.h"

#include "tests/Rows.h"

#include <cstddef>
#include <cstring>
#include <set>
#include <vector>

namespace zvi::lib::test {

namespace {

/// How many items come one behind the other before the pool opens another chunk.
int ItemsOfFirstChunk(int itemSize, long chunkSize) {
    MFixedSizeMemMgr pool(itemSize, chunkSize);
    auto *previous = static_cast<std::byte *>(pool.Alloc());
    for (int items = 1;; ++items) {
        auto *const next = static_cast<std::byte *>(pool.Alloc());
        if (next != previous + itemSize)
            return items;
        previous = next;
    }
}

} // namespace

TEST(MFixedSizeMemMgr, CutsChunksIntoPackedItems) {
    // 80 = 8 + 24 * 3; a chunk that is too small for an item has one all the same.
    for (auto const &[itemSize, chunkSize, items] :
         Rows<int, long, int>("24 80 3; 24 103 3; 12 100 7; 24 40 1; 24 10 1; 24 0 1; 24 -5 1"))
        EXPECT_EQ(ItemsOfFirstChunk(itemSize, chunkSize), items) << itemSize << " in " << chunkSize;
}

TEST(MFixedSizeMemMgr, WorkingSizeYields63999Items) {
    // With nothing freed, a chunk's items come in ascending order; the next chunk starts elsewhere.
    MFixedSizeMemMgr pool(16, 0xFA000);
    auto *const first = static_cast<std::byte *>(pool.Alloc());
    std::byte *item = first;
    for (int i = 1; i < 63999; ++i)
        item = static_cast<std::byte *>(pool.Alloc());
    EXPECT_EQ(item, first + 63998 * 16);
    EXPECT_NE(pool.Alloc(), first + 63999 * 16);
}

TEST(MFixedSizeMemMgr, HandsOutTheItemFreedLast) {
    MFixedSizeMemMgr pool(16, 200);
    std::vector<void *> items;
    for (int i = 0; i < 50; ++i) {
        items.push_back(pool.Alloc());
        std::memset(items.back(), i, 16);
    }
    EXPECT_EQ(std::set<void *>(items.begin(), items.end()).size(), 50U);
    pool.Free(items[3]);
    pool.Free(items[40]);
    EXPECT_TRUE(pool.IsConsistent());
    pool.Free(items[3]);
    EXPECT_FALSE(pool.IsConsistent()) << "an item that is free twice";
    EXPECT_EQ(pool.Alloc(), items[3]);
    EXPECT_EQ(pool.Alloc(), items[40]);
    EXPECT_EQ(pool.Alloc(), items[3]);
    EXPECT_EQ(static_cast<unsigned char *>(items[39])[15], 39) << "a neighbour is untouched";
    pool.FreeAllMem();
    EXPECT_NE(pool.Alloc(), nullptr) << "an emptied pool goes on working";
}

TEST(CSimpleMemMgr, AllocatesItemByItem) {
    CSimpleMemMgr small(24, 0xFA000);
    CSimpleMemMgr const large(4096, 0);
    small = large;
    void *const item = small.Alloc();
    std::memset(item, 1, 4096);
    small.Free(item);
    EXPECT_EQ(sizeof small, sizeof(std::int32_t));
}

} // namespace zvi::lib::test

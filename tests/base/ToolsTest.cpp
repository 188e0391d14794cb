#include "zvi/base/Buckets.h"
#include "zvi/base/RoomInPlace.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zvi::lib::test {

TEST(Buckets, KeepTheOrderWithinABucket) {
    std::string const things = "c1a1b1a2c2c3a3";
    std::vector<std::string> sorted(things.size() / 2);
    std::vector<int> begins(5);
    base::SortIntoBuckets<int>(
        sorted.size(), begins, [&](std::size_t i) { return things[2 * i] - 'a'; },
        [&](std::size_t place, std::size_t i) { sorted[place] = things.substr(2 * i, 2); });
    EXPECT_EQ(sorted, (std::vector<std::string>{"a1", "a2", "a3", "b1", "c1", "c2", "c3"}));
    EXPECT_EQ(begins, (std::vector<int>{0, 3, 4, 7, 7}));
}

TEST(RoomInPlace, KeepsWhatIsUsedWhenItMoves) {
    base::RoomInPlace<int, 4> room;
    for (std::size_t i = 0; i < 100; ++i) {
        if (i == room.Capacity())
            room.Grow(2 * room.Capacity(), i);
        room[i] = static_cast<int>(i);
    }
    EXPECT_EQ(room.Capacity(), 128u);
    for (std::size_t i = 0; i < 100; ++i)
        ASSERT_EQ(room.Data()[i], static_cast<int>(i));
    EXPECT_EQ((base::RoomInPlace<int, 4>(5).Capacity()), 5u);
}

} // namespace zvi::lib::test

#include "zvi/base/RoomInPlace.h"

#include <gtest/gtest.h>

namespace zvi::lib::test {

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

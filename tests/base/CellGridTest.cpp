#include "zvi/base/CellGrid.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <set>
#include <vector>

namespace zvi::lib::test {

using namespace base;

TEST(CellGrid, HoldsWhatWasAddedAndNotRemoved) {
    // Few keys, alike in their low bits, so that they meet in the table.
    constexpr std::uint32_t kKeyStep = 1u << 20;
    std::mt19937 random(7);
    CellGrid grid;
    std::vector<std::uint32_t> keys;
    std::map<std::uint32_t, std::multiset<int>> cells;
    for (int number = 0; number < 2000; ++number) {
        keys.push_back(static_cast<std::uint32_t>(random() % 400 * kKeyStep + random() % 3));
        grid.Add(keys.back(), number);
        cells[keys.back()].insert(number);
        auto const gone = static_cast<int>(random() % keys.size());
        std::uint32_t const key = keys[static_cast<std::size_t>(gone)];
        if (cells[key].erase(gone) != 0)
            grid.Remove(key, gone);
    }
    for (std::uint32_t step = 0; step < 1200; ++step) {
        std::uint32_t const key = step / 3 * kKeyStep + step % 3;
        std::multiset<int> found;
        grid.ForEach(key, [&](int number) { found.insert(number); });
        EXPECT_EQ(found, cells[key]);
    }
}

TEST(CellGrid, FindsTheStepsOfCoordinates) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    for (double const value : {-1.5, -1.0, -0.0, 0.5, 1.0, 4503599627370495.5, -4503599627370495.5, 1e300, kInfinity})
        EXPECT_EQ(Floor(value), std::floor(value)) << value;
    EXPECT_TRUE(std::isnan(Floor(std::numeric_limits<double>::quiet_NaN())));
    EXPECT_EQ(CellKey(0.0, -0.0), CellKey(-0.0, 0.0));
    std::set<std::uint32_t> keys;
    for (double x = -10; x < 10; ++x) {
        for (double y = -10; y < 10; ++y) {
            for (double z = -10; z < 10; ++z)
                keys.insert(CellKey(x, y, z));
        }
    }
    EXPECT_GE(keys.size(), 7990u) << "8000 cells that are neighbours have keys of their own";
    for (bool const upright : {false, true}) {
        std::set<std::uint32_t> slots;
        for (double step = 0; step < 4096; ++step)
            slots.insert((upright ? CellKey(7.0, step) : CellKey(step, 7.0)) % 4096);
        EXPECT_GE(slots.size(), 2400u) << "a column or a row of cells is spread over the table";
    }
}

} // namespace zvi::lib::test

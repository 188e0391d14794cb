#include "zvi/core/MHashMap.h"

#include "zvi/core/GF_GetHashSizeByCount.h"

#include "tests/Rows.h"

#include <random>
#include <string>
#include <unordered_map>
#include <vector>

namespace zvi::lib::test {

namespace {

std::uint32_t StatusOf(auto raise) {
    try {
        raise();
    } catch (MStatusError const &error) {
        return error.Status();
    }
    return 0;
}

template <typename K, typename V>
std::vector<K> KeysOf(MHashMap<K, V> const &map) {
    std::vector<K> keys;
    for (auto const &[key, value] : map)
        keys.push_back(key);
    return keys;
}

MHashMap<int, int> Numbered(int count) {
    MHashMap<int, int> map;
    for (int i = 0; i < count; ++i)
        map.SetAt(i, -i);
    return map;
}

} // namespace

TEST(MHashMap, AllocatesItsBinsWithTheFirstPair) {
    EXPECT_EQ(sizeof(MHashMap<int, int>), sizeof(void *));
    MHashMap<int, int> map;
    EXPECT_EQ(map.Lookup(3), nullptr);
    EXPECT_FALSE(map.RemoveKey(3));
    EXPECT_FALSE(map.IsAllocated());
    EXPECT_EQ(map.begin(), map.end());
    map.SetAt(3, 30);
    EXPECT_TRUE(map.IsAllocated());
    EXPECT_EQ(map.GetBinCount(), 17U);
    map.SetAt(3, 31);
    EXPECT_EQ(map.GetCount(), 1U);
    int value = 0;
    EXPECT_TRUE(map.Lookup(3, value));
    EXPECT_EQ(value, 31);
    EXPECT_FALSE(map.Lookup(4, value));
    EXPECT_EQ(value, 31);
}

TEST(MHashMap, WalksBinsUpwardsAndChainsFromTheNewest) {
    MHashMap<int, int> map;
    // 17 bins: 1, 18 and 35 share bin 1; -1 is 4294967295, which is bin 0.
    for (int const key : {1, 18, 5, 35, 16, -1})
        map.SetAt(key, 0);
    EXPECT_EQ(KeysOf(map), (std::vector<int>{-1, 35, 18, 1, 5, 16}));
    map.RemoveKey(18);
    map.SetAt(18, 0);
    EXPECT_EQ(KeysOf(map), (std::vector<int>{-1, 18, 35, 1, 5, 16}));
    // Each chain is moved from its head, so 35 and 1, which stay together, change places; -1 is now in bin 17.
    map.Rehash(34);
    EXPECT_EQ(KeysOf(map), (std::vector<int>{1, 35, 5, 16, -1, 18}));
}

TEST(MHashMap, RehashesWhenTheCountPassesAThreshold) {
    // 38 = 17 * 2.25; 39 / 0.75 = 52; 119 = 53 * 2.25; 120 / 0.75 = 160; 366 = 163 * 2.25; 367 / 0.75 = 489.
    for (auto const &[count, binCount] : Rows<int, std::uint32_t>("38 17; 39 53; 119 53; 120 163; 366 163; 367 521"))
        EXPECT_EQ(Numbered(count).GetBinCount(), binCount) << count;

    // 521 bins shrink below 130 pairs: 129 / 0.75 = 172; 211 bins below 52: 51 / 0.75 = 68; 83 bins below 20.
    MHashMap<int, int> map = Numbered(367);
    std::vector<std::pair<std::uint64_t, std::uint32_t>> shrinkings;
    for (int key = 0; key < 367; ++key) {
        std::uint32_t const before = map.GetBinCount();
        EXPECT_TRUE(map.RemoveKey(key));
        if (map.GetBinCount() != before)
            shrinkings.emplace_back(map.GetCount(), map.GetBinCount());
    }
    EXPECT_EQ(shrinkings, (std::vector<std::pair<std::uint64_t, std::uint32_t>>{{129, 211}, {51, 83}, {19, 29}}));
    EXPECT_TRUE(map.IsAllocated()) << "the last removal keeps the bins";
}

TEST(MHashMap, LockHoldsTheBinCount) {
    MHashMap<int, int> map;
    map.LockRehash();
    for (int i = 0; i < 500; ++i)
        map.SetAt(i, i);
    EXPECT_EQ(map.GetBinCount(), 17U);
    map.Rehash(101);
    EXPECT_EQ(map.GetBinCount(), 101U);
    map.RemoveAll();
    EXPECT_EQ(map.GetBinCount(), 101U) << "a locked map keeps its bin count";
    EXPECT_FALSE(map.IsAllocated());
    map.UnlockRehash();
    map.RemoveAll();
    EXPECT_EQ(map.GetBinCount(), 17U);
}

TEST(MHashMap, TakesAnExplicitSize) {
    MHashMap<int, int> map;
    map.InitHashTable(100007, false);
    EXPECT_FALSE(map.IsAllocated());
    EXPECT_EQ(map.GetBinCount(), 100007U);
    map.Rehash(53);
    EXPECT_FALSE(map.IsAllocated()) << "a map without bins only stores their number";
    map.InitHashTable(107, true);
    EXPECT_TRUE(map.IsAllocated());
    map.SetAt(108, 1);
    map.Rehash(0);
    EXPECT_EQ(map.GetBinCount(), 17U);
    EXPECT_EQ(*map.Lookup(108), 1);
    map.InitHashTable(41, true);
    EXPECT_TRUE(map.Empty());
}

TEST(MHashMap, RefusesWhatItCannotDoAndStaysAsItWas) {
    MHashMap<int, int> map = Numbered(100);
    std::vector<int> const keys = KeysOf(map);
    for (std::uint32_t const binCount : {0x20000000U, 0xFFFFFFFFU}) {
        EXPECT_EQ(StatusOf([&] { map.Rehash(binCount); }), 0x80004005U);
        EXPECT_EQ(StatusOf([&] { map.InitHashTable(binCount, false); }), 0x80004005U);
    }
    EXPECT_EQ(StatusOf([&] { map.InitHashTable(0, true); }), 0x80004005U);
    EXPECT_EQ(StatusOf([&] { map.RemoveAt(map.end()); }), 0x80004005U);
    EXPECT_EQ(StatusOf([&] { static_cast<void>(*map.end()); }), 0x80004005U);
    EXPECT_EQ(KeysOf(map), keys);
    EXPECT_EQ(map.GetBinCount(), 53U);
}

TEST(MHashMap, CutsKeysTo32BitsAndStillTellsThemApart) {
    MHashMap<std::uint64_t, int> map;
    std::uint64_t const high = std::uint64_t{1} << 32;
    map.SetAt(5, 1);
    map.SetAt(high + 5, 2);
    EXPECT_EQ(*map.Lookup(5), 1);
    EXPECT_EQ(*map.Lookup(high + 5), 2);
    EXPECT_EQ(KeysOf(map), (std::vector<std::uint64_t>{high + 5, 5})) << "one bin, the newest first";

    int objects[3] = {};
    MHashMap<int *, int> pointers;
    for (int &object : objects)
        pointers.SetAt(&object, 1);
    EXPECT_NE(pointers.Lookup(&objects[2]), nullptr);
    EXPECT_EQ(pointers.Lookup(nullptr), nullptr);
}

TEST(MHashMap, CopiesItsNodesInTheSameOrder) {
    MHashMap<int, std::string> map;
    for (int i = 0; i < 200; ++i)
        map.SetAt(i * 37, "a value that owns memory, number " + std::to_string(i));
    MHashMap<int, std::string> copy(map);
    EXPECT_EQ(KeysOf(copy), KeysOf(map));
    EXPECT_EQ(copy.GetBinCount(), map.GetBinCount());
    *copy.Lookup(0) = "changed";
    EXPECT_NE(*map.Lookup(0), "changed");

    std::vector<int> const keys = KeysOf(map);
    MHashMap<int, std::string> moved(std::move(map));
    EXPECT_EQ(KeysOf(moved), keys);
    map.SetAt(1, "a moved-from map is an empty one");
    EXPECT_EQ(map.GetCount(), 1U);
    copy = moved;
    EXPECT_EQ(KeysOf(copy), keys);
    copy = std::move(map);
    EXPECT_EQ(copy.GetCount(), 1U);
}

TEST(MHashMap, ReusesNodesAndKeepsThemInPlace) {
    MHashMap<int, int> map = Numbered(5);
    int *const value = map.Lookup(3);
    map.RemoveKey(2);
    for (int i = 100; i < 1000; ++i)
        map.SetAt(i, i);
    EXPECT_EQ(map.Lookup(3), value) << "a rehash moves no node";

    MHashMap<int, int> fresh;
    std::vector<int const *> places;
    for (int i = 0; i < 10; ++i) {
        fresh.SetAt(i, i);
        places.push_back(fresh.Lookup(i));
    }
    EXPECT_TRUE(std::is_sorted(places.begin(), places.end())) << "a block is handed out from its lowest address";
    fresh.RemoveKey(4);
    fresh.SetAt(77, 0);
    EXPECT_EQ(fresh.Lookup(77), places[4]) << "the node freed last comes first";
}

/// The bin array of so many pairs is itself a large block; the map passes that size on the way up and on the way down.
TEST(MHashMap, GrowsLargeAndSmallAgain) {
    constexpr int kCount = 800000;
    MHashMap<int, int> map = Numbered(kCount);
    EXPECT_GT(map.GetBinCount(), 300000U);
    MHashMap<int, int> const copy(map);
    for (int i = 0; i < kCount; i += 997)
        EXPECT_EQ(*copy.Lookup(i), *map.Lookup(i));
    for (int i = 0; i < kCount - 10; ++i)
        ASSERT_TRUE(map.RemoveKey(i));
    EXPECT_EQ(map.GetCount(), 10U);
    EXPECT_LT(map.GetBinCount(), 100U);
    EXPECT_NE(map.Lookup(kCount - 1), nullptr);
    EXPECT_EQ(map.Lookup(0), nullptr);
}

TEST(MHashMap, AgreesWithAStandardMapUnderRandomOperations) {
    for (unsigned int seed = 1; seed <= 5; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        MHashMap<int, std::string> map;
        std::unordered_map<int, std::string> oracle;
        int const keyRange = static_cast<int>(50 << seed);
        for (int step = 0; step < 20000; ++step) {
            // Phases of growth and of shrinking.
            bool const grows = random() % 10 < (step / 4000 % 2 == 0 ? 8U : 2U);
            int const key = static_cast<int>(random()) % keyRange;
            if (grows) {
                map.SetAt(key, std::to_string(step) + " is the step");
                oracle[key] = std::to_string(step) + " is the step";
            } else {
                EXPECT_EQ(map.RemoveKey(key), oracle.erase(key) == 1);
            }
            ASSERT_EQ(map.GetCount(), oracle.size());
            ASSERT_TRUE(map.IsConsistent()) << step;
            std::string const *const found = map.Lookup(key);
            ASSERT_EQ(found != nullptr, oracle.contains(key));
        }
        std::size_t walked = 0;
        for (auto const &[key, value] : map) {
            ASSERT_EQ(oracle.at(key), value);
            ++walked;
        }
        EXPECT_EQ(walked, oracle.size());
        while (!map.Empty())
            map.RemoveAt(map.begin());
    }
}

TEST(HashBinCount, IsTheNextPrimeOfTheTable) {
    // At a load of 0.75: 12 wish for 16, 13 for 17.33, which is cut, 14 for 18.67, 39 for 52, 40 for 53.33, 41 for
    // 54.67, 9987066 for 13316088. 9987068 wish for more than the table has, 13316090.67 rounded to a float.
    for (auto const &[count, binCount] :
         Rows<std::uint64_t, std::uint32_t>("0 17; 12 17; 13 17; 14 23; 39 53; 40 53; 41 67; 9987066 13316089;"
                                            "9987067 13316089; 9987068 13316091; 4000000000 4294967295"))
        EXPECT_EQ(core::PickBinCount(count, 0.75F), binCount) << count;
}

TEST(HashSizeByCount, StepsAtTheBoundOfEachBand) {
    for (auto const &[count, size] : Rows<long, long>("-5 13; 9 13; 10 59; 99999 110017; 100000 330017; 999999 1100009;"
                                                      "9999999 11000027; 10000000 20000003"))
        EXPECT_EQ(GF_GetHashSizeByCount(count), size) << count;
}

} // namespace zvi::lib::test

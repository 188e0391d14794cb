#include "zvi/core/CArray.h"

#include "zvi/core/CMap.h"
#include "zvi/core/CStringArray.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

namespace zvi::lib::test {

TEST(CArray, EditsLikeAVector) {
    CArray<int> array;
    EXPECT_EQ(array.Add(5), 0);
    EXPECT_EQ(array.Add(6), 1);
    array.InsertAt(0, 1, 3);
    EXPECT_EQ(array, (CArray<int>{1, 1, 1, 5, 6}));
    array.InsertAt(7, 9);
    EXPECT_EQ(array, (CArray<int>{1, 1, 1, 5, 6, 0, 0, 9})) << "an index behind the end lengthens the array";
    array.RemoveAt(1, 5);
    EXPECT_EQ(array.Append(array), 3);
    EXPECT_EQ(array, (CArray<int>{1, 0, 9, 1, 0, 9}));
    array.SetSize(3);
    array.RemoveAt(2);
    EXPECT_EQ(array.GetSize(), 2);
    array.SetAt(1, 4);
    EXPECT_EQ(array.GetData()[1], 4);
    array.RemoveAll();
    EXPECT_TRUE(array.IsEmpty());
    EXPECT_EQ(array.GetData(), nullptr);
}

TEST(CArray, RefusesIndicesOutside) {
    CArray<int> array{1, 2};
    EXPECT_THROW(array.GetAt(2), std::out_of_range);
    EXPECT_THROW(array.GetAt(-1), std::out_of_range);
    EXPECT_THROW(array.SetAt(2, 0), std::out_of_range);
    EXPECT_THROW(array.SetSize(-1), std::out_of_range);
    EXPECT_THROW(array.InsertAt(-1, 0), std::out_of_range);
    EXPECT_THROW(array.RemoveAt(1, 2), std::out_of_range);
    EXPECT_THROW(array.RemoveAt(3, 0), std::out_of_range);
    EXPECT_EQ(array, (CArray<int>{1, 2}));
}

TEST(CStringArray, HoldsTexts) {
    CStringArray texts{L"first, and long enough to live outside of its object", L"second"};
    for (int i = 0; i < 20; ++i)
        texts.InsertAt(1, texts[0]);
    CStringArray const copy = texts;
    texts[0] = L"changed";
    EXPECT_EQ(copy.GetSize(), 22);
    EXPECT_EQ(copy[20], copy[0]);
    EXPECT_EQ(copy[21], L"second");
    CStringArray same = copy;
    same.InsertAt(0, L"nothing", 0);
    same.RemoveAt(3, 0);
    EXPECT_EQ(same, copy) << "no element is moved onto itself";
}

TEST(CMap, WalksInTheOrderOfArrival) {
    using Pairs = std::vector<std::pair<CString, int>>;
    auto const walk = [](CMap<CString, int> const &map) {
        Pairs pairs;
        for (auto const &[key, number] : map)
            pairs.emplace_back(key, number);
        return pairs;
    };
    CMap<CString, int> map{{L"b", 2}, {L"a", 1}};
    map[L"c"] = 3;
    map.SetAt(L"b", 20);
    int value = 0;
    EXPECT_TRUE(map.Lookup(L"b", value));
    EXPECT_FALSE(map.Lookup(L"x", value));
    EXPECT_EQ(value, 20);

    CMap<CString, int> copy = map;
    EXPECT_TRUE(map.RemoveKey(L"a"));
    EXPECT_FALSE(map.RemoveKey(L"a"));
    map[L"a"] = 5;
    EXPECT_EQ(walk(map), (Pairs{{L"b", 20}, {L"c", 3}, {L"a", 5}}));
    EXPECT_EQ(walk(copy), (Pairs{{L"b", 20}, {L"a", 1}, {L"c", 3}}));
    copy = std::move(map);
    *copy.Lookup(L"c") = 4;
    EXPECT_EQ(walk(copy), (Pairs{{L"b", 20}, {L"c", 4}, {L"a", 5}}));
    EXPECT_TRUE(copy.IsConsistent());
    copy.RemoveAll();
    EXPECT_TRUE(copy.IsEmpty());
}

} // namespace zvi::lib::test

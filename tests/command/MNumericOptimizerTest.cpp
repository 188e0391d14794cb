#include "zvi/command/MNumericOptimizer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace zvi::lib::test {

namespace {

std::vector<long> List(MArray<long> const &numbers) {
    return {numbers.begin(), numbers.end()};
}

} // namespace

TEST(MNumericOptimizer, WritesRunsAndSingles) {
    using Row = std::pair<MArray<long>, wchar_t const *>;
    for (auto [numbers, text] : std::initializer_list<Row>{
             {{}, L""},
             {{7}, L"7"},
             {{1, 2}, L"1 2"},
             {{1, 2, 3}, L"1to3"},
             {{1, 2, 3, 7}, L"1to3 7"},
             {{1, 3, 5}, L"1 3 5"},
             {{1, 3, 5, 7, 20}, L"1to7by2 20"},
             {{1, 3, 5, 6, 7, 8}, L"1 3 5to8"},
             {{1, 2, 4, 6, 8, 10, 11, 12}, L"1 2to10by2 11 12"},
             {{-9, -6, -3, 0, 1}, L"-9to0by3 1"},
             {{5, 5, 5, 5}, L"5to5"},
             {{5, 5, 6, 7}, L"5 5to7"},
         }) {
        MNumericOptimizer optimizer;
        EXPECT_EQ(optimizer.OptimizeSortedArray(numbers), text);
        EXPECT_EQ(optimizer.Optimize(numbers), text);
        EXPECT_EQ(optimizer.Optimize(numbers.Data(), static_cast<std::int64_t>(numbers.Size())), text);
    }
}

TEST(MNumericOptimizer, UnsortedInputIsSortedInPlaceAndNamesEachNumberOnce) {
    MNumericOptimizer optimizer;
    MArray<long> numbers{9, 3, 1, 3, 2, 9};
    EXPECT_EQ(optimizer.OptimizeUnsortedArray(numbers), L"1to3 9");
    EXPECT_EQ(List(numbers), (std::vector<long>{1, 2, 3, 3, 9, 9}));

    // A text made from a descending list still names its numbers.
    MArray<long> descending{9, 7, 5, 3};
    EXPECT_EQ(optimizer.Optimize(descending), L"3to9by2");
    EXPECT_EQ(List(descending), (std::vector<long>{9, 7, 5, 3}));
}

TEST(MNumericOptimizer, RecordsHoldRunsThenSingles) {
    MNumericOptimizer optimizer;
    MArray<long> numbers{1, 4, 5, 6, 20, 18, 16, 14, 99};
    MArray<STB_OPT_NODE> runs;
    EXPECT_EQ(optimizer.OptimizeSortedArray(numbers, runs), 1);
    int const expected[][3] = {{4, 6, 1}, {20, 14, -2}, {1, 1, 1}, {99, 99, 1}};
    ASSERT_EQ(runs.Size(), std::size(expected));
    for (std::size_t i = 0; i < std::size(expected); ++i) {
        EXPECT_EQ(runs[i].first, expected[i][0]);
        EXPECT_EQ(runs[i].last, expected[i][1]);
        EXPECT_EQ(runs[i].step, expected[i][2]);
    }
    MArray<long> none;
    EXPECT_EQ(optimizer.OptimizeUnsortedArray(none, runs), 1);
    EXPECT_EQ(runs.Size(), 0u);
}

TEST(MNumericOptimizer, SelectsListedNumbersByText) {
    MArray<long> listed{-5, 1, 3, 5, 7, 9};
    using Row = std::tuple<wchar_t const *, int, std::vector<long>>;
    for (auto const &[text, isRead, inTextOrder] : std::initializer_list<Row>{
             {L"", 1, {}},
             {L"3", 1, {3}},
             {L"4 100 -5", 1, {-5}},
             {L"9to1", 1, {9, 7, 5, 3, 1}},
             {L"1TO9BY4 3", 1, {1, 5, 9, 3}},
             {L"1t9b4", 1, {1, 5, 9}},
             {L" 1 to 5  by 2\t9 ", 1, {1, 3, 5, 9}},
             {L"9to1by-4", 1, {9, 5, 1}},
             {L"- 5to1", 1, {-5, 1}},
             {L"3 7 3", 1, {3, 7, 3}},
             {L"1to2000000000", 1, {1, 3, 5, 7, 9}},
             {L"1to9by0", 1, {1}},
             {L"1,3", 0, {}},
             {L"1-3", 0, {}},
             {L"1to", 0, {}},
             {L"1to3to5", 0, {}},
             {L"by2", 0, {}},
             {L"1\n3", 0, {}},
             {L"99999999999999999999", 0, {}},
         }) {
        MNumericOptimizer optimizer;
        MArray<long> result{42};
        EXPECT_EQ(optimizer.SelectNumByStrKeepSeq(listed, text, result, 0), isRead) << text;
        EXPECT_EQ(List(result), inTextOrder) << text;

        EXPECT_EQ(optimizer.SelectNumByStr(listed, text, result), isRead) << text;
        std::set<long> const once(inTextOrder.begin(), inTextOrder.end());
        EXPECT_EQ(List(result), std::vector<long>(once.begin(), once.end())) << text;
    }
    MNumericOptimizer optimizer;
    MArray<long> result{42};
    MArray<long> none;
    EXPECT_EQ(optimizer.SelectNumByStr(none, L"not a list", result), 1);
    EXPECT_TRUE(result.Empty());
    EXPECT_EQ(optimizer.SelectNumByStrKeepSeq(listed, L"1 3 5 3 1 7", result, 1), 1);
    EXPECT_EQ(List(result), (std::vector<long>{5, 3, 1, 7})) << "the last of a repeated number is kept";
}

TEST(MNumericOptimizer, TextSelectsExactlyTheNumbersItWasMadeFrom) {
    unsigned const seed = 20250;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    for (int round = 0; round < 2000; ++round) {
        std::uniform_int_distribution<long> pick(-30, 30);
        std::set<long> chosen;
        for (int i = 0; i < round % 40; ++i)
            chosen.insert(pick(random));
        MArray<long> numbers;
        for (long const number : chosen)
            numbers.PushBack(number);
        std::shuffle(numbers.begin(), numbers.end(), random);
        MNumericOptimizer optimizer;
        CString const text = optimizer.OptimizeUnsortedArray(numbers);

        MArray<long> all;
        for (long n = -40; n <= 40; ++n)
            all.PushBack(n);
        MArray<long> selected;
        ASSERT_EQ(optimizer.SelectNumByStr(all, text.GetString(), selected), 1);
        ASSERT_EQ(List(selected), std::vector<long>(chosen.begin(), chosen.end())) << text.GetString();
    }
}

TEST(MNumericOptimizer, FindsTokens) {
    struct Row {
        wchar_t const *text;
        int found;
        std::uint64_t type;
        std::uint64_t pos;
        std::int64_t value;
    };
    std::wstring const longest = std::wstring(126, L'0') + L"1";
    std::wstring const tooLong = L"-" + longest;
    Row const rows[] = {
        {L"", 1, MNumericOptimizer::kBlank, 0, 0},
        {L"\t1", 1, MNumericOptimizer::kBlank, 1, 0},
        {L"12to", 1, MNumericOptimizer::kNumber, 2, 12},
        {L"- 12", 1, MNumericOptimizer::kNumber, 4, -12},
        {L"T9", 1, MNumericOptimizer::kTo, 1, 0},
        {L"tO9", 1, MNumericOptimizer::kTo, 2, 0},
        {L"bY", 1, MNumericOptimizer::kBy, 2, 0},
        {L"12-3", 0, MNumericOptimizer::kNoToken, 0, 0},
        {L"-", 0, MNumericOptimizer::kNoToken, 0, 0},
        {L"x", 0, MNumericOptimizer::kNoToken, 0, 0},
        {longest.c_str(), 1, MNumericOptimizer::kNumber, 127, 1},
        {tooLong.c_str(), 0, MNumericOptimizer::kNoToken, 0, 0},
    };
    for (Row const &row : rows) {
        MNumericOptimizer optimizer;
        std::uint64_t pos = 0;
        std::uint64_t type = 99;
        std::uint64_t value = 0;
        EXPECT_EQ(optimizer.GetToken(row.text, pos, type, value), row.found) << row.text;
        EXPECT_EQ(type, row.type) << row.text;
        EXPECT_EQ(pos, row.pos) << row.text;
        EXPECT_EQ(static_cast<std::int64_t>(value), row.value) << row.text;
    }
}

} // namespace zvi::lib::test

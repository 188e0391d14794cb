#include "zvi/math/ValueArray.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

namespace zvi::lib {

TEST(ValueArray, BoundsAndMeanOfArraysAndViews) {
    double const nan = std::nan("");
    MArray<double> const values = {nan, 2.0, -3.0, nan, 7.0};
    MArray<int> const whole = {4, -2, 7};
    double plain[] = {1.0, 2.0, 6.0};
    EXPECT_EQ(GetMinValue(values), -3.0);
    EXPECT_EQ(GetMaxValue(values), 7.0);
    EXPECT_TRUE(std::isnan(GetAvgValue(values)));
    EXPECT_EQ(GetMinValue(whole), -2);
    EXPECT_EQ(GetMaxValue(whole), 7);
    EXPECT_EQ(GetAvgValue(whole), 3.0);
    EXPECT_EQ(GetAvgValue(MTArray<double>(plain, 3)), 3.0);
    EXPECT_EQ(GetMaxValue(MTArray<double>(plain, 2)), 2.0);
}

TEST(ValueArray, EmptyArraysAnswerZero) {
    EXPECT_EQ(GetMinValue(MArray<double>()), 0.0);
    EXPECT_EQ(GetMaxValue(MTArray<int>(nullptr, 0)), 0);
    EXPECT_EQ(GetAvgValue(MTArray<double>(nullptr, -1)), 0.0);
    MArray<int> empty;
    RemoveSameVal(empty);
    EXPECT_TRUE(empty.Empty());
}

TEST(ValueArray, FirstOfEachValueStays) {
    MArray<int> whole = {3, 1, 3, 2, 1, 3};
    RemoveSameVal(whole);
    EXPECT_EQ(std::vector<int>(whole.begin(), whole.end()), (std::vector<int>{3, 1, 2}));
    MArray<double> values = {0.0, 5.0, -0.0, 5.0, 5.0 + 1e-15};
    RemoveSameVal(values);
    EXPECT_EQ(std::vector<double>(values.begin(), values.end()), (std::vector<double>{0.0, 5.0, 5.0 + 1e-15}));
}

TEST(ValueArray, ToleranceLooksAtWhatWasKept) {
    // 1.5 goes because 1.0 is kept; 2.0 stays, since 1.5 is gone.
    MArray<double> values = {1.0, 1.5, 2.0, 2.5, -1.0};
    RemoveSameVal(values, 0.5);
    EXPECT_EQ(std::vector<double>(values.begin(), values.end()), (std::vector<double>{1.0, 2.0, -1.0}));
    std::mt19937_64 random(41);
    std::uniform_int_distribution<int> value(0, 200);
    MArray<double> many;
    for (int i = 0; i < 500; ++i)
        many.PushBack(value(random) * 0.25);
    std::vector<double> expected;
    for (double candidate : many) {
        bool isNew = true;
        for (double kept : expected)
            isNew = isNew && std::abs(kept - candidate) > 1.25;
        if (isNew)
            expected.push_back(candidate);
    }
    RemoveSameVal(many, 1.25);
    EXPECT_EQ(std::vector<double>(many.begin(), many.end()), expected);
}

} // namespace zvi::lib

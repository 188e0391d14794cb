#include "zvi/math/free/ValueArray.h"

#include "tests/math/Near.h"

namespace zvi::lib::test {

TEST(ValueArray, BoundsAndMeanOfArraysAndViews) {
    MArray<double> const values = {NAN, 2.0, -3.0, NAN, 7.0};
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
    EXPECT_EQ(GetMinValue(MArray<double>()), 0.0);
    EXPECT_EQ(GetMaxValue(MTArray<int>(nullptr, 0)), 0);
    EXPECT_EQ(GetAvgValue(MTArray<double>(nullptr, -1)), 0.0);
}

TEST(ValueArray, FirstOfEachValueStays) {
    MArray<int> whole = {3, 1, 3, 2, 1, 3}, empty;
    RemoveSameVal(empty);
    EXPECT_TRUE(empty.Empty());
    RemoveSameVal(whole);
    EXPECT_EQ(whole, (MArray<int>{3, 1, 2}));
    MArray<double> values = {0.0, 5.0, -0.0, 5.0, 5.0 + 1e-15};
    RemoveSameVal(values);
    EXPECT_EQ(values, (MArray<double>{0.0, 5.0, 5.0 + 1e-15}));
}

TEST(ValueArray, ToleranceLooksAtWhatWasKept) {
    // 1.5 goes because 1.0 is kept; 2.0 stays, since 1.5 is gone.
    MArray<double> values = {1.0, 1.5, 2.0, 2.5, -1.0};
    RemoveSameVal(values, 0.5);
    EXPECT_EQ(values, (MArray<double>{1.0, 2.0, -1.0}));
    Random number(41, 0.0, 200.0);
    MArray<double> many, expected;
    for (int i = 0; i < 500; ++i) {
        many.PushBack(std::round(number()) * 0.25);
        bool isNew = true;
        for (double const kept : expected)
            isNew = isNew && std::abs(kept - many[many.Size() - 1]) > 1.25;
        if (isNew)
            expected.PushBack(many[many.Size() - 1]);
    }
    RemoveSameVal(many, 1.25);
    EXPECT_EQ(many, expected);
}

} // namespace zvi::lib::test

#include "tests/Rows.h"
#include "zvi/core/MOptionDB.h"
#include "zvi/core/MTolerance.h"
#include "zvi/core/OptionGenTol.h"
#include "zvi/core/OptionValues.h"
#include "zvi/core/Utf8.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <limits>
#include <utility>

namespace zvi::lib::test {

namespace {

template <typename Option>
void ExpectTexts(Option option, std::initializer_list<std::pair<wchar_t const *, wchar_t const *>> rows) {
    for (auto const &[text, back] : rows) {
        CString given(text);
        option.SetType(given);
        EXPECT_EQ(option.GetType(), back) << Utf8Of(given);
    }
}

} // namespace

TEST(OptionValues, GoToTextsAndComeFromThem) {
    ExpectTexts(MOPTBOOL(), {{L"TRUE", L"TRUE"}, {L"true", L"FALSE"}, {L"True", L"FALSE"}, {L"1", L"FALSE"}});
    ExpectTexts(MOPTINT(), {{L"-12x", L"-12"}, {L"x", L"0"}});
    ExpectTexts(MOPTCHAR(), {{L"300", L"44"}, {L"200", L"-56"}, {L"-1", L"-1"}});
    ExpectTexts(MOPTDOUBLE(),
                {{L"0.0012345678", L"0.00123457  "}, {L"x", L"0           "}, {L"1e-10", L"1e-10       "}});
    ExpectTexts(MOPTFLOAT(), {{L"0.5", L"0.500000"}, {L"0.1", L"0.100000"}});
    ExpectTexts(MOPTSTRING(), {{L" a = b ", L" a = b "}});
    ExpectTexts(MOPTDATA(), {{L"x", L""}});
}

TEST(OptionValues, AreTheirValues) {
    MOPTBOOL truth;
    truth.SetData(L"key", 1);
    EXPECT_EQ(truth = 7, 7);
    EXPECT_TRUE(truth == 7);
    EXPECT_EQ(truth.GetType(), L"TRUE");
    MOPTDOUBLE number;
    (number = 1) = 3;
    EXPECT_TRUE(number == 3 && number != 1 && number * 2 == 6.0);
    number = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(number == number);
    MOPTSTRING text;
    text.SetData(L"key", L"Value");
    MOPTSTRING const copy(text);
    text = L"other";
    EXPECT_TRUE(copy == L"Value" && copy != L"value" && text == L"other");
    EXPECT_EQ(MOPTSTRING(copy).GetKeyWord(), L"key");
}

TEST(MOptionDB, TheFirstGroupOfACategoryStays) {
    MOptionDB database;
    OptionGenTol first;
    OptionGenTol second;
    database.SetOptData(L"X", &first);
    database.SetOptData(L"X", &second);
    EXPECT_EQ(database.GetOptData(L"X"), &first);
    EXPECT_EQ(database.GetOptData(L"x"), nullptr);
    database.SetOptData(L"x", &second);
    EXPECT_EQ(database.GetOptData(L"x"), nullptr) << "asking has entered it";
    database.RemoveOptData(L"x");
    database.SetOptData(L"x", &second);
    EXPECT_EQ(MOptionDB(database).GetOptData(L"x"), &second);
}

TEST(MTolerance, EveryComparisonIsStrict) {
    // a, b, t, and whether a is less, not greater, equal, greater, not less; then of a - b: zero, not zero.
    for (auto const &[a, b, t, expected] : Rows<double, double, double, std::string>(
             "1 1.5 .5 0100000;  1.5 1 .5 0000100;  1 1 0 0000000;  1 1 1e-10 0110110;  1 2 .5 1100001;"
             "2 1 .5 0001101;  nan 1 .5 0000000;  1 1 -1 1001001;  1 1.25 .5 0110110")) {
        std::string given;
        for (int const is : {MTolerance::IsLess(a, b, t), MTolerance::IsLessOrEQ(a, b, t), MTolerance::IsEqual(a, b, t),
                             MTolerance::IsGreater(a, b, t), MTolerance::IsGreaterOrEQ(a, b, t),
                             MTolerance::IsZero(a - b, t), MTolerance::IsNotZero(a - b, t)})
            given += std::to_string(is);
        EXPECT_EQ(given, expected) << a << " " << b << " " << t;
    }
    double const p[] = {1, 2, 3};
    double const q[] = {4, 6, 3};
    EXPECT_EQ(MTolerance::IsSamePos(p, q, 5.0), 0);
    EXPECT_EQ(MTolerance::IsSamePos(p, q, 5.000001), 1);
}

} // namespace zvi::lib::test

#include "zvi/text/MConvertString.h"

#include "zvi/core/Utf8.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdlib>

namespace zvi::lib::test {

TEST(MConvertString, LengthsCountOrSayThatTheTextEndsAtItsZero) {
    EXPECT_EQ(MConvertString::MultiToWide("abc"), L"abc");
    EXPECT_EQ(MConvertString::MultiToWide("abc", 2), L"ab");
    EXPECT_EQ(MConvertString::MultiToWide("a\0b", 3), std::wstring(L"a\0b", 3));
    EXPECT_EQ(MConvertString::WideToMulti(L"\x00E9\x4E2D", 1, 1252), "\xE9");
    EXPECT_EQ(MConvertString::MultiToWideCSting("\xC7\xD1", -1, 949), L"\xD55C");
    EXPECT_EQ(MConvertString::MultiToWide(nullptr), L"");
    EXPECT_EQ(MConvertString::WideToMulti(nullptr, 3), "");
    EXPECT_EQ(MConvertString::UTF8ToANSI("plain"), L"plain");
}

TEST(MConvertString, NumbersAreReadAsTheHostReadsThem) {
    for (char const *text : {" \t-12abc", "1.5e3x", "+7", "", "abc", "- 5", "+-5", "1,5", ".5", "0x1F", "0xg",
                             "99999999999", "-99999999999", "1e999", "-1e999", "1e-999", "inf", "4.9e-324", "nan"}) {
        CString wide = WideOf(text);
        long long const whole = std::strtoll(text, nullptr, 10);
        EXPECT_EQ(MConvertString::atoi(wide), std::clamp<long long>(whole, INT_MIN, INT_MAX)) << text;
        double const number = std::strtod(text, nullptr);
        EXPECT_TRUE(MConvertString::atof(wide) == number || std::isnan(number)) << text;
        EXPECT_EQ(std::isnan(MConvertString::atof(wide)), std::isnan(number)) << text;
    }
}

} // namespace zvi::lib::test

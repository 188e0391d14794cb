#include "zvi/text/MConvertString.h"

#include "zvi/core/Utf8.h"
#include "zvi/host/CodePage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <tuple>

namespace zvi::lib::test {

TEST(MConvertString, ConvertsThereAndBack) {
    std::wstring syllables;
    for (int i = 0; i < 5000; ++i)
        syllables += L"\xBBF8 a";
    using Row = std::tuple<unsigned int, std::string, std::wstring>;
    for (auto const &[page, bytes, units] :
         {Row{65001, "plain text, more than a block", L"plain text, more than a block"},
          Row{65001, "gr\xC3\xB6\xC3\x9Fz \xEB\xAF\xB8 \xF0\x9F\x98\x80!", L"gr\x00F6\x00DFz \xBBF8 \xD83D\xDE00!"},
          Row{65001, {"a\0b", 3}, {L"a\0b", 3}},
          Row{65001, MConvertString::WideToMulti(syllables.c_str(), -1, 65001), syllables},
          Row{949, MConvertString::WideToMulti(syllables.c_str(), -1, 949), syllables},
          Row{949, "\xB9\xCC\xB5\xEE\xB7\xCF", L"\xBBF8\xB4F1\xB85D"},
          Row{1252, "gr\xF6\xDFz \x80", L"gr\x00F6\x00DFz \x20AC"}, Row{932, "\x93\xFA\x96{", L"\x65E5\x672C"},
          Row{28592, "\xB1", L"\x0105"}, Row{0, "abc", L"abc"}}) {
        EXPECT_TRUE(host::HasCodePage(page)) << page;
        EXPECT_TRUE(MConvertString::MultiToWide(bytes.data(), int(bytes.size()), page) == units) << page;
        EXPECT_TRUE(MConvertString::WideToMulti(units.data(), int(units.size()), page) == bytes) << page;
    }
}

TEST(MConvertString, LengthsCountOrSayThatTheTextEndsAtItsZero) {
    EXPECT_EQ(MConvertString::MultiToWide("abc", 2), L"ab");
    EXPECT_EQ(MConvertString::WideToMulti(L"\x00E9\x4E2D", 1, 1252), "\xE9");
    EXPECT_EQ(MConvertString::MultiToWideCSting("\xC7\xD1", -1, 949), L"\xD55C");
    EXPECT_EQ(MConvertString::MultiToWide(nullptr), L"");
    EXPECT_EQ(MConvertString::WideToMulti(nullptr, 3), "");
    EXPECT_EQ(MConvertString::UTF8ToANSI("plain"), L"plain");
}

TEST(MConvertString, WhatItCannotConvertIsReplacedOrEmpty) {
    EXPECT_EQ(MConvertString::MultiToWide("a\xFFz", -1, 65001), L"a\xFFFDz");
    EXPECT_EQ(MConvertString::WideToMulti(L"a\xD83D", -1, 65001), "a\xEF\xBF\xBD");
    EXPECT_EQ(MConvertString::WideToMulti(L"\xBBF8-\xB4F1", -1, 1252), "?-?");
    EXPECT_EQ(MConvertString::MultiToWide("\xB9", -1, 949).size(), 1u) << "half a character";
    for (unsigned int const page : {99999u, 1200u, 12000u}) {
        EXPECT_FALSE(host::HasCodePage(page));
        EXPECT_EQ(MConvertString::MultiToWide("abc", -1, page), L"");
        EXPECT_EQ(MConvertString::WideToMulti(L"abc", -1, page), "");
    }
}

TEST(MConvertString, NumbersAreReadAsTheHostReadsThem) {
    for (char const *text : {" \t-12abc", "1.5e3x", "+7", "", "abc", "- 5", "+-5", "1,5", ".5", "0x1F", "0xg",
                             "99999999999", "-99999999999", "1e999", "-1e999", "1e-999", "inf", "4.9e-324", "nan"}) {
        CString wide = WideOf(text);
        long long const whole = std::strtoll(text, nullptr, 10);
        EXPECT_EQ(MConvertString::atoi(wide), std::clamp<long long>(whole, INT_MIN, INT_MAX)) << text;
        double const number = std::strtod(text, nullptr);
        double const read = MConvertString::atof(wide);
        EXPECT_TRUE(read == number || (std::isnan(read) && std::isnan(number))) << text;
    }
}

} // namespace zvi::lib::test

#include "zvi/text/MConvertString.h"

#include "zvi/core/Utf8.h"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>

namespace zvi::lib::test {

TEST(MConvertString, LengthsCountOrSayThatTheTextEndsAtItsZero) {
    EXPECT_EQ(MConvertString::MultiToWide("abc"), L"abc");
    EXPECT_EQ(MConvertString::MultiToWide("abc", 2), L"ab");
    EXPECT_EQ(MConvertString::MultiToWide("a\0b", 3), std::wstring(L"a\0b", 3));
    EXPECT_EQ(MConvertString::WideToMulti(L"\x00E9\x4E2D", -1, 65001), "\xC3\xA9\xE4\xB8\xAD");
    EXPECT_EQ(MConvertString::WideToMulti(L"\x00E9\x4E2D", 1, 1252), "\xE9");
    EXPECT_EQ(MConvertString::MultiToWideCSting("\xC7\xD1", -1, 949), L"\xD55C");
    EXPECT_EQ(MConvertString::WideToMulti(L"\U0001F600", -1, 65001), "\xF0\x9F\x98\x80");
    EXPECT_EQ(MConvertString::MultiToWide(nullptr), L"");
    EXPECT_EQ(MConvertString::WideToMulti(nullptr, 3), "");
    EXPECT_EQ(MConvertString::UTF8ToANSI("plain"), L"plain");
}

TEST(MConvertString, NumbersAreReadFromTheStart) {
    struct Row {
        wchar_t const *text;
        int whole;
        double number;
    };
    for (Row const &row : std::initializer_list<Row>{
             {L" \t-12abc", -12, -12.0},
             {L"1.5e3x", 1, 1500.0},
             {L"+7", 7, 7.0},
             {L"", 0, 0.0},
             {L"abc", 0, 0.0},
             {L"- 5", 0, 0.0},
             {L"+-5", 0, 0.0},
             {L"1,5", 1, 1.0},
             {L".5", 0, 0.5},
             {L"0x1F", 0, 31.0},
             {L"0xg", 0, 0.0},
             {L"99999999999", 2147483647, 99999999999.0},
             {L"-99999999999", -2147483647 - 1, -99999999999.0},
             {L"1e999", 1, HUGE_VAL},
             {L"-1e999", -1, -HUGE_VAL},
             {L"1e-999", 1, 0.0},
             {L"inf", 0, HUGE_VAL},
             {L"4.9e-324", 4, 4.9e-324},
         }) {
        CString text(row.text);
        EXPECT_EQ(MConvertString::atoi(text), row.whole) << Utf8Of(text);
        EXPECT_EQ(MConvertString::atof(text), row.number) << Utf8Of(text);
    }
    CString text(L"nan");
    EXPECT_TRUE(std::isnan(MConvertString::atof(text)));
}

} // namespace zvi::lib::test

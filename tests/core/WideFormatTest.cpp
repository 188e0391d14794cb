#include "zvi/core/WideFormat.h"

#include "zvi/core/CString.h"

#include <gtest/gtest.h>

#include <climits>
#include <clocale>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <string>

namespace zvi::lib::test {

TEST(WideFormat, WritesTexts) {
    wchar_t const *const nullWide = nullptr;
    char const *const nullNarrow = nullptr;
    EXPECT_EQ(FormatWide(L"[%s|%ls|%ws]", L"a", L"b", L"c"), L"[a|b|c]");
    EXPECT_EQ(FormatWide(L"[%S|%hs|%hS]", "a", "b", "c"), L"[a|b|c]");
    EXPECT_EQ(FormatWide(L"[%s|%S|%8s|%-7hs|%.2s]", nullWide, nullNarrow, nullWide, nullNarrow, nullWide),
              L"[(null)|(null)|  (null)|(null) |(n]");
    EXPECT_EQ(
        FormatWide(L"[%5s|%-5s|%.2s|%*s|%-*.*s|%.*s]", L"abc", L"abc", L"abc", -5, L"abc", 4, 1, L"abc", -1, L"abc"),
        L"[  abc|abc  |ab|abc  |a   |abc]");
    EXPECT_EQ(FormatWide(L"%c%lc%C%hc%3c", L'w', L'x', 'y', 'z', L'!'), L"wxyz  !");
    EXPECT_EQ(FormatWide(L"100%% %y %", 1), L"100% %y %");
    EXPECT_EQ(FormatWide(nullptr), L"");
    int untouched = 5;
    EXPECT_EQ(FormatWide(L"a%nb%d", &untouched, 1), L"ab1");
    EXPECT_EQ(untouched, 5);
    EXPECT_EQ(FormatWide(L"%p", reinterpret_cast<void *>(std::uintptr_t{0xBEEF})), L"000000000000BEEF");
}

TEST(WideFormat, CountsUnitsAndReadsUtf8) {
    EXPECT_EQ(FormatWide(L"%4s|", L"\U0001F600").size(), 5U);
    EXPECT_EQ(FormatWide(L"%.2s|%.1s|", L"\U0001F600", L"\U0001F600").size(), 4U) << "half a pair is not written";
    EXPECT_EQ(CString(FormatWide(L"%S|%S", "\xE2\x82\xAC\xF0\x9F\x98\x80", "a\xFF\x62\xE2\x82")),
              L"\u20AC\U0001F600|a\uFFFDb\uFFFD\uFFFD");
    char const unterminated[] = {'a', 'b', 'c'};
    EXPECT_EQ(FormatWide(L"%.3S", unterminated), L"abc");
}

TEST(WideFormat, KnowsTheSizesOfWholeNumbers) {
    EXPECT_EQ(FormatWide(L"%I64d %I64u %I64X", INT64_MIN, UINT64_MAX, UINT64_MAX),
              L"-9223372036854775808 18446744073709551615 FFFFFFFFFFFFFFFF");
    EXPECT_EQ(FormatWide(L"%I32d %I32u %Id", INT32_MIN, UINT32_MAX, std::ptrdiff_t{-5}), L"-2147483648 4294967295 -5");
    EXPECT_EQ(FormatWide(L"%hhd %hhu %hd %hu", 300, 300, 70000, 70000), L"44 44 4464 4464");
    EXPECT_EQ(FormatWide(L"%ld %lu", LONG_MIN, ULONG_MAX),
              std::to_wstring(LONG_MIN) + L" " + std::to_wstring(ULONG_MAX));
    EXPECT_EQ(FormatWide(L"%lld %jd %zu %td", LLONG_MAX, INTMAX_MAX, SIZE_MAX, std::ptrdiff_t{3}),
              L"9223372036854775807 9223372036854775807 18446744073709551615 3");
}

TEST(WideFormat, CannotBeMadeToOverflow) {
    std::size_t const most = kLargestFieldWidth;
    EXPECT_EQ(FormatWide(L"%99999999999999999999d", 1).size(), most);
    EXPECT_EQ(FormatWide(L"%*d", INT_MIN, 1).size(), most);
    EXPECT_EQ(FormatWide(L"%.2147483647d", 1).size(), most);
    EXPECT_EQ(FormatWide(L"%.2147483647f", 1.0).size(), most + 2);
    EXPECT_EQ(FormatWide(L"%.2147483647s", L"abc"), L"abc");
    EXPECT_EQ(FormatWide(L"%f", std::numeric_limits<double>::max()).size(), 309U + 7U);
    EXPECT_EQ(FormatWide(L"%Lf", std::numeric_limits<long double>::max()).size(), 4933U + 7U);
    EXPECT_EQ(FormatWide(L"%.1074f", 5e-324).size(), 1076U);
}

TEST(WideFormat, GivesSpecialFloats) {
    double const nan = std::numeric_limits<double>::quiet_NaN();
    double const infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(FormatWide(L"[%f|%5g|%F|%05e|%+f]", nan, -nan, nan, infinity, infinity), L"[nan|  nan|NAN|  inf|+inf]");
    EXPECT_EQ(FormatWide(L"%#g %#.0e %#.0f %g %a", 1.0, 1.0, 2.0, 1e100, 1.0), L"1.00000 1.e+00 2. 1e+100 0x1p+0");
    // Rounding up to the next power of ten changes the form.
    EXPECT_EQ(FormatWide(L"%g %#g %.0f %.0f", 999999.5, 999999.5, 0.5, 1.5), L"1e+06 1.00000e+06 0 2");
}

namespace {

/// Expects what the C library's narrow formatter gives.
template <typename Value>
void CompareWithReference(std::string const &format, Value value) {
    char buffer[2000];
    int const length = std::snprintf(buffer, sizeof buffer, format.c_str(), value);
    std::wstring const wide(format.begin(), format.end());
    ASSERT_EQ(FormatWide(wide.c_str(), value), std::wstring(buffer, buffer + length)) << format << " of " << value;
}

} // namespace

TEST(WideFormat, AgreesWithTheCLibraryForEveryFlag) {
#ifdef _WIN32
    GTEST_SKIP() << "the C library of this host pads some fields in a way of its own";
#endif
    std::string const flagSets[] = {"", "-", "+", " ", "#", "0", "+0", "-0", " 0", "#0", "+#-"};
    std::string const fields[] = {"", "1", "12", "30", ".", ".0", ".1", ".5", ".20", "12.3", "30.17"};
    double const doubles[] = {0.0,       -0.0,  1.0,     -1.0, 0.5, 2.5,    123456.789, 1e-5,
                              9.9999995, 1e300, -1e-300, 1e15, 1e5, 5e-324, 1.0 / 3};
    std::int64_t const integers[] = {0, 1, -1, 255, -123456, INT64_MAX, INT64_MIN};
    for (std::string const &flags : flagSets)
        for (std::string const &field : fields) {
            for (char const conversion : std::string("feEgGaA"))
                for (double const value : doubles)
                    CompareWithReference("%" + flags + field + conversion, value);
            for (std::string const conversion : {"jd", "ji", "ju", "jo", "jx", "jX"})
                for (std::int64_t const value : integers)
                    CompareWithReference("%" + flags + field + conversion, value);
        }
}

TEST(WideFormat, IgnoresTheProcessLocale) {
    std::string const before = std::setlocale(LC_ALL, nullptr);
    for (char const *const name : {"de_DE.UTF-8", "fr_FR.UTF-8", "C.UTF-8"}) {
        std::setlocale(LC_ALL, name);
        EXPECT_EQ(FormatWide(L"%.2f %g %S", 1234.5, 0.25, "\xC3\xA9"), L"1234.50 0.25 \u00E9");
    }
    std::setlocale(LC_ALL, before.c_str());
}

} // namespace zvi::lib::test

#include "zvi/core/CString.h"

#include "zvi/core/WideNumber.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cwchar>
#include <tuple>
#include <unordered_set>

namespace zvi::lib::test {

TEST(CString, HoldsUtf16Units) {
    CString const face(L"x\U0001F600y");
    EXPECT_EQ(face.GetLength(), 4);
    EXPECT_EQ(face[1], wchar_t{0xD83D});
    EXPECT_EQ(face.GetAt(2), wchar_t{0xDE00});
    EXPECT_EQ(face, L"x\U0001F600y");
    EXPECT_EQ(face.Find(L"\U0001F600y"), 1);
    CString built(L'x');
    built += L"\U0001F600";
    built += L"y";
    EXPECT_EQ(built, face);
    // By unit, a surrogate pair comes before U+FFFD.
    EXPECT_LT(face.Mid(1), L"\uFFFD");
}

TEST(CString, TakesCharactersThatAWideOneHoldsWhole) {
    if constexpr (sizeof(wchar_t) == sizeof(char16_t))
        GTEST_SKIP() << "a wide character holds one unit here";
    CString built(L'x');
    built += static_cast<wchar_t>(0x1F600);
    EXPECT_EQ(built, L"x\U0001F600");
    EXPECT_EQ(built.Find(static_cast<wchar_t>(0x1F600)), 1);
    EXPECT_EQ(CString(static_cast<wchar_t>(0x110000)), L"\uFFFD");
}

TEST(CString, NullAndOutsideAreEmpty) {
    wchar_t const *const null = nullptr;
    CString text(null);
    text += null;
    text = text + null;
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_EQ(text, L"");
    EXPECT_EQ(text.Compare(null), 0);
    EXPECT_EQ(CString(L"abc", 2), L"ab");
    for (CString const &empty : {CString(null, 5), CString(L"abc", -1), CString(L'a', -1)})
        EXPECT_EQ(empty, L"");
    CString abc(L"abc");
    for (int const outside : {-1, 3, INT_MAX}) {
        EXPECT_EQ(abc[outside], L'\0');
        abc.SetAt(outside, L'x');
    }
    abc.SetAt(1, L'x');
    EXPECT_EQ(abc, L"axc");
}

TEST(CString, ComparesInSixWays) {
    for (auto const &[a, b, order, orderNoCase] : {std::tuple{L"a", L"a", 0, 0},
                                                   {L"a", L"B", 1, -1},
                                                   {L"B", L"a", -1, 1},
                                                   {L"ab", L"a", 1, 1},
                                                   {L"", L"a", -1, -1},
                                                   {L"Key", L"kEY", -1, 0},
                                                   {L"a_", L"aB", 1, -1},
                                                   {L"\u00C4\u0416\u03A9", L"\u00E4\u0436\u03C9", -1, 0}}) {
        CString const left(a), right(b);
        EXPECT_EQ(left.Compare(right), order);
        EXPECT_EQ(left.CompareNoCase(right), orderNoCase);
        EXPECT_EQ(left == right, order == 0);
        EXPECT_EQ(left != b, order != 0);
        EXPECT_EQ(left < b, order < 0);
        EXPECT_EQ(a < right, order < 0);
        EXPECT_EQ(left >= right, order >= 0);
    }
    std::unordered_set<CString> const set{L"a", CString(L"b").MakeUpper(), CString(L"ab", 1)};
    EXPECT_EQ(set.size(), 2U);
}

TEST(CString, CutsParts) {
    CString const text(L"Hello");
    for (auto const &[first, count, left, right, mid] : {std::tuple{0, 0, L"", L"", L""},
                                                         {1, 2, L"He", L"lo", L"el"},
                                                         {4, 9, L"Hello", L"Hello", L"o"},
                                                         {5, 1, L"H", L"o", L""},
                                                         {-3, 2, L"He", L"lo", L"He"},
                                                         {99, 3, L"Hel", L"llo", L""},
                                                         {2, -1, L"", L"", L""},
                                                         {0, INT_MAX, L"Hello", L"Hello", L"Hello"}}) {
        EXPECT_EQ(text.Left(count), left);
        EXPECT_EQ(text.Right(count), right);
        EXPECT_EQ(text.Mid(first, count), mid);
    }
    EXPECT_EQ(text.Mid(2), L"llo");
}

TEST(CString, Finds) {
    CString const text(L"abcabc");
    for (auto const &[start, place] : {std::pair{0, 1}, {2, 4}, {5, -1}})
        EXPECT_EQ(text.Find(L'b', start), place);
    EXPECT_EQ(text.Find(L"ca"), 2);
    EXPECT_EQ(text.Find(CString(L"bc"), 2), 4);
    EXPECT_EQ(text.Find(L"abc", -1), -1);
    EXPECT_EQ(text.Find(L"abc", 7), -1);
    EXPECT_EQ(text.Find(L"", 6), 6);
    EXPECT_EQ(text.ReverseFind(L'a'), 3);
    EXPECT_EQ(text.ReverseFind(L'x'), -1);
}

TEST(CString, EditsInPlace) {
    EXPECT_EQ(CString(L" \t\r\n a b \x3000").Trim(), L"a b");
    EXPECT_EQ(CString(L"  a ").TrimLeft(), L"a ");
    EXPECT_EQ(CString(L"  a ").TrimRight(), L"  a");
    EXPECT_EQ(CString(L"xxaxx").Trim(L'x'), L"a");
    EXPECT_EQ(CString(L"\"'a'\"").Trim(L"'\""), L"a");
    EXPECT_EQ(CString(L"\\\\a\\").TrimRight(L'\\'), L"\\\\a");
    EXPECT_EQ(CString(L"   ").Trim(), L"");

    CString text(L"aaaa");
    EXPECT_EQ(text.Replace(L"aa", L"a"), 2);
    EXPECT_EQ(text, L"aa");
    EXPECT_EQ(text.Replace(L"", L"x"), 0);
    EXPECT_EQ(text.Replace(L'a', L'b'), 2);
    EXPECT_EQ(text.Replace(L"b", text), 2);
    EXPECT_EQ(text, L"bbbb");
    EXPECT_EQ(text.Remove(L'b'), 4);
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_EQ(CString(L"Stra\u00DFe \u00E9 \u044F \u03C2").MakeUpper(), L"STRA\u00DFE \u00C9 \u042F \u03A3");
    EXPECT_EQ(CString(L"\u0130I\u0178\u00D7\u0141").MakeLower(), L"\u0130i\u00FF\u00D7\u0142");
}

TEST(CString, TakesPartsOfItself) {
    CString text(L"0123456789 and some more, to be longer than any short form");
    CString const whole = text;
    text += text;
    EXPECT_EQ(text, whole + whole);
    text += text.GetString() + whole.GetLength();
    EXPECT_EQ(text, whole + whole + whole);
    text = text.GetString() + 2 * whole.GetLength();
    EXPECT_EQ(text, whole);
    text.Format(L"<%s>", text.GetString());
    EXPECT_EQ(text, L"<" + whole + L'>');
    text.AppendFormat(L"%d%s", 1, text.Left(2).GetString());
    EXPECT_EQ(text, L"<" + whole + L">1<0");
}

TEST(WideToInt, ReadsWhatTheHostReads) {
    for (wchar_t const *text : {L"", L"12", L" \t-7x", L"+5", L"- 5", L"1.9", L"x1", L"2147483648", L"-2147483648",
                                L"-99999999999999999999999"})
        EXPECT_EQ(WideToInt(text), std::clamp<long long>(std::wcstoll(text, nullptr, 10), INT_MIN, INT_MAX)) << text;
    EXPECT_EQ(WideToInt(nullptr), 0);
}

} // namespace zvi::lib::test

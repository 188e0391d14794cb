#include "zvi/core/Utf8.h"

#include <gtest/gtest.h>

#include <utility>

namespace zvi::lib::test {

TEST(Utf8, GoesThereAndBack) {
    for (char const *text : {"", "1+2", "\u00E9\u00B5", "\u4E2D\uFF15", "\U0001F600 \U0010FFFF"}) {
        EXPECT_TRUE(IsUtf8(text));
        EXPECT_EQ(Utf8Of(WideOf(text)), text);
    }
    EXPECT_EQ(WideOf("\U0001F600").GetLength(), 2) << "a surrogate pair";
}

TEST(Utf8, WhatIsNoCharacterBecomesTheReplacementCharacter) {
    using Row = std::pair<char const *, char const *>;
    for (auto const &[bytes, text] :
         {Row{"\xFF", "\uFFFD"}, Row{"1\xC3", "1\uFFFD"}, Row{"\xC3(", "\uFFFD("}, Row{"\xC0\xAF", "\uFFFD\uFFFD"},
          Row{"\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD"}, Row{"\xF4\x90\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD"}}) {
        EXPECT_FALSE(IsUtf8(bytes));
        EXPECT_EQ(Utf8Of(WideOf(bytes)), text);
    }
    EXPECT_EQ(Utf8Of(std::wstring_view(L"\xD83D")), "\uFFFD");
    EXPECT_EQ(Utf8Of(WideOf(std::string_view("1\0002", 3))), "1\uFFFD"
                                                             "2")
        << "a NUL hides nothing behind it";
}

} // namespace zvi::lib::test

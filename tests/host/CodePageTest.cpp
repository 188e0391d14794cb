#include "zvi/host/CodePage.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace host = zvi::host;

TEST(CodePage, ConvertsThereAndBack) {
    struct Row {
        unsigned int page;
        std::string_view bytes;
        std::wstring_view units;
    };
    for (Row const &row : std::initializer_list<Row>{
             {65001, "plain text, long enough for whole words", L"plain text, long enough for whole words"},
             {65001, "gr\xC3\xB6\xC3\x9Fz \xEB\xAF\xB8 \xF0\x9F\x98\x80!", L"gr\x00F6\x00DFz \xBBF8 \xD83D\xDE00!"},
             {65001, std::string_view("a\0b", 3), std::wstring_view(L"a\0b", 3)},
             {1252, "gr\xF6\xDFz \x80", L"gr\x00F6\x00DFz \x20AC"},
             {949, "\xB9\xCC\xB5\xEE\xB7\xCF", L"\xBBF8\xB4F1\xB85D"},
             {932, "\x93\xFA\x96{", L"\x65E5\x672C"},
             {28592, "\xB1", L"\x0105"},
             {0, "abc", L"abc"},
         }) {
        EXPECT_TRUE(host::HasCodePage(row.page)) << row.page;
        EXPECT_EQ(host::WideOfMulti(row.bytes, row.page), row.units) << row.page;
        EXPECT_EQ(host::MultiOfWide(row.units, row.page), row.bytes) << row.page;
    }
    std::wstring text = L"x";
    host::AppendWideOfMulti(text, "yz", 65001);
    EXPECT_EQ(text, L"xyz");
    for (int i = 0; i < 5000; ++i)
        text += L"\xBBF8 a";
    for (unsigned int const page : {949u, 65001u})
        EXPECT_TRUE(host::WideOfMulti(host::MultiOfWide(text, page), page) == text) << page;
}

TEST(CodePage, WhatItCannotConvertIsReplacedOrEmpty) {
    EXPECT_EQ(host::WideOfMulti("a\xFFz", 65001), L"a\xFFFDz");
    EXPECT_EQ(host::MultiOfWide(L"a\xD83D", 65001), "a\xEF\xBF\xBD");
    EXPECT_EQ(host::MultiOfWide(L"\xBBF8-\xB4F1", 1252), "?-?");
    EXPECT_EQ(host::WideOfMulti("\xB9", 949).size(), 1u) << "half a character";
    for (unsigned int const page : {99999u, 1200u, 12000u}) {
        EXPECT_FALSE(host::HasCodePage(page));
        EXPECT_EQ(host::WideOfMulti("abc", page), L"");
        EXPECT_EQ(host::MultiOfWide(L"abc", page), "");
    }
}

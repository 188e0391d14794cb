#include "apps/zvi/common/TextDecoding.h"

#include "zvi/core/Utf8.h"

#include <gtest/gtest.h>

#include <array>

namespace zvi::app::test {

TEST(TextDecoding, GivesWellFormedUtf8) {
    for (auto const &[text, codePage, decoded] : std::initializer_list<std::array<char const *, 3>>{
             {"WALLS", "ANSI_1252", "WALLS"},
             {"T\xFCr", "ANSI_1252", "T\xC3\xBCr"},
             {"\x80", "", "\xE2\x82\xAC"},
             {"\x83\x89", "ansi_932", "\xE3\x83\xA9"},
             {"T\xC3\xBCr", "ANSI_1252", "T\xC3\xBCr"}, // UTF-8 in spite of what the drawing says
             {"T\xFCr", "no such page", "T\xC3\xBCr"},
             {"\\U+00FCber \\U+12", "",
              "\xC3\xBC"
              "ber \\U+12"},
             {"\\U+D800", "", "\xEF\xBF\xBD"},
             {"a\x01z", "", "a\xEF\xBF\xBDz"},
         })
        EXPECT_EQ(DecodeDxfText(text, codePage), decoded) << decoded;
    for (char const *bad : {"\xC0\x80", "\xED\xA0\x80", "\xF5\x80\x80\x80", "\xE2\x82", "\x80", "\xF0\x80\x80\x80"}) {
        EXPECT_FALSE(lib::IsUtf8(bad));
        EXPECT_TRUE(lib::IsUtf8(DecodeDxfText(bad, "ANSI_1252")));
    }
}

} // namespace zvi::app::test

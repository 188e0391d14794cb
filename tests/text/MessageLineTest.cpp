#include "zvi/text/MessageLine.h"

#include <gtest/gtest.h>

namespace zvi::lib::test {

TEST(MessageLine, HasAKeyAndAText) {
    struct Row {
        wchar_t const *line;
        wchar_t const *key;
        wchar_t const *text;
    };
    Row const rows[] = {
        {L"KEY = \"text\"", L"KEY", L"text"},
        {L"\t key =\"v\" \x3000\r", L"key", L"v"},
        {L"K=\"a\"\"b\"", L"K", L"a\"b"},
        {L"K=\"x\\ny\\tz\\r\"", L"K", L"x\ny\tz\r"},
        {L"K=\"a\\\\b\"", L"K", L"a\\b"},
        {L"K=\"a\\\\n\"", L"K", L"a\\\n"},
        {L"K=\"\"\"\\\\\"\"\"", L"K", L"\"\\\""},
        {L"/**/KEY = \"v\"", L"KEY", L"v"},
        {L"old/**/KEY = \"v\"", L"KEY", L"v"},
        {L"a/**/b/**/KEY = \"v\"", L"b/**/KEY", L"v"},
        {L"KEY = \"/**/v\"", L"KEY", L"/**/v"},
        {L"A = \"x = y\"", L"A", L"x = y"},
        {L"KEY = v", L"KEY", L"= "},
        {L"KEY=v", L"KEY", L""},
        {L"KEY  =v", L"KEY", L" ="},
        {L"KEY = \"v\" end", L"KEY", L"v\" en"},
        {L"KEY = \"", L"KEY", L""},
        {L"no text", L"", L"o tex"},
        {L"no \"text\"", L"", L"text"},
        {L"=\"v\"", L"", L"v"},
        {L"=", L"", L""},
        {L"x", L"", L""},
    };
    for (Row const &row : rows) {
        MessageEntry entry{L"old", L"old"};
        EXPECT_TRUE(ParseMessageLine(row.line, entry)) << row.line;
        EXPECT_EQ(entry.key, row.key) << row.line;
        EXPECT_EQ(entry.text, row.text) << row.line;
    }
}

TEST(MessageLine, IsNothingWhenItIsBlankOrAComment) {
    MessageEntry entry{L"old", L"old"};
    for (wchar_t const *line : {L"", L" \t\r", L"; KEY = \"v\"", L"  ;"})
        EXPECT_FALSE(ParseMessageLine(line, entry)) << line;
    EXPECT_EQ(entry.key, L"old");
}

} // namespace zvi::lib::test

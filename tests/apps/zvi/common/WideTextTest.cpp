#include "apps/zvi/common/WideText.h"

#include <gtest/gtest.h>

namespace zvi::app::test {

TEST(WideText, CountsTheColumnsOfATerminal) {
    EXPECT_EQ(Columns(L"1+2"), 3u);
    EXPECT_EQ(Columns(L"\uFF15\u4E2D"), 4u);
    EXPECT_EQ(Columns(L"e\u0301"), 1u);
    EXPECT_EQ(Columns(WideOf("\U0001F600").GetString()), 2u);
    EXPECT_EQ(Printable(L"a\tb\x01\x9F"), L"a b??");
}

} // namespace zvi::app::test

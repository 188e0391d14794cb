#include "apps/zvi/common/NumberText.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zvi::app::test {

TEST(NumberText, ReadsAndWritesNumbersWithoutALocale) {
    EXPECT_EQ(ParseNumber(" +1.5e3\r"), 1500.0);
    EXPECT_EQ(ParseNumber("-.5"), -0.5);
    EXPECT_EQ(ParseNumber("1."), 1.0);
    for (char const *text : {"", "+", "+-1", "1,5", "1 2", "nan", "inf", "0x10", "1e400", "--1"})
        EXPECT_FALSE(ParseNumber(text)) << text;
    EXPECT_EQ(ParseInteger("  0"), 0);
    EXPECT_FALSE(ParseInteger("1.0"));
    EXPECT_EQ(ExactNumber(0.1), "0.1");
    EXPECT_EQ(ExactNumber(-0.0), "0");
    EXPECT_EQ(*ParseNumber(ExactNumber(std::nextafter(1.0, 2.0))), std::nextafter(1.0, 2.0));
    EXPECT_EQ(ShortNumber(1.0 / 3.0, 4), "0.3333");
}

} // namespace zvi::app::test

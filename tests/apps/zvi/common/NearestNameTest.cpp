#include "apps/zvi/common/NearestName.h"

#include <gtest/gtest.h>

namespace zvi::app::test {

TEST(NearestName, FindsSlipsAndNothingElse) {
    EXPECT_EQ(EditDistance("", "abc"), 3u);
    EXPECT_EQ(EditDistance("kitten", "sitting"), 3u);
    EXPECT_EQ(EditDistance("jion", "join"), 1u);
    std::vector<std::string> const names = {"--join", "--json", "--svg", "--keep-duplicates"};
    EXPECT_EQ(NearestName("--jion", names), "--join");
    EXPECT_EQ(NearestName("--jsn", names), "--json");
    EXPECT_EQ(NearestName("--keep-duplicate", names), "--keep-duplicates");
    EXPECT_EQ(NearestName("--colour", names), "");
    EXPECT_EQ(NearestName("X", {"0"}), "");
    EXPECT_EQ(NearestName(std::string(100000, 'x'), names), "");
}

} // namespace zvi::app::test

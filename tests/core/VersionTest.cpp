#include "zvi/core/Version.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace zvi::lib::test {

TEST(Version, HasThreeParts) {
    int major = -1;
    int minor = -1;
    int patch = -1;
    EXPECT_EQ(std::sscanf(kVersion, "%d.%d.%d", &major, &minor, &patch), 3);
}

} // namespace zvi::lib::test

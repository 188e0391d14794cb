#include "zvi/core/Version.h"

#include <gtest/gtest.h>

#include <cstdio>

TEST(Version, HasThreeParts) {
    int major = -1;
    int minor = -1;
    int patch = -1;
    EXPECT_EQ(std::sscanf(zvi::kVersion, "%d.%d.%d", &major, &minor, &patch), 3);
}

#include "tests/ResultHash.h"
#include "tests/math/elementary/Elementaries.h"

#include <gtest/gtest.h>

namespace zvi::lib::test {

/// Which MPFR finds right where it is at hand.
TEST(Elementary, GivesTheSameBitsEverywhere) {
    ResultHash hash;
    for (Elementary const &of : Elementaries())
        VisitArguments(of, 20240607, 10'000, [&](Arguments const &x) {
            double const result = of.ours(x);
            hash.Add(std::isnan(result) ? 0.5 : result);
        });
    EXPECT_EQ(hash.Value(), 10950413408155106052U);
}

} // namespace zvi::lib::test

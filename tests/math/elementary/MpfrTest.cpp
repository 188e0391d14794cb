#include "tests/math/elementary/Mpfr.h"
#include "tests/math/elementary/Elementaries.h"

#include <gtest/gtest.h>

namespace zvi::lib::test {

/// A few of the arguments that zvi_elementary_check goes through by the million.
TEST(Elementary, RoundsAsMpfrDoes) {
    constexpr std::uint64_t kSeed = 7;
    for (Elementary const &of : Elementaries()) {
        SCOPED_TRACE(of.name);
        ArgumentSource arguments(kSeed);
        for (std::size_t i = 0; i < 20'000; ++i) {
            double const x = arguments.Next(of.first[i % of.first.size()]);
            double const y = of.second.empty() ? 0.0 : arguments.Next(of.second[i % of.second.size()]);
            double const ours = of.ours(x, y), right = ByMpfr(of.name, x, y);
            ASSERT_TRUE(IsSame(ours, right)) << x << ", " << y << ": " << ours << ", should be " << right;
        }
    }
}

} // namespace zvi::lib::test

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
            Arguments const x = arguments.Next(of, i);
            double const ours = of.ours(x), right = ByMpfr(of.name, x);
            ASSERT_TRUE(IsSame(ours, right)) << testing::PrintToString(x) << ": " << ours << ", should be " << right;
        }
    }
}

} // namespace zvi::lib::test

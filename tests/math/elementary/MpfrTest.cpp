#include "tests/math/elementary/Mpfr.h"
#include "tests/math/elementary/Elementaries.h"

#include <gtest/gtest.h>

namespace zvi::lib::test {

/// Zeros, infinities and NaN are answered as annex F of the C standard says, which MPFR follows. Of the drawn arguments
/// these are a few of those that zvi_elementary_check goes through by the million.
TEST(Elementary, RoundsAsMpfrDoes) {
    for (Elementary const &of : Elementaries())
        VisitArguments(of, 7, 20'000, [&of](Arguments const &x) {
            double const ours = of.ours(x), right = ByMpfr(of.name, x);
            ASSERT_TRUE(IsSame(ours, right)) << of.name << testing::PrintToString(x) << ours << " for " << right;
        });
}

} // namespace zvi::lib::test

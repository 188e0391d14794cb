#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstddef>

namespace zvi::test {

/// Expects the coordinates from `actual` on to be those of `expected` within `tol`.
template <std::size_t N>
void ExpectNear(double const *actual, std::array<double, N> const &expected, double tol = 1e-12) {
    for (std::size_t i = 0; i < N; ++i)
        EXPECT_NEAR(actual[i], expected[i], tol) << "coordinate " << i;
}

using Xy = std::array<double, 2>;
using Xyz = std::array<double, 3>;

} // namespace zvi::test

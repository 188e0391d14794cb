#pragma once

#include "zvi/Export.h"

#include <cstdint>

namespace zvi::lib::command {

/// Most factors that are multiplied in order.
inline constexpr std::int32_t kMostOrderedFactors = 10'000'000;

/// The product of `exponent` factors, multiplied one by one from 1.0; 1.0 for a negative exponent. Behind the
/// ten-millionth factor the rest is multiplied by repeated squaring, so that no text of a few characters computes for
/// minutes.
///
/// At once: bases of 0, 1 and -1, what soon overflows or vanishes, bases within 1e-10 of 1 or -1, and what was asked
/// for just before on the same thread. What is left is as slow as its multiplications, some 10 ms for ten million.
ZVI_API double OrderedPower(double base, std::int32_t exponent);

} // namespace zvi::lib::command

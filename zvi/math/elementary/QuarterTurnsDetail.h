#pragma once

#include <array>
#include <cstdint>

namespace zvi::lib::math {

/// An angle in quarter turns: the nearest whole number of them, of which the last two bits are kept, and a rest in
/// [-1/2, 1/2].
struct QuarterTurns {
    static constexpr int kRestLimbs = 12;

    unsigned whole;                              ///< 0 to 3.
    bool isNegative;                             ///< The sign of the rest.
    std::array<std::uint32_t, kRestLimbs> limbs; ///< The bits of the rest after the point, the highest 32 first.
};

/// How many limbs of 2 / pi give a rest right to 2^-150, and to 2^-340: no double is nearer to a multiple of a quarter
/// turn than 2^-62 of one.
inline constexpr int kFastLimbs = 8;
inline constexpr int kAccurateLimbs = 14;

/// A finite angle of at least 1/2, in radians, computed with one of these numbers of limbs of 2 / pi.
/// M. H. Payne, R. N. Hanek, "Radian reduction for trigonometric functions", ACM SIGNUM Newsletter 18 (1983): of the
/// product with 2 / pi only those bits are computed that count for the rest and for two bits of the whole.
QuarterTurns QuarterTurnsOf(double angle, int limbs);

} // namespace zvi::lib::math

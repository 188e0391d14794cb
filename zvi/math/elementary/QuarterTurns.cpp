#include "zvi/math/elementary/QuarterTurnsDetail.h"

#include "zvi/base/Index.h"
#include "zvi/math/elementary/TablesDetail.h"

#include <algorithm>
#include <cassert>
#include <cmath>

namespace zvi::lib::math {

namespace {

using base::Index;

constexpr int kLimbBits = 32;
/// The limbs of a mantissa.
constexpr int kMantissaLimbs = 2;

using ProductLimbs = std::array<std::uint32_t, kAccurateLimbs + kMantissaLimbs>; // lowest first

/// The mantissa times limbs `first` and following of 2 / pi.
ProductLimbs ProductOf(std::uint64_t mantissa, int first, int limbs) {
    ProductLimbs product{};
    std::uint64_t const low = static_cast<std::uint32_t>(mantissa), high = mantissa >> kLimbBits;
    std::uint64_t lowCarry = 0, highCarry = 0;
    std::uint32_t previous = 0;
    for (int i = 0; i < limbs; ++i) {
        std::uint32_t const limb = kTwoOverPi[Index(first + limbs - 1 - i)];
        lowCarry += low * limb;
        highCarry += high * previous + static_cast<std::uint32_t>(lowCarry);
        product[Index(i)] = static_cast<std::uint32_t>(highCarry);
        lowCarry >>= kLimbBits;
        highCarry >>= kLimbBits;
        previous = limb;
    }
    highCarry += high * previous + lowCarry;
    product[Index(limbs)] = static_cast<std::uint32_t>(highCarry);
    product[Index(limbs + 1)] = static_cast<std::uint32_t>(highCarry >> kLimbBits);
    return product;
}

/// 32 bits of the product, from bit `from` upwards; below its lowest bit there are zeros.
std::uint32_t BitsFrom(ProductLimbs const &product, int from) {
    if (from <= -kLimbBits)
        return 0;
    int const limb = from < 0 ? -1 : from / kLimbBits, shift = from - limb * kLimbBits;
    std::uint64_t pair = limb < 0 ? 0 : product[Index(limb)];
    if (Index(limb + 1) < product.size())
        pair |= std::uint64_t{product[Index(limb + 1)]} << kLimbBits;
    return static_cast<std::uint32_t>(pair >> shift);
}

} // namespace

QuarterTurns QuarterTurnsOf(double angle, int limbs) {
    assert(std::isfinite(angle) && std::fabs(angle) >= 0.5);
    assert(limbs == kFastLimbs || limbs == kAccurateLimbs);
    constexpr int kMantissaBits = 53;
    int exponent = 0;
    double const fraction = std::frexp(std::fabs(angle), &exponent);
    auto const mantissa = static_cast<std::uint64_t>(std::ldexp(fraction, kMantissaBits));
    exponent -= kMantissaBits;
    // A limb whose product with the mantissa is a multiple of four quarter turns is left out.
    int const first = std::max(0, (exponent - 2) / kLimbBits);
    ProductLimbs const product = ProductOf(mantissa, first, limbs);
    int const point = kLimbBits * (first + limbs) - exponent;

    QuarterTurns turns{BitsFrom(product, point) & 3U, false, {}};
    for (int i = 0; i < std::min(limbs, QuarterTurns::kRestLimbs); ++i)
        turns.limbs[Index(i)] = BitsFrom(product, point - kLimbBits * (i + 1));
    if (turns.limbs[0] >> (kLimbBits - 1) != 0) {
        turns.whole = (turns.whole + 1) & 3U;
        turns.isNegative = true;
        for (std::uint32_t &limb : turns.limbs)
            limb = ~limb;
    }
    if (angle < 0.0) {
        turns.whole = (4U - turns.whole) & 3U;
        turns.isNegative = !turns.isNegative;
    }
    return turns;
}

} // namespace zvi::lib::math

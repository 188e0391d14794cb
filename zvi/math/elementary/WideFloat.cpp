#include "zvi/math/elementary/WideFloatDetail.h"

#include "zvi/base/Index.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cmath>
#include <limits>

namespace zvi::lib::math {

namespace {

using base::Index;

constexpr int kLimbBits = 32;
constexpr int kLimbs = 8;
constexpr int kBits = kLimbBits * kLimbs;
constexpr int kDoubleBits = std::numeric_limits<double>::digits;
/// 2^this is the least subnormal double.
constexpr int kLeastExponent = -1074;
/// 2^this is the first power of two that no double reaches.
constexpr int kEndExponent = 1024;

/// Moves the limbs down by 0 to 255 bits; what falls out is lost.
WideFloat::Limbs ShiftedDown(WideFloat::Limbs const &limbs, int bits) {
    assert(bits >= 0 && bits < kBits);
    WideFloat::Limbs shifted{};
    int const whole = bits / kLimbBits, part = bits % kLimbBits;
    for (int i = 0; i + whole < kLimbs; ++i) {
        std::uint64_t pair = limbs[Index(i + whole)];
        if (i + whole + 1 < kLimbs)
            pair |= std::uint64_t{limbs[Index(i + whole + 1)]} << kLimbBits;
        shifted[Index(i)] = static_cast<std::uint32_t>(pair >> part);
    }
    return shifted;
}

/// 64 bits of the limbs, `from` bits below the highest one, 192 at most.
std::uint64_t Window(WideFloat::Limbs const &limbs, int from) {
    WideFloat::Limbs const low = ShiftedDown(limbs, kBits - 64 - from);
    return std::uint64_t{low[1]} << kLimbBits | low[0];
}

} // namespace

WideFloat::WideFloat(double x) : m_isNegative(x < 0.0) {
    assert(std::isfinite(x));
    if (x == 0.0)
        return;
    auto const mantissa = static_cast<std::uint64_t>(std::ldexp(std::frexp(std::fabs(x), &m_exponent), 64));
    m_limbs[kLimbs - 1] = static_cast<std::uint32_t>(mantissa >> kLimbBits);
    m_limbs[kLimbs - 2] = static_cast<std::uint32_t>(mantissa);
}

WideFloat::WideFloat(Limbs const &limbs, int exponent, bool isNegative)
    : m_limbs(limbs), m_exponent(exponent), m_isNegative(isNegative) {
    Normalize();
}

void WideFloat::Normalize() {
    int top = kLimbs - 1;
    while (top >= 0 && m_limbs[Index(top)] == 0)
        --top;
    if (top < 0) {
        *this = WideFloat();
        return;
    }
    int const zeros = std::countl_zero(m_limbs[Index(top)]);
    for (int i = kLimbs - 1; i >= 0; --i) {
        int const from = i - (kLimbs - 1 - top);
        std::uint64_t pair = from >= 0 ? std::uint64_t{m_limbs[Index(from)]} << kLimbBits : 0;
        if (from >= 1)
            pair |= m_limbs[Index(from - 1)];
        m_limbs[Index(i)] = static_cast<std::uint32_t>(pair << zeros >> kLimbBits);
    }
    m_exponent -= (kLimbs - 1 - top) * kLimbBits + zeros;
}

WideFloat WideFloat::operator-() const {
    WideFloat negated = *this;
    negated.m_isNegative = !m_isNegative;
    return negated;
}

int WideFloat::CompareMagnitude(WideFloat const &a, WideFloat const &b) {
    if (a.IsZero() || b.IsZero())
        return int(!a.IsZero()) - int(!b.IsZero());
    if (a.m_exponent != b.m_exponent)
        return a.m_exponent < b.m_exponent ? -1 : 1;
    for (int i = kLimbs - 1; i >= 0; --i)
        if (a.m_limbs[Index(i)] != b.m_limbs[Index(i)])
            return a.m_limbs[Index(i)] < b.m_limbs[Index(i)] ? -1 : 1;
    return 0;
}

WideFloat WideFloat::operator+(WideFloat const &other) const {
    bool const isLarger = CompareMagnitude(*this, other) >= 0;
    WideFloat const &large = isLarger ? *this : other, &small = isLarger ? other : *this;
    int const apart = large.m_exponent - small.m_exponent;
    if (small.IsZero() || apart >= kBits)
        return large;
    Limbs const lower = ShiftedDown(small.m_limbs, apart);
    WideFloat sum = large;
    std::int64_t carry = 0;
    for (std::size_t i = 0; i < kLimbs; ++i) {
        carry += large.m_isNegative == small.m_isNegative ? std::int64_t{lower[i]} : -std::int64_t{lower[i]};
        carry += large.m_limbs[i];
        sum.m_limbs[i] = static_cast<std::uint32_t>(carry);
        carry >>= kLimbBits;
    }
    if (carry > 0) {
        sum.m_limbs = ShiftedDown(sum.m_limbs, 1);
        sum.m_limbs.back() |= 0x80000000U;
        ++sum.m_exponent;
    } else
        sum.Normalize();
    return sum;
}

WideFloat WideFloat::operator*(WideFloat const &other) const {
    std::array<std::uint32_t, std::size_t{2} * kLimbs> product{};
    for (std::size_t i = 0; i < kLimbs; ++i) {
        std::uint64_t carry = 0;
        for (std::size_t j = 0; j < kLimbs; ++j) {
            carry += std::uint64_t{m_limbs[i]} * other.m_limbs[j] + product[i + j];
            product[i + j] = static_cast<std::uint32_t>(carry);
            carry >>= kLimbBits;
        }
        product[i + kLimbs] = static_cast<std::uint32_t>(carry);
    }
    // The product of two numbers from [1/2, 1) begins with at most one bit that is 0.
    bool const isShort = product.back() >> (kLimbBits - 1) == 0;
    WideFloat result;
    for (std::size_t i = 0; i < kLimbs; ++i)
        result.m_limbs[i] =
            isShort ? product[i + kLimbs] << 1 | product[i + kLimbs - 1] >> (kLimbBits - 1) : product[i + kLimbs];
    result.m_exponent = m_exponent + other.m_exponent - int(isShort);
    result.m_isNegative = m_isNegative != other.m_isNegative;
    return IsZero() || other.IsZero() ? WideFloat() : result;
}

WideFloat WideFloat::Over(std::uint32_t divisor) const {
    assert(divisor != 0);
    WideFloat quotient = *this;
    std::uint64_t rest = 0;
    for (int i = kLimbs - 1; i >= 0; --i) {
        rest = rest << kLimbBits | m_limbs[Index(i)];
        quotient.m_limbs[Index(i)] = static_cast<std::uint32_t>(rest / divisor);
        rest %= divisor;
    }
    quotient.Normalize();
    return quotient;
}

WideFloat WideFloat::Scaled(int exponent) const {
    WideFloat scaled = *this;
    if (!IsZero())
        scaled.m_exponent += exponent;
    return scaled;
}

double WideFloat::Mantissa() const {
    return std::ldexp(static_cast<double>(Window(m_limbs, 0) >> (64 - kDoubleBits)), -kDoubleBits);
}

/// Newton's steps y += y (1 - x y) double the bits of y that are right: 50, 100, 200, all.
WideFloat WideFloat::Inverse() const {
    assert(!IsZero());
    WideFloat const x(m_limbs, 0);
    WideFloat y(1.0 / Mantissa());
    for (int step = 0; step < 3; ++step)
        y = y + y * (WideFloat(1.0) - x * y);
    y.m_exponent -= m_exponent;
    y.m_isNegative = m_isNegative;
    return y;
}

/// Newton's steps y += y (1 - x y y) / 2 for 1 / sqrt(x).
WideFloat WideFloat::Root() const {
    if (IsZero())
        return {};
    assert(!IsNegative());
    int const odd = m_exponent & 1; // also of a negative exponent
    WideFloat const x(m_limbs, odd);
    WideFloat y(1.0 / std::sqrt(std::ldexp(Mantissa(), odd)));
    for (int step = 0; step < 3; ++step)
        y = y + (y * (WideFloat(1.0) - x * y * y)).Scaled(-1);
    return (x * y).Scaled((m_exponent - odd) / 2);
}

double WideFloat::Rounded() const {
    double const sign = m_isNegative ? -1.0 : 1.0;
    int const kept = std::min(kDoubleBits, m_exponent - kLeastExponent);
    if (IsZero() || kept < 0)
        return sign * 0.0;
    if (m_exponent > kEndExponent)
        return sign * std::numeric_limits<double>::infinity();
    std::uint64_t mantissa = kept == 0 ? 0 : Window(m_limbs, 0) >> (64 - kept);
    constexpr std::uint64_t kHalf = std::uint64_t{1} << 63, kSlack = std::uint64_t{1} << 16;
    std::uint64_t const rest = Window(m_limbs, kept), below = Window(m_limbs, kept + 64);
    bool const isMiddle = (rest == kHalf && below < kSlack) || (rest == kHalf - 1 && below > ~kSlack);
    if (isMiddle ? mantissa % 2 != 0 : rest >= kHalf)
        ++mantissa;
    return sign * std::ldexp(static_cast<double>(mantissa), m_exponent - kept);
}

} // namespace zvi::lib::math

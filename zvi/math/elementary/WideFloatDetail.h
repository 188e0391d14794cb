#pragma once

#include <array>
#include <cstdint>

namespace zvi::lib::math {

/// A number of 256 bits: what the accurate phase of the elementary functions computes with. An operation is wrong by
/// less than four units in the last place. There is no infinity and no NaN, and the exponent does not run over.
class WideFloat {
public:
    using Limbs = std::array<std::uint32_t, 8>; ///< Lowest first.

    /// 0.
    WideFloat() = default;
    /// x, which is finite, exactly.
    WideFloat(double x);
    /// 0.limbs times 2^exponent, of either sign; all limbs may be 0, and so may the highest bits.
    WideFloat(Limbs const &limbs, int exponent, bool isNegative = false);

    bool IsZero() const { return m_limbs.back() == 0; }
    bool IsNegative() const { return m_isNegative; }
    /// The least e with |number| < 2^e.
    int Exponent() const { return m_exponent; }

    WideFloat operator-() const;
    WideFloat operator+(WideFloat const &other) const;
    WideFloat operator-(WideFloat const &other) const { return *this + -other; }
    WideFloat operator*(WideFloat const &other) const;
    /// Requires a divisor that is not 0.
    WideFloat operator/(WideFloat const &other) const { return *this * other.Inverse(); }
    /// Divided by a small number, which is not 0.
    WideFloat Over(std::uint32_t divisor) const;
    /// Times 2^exponent.
    WideFloat Scaled(int exponent) const;
    /// Square root of a number that is not negative.
    WideFloat Root() const;

    /// The double nearest to the number, subnormal and infinite ones included; the even one of two where it lies in the
    /// middle of them, or within 2^-110 units of the double's last place of it.
    double Rounded() const;

private:
    /// The number scaled into [1/2, 1), roughly.
    double Mantissa() const;
    WideFloat Inverse() const;
    void Normalize();
    static int CompareMagnitude(WideFloat const &a, WideFloat const &b);

    Limbs m_limbs{}; // the highest bit is set unless the number is 0
    int m_exponent = 0;
    bool m_isNegative = false;
};

} // namespace zvi::lib::math

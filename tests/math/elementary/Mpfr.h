#pragma once

// The elementary functions by MPFR, which rounds correctly.

#include "tests/math/elementary/Elementaries.h"

#include <mpfr.h>

#include <map>
#include <string>

namespace zvi::lib::test {

/// A number of MPFR, of the bits of a double unless more are asked for.
class MpfrNumber {
public:
    explicit MpfrNumber(double x = 0.0, mpfr_prec_t bits = 53) {
        mpfr_init2(m_number, bits);
        mpfr_set_d(m_number, x, MPFR_RNDN);
    }
    MpfrNumber(MpfrNumber const &) = delete;
    MpfrNumber &operator=(MpfrNumber const &) = delete;
    ~MpfrNumber() { mpfr_clear(m_number); }

    mpfr_ptr Get() { return m_number; }

private:
    mpfr_t m_number;
};

/// sqrt(x x + y y + z z). The sum is cut off after more bits than tell how its root rounds, and a little is put in the
/// place of what that loses.
inline int RootOfSquares(mpfr_ptr root, Arguments const &a) {
    constexpr mpfr_prec_t kSquareBits = 106, kSumBits = 160;
    MpfrNumber x(a[0], kSquareBits), y(a[1], kSquareBits), z(a[2], kSquareBits), sum(0.0, kSumBits);
    mpfr_ptr const squares[] = {x.Get(), y.Get(), z.Get()};
    for (mpfr_ptr const square : squares)
        mpfr_sqr(square, square, MPFR_RNDN);
    if (std::isinf(a[0]) || std::isinf(a[1]) || std::isinf(a[2])) // also beside a NaN
        mpfr_set_inf(sum.Get(), 1);
    else if (mpfr_sum(sum.Get(), squares, 3, MPFR_RNDZ) != 0) {
        mpfr_prec_round(sum.Get(), kSumBits + 2, MPFR_RNDN);
        mpfr_nextabove(sum.Get());
    }
    return mpfr_sqrt(root, sum.Get(), MPFR_RNDN);
}

/// The function of that name, within the exponents of doubles; a subnormal result is rounded once.
inline double ByMpfr(std::string const &name, Arguments const &a) {
    static std::map<std::string, int (*)(mpfr_ptr, mpfr_srcptr, mpfr_rnd_t)> const kOfOne = {
        {"Sin", mpfr_sin},     {"Cos", mpfr_cos},   {"Tan", mpfr_tan},   {"Asin", mpfr_asin},
        {"Acos", mpfr_acos},   {"Atan", mpfr_atan}, {"Exp", mpfr_exp},   {"Log", mpfr_log},
        {"Log10", mpfr_log10}, {"Sinh", mpfr_sinh}, {"Cosh", mpfr_cosh},
    };
    static std::map<std::string, int (*)(mpfr_ptr, mpfr_srcptr, mpfr_srcptr, mpfr_rnd_t)> const kOfTwo = {
        {"Atan2", mpfr_atan2}, {"Pow", mpfr_pow}, {"Hypot", mpfr_hypot}};
    static mpfr_exp_t const kLeastExponent = mpfr_get_emin(), kGreatestExponent = mpfr_get_emax();
    mpfr_set_emin(kLeastExponent);
    mpfr_set_emax(kGreatestExponent);
    MpfrNumber first(a[0]), second(a[1]), result;
    int direction = 0;
    if (auto const one = kOfOne.find(name); one != kOfOne.end())
        direction = one->second(result.Get(), first.Get(), MPFR_RNDN);
    else if (auto const two = kOfTwo.find(name); two != kOfTwo.end())
        direction = two->second(result.Get(), first.Get(), second.Get(), MPFR_RNDN);
    else
        direction = RootOfSquares(result.Get(), a);
    mpfr_set_emin(-1073);
    mpfr_set_emax(1024);
    direction = mpfr_check_range(result.Get(), direction, MPFR_RNDN);
    mpfr_subnormalize(result.Get(), direction, MPFR_RNDN);
    return mpfr_get_d(result.Get(), MPFR_RNDN);
}

} // namespace zvi::lib::test

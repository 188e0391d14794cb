#pragma once

// The elementary functions by MPFR, which rounds correctly.

#include <mpfr.h>

#include <map>
#include <string>

namespace zvi::lib::test {

/// A number of MPFR with the bits of a double.
class MpfrNumber {
public:
    explicit MpfrNumber(double x = 0.0) {
        mpfr_init2(m_number, 53);
        mpfr_set_d(m_number, x, MPFR_RNDN);
    }
    MpfrNumber(MpfrNumber const &) = delete;
    MpfrNumber &operator=(MpfrNumber const &) = delete;
    ~MpfrNumber() { mpfr_clear(m_number); }

    mpfr_ptr Get() { return m_number; }

private:
    mpfr_t m_number;
};

/// The function of that name, within the exponents of doubles; a subnormal result is rounded once.
inline double ByMpfr(std::string const &name, double x, double y) {
    static std::map<std::string, int (*)(mpfr_ptr, mpfr_srcptr, mpfr_rnd_t)> const kOfOne = {
        {"Sin", mpfr_sin},     {"Cos", mpfr_cos},   {"Tan", mpfr_tan},   {"Asin", mpfr_asin},
        {"Acos", mpfr_acos},   {"Atan", mpfr_atan}, {"Exp", mpfr_exp},   {"Log", mpfr_log},
        {"Log10", mpfr_log10}, {"Sinh", mpfr_sinh}, {"Cosh", mpfr_cosh},
    };
    static std::map<std::string, int (*)(mpfr_ptr, mpfr_srcptr, mpfr_srcptr, mpfr_rnd_t)> const kOfTwo = {
        {"Atan2", mpfr_atan2}, {"Pow", mpfr_pow}, {"Hypot", mpfr_hypot}};
    mpfr_set_emin(-1073);
    mpfr_set_emax(1024);
    MpfrNumber first(x), second(y), result;
    auto const one = kOfOne.find(name);
    int const direction = one != kOfOne.end() ? one->second(result.Get(), first.Get(), MPFR_RNDN)
                                              : kOfTwo.at(name)(result.Get(), first.Get(), second.Get(), MPFR_RNDN);
    mpfr_subnormalize(result.Get(), direction, MPFR_RNDN);
    return mpfr_get_d(result.Get(), MPFR_RNDN);
}

} // namespace zvi::lib::test

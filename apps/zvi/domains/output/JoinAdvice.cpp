#include "apps/zvi/domains/output/JoinAdvice.h"

#include "apps/zvi/common/NumberText.h"
#include "zvi/math/elementary/Elementary.h"

#include <cassert>
#include <cmath>

namespace zvi::app {

namespace {

/// A distance this many times the one before it is of another sort.
constexpr double kJump = 3.0;

/// Three digits, and not below what is needed, which is above 0.
double ToType(double needed) {
    assert(needed > 0.0);
    double const unit = lib::Pow(10.0, std::floor(lib::Log10(needed)) - 2.0);
    for (double units = std::ceil(needed / unit);; ++units) {
        double const typed = ParseNumber(ShortNumber(units * unit, 3)).value_or(needed);
        if (!(typed < needed))
            return typed;
    }
}

} // namespace

std::optional<JoinAdvice> AdviseJoin(std::vector<lib::DrawingGap> const &gaps) {
    if (gaps.empty())
        return std::nullopt;
    std::size_t closes = gaps.size();
    double widest = kJump;
    for (std::size_t i = 0; i + 1 < gaps.size(); ++i) {
        assert(gaps[i].distance <= gaps[i + 1].distance);
        double const jump = gaps[i + 1].distance / gaps[i].distance;
        if (jump >= widest) {
            widest = jump;
            closes = i + 1;
        }
    }
    return JoinAdvice{ToType(gaps[closes - 1].closingTolerance), closes};
}

} // namespace zvi::app

#pragma once

#include "zvi/Export.h"

namespace zvi::lib {

/// Comparisons of reals for sorting: 1 if a counts as above b, -1 if below, 0 if they count as equal. Equality is not
/// transitive. NaN counts as equal to everything, and in `CompReal`, whose step from it is infinite, so does minus
/// infinity.
class ZVI_API MCompFunc {
public:
    /// Equal up to a difference of 1e-12, the limit included.
    static int FastCompDouble(double a, double b);
    /// Equal below a difference of 1e-10 or up to 32 steps of the smaller value toward the larger, whichever is wider.
    static int CompReal(double a, double b);
};

} // namespace zvi::lib

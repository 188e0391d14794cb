#pragma once

#include "zvi/Export.h"
#include "zvi/math/values/CMathPnt.h"

// Midpoints and means of points in space, three adjacent doubles each. An output may be one of the inputs.

namespace zvi::lib {

/// The midpoint (a + b) * 0.5.
ZVI_API void GetMidCoord(double const *a, double const *b, double *out);
/// The mean (a + b + c) / 3.0.
ZVI_API void GetCenterCoord(double const *a, double const *b, double const *c, double *out);
/// The mean (a + b + c + d) * 0.25.
ZVI_API void GetCenterCoord(double const *a, double const *b, double const *c, double const *d, double *out);
/// The mean of three points.
ZVI_API CMathPnt GetCenterPnt(double const *a, double const *b, double const *c);
/// The mean of four points.
ZVI_API CMathPnt GetCenterPnt(double const *a, double const *b, double const *c, double const *d);

} // namespace zvi::lib

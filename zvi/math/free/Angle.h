#pragma once

#include "zvi/Export.h"

// Angles of the free family, in degrees, by the cosine rule. Vectors so short that twice the product of their lengths
// is below 1e-8 enclose 0.0. A cosine within 1e-8 of an end counts as the end, so an angle within about 0.008 degrees
// of 0 or 180 is exactly that. NaN gives NaN.

namespace zvi::lib {

/// The angle from the first vector to the second, -180 to 180, positive counter-clockwise; opposite vectors give +180.
ZVI_API double angle_2d(double x1, double y1, double x2, double y2);
/// The same of two vectors.
ZVI_API double angle_2d(double const *v1, double const *v2);
/// The same at the first of three points, from the direction of the second point to that of the third.
ZVI_API double angle_2d(double x1, double y1, double x2, double y2, double x3, double y3);
/// The same at `apex`.
ZVI_API double angle_2d(double const *apex, double const *p1, double const *p2);

/// The angle between two vectors, 0 to 180.
ZVI_API double angle_3d(double x1, double y1, double z1, double x2, double y2, double z2);
/// The same of two vectors.
ZVI_API double angle_3d(double const *v1, double const *v2);
/// The same at the first of three points.
ZVI_API double angle_3d(double const *apex, double const *p1, double const *p2);

} // namespace zvi::lib

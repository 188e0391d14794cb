#include "zvi/math/free/Angle.h"

#include "zvi/math/elementary/Elementary.h"
#include "zvi/math/free/Distance.h"
#include "zvi/math/free/FreeFamilyDetail.h"
#include "zvi/math/free/Scalar.h"

namespace zvi::lib {

namespace {

/// Twice the product of two lengths below it encloses no angle; squared model units.
constexpr double kNoAngle = 1e-8;
/// A cosine beyond it, on either side, counts as 1 or -1.
constexpr double kCosineEnd = 0.99999999;

/// The angle opposite the side d of the triangle with the sides a, b, d: 0 to 180.
double AngleByCosineRule(double a, double b, double d) {
    using math::Square;
    if (2.0 * a * b < kNoAngle)
        return 0.0;
    double const cosine = (Square(a) + Square(b) - Square(d)) / (2.0 * a * b);
    if (cosine > kCosineEnd)
        return 0.0;
    if (cosine < -kCosineEnd)
        return 180.0;
    return degree(Acos(cosine));
}

} // namespace

double angle_2d(double x1, double y1, double x2, double y2) {
    double const angle = AngleByCosineRule(norm_2d(x1, y1), norm_2d(x2, y2), distance_2d(x1, y1, x2, y2));
    bool const isEnd = angle == 0.0 || angle == 180.0;
    return !isEnd && x1 * y2 - y1 * x2 < 0.0 ? -angle : angle;
}

double angle_2d(double const *v1, double const *v2) {
    return angle_2d(v1[0], v1[1], v2[0], v2[1]);
}

double angle_2d(double x1, double y1, double x2, double y2, double x3, double y3) {
    return angle_2d(x2 - x1, y2 - y1, x3 - x1, y3 - y1);
}

double angle_2d(double const *apex, double const *p1, double const *p2) {
    return angle_2d(apex[0], apex[1], p1[0], p1[1], p2[0], p2[1]);
}

double angle_3d(double x1, double y1, double z1, double x2, double y2, double z2) {
    return AngleByCosineRule(norm_3d(x1, y1, z1), norm_3d(x2, y2, z2), distance_3d(x1, y1, z1, x2, y2, z2));
}

double angle_3d(double const *v1, double const *v2) {
    return angle_3d(v1[0], v1[1], v1[2], v2[0], v2[1], v2[2]);
}

double angle_3d(double const *apex, double const *p1, double const *p2) {
    return angle_3d(p1[0] - apex[0], p1[1] - apex[1], p1[2] - apex[2], p2[0] - apex[0], p2[1] - apex[1],
                    p2[2] - apex[2]);
}

} // namespace zvi::lib

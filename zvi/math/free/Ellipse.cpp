#include "zvi/math/free/Ellipse.h"

#include "zvi/math/free/Distance.h"
#include "zvi/math/free/FreeFamilyDetail.h"

#include <cmath>

namespace zvi::lib {

using math::Square;

namespace {

/// A point this near to a vertex of the ellipse has no tangents; model units.
constexpr double kAtVertex = 1e-8;
/// A difference of the squares of p.x and a below it makes one tangent vertical; squared model units.
constexpr double kVerticalTangent = 1e-8;

bool IsAtVertex(double a, double b, double const *p) {
    double const vertices[4][2] = {{a, 0.0}, {0.0, b}, {-a, 0.0}, {0.0, -b}};
    for (double const *vertex : vertices) {
        if (distance_2d(vertex, p) <= kAtVertex)
            return true;
    }
    return false;
}

/// How far (x, y) misses the equation of the ellipse.
double Residual(double a, double b, double x, double y) {
    return std::abs(Square(x) / Square(a) + Square(y) / Square(b) - 1.0);
}

/// The contact of the tangent through p with the given slope.
void ContactOfSlope(double a, double b, double const *p, double slope, double *out) {
    double const x = std::sqrt(Square(a) / (Square(b) / (Square(slope) * Square(a)) + 1.0));
    double const yPositive = (x - p[0]) * slope + p[1];
    double const yNegative = (-x - p[0]) * slope + p[1];
    bool const takesPositive = Residual(a, b, x, yPositive) < Residual(a, b, -x, yNegative);
    out[0] = takesPositive ? x : -x;
    out[1] = takesPositive ? yPositive : yNegative;
}

} // namespace

int GetEllipseContactPoint(double const *axes, double const *p, double *out) {
    double const a = axes[0];
    double const b = axes[1];
    double const point[2] = {p[0], p[1]};
    if (IsAtVertex(a, b, point))
        return 0;
    double const overA = Square(point[0]) - Square(a);
    double const overB = Square(point[1]) - Square(b);
    if (std::abs(overA) < kVerticalTangent) {
        out[0] = point[0];
        out[1] = 0.0;
        if (point[0] == 0.0 || point[1] == 0.0)
            return 1;
        ContactOfSlope(a, b, point, overB / point[0] / point[1] / 2.0, out + 2);
        return 2;
    }
    double const product = point[0] * point[1];
    double const discriminant = Square(product) - overB * overA;
    if (discriminant < 0.0)
        return 0;
    double const root = std::sqrt(discriminant);
    ContactOfSlope(a, b, point, (product - root) / overA, out);
    ContactOfSlope(a, b, point, (product + root) / overA, out + 2);
    return 2;
}

} // namespace zvi::lib

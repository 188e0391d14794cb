#include "zvi/math/free/Product.h"

#include "zvi/math/free/Distance.h"
#include "zvi/math/free/FreeFamilyDetail.h"

#include <cmath>

namespace zvi::lib {

using math::Copy3;
using math::Dot3;
using math::kLengthZero;

namespace {

/// `normalize` leaves a vector shorter than this alone; smaller than the limit of a direction elsewhere.
constexpr double kNotNormalized = 1e-12;
/// A remainder at most this share of the vector it came from is its rounding error.
constexpr double kRoundingShare = 1e-14;

void SetZero3(double *v) {
    v[0] = 0.0;
    v[1] = 0.0;
    v[2] = 0.0;
}

void Divide3(double *v, double divisor) {
    v[0] /= divisor;
    v[1] /= divisor;
    v[2] /= divisor;
}

/// The unit vector along v, or zero with the result false.
bool UnitOrZero(double const *v, double *out) {
    Copy3(v, out);
    double const length = norm_3d(v);
    if (length < kLengthZero) {
        SetZero3(out);
        return false;
    }
    Divide3(out, length);
    return true;
}

void RemovePart(double const *unit, double *v) {
    double const along = Dot3(v, unit);
    for (int i = 0; i < 3; ++i)
        v[i] -= along * unit[i];
}

} // namespace

void cross_product_3d(double const *a, double const *b, double *out) {
    double const x = a[1] * b[2] - a[2] * b[1];
    double const y = a[2] * b[0] - a[0] * b[2];
    double const z = a[0] * b[1] - a[1] * b[0];
    out[0] = x;
    out[1] = y;
    out[2] = z;
}

void cross_product_3d(double const *p1, double const *p2, double const *p3, double *out) {
    double a[3];
    double b[3];
    Subtract(p2, p1, a);
    Subtract(p3, p1, b);
    cross_product_3d(a, b, out);
}

double normal_2d(double const *a, double const *b) {
    return math::Cross2(a, b);
}

void normal_3d(double const *a, double const *b, double *out) {
    double cross[3];
    cross_product_3d(a, b, cross);
    UnitOrZero(cross, out);
}

void normal_3d(double const *p1, double const *p2, double const *p3, double *out) {
    double cross[3];
    cross_product_3d(p1, p2, p3, cross);
    UnitOrZero(cross, out);
}

void normalize(double *v) {
    double const length = norm_3d(v);
    if (length < kNotNormalized)
        return;
    Divide3(v, length);
}

void Subtract(double const *a, double const *b, double *out) {
    for (int i = 0; i < 3; ++i)
        out[i] = a[i] - b[i];
}

bool gram_schmidt_orthonormal_basis_3d(double const *a, double const *b, double *e1, double *e2) {
    SetZero3(e2);
    if (!UnitOrZero(a, e1))
        return false;
    double rest[3];
    Copy3(b, rest);
    RemovePart(e1, rest);
    if (norm_3d(rest) <= kRoundingShare * norm_3d(b))
        return false;
    RemovePart(e1, rest);
    return UnitOrZero(rest, e2);
}

bool orthonormal_basis(double const *direction, double *e1, double *e2, double *e3) {
    SetZero3(e1);
    SetZero3(e2);
    if (!UnitOrZero(direction, e3))
        return false;
    int least = 0;
    for (int i = 1; i < 3; ++i) {
        if (std::abs(e3[i]) < std::abs(e3[least]))
            least = i;
    }
    e1[least] = 1.0;
    RemovePart(e3, e1);
    Divide3(e1, norm_3d(e1));
    cross_product_3d(e3, e1, e2);
    return true;
}

} // namespace zvi::lib

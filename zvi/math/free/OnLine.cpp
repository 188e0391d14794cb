#include "zvi/math/free/OnLine.h"

#include "zvi/math/free/Distance.h"
#include "zvi/math/free/FreeFamilyDetail.h"

#include <cmath>

namespace zvi::lib {

using math::kLengthZero;

namespace {

/// How a point sees the two ends of a segment.
struct View {
    bool isAtEnd;
    double cosine;
};

View ViewOfEnds2(double const *p1, double const *p2, double const *pt) {
    double const a[2] = {p1[0] - pt[0], p1[1] - pt[1]};
    double const b[2] = {p2[0] - pt[0], p2[1] - pt[1]};
    double const lengthA = norm_2d(a);
    double const lengthB = norm_2d(b);
    if (lengthA < kLengthZero || lengthB < kLengthZero)
        return {true, 0.0};
    return {false, math::Dot2(a, b) / (lengthA * lengthB)};
}

View ViewOfEnds3(double const *p1, double const *p2, double const *pt) {
    double const a[3] = {p1[0] - pt[0], p1[1] - pt[1], p1[2] - pt[2]};
    double const b[3] = {p2[0] - pt[0], p2[1] - pt[1], p2[2] - pt[2]};
    double const lengthA = norm_3d(a);
    double const lengthB = norm_3d(b);
    if (lengthA < kLengthZero || lengthB < kLengthZero)
        return {true, 0.0};
    return {false, math::Dot3(a, b) / (lengthA * lengthB)};
}

bool IsOppositeInclusive(double cosine, double tol) {
    return cosine >= -1.0 - tol && tol - 1.0 >= cosine;
}

} // namespace

bool is_on_line_2d(double x1, double y1, double x2, double y2, double x, double y, double tol) {
    double const p1[2] = {x1, y1};
    double const p2[2] = {x2, y2};
    double const pt[2] = {x, y};
    return is_on_line_2d(p1, p2, pt, tol);
}

bool is_on_line_2d(double const *p1, double const *p2, double const *pt, double tol) {
    View const view = ViewOfEnds2(p1, p2, pt);
    return view.isAtEnd || tol > std::abs(view.cosine + 1.0);
}

bool is_on_line_3d(double x1, double y1, double z1, double x2, double y2, double z2, double x, double y, double z,
                   double tol) {
    double const p1[3] = {x1, y1, z1};
    double const p2[3] = {x2, y2, z2};
    double const pt[3] = {x, y, z};
    return is_on_line_3d(p1, p2, pt, tol);
}

bool is_on_line_3d(double const *p1, double const *p2, double const *pt, double tol) {
    View const view = ViewOfEnds3(p1, p2, pt);
    return view.isAtEnd || IsOppositeInclusive(view.cosine, tol);
}

bool is_in_line_2d(double x1, double y1, double x2, double y2, double x, double y, double tol) {
    double const p1[2] = {x1, y1};
    double const p2[2] = {x2, y2};
    double const pt[2] = {x, y};
    return is_in_line_2d(p1, p2, pt, tol);
}

bool is_in_line_2d(double const *p1, double const *p2, double const *pt, double tol) {
    View const view = ViewOfEnds2(p1, p2, pt);
    return !view.isAtEnd && IsOppositeInclusive(view.cosine, tol);
}

bool is_in_line_3d(double x1, double y1, double z1, double x2, double y2, double z2, double x, double y, double z,
                   double tol) {
    double const p1[3] = {x1, y1, z1};
    double const p2[3] = {x2, y2, z2};
    double const pt[3] = {x, y, z};
    return is_in_line_3d(p1, p2, pt, tol);
}

bool is_in_line_3d(double const *p1, double const *p2, double const *pt, double tol) {
    View const view = ViewOfEnds3(p1, p2, pt);
    return !view.isAtEnd && IsOppositeInclusive(view.cosine, tol);
}

} // namespace zvi::lib

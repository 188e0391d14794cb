#include "zvi/math/func/MMathFunc.h"

#include "zvi/base/SaturatedInt.h"
#include "zvi/math/func/MMathFuncDetail.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <utility>

namespace zvi::lib {

using math::Cross;
using math::Length;
using math::Load2;
using math::Unit;
using math::Vec2;

namespace {

constexpr double kEndScale = 10000.0;    // ends are found within this many m_NormalZero of a segment's length
constexpr double kOnLineSine = 1e-10;    // two unit vectors with a smaller cross product lie on one line
constexpr double kOnEdge = 1e-10;        // a point nearer to an edge of a ring is on it, model units
constexpr double kFarAway = 1e11;        // a ray ends this far from its point, model units
constexpr double kPastVertex = 100.0;    // and this far beyond any vertex, model units
constexpr double kLooseScale = 100000.0; // the loose parallel limit of line crossings, in m_NormalZero
constexpr double kSideArea = 1e-7;       // a smaller double area is no side, square units
constexpr double kWholeFraction = 1e-15; // a smaller fraction is none

struct Segment {
    Vec2 first, second;
};

// The ends in the order of their x; ties keep the order.
Segment OrderedByX(double const *a, double const *b) {
    Segment segment{Load2(a), Load2(b)};
    if (segment.first.x > segment.second.x)
        std::swap(segment.first, segment.second);
    return segment;
}

int SideOf(Segment const &s, Vec2 p) {
    return MMathFunc::math_ccw(s.first.x, s.first.y, s.second.x, s.second.y, p.x, p.y);
}

bool SamePoint(Vec2 a, Vec2 b) {
    return a.x == b.x && a.y == b.y;
}

bool IsOnePoint(Segment const &s) {
    return SamePoint(s.first, s.second);
}

// The range of a segment in the one coordinate that tells contacts on its line: y if its x are exactly equal.
struct Range {
    bool byY;
    double low, high;
    double Of(Vec2 p) const { return byY ? p.y : p.x; }
    bool Holds(Vec2 p) const { return low <= Of(p) && Of(p) <= high; }
};

Range RangeOf(Segment const &s) {
    if (s.first.x != s.second.x)
        return {false, s.first.x, s.second.x};
    return {true, std::min(s.first.y, s.second.y), std::max(s.first.y, s.second.y)};
}

int ContactOfPoint(Vec2 p, Segment const &s) {
    if (IsOnePoint(s))
        return SamePoint(p, s.first) ? 0 : -1;
    return SideOf(s, p) == 0 && RangeOf(s).Holds(p) ? 0 : -1;
}

int ContactOfCollinear(Segment const &s, Segment const &t) {
    Range const range = RangeOf(s);
    double const low = std::min(range.Of(t.first), range.Of(t.second));
    double const high = std::max(range.Of(t.first), range.Of(t.second));
    return low <= range.high && range.low <= high ? 0 : -1;
}

struct Box {
    Vec2 low, high;
};

Box BoxOf(int n, double const points[][2]) {
    assert(n > 0);
    Box box{Load2(points[0]), Load2(points[0])};
    for (int i = 1; i < n; ++i) {
        box.low = {std::min(box.low.x, points[i][0]), std::min(box.low.y, points[i][1])};
        box.high = {std::max(box.high.x, points[i][0]), std::max(box.high.y, points[i][1])};
    }
    return box;
}

bool BoxesMeet(Box const &a, Box const &b) {
    return a.low.x <= b.high.x && b.low.x <= a.high.x && a.low.y <= b.high.y && b.low.y <= a.high.y;
}

// The other end of an index's segment in IsOverLap_Polyline: the first point for the last index, else the point itself.
int OtherEnd(int i, int n) {
    return i == n - 1 ? 0 : i;
}

bool SegmentsTouch(int n1, double const p1[][2], int i, int n2, double const p2[][2], int j) {
    return MMathFunc::mathIntersect_ccw2D(p1[i], p1[OtherEnd(i, n1)], p2[j], p2[OtherEnd(j, n2)]) >= 0;
}

} // namespace

int MMathFunc::mathIsPointOfLine2D(double const *a, double const *b, double const *p, int endValue) {
    double const length = std::max(Length(Load2(b) - Load2(a)), m_NormalZero);
    double const scale = m_NormalZero * kEndScale;
    double const tolerance = std::min(length, 1.0 / scale) * scale;
    Vec2 const toA = Load2(a) - Load2(p);
    Vec2 const toB = Load2(b) - Load2(p);
    for (Vec2 const toEnd : {toA, toB})
        if (std::abs(toEnd.x) < tolerance && std::abs(toEnd.y) < tolerance)
            return endValue;
    Vec2 const u = Unit(toA);
    Vec2 const w = Unit(toB);
    if (!(std::abs(Cross(u, w)) < kOnLineSine))
        return 0;
    return std::abs(u.x - w.x) >= tolerance || std::abs(u.y - w.y) >= tolerance ? 1 : 0;
}

int MMathFunc::mathIncludePointInLine(double const *a, double const *b, double const *p, double tol) {
    Vec2 const along = Load2(b) - Load2(a);
    Vec2 const fromA = Load2(p) - Load2(a);
    double const square = math::Dot(along, along);
    double const t = square > 0.0 ? std::clamp(math::Dot(fromA, along) / square, 0.0, 1.0) : 0.0;
    return Length(fromA - along * t) <= tol ? 1 : 0;
}

int MMathFunc::mathIsInsidePoint2D(double const *p, int n, double const poly[][2], int closed) {
    double far[2] = {p[0] + kFarAway, p[1]};
    for (int i = 0; i < n; ++i)
        if (poly[i][0] > far[0])
            far[0] = poly[i][0] + kPastVertex;
    int crossings = 0;
    for (int i = 0; i < n; ++i) {
        double const *e1 = poly[i];
        double const *e2 = poly[i + 1 < n ? i + 1 : 0];
        if (mathIncludePointInLine(e1, e2, p, kOnEdge))
            return closed ? 1 : 0;
        int const crossing = mathIntersect_ccw2D(p, far, e1, e2);
        if (crossing > 0)
            ++crossings;
        if (crossing != 0)
            continue;
        if (mathIsPointOfLine2D(e1, e2, p, 1))
            return closed ? 1 : 0;
        if (std::abs(p[1] - std::min(e1[1], e2[1])) < m_NormalZero && e1[1] != e2[1])
            ++crossings;
    }
    return crossings % 2;
}

int MMathFunc::mathIntersect_ccw2D(double const *a, double const *b, double const *c, double const *d) {
    Segment const s = OrderedByX(a, b);
    Segment const t = OrderedByX(c, d);
    if (IsOnePoint(s))
        return ContactOfPoint(s.first, t);
    if (IsOnePoint(t))
        return ContactOfPoint(t.first, s);
    int const firstOnS = SideOf(s, t.first);
    int const secondOnS = SideOf(s, t.second);
    int const firstOnT = SideOf(t, s.first);
    int const secondOnT = SideOf(t, s.second);
    if (firstOnS * secondOnS < 0 && firstOnT * secondOnT < 0)
        return 1;
    if ((firstOnS == 0 && secondOnS == 0) || (firstOnT == 0 && secondOnT == 0))
        return ContactOfCollinear(s, t);
    if (firstOnS == 0)
        return RangeOf(s).Holds(t.first) ? 0 : -1;
    if (secondOnS == 0)
        return RangeOf(s).Holds(t.second) ? 0 : -1;
    if (firstOnT == 0)
        return RangeOf(t).Holds(s.first) ? 0 : -1;
    if (secondOnT == 0)
        return RangeOf(t).Holds(s.second) ? 0 : -1;
    return -1;
}

int MMathFunc::mathLineLineCross2D(double const l1[2][2], double const l2[2][2], double *out, int strict) {
    Vec2 const from1 = Load2(l1[0]);
    Vec2 const from2 = Load2(l2[0]);
    Vec2 const u = Unit(from1 - Load2(l1[1]));
    Vec2 const v = Unit(from2 - Load2(l2[1]));
    double const c = v.y * u.x - v.x * u.y;
    double const limit = strict ? m_NormalZero : m_NormalZero * kLooseScale;
    if (!(std::abs(c) >= limit)) { // also a line without length, whose direction is NaN
        Store(Vec2{0.0, 0.0}, out);
        return 0;
    }
    double const t = ((from1.y - from2.y) * v.x - (from1.x - from2.x) * v.y) / c;
    Store(from1 + u * t, out);
    return 1;
}

int MMathFunc::mathLineSegCross2D(double const line[2][2], double const *s1, double const *s2, double *out) {
    double const carrier[2][2] = {{s1[0], s1[1]}, {s2[0], s2[1]}};
    if (!mathLineLineCross2D(line, carrier, out, 0))
        return 0;
    return mathIsPointOfLine2D(carrier[0], carrier[1], out, 1);
}

double MMathFunc::mathDistanceFromIntersectPointToLine2D(double const *a, double const *b, double const *p,
                                                         int &where) {
    Vec2 const along = Load2(b) - Load2(a);
    double const length = Length(along);
    Vec2 const u = length < m_NormalZero ? Vec2{0.0, 0.0} : along / length;
    Vec2 const fromA = Load2(p) - Load2(a);
    double const t = math::Dot(fromA, u);
    if (t < 0.0)
        where = 0;
    else
        where = t > length ? 2 : 1;
    return Length(fromA - u * t);
}

int MMathFunc::Get2DPointPosByLine(double const *p, double const *a, double const *b) {
    double const area = Cross(Load2(a) - Load2(p), Load2(b) - Load2(p));
    if (std::abs(area) < kSideArea)
        return 2;
    return area > 0.0 ? 1 : 0;
}

int MMathFunc::GetDivideNum(double value, int &upper, int &lower) {
    double const whole = std::trunc(value);
    bool const hasFraction = std::abs(value - whole) >= kWholeFraction;
    upper = base::SaturatedInt(hasFraction ? whole + 1.0 : whole);
    lower = base::SaturatedInt(hasFraction ? whole : whole - 1.0);
    return 1;
}

int MMathFunc::IsOverLap_Polyline(int n1, double const p1[][2], int n2, double const p2[][2]) {
    if (n1 <= 0 || n2 <= 0)
        return 0;
    // Either test alone gives 1, so the quick one goes first. What the edge test still finds of rings with separate
    // boxes are near contacts of a closing edge: two single points touch only where they are equal.
    if (BoxesMeet(BoxOf(n1, p1), BoxOf(n2, p2)))
        return 1;
    for (int i = 0; i < n1; ++i)
        if (SegmentsTouch(n1, p1, i, n2, p2, n2 - 1))
            return 1;
    for (int j = 0; j < n2; ++j)
        if (SegmentsTouch(n1, p1, n1 - 1, n2, p2, j))
            return 1;
    return 0;
}

} // namespace zvi::lib

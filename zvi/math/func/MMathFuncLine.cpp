#include "zvi/math/func/MMathFunc.h"

#include <cassert>
#include <cmath>
#include <optional>

#include "zvi/math/func/MMathFuncDetail.h"

namespace zvi::lib {

using math::Cross;
using math::Length;
using math::Load3;
using math::Vec2;
using math::Vec3;

namespace {

constexpr double kParallelSine = 0.0001; // directions with a smaller sine between them are parallel
constexpr double kNoComponent = 1e-7;    // a smaller component of their cross product solves nothing
constexpr double kSegmentSlack = 1e-7;   // a segment is longer by this part of its length at each end

// Where two lines meet: the distances from their first points along the unit directions, and the two lengths.
struct Meeting {
    double s, t;
    double firstLength, secondLength;
};

bool WithinLength(double parameter, double length) {
    return parameter >= -kSegmentSlack * length && parameter <= length + kSegmentSlack * length;
}

bool InBothSegments(Meeting const &m) {
    return WithinLength(m.s, m.firstLength) && WithinLength(m.t, m.secondLength);
}

// Solves s u - t w = d in the plane of two coordinates.
void SolvePair(Vec2 u, Vec2 w, Vec2 d, Meeting &meeting) {
    double const determinant = w.x * u.y - w.y * u.x;
    meeting.s = (d.y * w.x - d.x * w.y) / determinant;
    meeting.t = (d.y * u.x - d.x * u.y) / determinant;
}

// The coordinate pair that the largest component of `c` is made of.
enum class Pair { XY, YZ, ZX, None };

Pair LargestPair(Vec3 c) {
    double const x = std::abs(c.x);
    double const y = std::abs(c.y);
    double const z = std::abs(c.z);
    double const largest = std::fmax(x, std::fmax(y, z));
    if (!(largest >= kNoComponent))
        return Pair::None;
    if (z == largest)
        return Pair::XY;
    return y == largest ? Pair::ZX : Pair::YZ;
}

Vec2 Take(Vec3 v, Pair pair) {
    assert(pair != Pair::None);
    if (pair == Pair::XY)
        return {v.x, v.y};
    return pair == Pair::YZ ? Vec2{v.y, v.z} : Vec2{v.z, v.x};
}

struct Line {
    Vec3 origin, direction;
    double length;
};

Line LineThrough(double const *a, double const *b) {
    Line line{Load3(a), Load3(b) - Load3(a), 0.0};
    line.length = Length(line.direction);
    line.direction = line.direction / line.length;
    return line;
}

bool HasDirection(Line const &line) {
    return line.length >= MMathFunc::m_NormalZero;
}

std::optional<Meeting> Meet(Line const &first, Line const &second, double tol, double &dist) {
    if (!HasDirection(first) || !HasDirection(second))
        return std::nullopt;
    Vec3 const c = Cross(first.direction, second.direction);
    double const sine = Length(c);
    if (!(sine >= kParallelSine))
        return std::nullopt;
    Vec3 const d = second.origin - first.origin;
    dist = std::abs(Dot(d, c)) / sine;
    if (!(dist <= tol))
        return std::nullopt;
    Pair const pair = LargestPair(c);
    if (pair == Pair::None)
        return std::nullopt;
    Meeting meeting{0.0, 0.0, first.length, second.length};
    SolvePair(Take(first.direction, pair), Take(second.direction, pair), Take(d, pair), meeting);
    return meeting;
}

int IntersectLines(double const *p1, double const *p2, double const *q1, double const *q2, double tol, bool segments,
                   double &dist, double *out) {
    dist = 0.0;
    Store(Vec3{0.0, 0.0, 0.0}, out);
    Line const second = LineThrough(q1, q2);
    std::optional<Meeting> const meeting = Meet(LineThrough(p1, p2), second, tol, dist);
    if (!meeting || (segments && !InBothSegments(*meeting)))
        return 0;
    Store(second.origin + second.direction * meeting->t, out);
    return 1;
}

} // namespace

int MMathFunc::mathIntersectLine(double const *p1, double const *p2, double const *q1, double const *q2, double tol,
                                 double &dist, double *out) {
    return IntersectLines(p1, p2, q1, q2, tol, false, dist, out);
}

int MMathFunc::mathIntersectLine2(double const *p1, double const *p2, double const *q1, double const *q2, double tol,
                                  double &dist, double *out) {
    return IntersectLines(p1, p2, q1, q2, tol, true, dist, out);
}

int MMathFunc::mathIntersectLine2D(double x1, double y1, double x2, double y2, double x3, double y3, double x4,
                                   double y4, double &x, double &y, int segment) {
    x = 0.0;
    y = 0.0;
    Vec2 u{x2 - x1, y2 - y1};
    Vec2 w{x4 - x3, y4 - y3};
    Meeting meeting{0.0, 0.0, Length(u), Length(w)};
    if (!(meeting.firstLength >= m_NormalZero) || !(meeting.secondLength >= m_NormalZero))
        return 0;
    u = u / meeting.firstLength;
    w = w / meeting.secondLength;
    if (!(std::abs(w.y * u.x - w.x * u.y) >= kParallelSine))
        return 0;
    SolvePair(u, w, {x3 - x1, y3 - y1}, meeting);
    if (segment && !InBothSegments(meeting))
        return 0;
    x = x3 + meeting.t * w.x;
    y = y3 + meeting.t * w.y;
    return 1;
}

double MMathFunc::mathPLCrossPoint(double px, double py, double pz, double dx, double dy, double dz, double qx,
                                   double qy, double qz, double &x, double &y, double &z) {
    Vec3 const p{px, py, pz};
    Vec3 const d{dx, dy, dz};
    double const t = math::Dot(Vec3{qx, qy, qz} - p, d) / math::Dot(d, d);
    x = px + t * dx;
    y = py + t * dy;
    z = pz + t * dz;
    return t;
}

double MMathFunc::mathPLCrossPoint(double px, double py, double pz, double dx, double dy, double dz, double qx,
                                   double qy, double qz, double &x, double &y, double &z, double &t) {
    t = mathPLCrossPoint(px, py, pz, dx, dy, dz, qx, qy, qz, x, y, z);
    return t;
}

double MMathFunc::mathPLCrossPoint2D(double x1, double y1, double x2, double y2, double px, double py, double &x,
                                     double &y) {
    Vec2 const along{x2 - x1, y2 - y1};
    double const length = Length(along);
    Vec2 const d = length < m_NormalZero ? Vec2{0.0, 0.0} : along / length;
    double const t = math::Dot(Vec2{px - x1, py - y1}, d) / math::Dot(d, d);
    x = x1 + t * d.x;
    y = y1 + t * d.y;
    return t;
}

int MMathFunc::mathPlaneEquation(double const *p1, double const *p2, double const *p3, double &a, double &b, double &c,
                                 double &d) {
    a = b = c = d = 0.0;
    Vec3 const normal{p1[1] * (p2[2] - p3[2]) + p2[1] * (p3[2] - p1[2]) + p3[1] * (p1[2] - p2[2]),
                      p1[2] * (p2[0] - p3[0]) + p2[2] * (p3[0] - p1[0]) + p3[2] * (p1[0] - p2[0]),
                      p1[0] * (p2[1] - p3[1]) + p2[0] * (p3[1] - p1[1]) + p3[0] * (p1[1] - p2[1])};
    double const length = Length(normal);
    if (!(length >= m_NormalZero))
        return 0;
    a = normal.x / length;
    b = normal.y / length;
    c = normal.z / length;
    d = -(p1[0] * a + p1[1] * b + p1[2] * c);
    return 1;
}

int MMathFunc::mathPlaneEquation(double const *point, double *normal, double &a, double &b, double &c, double &d) {
    Store(Unit(Load3(normal)), normal);
    a = normal[0];
    b = normal[1];
    c = normal[2];
    d = -(point[0] * a + point[1] * b + point[2] * c);
    return 1;
}

} // namespace zvi::lib

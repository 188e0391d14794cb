#include "zvi/math/elementary/Elementary.h"
#include "zvi/math/func/MMathFunc.h"

#include <cassert>
#include <cmath>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "zvi/math/func/MMathFuncDetail.h"

namespace zvi::lib {

using math::Cross;
using math::Length;
using math::Load2;
using math::Load3;
using math::Unit;
using math::Vec2;
using math::Vec3;

namespace {

constexpr double kProbeScale = 1e-6; // the inside of a ring is looked for this part of an edge's length beside it

Vec2 Midpoint(double const chord[2][2]) {
    return (Load2(chord[0]) + Load2(chord[1])) * 0.5;
}

double ChordLength(double const chord[2][2]) {
    return Length(Load2(chord[0]) - Load2(chord[1]));
}

Vec2 TurnedLeft(Vec2 v) {
    return {-v.y, v.x};
}

// A ring without repeated points: where each distinct vertex first stands, and the vertex each point belongs to.
struct DistinctRing {
    std::vector<Vec2> vertices;
    std::vector<std::size_t> vertexOfPoint;
};

DistinctRing DistinctRingOf(int n, double const pts[][2]) {
    DistinctRing ring;
    for (int i = 0; i < n; ++i) {
        Vec2 const point = Load2(pts[i]);
        if (ring.vertices.empty() || !(Length(point - ring.vertices.back()) < MMathFunc::m_NormalZero))
            ring.vertices.push_back(point);
        ring.vertexOfPoint.push_back(ring.vertices.size() - 1);
    }
    while (ring.vertices.size() > 1 && Length(ring.vertices.back() - ring.vertices.front()) < MMathFunc::m_NormalZero)
        ring.vertices.pop_back();
    for (std::size_t &vertex : ring.vertexOfPoint)
        if (vertex >= ring.vertices.size())
            vertex = 0;
    return ring;
}

// Side 1 if the inside of a ring of two vertices at least lies to the left of the first edge, so that the offset goes
// away from it, else 2.
int SideAwayFromInside(DistinctRing const &ring, int n, double const pts[][2]) {
    assert(ring.vertices.size() > 1);
    Vec2 const edge = ring.vertices[1] - ring.vertices[0];
    Vec2 const middle = ring.vertices[0] + edge * 0.5;
    double probe[2];
    Store(middle + TurnedLeft(Unit(edge)) * (kProbeScale * Length(edge)), probe);
    return MMathFunc::mathIsInsidePoint2D(probe, n, pts, 1) ? 1 : 2;
}

// The move of a vertex to where its edges, of unit directions `before` and `after`, meet when both move by 1 to the
// left: the vector whose product with either left normal is 1. Of its two forms, each is exact where the other loses
// digits: the sum of the normals for a slight turn, the difference of the directions for a sharp one.
std::optional<Vec2> MiterOf(Vec2 before, Vec2 after) {
    double const sine = Cross(before, after);
    if (!(std::abs(sine) >= MMathFunc::m_NormalZero))
        return std::nullopt;
    double const cosine = math::Dot(before, after);
    if (cosine > 0.0)
        return TurnedLeft(before + after) / (1.0 + cosine);
    return (after - before) / sine;
}

// Moves the vertices of a ring, of which there is one at least; false, and none is moved, where edges have no miter.
bool MoveVertices(std::vector<Vec2> &vertices, double leftward) {
    assert(!vertices.empty());
    std::size_t const count = vertices.size();
    std::vector<Vec2> moved(count);
    Vec2 before = Unit(vertices[0] - vertices[count - 1]);
    for (std::size_t i = 0; i < count; ++i) {
        Vec2 const after = Unit(vertices[i + 1 < count ? i + 1 : 0] - vertices[i]);
        std::optional<Vec2> const miter = MiterOf(before, after);
        if (!miter)
            return false;
        moved[i] = vertices[i] + *miter * leftward;
        before = after;
    }
    vertices.swap(moved);
    return true;
}

// Twice the signed area and its first moments, about the first point so that no digits are lost far from the origin.
struct RingMoments {
    double doubleArea;
    Vec2 moment;
};

RingMoments MomentsOf(int n, double const poly[][2]) {
    RingMoments sum{0.0, {0.0, 0.0}};
    for (int i = 1; i + 1 < n; ++i) {
        Vec2 const u = Load2(poly[i]) - Load2(poly[0]);
        Vec2 const w = Load2(poly[i + 1]) - Load2(poly[0]);
        double const area = Cross(u, w);
        sum.doubleArea += area;
        sum.moment = sum.moment + (u + w) * area;
    }
    return sum;
}

double DirectionOf(Vec2 v) {
    double const degrees = Atan2(v.y, v.x) * MMathFunc::m_trang;
    if (!(degrees < 0.0))
        return degrees;
    double const turned = degrees + 360.0;
    return turned < 360.0 ? turned : 0.0;
}

} // namespace

int MMathFunc::GetCenter_Bulge(double const chord[2][2], double bulge, double *out) {
    Vec2 const middle = Midpoint(chord);
    Store(middle, out);
    if (bulge == 0.0)
        return 0;
    double const half = ChordLength(chord) / 2.0;
    if (half == 0.0)
        return 1;
    double const k = (half * half - bulge * bulge) / (2.0 * bulge);
    Vec2 const u = Unit(Load2(chord[0]) - Load2(chord[1]));
    Store(middle + Vec2{k * u.y, -k * u.x}, out);
    return 1;
}

double MMathFunc::GetBulge(double const chord[2][2], double radius, int minor) {
    double const half = ChordLength(chord) / 2.0;
    double const r = std::abs(radius);
    double const sign = radius < 0.0 ? -1.0 : 1.0;
    if (half > r + m_NormalZero)
        return 0.0;
    if (std::abs(half - r) < m_NormalZero)
        return radius;
    double const bulge = (r - mathSqrt(r * r - half * half)) * sign;
    return minor ? bulge : 2.0 * radius - bulge;
}

int MMathFunc::mathOffsetOfPolyline(double dist, int n, double pts[][2], int side) {
    if (n < 3)
        return 0;
    DistinctRing ring = DistinctRingOf(n, pts);
    if (ring.vertices.size() < 3)
        return 0;
    if (side < 1)
        side = SideAwayFromInside(ring, n, pts);
    if (!MoveVertices(ring.vertices, side == 1 ? -dist : dist))
        return 0;
    for (int i = 0; i < n; ++i)
        Store(ring.vertices[ring.vertexOfPoint[static_cast<std::size_t>(i)]], pts[i]);
    return 1;
}

int MMathFunc::mathCircleForm3Point(double const *p1, double const *p2, double const *p3, double *center,
                                    double &radius) {
    Vec2 const origin = Load2(p1);
    Vec2 const u = Load2(p2) - origin;
    Vec2 const w = Load2(p3) - origin;
    double const doubleArea = Cross(u, w);
    if (!(std::abs(doubleArea) >= m_NormalZero))
        return 0;
    double const uu = math::Dot(u, u);
    double const ww = math::Dot(w, w);
    Vec2 const fromFirst = Vec2{w.y * uu - u.y * ww, u.x * ww - w.x * uu} / (2.0 * doubleArea);
    Store(origin + fromFirst, center);
    radius = Length(fromFirst);
    return 1;
}

int MMathFunc::mathArcForm3Point(double const *p1, double const *p2, double const *p3, double *center, double &radius,
                                 double &startDeg, double &endDeg) {
    Vec2 const first = Load2(p1);
    Vec2 const last = Load2(p3);
    bool const clockwise = Cross(Load2(p2) - first, last - first) < 0.0;
    if (!mathCircleForm3Point(p1, p2, p3, center, radius))
        return 0;
    startDeg = DirectionOf(first - Load2(center));
    endDeg = DirectionOf(last - Load2(center));
    if (clockwise)
        std::swap(startDeg, endDeg);
    return 1;
}

double MMathFunc::mathArea(double const *a, double const *b, double const *c) {
    return Length(Cross(Load3(b) - Load3(a), Load3(c) - Load3(a))) * 0.5;
}

double MMathFunc::mathArea(int n, double const poly[][3]) {
    Vec3 sum{0.0, 0.0, 0.0};
    for (int i = 1; i + 1 < n; ++i)
        sum = sum + Cross(Load3(poly[i]) - Load3(poly[0]), Load3(poly[i + 1]) - Load3(poly[0]));
    return Length(sum) * 0.5;
}

double MMathFunc::mathArea2d(double const *a, double const *b, double const *c) {
    return Cross(Load2(b) - Load2(a), Load2(c) - Load2(a)) * 0.5;
}

double MMathFunc::mathArea2d(int n, double const poly[][2]) {
    return MomentsOf(n, poly).doubleArea * 0.5;
}

int MMathFunc::mathPolyCentroid(int n, double const poly[][2], double *out, double &area) {
    RingMoments const sum = MomentsOf(n, poly);
    area = sum.doubleArea * 0.5;
    if (area != 0.0) {
        Store(Load2(poly[0]) + sum.moment / (3.0 * sum.doubleArea), out);
        return 1;
    }
    Vec2 mean{0.0, 0.0};
    for (int i = 0; i < n; ++i)
        mean = mean + Load2(poly[i]) / static_cast<double>(n);
    Store(mean, out);
    return 0;
}

} // namespace zvi::lib

#include "zvi/curves/MGeomFunc.h"

#include "zvi/curves/PointInPolygonDetail.h"
#include "zvi/math/func/MMathFunc.h"

#include <algorithm>
#include <cmath>

namespace zvi::lib {

namespace {

/// A meeting point agrees with an end of a segment, and boxes touch, within this in each coordinate (units of the
/// input). The cross products of parallel segments are compared with it too, as areas.
constexpr double kContact = 1e-10;
/// Signed areas of smaller size are 0 in the hull test.
constexpr double kFlatArea = 1e-10;

/// Where on the segment the meeting point is: 1 at its first end, 2 at its second, 3 elsewhere.
int PositionOnSegment(T_LINE2D const &line, double x, double y) {
    if (std::fabs(x - line.x1) <= kContact && std::fabs(y - line.y1) <= kContact)
        return 1;
    if (std::fabs(x - line.x2) <= kContact && std::fabs(y - line.y2) <= kContact)
        return 2;
    return 3;
}

T_REGION2D BoxOf(T_LINE2D const &line) {
    return {std::min(line.x1, line.x2), std::min(line.y1, line.y2), std::max(line.x1, line.x2),
            std::max(line.y1, line.y2)};
}

bool AreApart(T_REGION2D const &a, T_REGION2D const &b) {
    return a.MinX - b.MaxX > kContact || b.MinX - a.MaxX > kContact || a.MinY - b.MaxY > kContact ||
           b.MinY - a.MaxY > kContact;
}

bool IsNearBox(double x, double y, T_REGION2D const &box) {
    return x >= box.MinX - kContact && x <= box.MaxX + kContact && y >= box.MinY - kContact && y <= box.MaxY + kContact;
}

/// The code of two segments that have no meeting point: 0, or 10 to 13 for an overlap.
int TopologyWithoutMeeting(T_LINE2D const &l, T_LINE2D const &m) {
    double const dx = l.x2 - l.x1;
    double const dy = l.y2 - l.y1;
    if (std::fabs((m.y2 - m.y1) * dx - (m.x2 - m.x1) * dy) > kContact)
        return 0;
    // One-sided on purpose: a parallel segment to the right of L is left to the boxes.
    if ((m.y1 - l.y1) * dx - (m.x1 - l.x1) * dy > kContact)
        return 0;
    T_REGION2D const box = BoxOf(l);
    if (AreApart(box, BoxOf(m)))
        return 0;
    bool const startInside = IsNearBox(m.x1, m.y1, box);
    if (IsNearBox(m.x2, m.y2, box))
        return startInside ? 12 : 11;
    return startInside ? 10 : 13;
}

/// Signed area of a ring that repeats its first point at the end; 0 for fewer than three points besides it.
double SignedRingArea(MArray<T_POINT2D> const &ring) {
    if (ring.Size() < 4)
        return 0.0;
    double sum = 0.0;
    for (std::size_t i = 0; i + 1 < ring.Size(); ++i)
        sum += ring[i].x * ring[i + 1].y - ring[i + 1].x * ring[i].y;
    return sum / 2.0;
}

/// Signed area of the triangle a, b, c; 0 when it is flat.
double SignedTriangleArea(T_POINT2D const &a, T_POINT2D const &b, T_POINT2D const &c) {
    double const area = ((b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x)) / 2.0;
    return std::fabs(area) < kFlatArea ? 0.0 : area;
}

bool IsSamePoint(T_POINT2D const &a, T_POINT2D const &b) {
    return a.x == b.x && a.y == b.y;
}

} // namespace

MGeomFunc::~MGeomFunc() = default;

int MGeomFunc::GetTopologyOfTwoLines(T_LINE2D const &l, T_LINE2D const &m) {
    double x = 0.0;
    double y = 0.0;
    if (MMathFunc::mathIntersectLine2D(l.x1, l.y1, l.x2, l.y2, m.x1, m.y1, m.x2, m.y2, x, y, 1) == 0)
        return TopologyWithoutMeeting(l, m);
    return 3 * PositionOnSegment(l, x, y) - 3 + PositionOnSegment(m, x, y);
}

int MGeomFunc::GetMBR(MArray<T_POINT2D> const &points, T_REGION2D &region) {
    if (points.Empty())
        return 0;
    region = curves::PointInPolygon(points).Box();
    return 1;
}

int MGeomFunc::IsPointInRegion(T_POINT2D const &p, T_REGION2D const &region) {
    return p.x > region.MinX && p.x < region.MaxX && p.y > region.MinY && p.y < region.MaxY ? 1 : 0;
}

int MGeomFunc::IsPointInRegion2(T_POINT2D const &p, T_REGION2D const &region, int closed) {
    if (closed == 0)
        return IsPointInRegion(p, region);
    return p.x >= region.MinX && p.x <= region.MaxX && p.y >= region.MinY && p.y <= region.MaxY ? 1 : 0;
}

int MGeomFunc::IsPointInPolygon(T_POINT2D const &p, MArray<T_POINT2D> const &polygon) {
    return IsPointInPolygon2(p, polygon, 0);
}

int MGeomFunc::IsPointInPolygon2(T_POINT2D const &p, MArray<T_POINT2D> const &polygon, int closed) {
    return curves::PointInPolygon(polygon).Contains(p, closed);
}

int MGeomFunc::GetLinePolygonCrossCount(T_LINE2D const &line, MArray<T_POINT2D> const &polygon) {
    curves::EdgeCrossings crossings(line, polygon.Data(), polygon.Size());
    int count = 0;
    for (std::size_t edge = 0; edge < polygon.Size(); ++edge)
        count += crossings.Count(edge);
    return count;
}

int MGeomFunc::CheckInsideConvexHull(MArray<T_POINT2D> const &points, T_POINT2D const &p) {
    if (points.Empty())
        return 0;
    T_POINT2D const &first = points[0];
    if (IsSamePoint(p, first))
        return 1;
    if (points.Size() < 2)
        return 0;
    double leftCosine = 1.0;
    double rightCosine = 1.0;
    for (std::size_t i = 1; i < points.Size(); ++i) {
        T_POINT2D const &q = points[i];
        double const dot = (q.x - p.x) * (first.x - p.x) + (q.y - p.y) * (first.y - p.y);
        double const cosine = std::clamp(dot, -1.0, 1.0);
        double const area = SignedTriangleArea(first, p, q);
        if (area > 0.0)
            leftCosine = std::min(leftCosine, cosine);
        else if (area < 0.0)
            rightCosine = std::min(rightCosine, cosine);
        else if (IsSamePoint(q, p) || (!IsSamePoint(q, first) && cosine == -1.0))
            return 1;
    }
    return leftCosine + rightCosine <= 0.0 ? 1 : 0;
}

double MGeomFunc::CalcPolyArea(T_COMPLEX_POLYGON2D const &polygon) {
    double holes = 0.0;
    for (MArray<T_POINT2D> const &ring : polygon.Inner)
        holes += std::fabs(SignedRingArea(ring));
    return std::fabs(SignedRingArea(polygon.Outer)) - holes;
}

} // namespace zvi::lib

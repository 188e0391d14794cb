#include "zvi/curves/PointInPolygonDetail.h"

#include "zvi/base/Index.h"
#include "zvi/curves/MGeomFunc.h"
#include "zvi/curves/VectorDetail.h"
#include "zvi/math/small/MMatrixLib.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>

namespace zvi::lib::curves {

namespace {

/// A point this near to an edge lies on it (units of the input).
constexpr double kOnEdge = 1e-10;
/// A rotated vertex this near to the height of the line lies on it (units of the input).
constexpr double kOnLine = 1e-10;
/// Codes of `GetTopologyOfTwoLines` that count, for a line and an edge: the edge crosses it, starts on it, lies on it
/// with its start alone, lies on it whole.
constexpr int kCrosses = 9;
constexpr int kStartsOnLine = 7;
constexpr int kOverlapsWithStart = 10;
constexpr int kLiesOnLine = 12;
/// How far left of the polygon's box the ray ends (units of the input).
constexpr double kRayOvershoot = 1.0;

// Margins beyond which an edge is settled without a classification. Let a be the tested point, inside the box of width
// W and height H, whose coordinates are at most A in size; the ray runs from a to the left and has the length
// R <= W + 1. Two kinds of edges are settled:
//
// 1. Both ends are above the ray, or both below, by more than V = 2e-10 + 4e-7 H + 32 eps A; or both are to the right
//    of a by more than U = 1e-6 + 2e-7 (W + R) + 1e-11 A. Such an edge has code 0. It has no meeting point with the
//    ray: the meeting point of the carriers would have to lie within 1e-7 of the edge's length beyond its ends, where
//    the height over the ray is still at least V - 1e-7 H > 0, or within 1e-7 R beyond the ray's start, where x has
//    reached a.x + U - 1e-7 W > a.x + 1e-7 R. Without a meeting point it is either not parallel (code 0) or its box is
//    apart from the ray's box by more than 1e-10 (code 0).
// 2. The ends are on both sides of the ray by more than V, the edge's height is more than 1e-3 of its width, and it
//    meets the carrier of the ray at an x that differs from a.x by more than U. The sine between edge and ray is then
//    over 0.999e-3, ten times the limit of parallel lines, and the meeting point is inside the edge. To the right of a
//    it misses the ray by more than 1e-7 R, and the edge is not parallel: code 0. To the left it is inside the ray,
//    which ends 1 to the left of the box, and differs from all four ends by more than 1e-10 in some coordinate: code 9.
//
// No edge of either kind is within 1e-10 of a: in the first the box of the edge is farther, in the second the distance
// is at least 0.999e-3 U > 1e-10 + 32 eps A. All rounding errors of the literal calculation are below 32 eps A in
// height and x, or relative errors of some eps; they vanish in the halves of V and U that these bounds leave over.
constexpr double kHeightMargin = 2e-10;
constexpr double kHeightSlack = 4e-7;
constexpr double kHeightRounding = 32.0 * std::numeric_limits<double>::epsilon();
constexpr double kWidthMargin = 1e-6;
constexpr double kWidthSlack = 2e-7;
constexpr double kWidthRounding = 1e-11;
constexpr double kFlattestSlope = 1e-3;
/// With larger coordinates a step of 1 beyond the box may be lost in rounding; then no edge is settled early.
constexpr double kLargestCoordinate = 1e12;

double LargestCoordinate(T_REGION2D const &box) {
    return std::max({std::fabs(box.MinX), std::fabs(box.MinY), std::fabs(box.MaxX), std::fabs(box.MaxY)});
}

/// The height beyond which an edge on one side of the ray adds nothing.
double HeightMargin(T_REGION2D const &box) {
    double const size = LargestCoordinate(box);
    return size < kLargestCoordinate ? kHeightMargin + kHeightSlack * (box.MaxY - box.MinY) + kHeightRounding * size
                                     : std::numeric_limits<double>::infinity();
}

/// Whether an edge is too steep to be taken for parallel to a ray.
bool IsSteeper(T_POINT2D const &c, T_POINT2D const &d) {
    return std::fabs(c.y - d.y) > kFlattestSlope * std::fabs(c.x - d.x);
}

/// Settles edges against the ray from `p`, which lies in `box`, to the left of that, or says that it cannot.
class RayFilter {
public:
    RayFilter(T_POINT2D const &p, T_REGION2D const &box) : m_p(p) {
        assert(MGeomFunc::IsPointInRegion2(p, box, 1) != 0);
        double const size = LargestCoordinate(box);
        double const ray = p.x - box.MinX + kRayOvershoot;
        double const height = HeightMargin(box);
        m_side = kWidthMargin + kWidthSlack * (box.MaxX - box.MinX + ray) + kWidthRounding * size;
        if (!(size < kLargestCoordinate))
            m_side = std::numeric_limits<double>::infinity();
        m_above = p.y + height;
        m_below = p.y - height;
        m_right = p.x + m_side;
    }

    /// True if the edge certainly adds nothing, by its box.
    bool Misses(T_POINT2D const &c, T_POINT2D const &d) const {
        return (c.y > m_above && d.y > m_above) || (c.y < m_below && d.y < m_below) || (c.x > m_right && d.x > m_right);
    }

    /// 1 if the edge certainly is a proper crossing, 0 if it certainly adds nothing, -1 if that is not certain.
    int Settle(T_POINT2D const &c, T_POINT2D const &d) const {
        bool const spans = (c.y > m_above && d.y < m_below) || (c.y < m_below && d.y > m_above);
        if (!spans || !IsSteeper(c, d))
            return -1;
        double const height = std::fabs(c.y - d.y);
        double const width = c.x - d.x;
        // Offset of the meeting point to the right of p, times the height of the edge.
        double const offset = (c.x - m_p.x) * height - width * std::fabs(c.y - m_p.y);
        double const margin = m_side * height;
        if (offset < -margin)
            return 1;
        return offset > margin ? 0 : -1;
    }

private:
    T_POINT2D m_p;
    double m_above;
    double m_below;
    double m_right;
    double m_side;
};

T_REGION2D BoxOf(T_POINT2D const *points, std::size_t count) {
    if (count == 0)
        return {};
    // Two boxes side by side, because each comparison waits for the one before it.
    T_REGION2D even = {points[0].x, points[0].y, points[0].x, points[0].y};
    T_REGION2D odd = even;
    auto const widen = [](T_REGION2D &box, T_POINT2D const &p) {
        box.MinX = p.x < box.MinX ? p.x : box.MinX;
        box.MinY = p.y < box.MinY ? p.y : box.MinY;
        box.MaxX = p.x > box.MaxX ? p.x : box.MaxX;
        box.MaxY = p.y > box.MaxY ? p.y : box.MaxY;
    };
    std::size_t i = 1;
    for (; i + 1 < count; i += 2) {
        widen(even, points[i]);
        widen(odd, points[i + 1]);
    }
    if (i < count)
        widen(even, points[i]);
    widen(even, {odd.MinX, odd.MinY});
    widen(even, {odd.MaxX, odd.MaxY});
    return even;
}

} // namespace

PointInPolygon::PointInPolygon(T_POINT2D const *vertices, std::size_t count)
    : m_vertices(vertices), m_count(count), m_box(BoxOf(vertices, count)) {
    assert(vertices || count == 0);
}

double PointInPolygon::Reach() const {
    return HeightMargin(m_box);
}

double PointInPolygon::Slack() const {
    constexpr double kShare = 1.0 / 16.0;
    return kShare * (kWidthMargin + kWidthRounding * LargestCoordinate(m_box));
}

bool PointInPolygon::IsSteep(std::size_t edge) const {
    assert(edge < m_count);
    T_POINT2D const &start = m_vertices[edge], &end = m_vertices[edge + 1 == m_count ? 0 : edge + 1];
    return IsSteeper(start, end);
}

/// Adds up what edges contribute for one point.
class PointInPolygon::Counter {
public:
    Counter(PointInPolygon const &polygon, T_POINT2D const &p)
        : m_vertices(polygon.m_vertices), m_count(polygon.m_count), m_p(p), m_filter(p, polygon.m_box),
          m_crossings({p.x, p.y, polygon.m_box.MinX - kRayOvershoot, p.y}, m_vertices, m_count) {}

    int Crossed() const { return m_crossed; }

    /// Adds all edges; false when the point lies on one.
    bool AddAll() {
        RayFilter const filter = m_filter; // a local one stays in registers
        T_POINT2D const *const last = m_vertices + (m_count - 1);
        for (T_POINT2D const *start = last, *end = m_vertices; end <= last; start = end++)
            if (!filter.Misses(*start, *end) && !AddNear(static_cast<std::size_t>(start - m_vertices)))
                return false;
        return true;
    }

    /// Adds edges; of ordered ones those on the left at once, and none on the right.
    bool Add(EdgeList const &list) {
        auto const crosses = [this](int e) {
            return m_filter.Settle(m_vertices[base::Index(e)], EndOf(base::Index(e))) == 1;
        };
        auto edge = list.edges.begin();
        if (list.isOrdered) {
            edge = std::partition_point(edge, list.edges.end(), crosses);
            m_crossed += static_cast<int>(edge - list.edges.begin());
        }
        for (; edge != list.edges.end(); ++edge) {
            T_POINT2D const &start = m_vertices[base::Index(*edge)], &end = EndOf(base::Index(*edge));
            if (list.isOrdered && m_filter.Settle(start, end) == 0)
                break;
            if (!m_filter.Misses(start, end) && !AddNear(base::Index(*edge)))
                return false;
        }
        return true;
    }

private:
    /// Adds an edge that the ray may meet; false when the point lies on it.
    bool AddNear(std::size_t edge) {
        T_POINT2D const &start = m_vertices[edge], &end = EndOf(edge);
        if (int const settled = m_filter.Settle(start, end); settled >= 0) {
            m_crossed += settled;
            return true;
        }
        if (SegmentDistance2D(start.x, start.y, end.x, end.y, m_p.x, m_p.y) <= kOnEdge)
            return false;
        m_crossed += m_crossings.Count(edge);
        return true;
    }

    T_POINT2D const &EndOf(std::size_t edge) const {
        assert(edge < m_count);
        return m_vertices[edge + 1 == m_count ? 0 : edge + 1];
    }

    T_POINT2D const *m_vertices;
    std::size_t m_count;
    T_POINT2D m_p;
    RayFilter m_filter;
    EdgeCrossings m_crossings;
    int m_crossed = 0;
};

bool PointInPolygon::HasInBox(T_POINT2D const &p, int closed) const {
    return m_count >= 3 && MGeomFunc::IsPointInRegion2(p, m_box, closed) != 0;
}

int PointInPolygon::Contains(T_POINT2D const &p, int closed) const {
    if (!HasInBox(p, closed))
        return 0;
    Counter counter(*this, p);
    if (!counter.AddAll())
        return closed != 0 ? 1 : 0;
    return counter.Crossed() % 2;
}

int PointInPolygon::ContainsAmong(T_POINT2D const &p, int closed, std::span<EdgeList const> lists) const {
    if (!HasInBox(p, closed))
        return 0;
    Counter counter(*this, p);
    for (EdgeList const &list : lists)
        if (!counter.Add(list))
            return closed != 0 ? 1 : 0;
    return counter.Crossed() % 2;
}

int EdgeCrossings::Count(std::size_t edge) {
    assert(edge < m_count);
    T_POINT2D const &start = m_vertices[edge];
    T_POINT2D const &end = m_vertices[edge + 1 == m_count ? 0 : edge + 1];
    int const code = MGeomFunc::GetTopologyOfTwoLines(m_line, {start.x, start.y, end.x, end.y});
    if (code == kCrosses)
        return 1;
    if (code != kStartsOnLine && code != kOverlapsWithStart && code != kLiesOnLine)
        return 0;
    // The line passes through the start of the edge: it crosses there, or touches and counts twice.
    double const height = m_line.y1;
    double const before = RotatedHeight(m_vertices[edge == 0 ? m_count - 1 : edge - 1]);
    double const after = RotatedHeight(end);
    if (std::fabs(before - height) <= kOnLine)
        return 1;
    bool const afterOnLine = std::fabs(after - height) <= kOnLine;
    if (before >= height)
        return afterOnLine || after >= height ? 2 : 1;
    return !afterOnLine && after < height ? 2 : 1;
}

double EdgeCrossings::RotatedHeight(T_POINT2D const &p) {
    if (!m_rotationKnown) {
        double const angle = MMatrixLib::CalcAngleDegLineAndAxisX(m_line.x1, m_line.y1, m_line.x2, m_line.y2);
        MMatrixLib::RotateM2D(-angle, m_line.x1, m_line.y1, m_rotation);
        m_rotationKnown = true;
    }
    return p.x * m_rotation[0][1] + p.y * m_rotation[1][1] + m_rotation[2][1];
}

} // namespace zvi::lib::curves

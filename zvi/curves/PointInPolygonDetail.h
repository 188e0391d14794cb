#pragma once

#include "zvi/curves/GeomRecords.h"

#include <cassert>
#include <cstddef>
#include <span>

namespace zvi::lib::curves {

/// The test of `MGeomFunc::IsPointInPolygon2` with the polygon's box found once, for many points against one polygon.
/// It looks at the vertices it was given; they must outlive it unchanged. Edges have the number of the vertex that they
/// begin at.
class PointInPolygon {
public:
    PointInPolygon(T_POINT2D const *vertices, std::size_t count);
    explicit PointInPolygon(MArray<T_POINT2D> const &polygon) : PointInPolygon(polygon.Data(), polygon.Size()) {}

    /// The very result of `IsPointInPolygon2`.
    int Contains(T_POINT2D const &p, int closed) const;

    /// Some edges, by number. Ordered ones are steep, end farther above and below the point than `Reach`, and pass its
    /// height from left to right, but for `Slack`.
    struct EdgeList {
        std::span<int const> edges;
        bool isOrdered = false;
    };

    /// The same, for a point and edges among which are all, once each, that come nearer to its height than `Reach`.
    int ContainsAmong(T_POINT2D const &p, int closed, std::span<EdgeList const> lists) const;

    /// An edge that stays farther above or below a point than this adds nothing. Infinite when coordinates are too
    /// large to say so.
    double Reach() const;
    /// By how much less than in doubt the place is at which an edge passes a height.
    double Slack() const;
    /// Whether an edge that passes a height well between its ends surely crosses it.
    bool IsSteep(std::size_t edge) const;

    /// Box of the vertices; all zero when there are none.
    T_REGION2D const &Box() const { return m_box; }

private:
    class Counter;
    bool HasInBox(T_POINT2D const &p, int closed) const;

    T_POINT2D const *m_vertices;
    std::size_t m_count;
    T_REGION2D m_box;
};

/// Crossings of directed lines with the edges of one polygon, edge by edge, as `GetLinePolygonCrossCount` counts them.
class EdgeCrossings {
public:
    EdgeCrossings(T_LINE2D const &line, T_POINT2D const *vertices, std::size_t count)
        : m_line(line), m_vertices(vertices), m_count(count) {
        assert(vertices || count == 0);
    }

    /// What the edge from vertex `edge` to the next one adds.
    int Count(std::size_t edge);

private:
    double RotatedHeight(T_POINT2D const &p);

    T_LINE2D m_line;
    T_POINT2D const *m_vertices;
    std::size_t m_count;
    bool m_rotationKnown = false;
    double m_rotation[3][3]{};
};

} // namespace zvi::lib::curves

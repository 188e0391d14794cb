#pragma once

#include "zvi/curves/MGeomFunc.h"

#include <cmath>
#include <cstddef>
#include <iterator>
#include <numbers>
#include <random>

namespace zvi::lib::test {

using Polygon = MArray<T_POINT2D>;

/// How the coordinates of a random polygon are drawn.
enum class Shape { kGeneral, kLattice, kNearLattice, kThin, kStar };

class PolygonSource {
public:
    PolygonSource(unsigned seed, double scale, double offset) : m_random(seed), m_scale(scale), m_offset(offset) {}

    /// Of up to 14 corners, every tenth of up to 300.
    Polygon Make(Shape shape) {
        std::size_t const count = 3 + m_random() % (m_random() % 10 == 0 ? 298 : 12);
        Polygon polygon;
        for (std::size_t i = 0; i < count; ++i)
            polygon.PushBack(shape == Shape::kStar ? InStar(static_cast<double>(i) / static_cast<double>(count))
                                                   : Vertex(shape));
        return polygon;
    }

    /// A point that has something to do with the polygon: a vertex, its height, a place on or next to an edge, or
    /// anywhere in the box.
    T_POINT2D Point(Polygon const &polygon, Shape shape) {
        T_POINT2D const &a = polygon[m_random() % polygon.Size()];
        T_POINT2D const &b = polygon[m_random() % polygon.Size()];
        double const t = Unit();
        double const nudge = m_scale * std::pow(10.0, -14.0 * Unit()) * (Unit() < 0.5 ? -1.0 : 1.0);
        T_POINT2D const places[] = {a,
                                    {b.x + t * m_scale, a.y},
                                    {a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)},
                                    {a.x + t * (b.x - a.x) + nudge, a.y + t * (b.y - a.y)},
                                    {b.x, a.y + nudge},
                                    Vertex(shape)};
        return places[m_random() % std::size(places)];
    }

private:
    double Unit() { return std::uniform_real_distribution<double>(0.0, 1.0)(m_random); }

    double Coordinate(Shape shape) {
        if (shape != Shape::kLattice && shape != Shape::kNearLattice)
            return Unit();
        return std::floor(Unit() * 5.0) / 5.0 +
               (shape == Shape::kNearLattice ? std::pow(10.0, -5.0 - 10.0 * Unit()) : 0.0);
    }

    T_POINT2D InStar(double turn) {
        double const radius = m_scale * (0.5 + Unit() / 2), angle = 2 * std::numbers::pi * turn;
        return {m_offset + radius * std::cos(angle), m_offset + radius * std::sin(angle)};
    }

    T_POINT2D Vertex(Shape shape) {
        double const x = Coordinate(shape);
        double const y = Coordinate(shape) * (shape == Shape::kThin ? 1e-7 : 1.0);
        return {m_offset + m_scale * x, m_offset - m_scale * y};
    }

    std::mt19937 m_random;
    double m_scale;
    double m_offset;
};

/// How far the point is from the nearest edge.
double DistanceToBorder(T_POINT2D const &p, Polygon const &polygon);

/// `MGeomFunc::IsPointInPolygon2` by its definition: box, distance to every edge, and the parity of the crossings of a
/// ray to the left with every edge, each counted in a frame that is turned along the ray.
int ContainsByDefinition(T_POINT2D const &p, Polygon const &polygon, int closed);

} // namespace zvi::lib::test

#include "zvi/curves/PreparedPolygon.h"
#include "zvi/curves/MGeomFunc.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace zvi::lib::test {

namespace {

using Polygon = MArray<T_POINT2D>;

/// Coordinates on a small lattice make rays through vertices and along edges, and edges that cross.
Polygon LatticePolygon(std::mt19937 &random, int count, double scale, double shift) {
    Polygon polygon;
    for (int i = 0; i < count; ++i)
        polygon.PushBack(
            {shift + scale * static_cast<double>(random() % 8), shift + scale * static_cast<double>(random() % 8)});
    return polygon;
}

Polygon StarPolygon(std::mt19937 &random, int count) {
    std::uniform_real_distribution<double> radius(0.5, 1.0);
    Polygon polygon;
    for (int i = 0; i < count; ++i) {
        double const r = radius(random), angle = 6.283185307179586 * i / count;
        polygon.PushBack({r * std::cos(angle), r * std::sin(angle)});
    }
    return polygon;
}

/// Points at vertices, on edges, beside both by about the limit, and anywhere.
T_POINT2D Probe(std::mt19937 &random, Polygon const &polygon) {
    std::uniform_real_distribution<double> share(-0.2, 1.2);
    auto const any = [&] { return polygon[random() % polygon.Size()]; };
    T_POINT2D const a = any(), b = any();
    double const t = random() % 3 == 0 ? 0.5 : share(random), off = random() % 2 == 0 ? 0.0 : share(random) * 2e-10;
    T_POINT2D const on{a.x + t * (b.x - a.x), a.y + t * (b.y - a.y) + off};
    return random() % 4 == 0 ? T_POINT2D{a.x + off, b.y} : on;
}

} // namespace

TEST(PreparedPolygon, AnswersAsTheTestItStandsFor) {
    unsigned const seed = 8;
    std::mt19937 random(seed);
    for (int i = 0; i < 400; ++i) {
        double const scale = std::pow(10.0, static_cast<double>(random() % 20) - 6.0);
        Polygon polygon = i % 4 == 0 ? StarPolygon(random, 3 + static_cast<int>(random() % 300))
                                     : LatticePolygon(random, static_cast<int>(random() % (i % 8 == 1 ? 200 : 12)),
                                                      scale, scale * (i % 3));
        if (i % 50 == 1)
            polygon.PushBack({0.0, std::nan("")});
        PreparedPolygon const prepared(polygon);
        for (int k = 0; k < 60; ++k) {
            T_POINT2D const p = polygon.Size() > 0 ? Probe(random, polygon) : T_POINT2D{};
            for (int const closed : {0, 1})
                ASSERT_EQ(prepared.IsPointInPolygon2(p, closed), MGeomFunc::IsPointInPolygon2(p, polygon, closed))
                    << "seed " << seed << ", polygon " << i << " at " << p.x << " " << p.y;
        }
    }
}

} // namespace zvi::lib::test

#include "zvi/curves/PreparedPolygon.h"

#include "tests/curves/PolygonByDefinition.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace zvi::lib::test {

namespace {

Polygon StarPolygon(std::mt19937 &random, int count) {
    std::uniform_real_distribution<double> radius(0.5, 1.0);
    Polygon polygon;
    for (int i = 0; i < count; ++i) {
        double const r = radius(random), angle = 6.283185307179586 * i / count;
        polygon.PushBack({r * std::cos(angle), r * std::sin(angle)});
    }
    return polygon;
}

} // namespace

TEST(PreparedPolygon, AnswersAsTheTestItStandsFor) {
    unsigned const seed = 8;
    std::mt19937 random(seed);
    for (int i = 0; i < 400; ++i) {
        double const scale = std::pow(10.0, static_cast<double>(random() % 20) - 6.0);
        PolygonSource source(static_cast<unsigned>(random()), scale, scale * (i % 3));
        auto const shape = static_cast<Shape>(i % 5 % 4);
        std::size_t const count = i % 8 == 1 ? random() % 200 : i % 8 == 2 ? random() % 3 : 3 + random() % 12;
        Polygon polygon =
            i % 4 == 0 ? StarPolygon(random, 3 + static_cast<int>(random() % 300)) : source.Make(shape, count);
        if (i % 50 == 1)
            polygon.PushBack({0.0, std::nan("")});
        PreparedPolygon const prepared(polygon);
        for (int k = 0; k < 60; ++k) {
            T_POINT2D const p = polygon.Size() > 0 ? source.Point(polygon, shape) : T_POINT2D{};
            for (int const closed : {0, 1})
                ASSERT_EQ(prepared.IsPointInPolygon2(p, closed), MGeomFunc::IsPointInPolygon2(p, polygon, closed))
                    << "seed " << seed << ", polygon " << i << " at " << p.x << " " << p.y;
        }
    }
}

} // namespace zvi::lib::test

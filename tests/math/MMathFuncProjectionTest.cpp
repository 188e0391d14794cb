#include "zvi/math/MMathFunc.h"

#include <cmath>
#include <functional>
#include <random>

#include <gtest/gtest.h>

using zvi::lib::MMathFunc;

namespace {

constexpr double kTol = 1e-8;

struct Point {
    double x, y, z;
    double const *Data() const { return &x; }
    double R() const { return std::hypot(x, y); }
};

Point operator-(Point a, Point b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
double Size(Point v) {
    return std::hypot(v.x, v.y, v.z);
}
double SineBetween(Point a, Point b) {
    return Size({a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x}) / Size(a) / Size(b);
}

// A surface of revolution: its equation, 0 on it, and its two projections.
struct Surface {
    char const *name;
    std::function<double(Point)> equation;
    std::function<bool(Point, Point &)> normal;
    std::function<bool(Point, Point, Point &)> along;
    bool normalIsNearest;
};

Surface const surfaces[] = {
    {"cylinder", [](Point p) { return p.R() - 2.0; },
     [](Point p, Point &o) { return MMathFunc::project_on_cylinder_normal(p.Data(), 2.0, 5.0, kTol, &o.x); },
     [](Point p, Point d, Point &o) {
         return MMathFunc::project_on_cylinder_mf_vector(p.Data(), d.Data(), 2.0, 5.0, kTol, &o.x);
     },
     true},
    {"sphere", [](Point p) { return Size(p) - 2.0; },
     [](Point p, Point &o) { return MMathFunc::project_on_sphere_normal(p.Data(), 2.0, kTol, &o.x); },
     [](Point p, Point d, Point &o) {
         return MMathFunc::project_on_sphere_mf_vector(p.Data(), d.Data(), 2.0, kTol, &o.x);
     },
     true},
    {"cone", [](Point p) { return p.R() - std::abs(2.0 - 0.375 * p.z); },
     [](Point p, Point &o) { return MMathFunc::project_on_cone_normal(p.Data(), 2.0, 0.5, 4.0, kTol, &o.x); },
     [](Point p, Point d, Point &o) {
         return MMathFunc::project_on_cone_mf_vector(p.Data(), d.Data(), 2.0, 0.5, 4.0, kTol, &o.x);
     },
     true},
    {"flat ellipsoid", [](Point p) { return std::hypot(p.R() / 3.0, p.z / 1.5) - 1.0; },
     [](Point p, Point &o) { return MMathFunc::project_on_ellipsoid_normal(p.Data(), 3.0, 1.5, kTol, &o.x); },
     [](Point p, Point d, Point &o) {
         return MMathFunc::project_on_ellipsoid_mf_vector(p.Data(), d.Data(), 3.0, 1.5, kTol, &o.x);
     },
     false},
    {"tall ellipsoid", [](Point p) { return std::hypot(p.R() / 1.5, p.z / 3.0) - 1.0; },
     [](Point p, Point &o) { return MMathFunc::project_on_ellipsoid_normal(p.Data(), 1.5, 3.0, kTol, &o.x); },
     [](Point p, Point d, Point &o) {
         return MMathFunc::project_on_ellipsoid_mf_vector(p.Data(), d.Data(), 1.5, 3.0, kTol, &o.x);
     },
     false},
};

// Distance along the ray to the first change of sign of the equation, by marching and bisection; infinite if none.
double MarchedDistance(Surface const &surface, Point p, Point unit, double sense) {
    auto const at = [&](double t) {
        return surface.equation({p.x + sense * t * unit.x, p.y + sense * t * unit.y, p.z + sense * t * unit.z});
    };
    double const step = 0.01;
    for (double t = 0.0; t < 30.0; t += step) {
        if ((at(t) < 0.0) == (at(t + step) < 0.0))
            continue;
        double low = t;
        double high = t + step;
        for (int i = 0; i < 60; ++i)
            ((at((low + high) / 2.0) < 0.0) == (at(low) < 0.0) ? low : high) = (low + high) / 2.0;
        return low;
    }
    return std::numeric_limits<double>::infinity();
}

struct Random {
    std::mt19937 engine{4711};
    std::uniform_real_distribution<double> number{-6.0, 6.0};
    Point Next() { return {number(engine), number(engine), number(engine)}; }
};

} // namespace

TEST(MMathFuncProjection, ResultsLieOnTheSurfaceAndStayThere) {
    Random random;
    for (Surface const &surface : surfaces) {
        SCOPED_TRACE(surface.name);
        for (int run = 0; run < 300; ++run) {
            Point const p = random.Next();
            Point foot{};
            ASSERT_TRUE(surface.normal(p, foot));
            EXPECT_NEAR(surface.equation(foot), 0.0, 1e-9);
            EXPECT_NEAR(foot.x * p.y - foot.y * p.x, 0.0, 1e-9) << "another angle about z";
            EXPECT_GE(foot.x * p.x + foot.y * p.y, 0.0);
            Point again{};
            ASSERT_TRUE(surface.normal(foot, again));
            EXPECT_NEAR(Size(again - foot), 0.0, 1e-7) << "a point of the surface moved";
        }
    }
}

TEST(MMathFuncProjection, NormalProjectionFindsTheNearestPoint) {
    Random random;
    for (Surface const &surface : surfaces) {
        SCOPED_TRACE(surface.name);
        for (int run = 0; surface.normalIsNearest && run < 100; ++run) {
            Point const p = random.Next();
            Point foot{};
            ASSERT_TRUE(surface.normal(p, foot));
            // No point of the surface, found along any of many directions, is nearer.
            for (int i = 0; i < 200; ++i) {
                Point out{};
                if (surface.along(p, random.Next(), out)) {
                    EXPECT_GE(Size(out - p), Size(foot - p) - 1e-9) << p.x << ' ' << p.y << ' ' << p.z;
                }
            }
        }
    }
}

TEST(MMathFuncProjection, EllipsoidNormalIsThatOfTheConfocalOneThroughThePoint) {
    Random random;
    for (int run = 0; run < 200; ++run) {
        Point const p = random.Next();
        // The confocal ellipsoid (9 + k, 2.25 + k) through p, k by bisection.
        double low = -2.25;
        double high = 1000.0;
        for (int i = 0; i < 100; ++i) {
            double const k = (low + high) / 2.0;
            (p.R() * p.R() / (9.0 + k) + p.z * p.z / (2.25 + k) > 1.0 ? low : high) = k;
        }
        Point const confocalNormal{p.x / (9.0 + low), p.y / (9.0 + low), p.z / (2.25 + low)};
        Point foot{};
        ASSERT_TRUE(MMathFunc::project_on_ellipsoid_normal(p.Data(), 3.0, 1.5, kTol, &foot.x));
        EXPECT_NEAR(SineBetween({foot.x / 9.0, foot.y / 9.0, foot.z / 2.25}, confocalNormal), 0.0, 1e-7);
    }
    Point foot{};
    Point const inside{0.5, 0.0, -0.0};
    ASSERT_TRUE(MMathFunc::project_on_ellipsoid_normal(inside.Data(), 3.0, 1.5, kTol, &foot.x));
    EXPECT_NEAR(foot.z, 1.5, 1e-12) << "between the foci";
    Point const below{0.0, 0.0, -7.0};
    ASSERT_TRUE(MMathFunc::project_on_ellipsoid_normal(below.Data(), 3.0, 1.5, kTol, &foot.x));
    EXPECT_EQ(foot.z, 1.5) << "on the axis always the upper pole";
}

TEST(MMathFuncProjection, ADirectionFindsTheNearerOfItsTwoPoints) {
    Random random;
    for (Surface const &surface : surfaces) {
        SCOPED_TRACE(surface.name);
        for (int run = 0; run < 100; ++run) {
            Point const p = random.Next();
            Point const d = random.Next();
            Point const unit{d.x / Size(d), d.y / Size(d), d.z / Size(d)};
            double const expected =
                std::fmin(MarchedDistance(surface, p, unit, 1.0), MarchedDistance(surface, p, unit, -1.0));
            Point out{77, 77, 77};
            bool const found = surface.along(p, d, out);
            if (!found) {
                EXPECT_EQ(out.x, 77.0);
                EXPECT_EQ(expected, std::numeric_limits<double>::infinity());
            } else if (expected < 30.0) {
                EXPECT_NEAR(Size(out - p), expected, 1e-6);
                EXPECT_NEAR(surface.equation(out), 0.0, 1e-8);
                EXPECT_NEAR(SineBetween(out - p, d), 0.0, 1e-6);
            }
        }
    }
}

TEST(MMathFuncProjection, DegenerateSurfacesAndPoints) {
    Point const onAxis{0, 0, 3};
    Point const origin{0, 0, 0};
    Point const down{1e-12, 0, -4};
    Point const up{0, 0, 1};
    Point out{5, 6, 7};
    EXPECT_FALSE(MMathFunc::project_on_cylinder_normal(onAxis.Data(), 2, 1, kTol, &out.x));
    EXPECT_FALSE(MMathFunc::project_on_cylinder_normal(up.Data(), 2, 0, kTol, &out.x));
    EXPECT_FALSE(MMathFunc::project_on_cylinder_mf_vector(onAxis.Data(), up.Data(), 2, 1, kTol, &out.x));
    EXPECT_FALSE(MMathFunc::project_on_cylinder_mf_vector(onAxis.Data(), origin.Data(), 2, 1, kTol, &out.x));
    EXPECT_FALSE(MMathFunc::project_on_sphere_normal(origin.Data(), 2, kTol, &out.x));
    EXPECT_FALSE(MMathFunc::project_on_sphere_normal(onAxis.Data(), -2, kTol, &out.x));
    EXPECT_FALSE(MMathFunc::project_on_cone_normal(onAxis.Data(), 2, 1, 4, kTol, &out.x));
    EXPECT_FALSE(MMathFunc::project_on_cone_mf_vector(onAxis.Data(), up.Data(), 2, 1, 0, kTol, &out.x));
    EXPECT_FALSE(MMathFunc::project_on_ellipsoid_normal(down.Data(), 3, 0, kTol, &out.x));
    EXPECT_FALSE(MMathFunc::project_on_ellipsoid_mf_vector(down.Data(), up.Data(), -3, 1, kTol, &out.x));
    EXPECT_EQ(out.x + out.y + out.z, 18.0) << "a failure writes nothing";
    EXPECT_TRUE(MMathFunc::project_on_sphere_normal(down.Data(), 2, kTol, &out.x));
    EXPECT_EQ(out.z, -2.0);
    Point const behind{1e-12, -3.0, 0.0};
    EXPECT_TRUE(MMathFunc::project_on_cylinder_normal(behind.Data(), 2, 1, kTol, &out.x));
    EXPECT_EQ(out.y, -2.0) << "x below the tolerance, y negative";
    EXPECT_TRUE(MMathFunc::project_on_sphere_mf_vector(origin.Data(), up.Data(), 2, kTol, &out.x));
    EXPECT_EQ(out.z, -2.0) << "equal distances: the point against the direction";
    // Along a generator of the cone r = 2 - z / 4 the quadratic is linear: from (4, 0, 0) it meets the other side.
    Point const generator{-1, 0, 4};
    Point const start{4, 0, 0};
    EXPECT_TRUE(MMathFunc::project_on_cone_mf_vector(start.Data(), generator.Data(), 2, 1, 4, kTol, &out.x));
    EXPECT_NEAR(out.x, 1.0, 1e-12);
    EXPECT_NEAR(out.z, 12.0, 1e-12);
}

TEST(MMathFuncProjection, PlanesFromThreePoints) {
    Point const a{0, 0, 1}, b{10, 0, 1}, c{0, 10, 1}, p{3, 4, 6};
    Point out{9, 9, 9};
    EXPECT_TRUE(MMathFunc::project_on_plane_normal(p.Data(), a.Data(), b.Data(), c.Data(), 1e-10, &out.x));
    EXPECT_EQ(Size(out - Point{3, 4, 1}), 0.0);
    EXPECT_FALSE(MMathFunc::project_on_plane_normal(p.Data(), a.Data(), b.Data(), c.Data(), 10001.0, &out.x))
        << "the tolerance is one of the squared double area";
    struct {
        double degrees;
        bool projects, cuts;
    } const rows[] = {{0.5, false, true}, {1.01, true, true}, {90.0, true, true}, {0.0, false, false}};
    for (auto const &row : rows) {
        double const radians = row.degrees * MMathFunc::m_trrad;
        Point const dir{-7.0 * std::cos(radians), 0.0, -7.0 * MMathFunc::mathSin(radians)};
        Point const expected{3.0 - 5.0 / std::tan(radians), 4.0, 1.0};
        EXPECT_EQ(
            MMathFunc::project_on_plane_mf_vector(p.Data(), dir.Data(), a.Data(), b.Data(), c.Data(), 1.0, &out.x),
            row.projects);
        if (row.projects) {
            EXPECT_NEAR(Size(out - expected), 0.0, 1e-9);
        }
        EXPECT_EQ(MMathFunc::project_on_plane_mf_vector_for_CuttingPlane(p.Data(), dir.Data(), a.Data(), b.Data(),
                                                                         c.Data(), &out.x),
                  row.cuts);
        if (row.cuts) {
            EXPECT_NEAR(Size(out - expected), 0.0, 1e-9);
        }
    }
    // x + 2 y + 2 z = 9 has the distance 3 from the origin and its foot at (1, 2, 2).
    Point const origin{0, 0, 0};
    EXPECT_TRUE(MMathFunc::project_on_plane_normal(origin.Data(), 1, 2, 2, 9, 1e-10, &out.x));
    EXPECT_EQ(Size(out - Point{1, 2, 2}), 0.0);
    EXPECT_FALSE(MMathFunc::project_on_plane_normal(origin.Data(), 1, 2, 2, 9, 9.1, &out.x));
    Point const n{0, 0, 1}, v{0.6, 0, -0.8};
    EXPECT_EQ(MMathFunc::project_on_plane_vector(n.Data(), v.Data(), &out.x), 1);
    EXPECT_EQ(Size(out - Point{0.6, 0, 0}), 0.0);
    Point const nearNormal{1e-4, 0, -0.99999999};
    EXPECT_EQ(MMathFunc::project_on_plane_vector(n.Data(), nearNormal.Data(), &out.x), 0);
}

#include "zvi/math/func/MMathFunc.h"

#include "tests/math/Near.h"

#include <functional>
#include <limits>
#include <numbers>

namespace zvi::lib::test {

namespace {

constexpr double kTol = 1e-8;

double RadiusOf(Xyz const &p) {
    return std::hypot(p[0], p[1]);
}
double SineBetween(Xyz const &a, Xyz const &b) {
    return Length(Cross(a, b)) / Length(a) / Length(b);
}

// A surface of revolution: its equation, 0 on it, and its two projections.
struct Surface {
    char const *name;
    std::function<double(Xyz)> equation;
    std::function<bool(Xyz, Xyz &)> normal;
    std::function<bool(Xyz, Xyz, Xyz &)> along;
    bool normalIsNearest;
};

Surface Ellipsoid(char const *name, double a, double b) {
    return {name, [=](Xyz p) { return std::hypot(RadiusOf(p) / a, p[2] / b) - 1.0; },
            [=](Xyz p, Xyz &out) { return MMathFunc::project_on_ellipsoid_normal(p, a, b, kTol, out); },
            [=](Xyz p, Xyz d, Xyz &out) { return MMathFunc::project_on_ellipsoid_mf_vector(p, d, a, b, kTol, out); },
            false};
}

Surface const surfaces[] = {
    {"cylinder", [](Xyz p) { return RadiusOf(p) - 2.0; },
     [](Xyz p, Xyz &out) { return MMathFunc::project_on_cylinder_normal(p, 2.0, 5.0, kTol, out); },
     [](Xyz p, Xyz d, Xyz &out) { return MMathFunc::project_on_cylinder_mf_vector(p, d, 2.0, 5.0, kTol, out); }, true},
    {"sphere", [](Xyz p) { return Length(p) - 2.0; },
     [](Xyz p, Xyz &out) { return MMathFunc::project_on_sphere_normal(p, 2.0, kTol, out); },
     [](Xyz p, Xyz d, Xyz &out) { return MMathFunc::project_on_sphere_mf_vector(p, d, 2.0, kTol, out); }, true},
    {"cone", [](Xyz p) { return RadiusOf(p) - std::abs(2.0 - 0.375 * p[2]); },
     [](Xyz p, Xyz &out) { return MMathFunc::project_on_cone_normal(p, 2.0, 0.5, 4.0, kTol, out); },
     [](Xyz p, Xyz d, Xyz &out) { return MMathFunc::project_on_cone_mf_vector(p, d, 2.0, 0.5, 4.0, kTol, out); }, true},
    Ellipsoid("flat ellipsoid", 3.0, 1.5),
    Ellipsoid("tall ellipsoid", 1.5, 3.0)};

// Distance from p to the first change of sign of the equation along the line, found by marching both ways and
// bisection; infinite if there is none.
double MarchedDistance(Surface const &surface, Xyz const &p, Xyz const &unit) {
    auto const isIn = [&](double t) { return surface.equation(p + t * unit) < 0.0; };
    double const step = 0.01;
    for (double t = 0.0; t < 30.0; t += step)
        for (double const sense : {1.0, -1.0}) {
            if (isIn(sense * t) == isIn(sense * (t + step)))
                continue;
            double low = t, high = t + step;
            for (int i = 0; i < 40; ++i) {
                double const middle = (low + high) / 2.0;
                (isIn(sense * middle) == isIn(sense * low) ? low : high) = middle;
            }
            return low;
        }
    return std::numeric_limits<double>::infinity();
}

} // namespace

TEST(MMathFuncProjection, NormalProjectionsLieOnTheSurfaceAndStayThere) {
    Random number(4711, -6.0, 6.0);
    for (Surface const &surface : surfaces)
        for (int run = 0; run < 300; ++run) {
            SCOPED_TRACE(surface.name);
            Xyz const p = number.Space();
            Xyz foot{}, again{}, out{};
            ASSERT_TRUE(surface.normal(p, foot));
            EXPECT_NEAR(surface.equation(foot), 0.0, 1e-9);
            EXPECT_NEAR(foot[0] * p[1] - foot[1] * p[0], 0.0, 1e-9) << "another angle about z";
            EXPECT_GE(foot[0] * p[0] + foot[1] * p[1], 0.0);
            ASSERT_TRUE(surface.normal(foot, again));
            EXPECT_NEAR(Length(again - foot), 0.0, 1e-7) << "a point of the surface moved";
            // No point of the surface, found along any of many directions, is nearer.
            for (int i = 0; surface.normalIsNearest && i < 70; ++i)
                EXPECT_TRUE(!surface.along(p, number.Space(), out) || Length(out - p) >= Length(foot - p) - 1e-9) << p;
        }
}

TEST(MMathFuncProjection, EllipsoidNormalIsThatOfTheConfocalOneThroughThePoint) {
    Random number(4711, -6.0, 6.0);
    Xyz foot{};
    for (int run = 0; run < 200; ++run) {
        Xyz const p = number.Space();
        // The confocal ellipsoid (9 + k, 2.25 + k) through p, k by bisection.
        double low = -2.25, high = 1000.0;
        for (int i = 0; i < 100; ++i) {
            double const k = (low + high) / 2.0;
            (RadiusOf(p) * RadiusOf(p) / (9.0 + k) + p[2] * p[2] / (2.25 + k) > 1.0 ? low : high) = k;
        }
        Xyz const confocalNormal{p[0] / (9.0 + low), p[1] / (9.0 + low), p[2] / (2.25 + low)};
        ASSERT_TRUE(MMathFunc::project_on_ellipsoid_normal(p, 3.0, 1.5, kTol, foot));
        EXPECT_NEAR(SineBetween({foot[0] / 9.0, foot[1] / 9.0, foot[2] / 2.25}, confocalNormal), 0.0, 1e-7);
    }
    ASSERT_TRUE(MMathFunc::project_on_ellipsoid_normal(Xyz{0.5, 0.0, -0.0}, 3.0, 1.5, kTol, foot));
    EXPECT_NEAR(foot[2], 1.5, 1e-12) << "between the foci";
    ASSERT_TRUE(MMathFunc::project_on_ellipsoid_normal(Xyz{0, 0, -7}, 3.0, 1.5, kTol, foot));
    EXPECT_EQ(foot[2], 1.5) << "on the axis always the upper pole";
}

TEST(MMathFuncProjection, AlongADirectionTheNearestPointIsFound) {
    Random number(4711, -6.0, 6.0);
    for (Surface const &surface : surfaces)
        for (int run = 0; run < 100; ++run) {
            SCOPED_TRACE(surface.name);
            Xyz const p = number.Space(), d = number.Space(), untouched{77, 77, 77};
            double const expected = MarchedDistance(surface, p, 1.0 / Length(d) * d);
            Xyz out = untouched;
            if (!surface.along(p, d, out)) {
                EXPECT_EQ(out, untouched);
                EXPECT_TRUE(std::isinf(expected));
            } else if (expected < 30.0) {
                EXPECT_NEAR(Length(out - p), expected, 1e-6);
                EXPECT_NEAR(surface.equation(out), 0.0, 1e-8);
                EXPECT_NEAR(SineBetween(out - p, d), 0.0, 1e-6);
            }
        }
}

TEST(MMathFuncProjection, DegenerateSurfacesAndPoints) {
    Xyz const onAxis{0, 0, 3}, origin{0, 0, 0}, down{1e-12, 0, -4}, up{0, 0, 1};
    Xyz out{5, 6, 7};
    EXPECT_FALSE(MMathFunc::project_on_cylinder_normal(onAxis, 2, 1, kTol, out));
    EXPECT_FALSE(MMathFunc::project_on_cylinder_normal(up, 2, 0, kTol, out));
    EXPECT_FALSE(MMathFunc::project_on_cylinder_mf_vector(onAxis, up, 2, 1, kTol, out));
    EXPECT_FALSE(MMathFunc::project_on_cylinder_mf_vector(onAxis, origin, 2, 1, kTol, out));
    EXPECT_FALSE(MMathFunc::project_on_sphere_normal(origin, 2, kTol, out));
    EXPECT_FALSE(MMathFunc::project_on_sphere_normal(onAxis, -2, kTol, out));
    EXPECT_FALSE(MMathFunc::project_on_cone_normal(onAxis, 2, 1, 4, kTol, out));
    EXPECT_FALSE(MMathFunc::project_on_cone_mf_vector(onAxis, up, 2, 1, 0, kTol, out));
    EXPECT_FALSE(MMathFunc::project_on_ellipsoid_normal(down, 3, 0, kTol, out));
    EXPECT_FALSE(MMathFunc::project_on_ellipsoid_mf_vector(down, up, -3, 1, kTol, out));
    EXPECT_EQ(out, (Xyz{5, 6, 7})) << "a failure writes nothing";
    EXPECT_TRUE(MMathFunc::project_on_sphere_normal(down, 2, kTol, out));
    EXPECT_EQ(out[2], -2.0);
    EXPECT_TRUE(MMathFunc::project_on_cylinder_normal(Xyz{1e-12, -3, 0}, 2, 1, kTol, out));
    EXPECT_EQ(out[1], -2.0) << "x below the tolerance, y negative";
    EXPECT_TRUE(MMathFunc::project_on_sphere_mf_vector(origin, up, 2, kTol, out));
    EXPECT_EQ(out[2], -2.0) << "equal distances: the point against the direction";
    // Along a generator of the cone r = 2 - z / 4 the quadratic is linear: from (4, 0, 0) it meets the other side.
    EXPECT_TRUE(MMathFunc::project_on_cone_mf_vector(Xyz{4, 0, 0}, Xyz{-1, 0, 4}, 2, 1, 4, kTol, out));
    ExpectNear(out, Xyz{1, 0, 12});
}

TEST(MMathFuncProjection, PlanesFromThreePoints) {
    Xyz const a{0, 0, 1}, b{10, 0, 1}, c{0, 10, 1}, p{3, 4, 6}, origin{0, 0, 0}, n{0, 0, 1};
    Xyz out{9, 9, 9};
    EXPECT_TRUE(MMathFunc::project_on_plane_normal(p, a, b, c, 1e-10, out));
    EXPECT_EQ(out, (Xyz{3, 4, 1}));
    EXPECT_FALSE(MMathFunc::project_on_plane_normal(p, a, b, c, 10001.0, out)) << "one of the squared double area";
    for (auto const &[degrees, projects, cuts] : Rows<double, bool, bool>("0.5 0 1; 1.01 1 1; 90 1 1; 0 0 0")) {
        double const radians = degrees * std::numbers::pi / 180.0;
        Xyz const dir{-7.0 * std::cos(radians), 0.0, -7.0 * std::sin(radians)};
        Xyz const expected{3.0 - 5.0 / std::tan(radians), 4.0, 1.0};
        EXPECT_EQ(MMathFunc::project_on_plane_mf_vector(p, dir, a, b, c, 1.0, out), projects) << degrees;
        ExpectNear(out, projects ? expected : out, 1e-9);
        EXPECT_EQ(MMathFunc::project_on_plane_mf_vector_for_CuttingPlane(p, dir, a, b, c, out), cuts) << degrees;
        ExpectNear(out, cuts ? expected : out, 1e-9);
    }
    // x + 2 y + 2 z = 9 has the distance 3 from the origin and its foot at (1, 2, 2).
    EXPECT_TRUE(MMathFunc::project_on_plane_normal(origin, 1, 2, 2, 9, 1e-10, out));
    EXPECT_EQ(out, (Xyz{1, 2, 2}));
    EXPECT_FALSE(MMathFunc::project_on_plane_normal(origin, 1, 2, 2, 9, 9.1, out));
    EXPECT_EQ(MMathFunc::project_on_plane_vector(n, Xyz{0.6, 0, -0.8}, out), 1);
    EXPECT_EQ(out, (Xyz{0.6, 0, 0}));
    EXPECT_EQ(MMathFunc::project_on_plane_vector(n, Xyz{1e-4, 0, -0.99999999}, out), 0);
}

} // namespace zvi::lib::test

#include "zvi/math/PlaneProjection.h"

#include "tests/math/Near.h"

#include <cmath>
#include <random>

namespace zvi::lib {

using test::ExpectNear;
using test::Xyz;

TEST(PlaneProjection, FootOnALine) {
    double const a[3] = {1, 2, 3};
    double const b[3] = {3, 3, 5};
    std::mt19937_64 random(23);
    std::uniform_real_distribution<double> coordinate(-9.0, 9.0);
    for (int round = 0; round < 100; ++round) {
        double const p[3] = {coordinate(random), coordinate(random), coordinate(random)};
        double const t = ((p[0] - 1) * 2 + (p[1] - 2) + (p[2] - 3) * 2) / 9;
        double out[3];
        project_on_line(a, b, p, out);
        ExpectNear(out, Xyz{1 + 2 * t, 2 + t, 3 + 2 * t}, 1e-12);
    }
}

TEST(PlaneProjection, FootOnALineInSpecialPlaces) {
    double const a[3] = {0, 0, 0};
    double const b[3] = {10, 0, 0};
    struct Row {
        double p[3];
        Xyz foot;
    };
    Row const rows[] = {
        {{4, 1e-5, 0}, {4, 1e-5, 0}},                   // on the segment by its angle: unchanged
        {{-3, 0, 0}, {-3, 0, 0}},                       // on the line before a
        {{30, 0, 0}, {30, 0, 0}},                       // on the line after b
        {{0, 5, 0}, {0, 0, 0}},                         // right over a
        {{20, 1e-3, 0}, {std::sqrt(400 + 1e-6), 0, 0}}, // under less than 0.008 degrees: the full distance
    };
    for (Row const &row : rows) {
        double out[3] = {row.p[0], row.p[1], row.p[2]};
        project_on_line(a, b, out, out);
        ExpectNear(out, row.foot, 1e-14 * 30);
    }
    double out[3];
    project_on_line(a, a, rows[3].p, out);
    ExpectNear(out, Xyz{0, 0, 0}, 0.0);
}

TEST(PlaneProjection, FreePointsMoveInPlace) {
    double const a[3] = {0, 0, 2};
    double const b[3] = {1, 0, 2};
    double const c[3] = {0, 1, 2};
    double const longNormal[3] = {0, 0, -7};
    double const slant[3] = {1, 0, 1};
    double const along[3] = {3, 1, 0};
    double const hardlyRising[3] = {1, 0, 9e-9};
    double const zero[3] = {0, 0, 9e-9};
    auto const expect = [](auto project, Xyz const &expected) {
        double p[3] = {5, 6, 7};
        project(p);
        ExpectNear(p, expected);
    };
    expect([&](double *p) { project_on_plane_normal(a, b, c, p); }, {5, 6, 2});
    expect([&](double *p) { project_on_plane_normal(a, longNormal, p); }, {5, 6, 2});
    expect([&](double *p) { project_on_plane_vector(a, b, c, slant, p); }, {0, 6, 2});
    expect([&](double *p) { project_on_plane_vector(a, b, c, zero, p); }, {5, 6, 2});
    expect([&](double *p) { project_on_plane_vector(a, b, c, along, p); }, {5, 6, 7});
    expect([&](double *p) { project_on_plane_vector(a, b, c, hardlyRising, p); }, {5, 6, 7});
    expect([&](double *p) { project_on_plane_vector(a, b, b, slant, p); }, {5, 6, 7});
    expect([&](double *p) { project_on_plane_normal(a, b, b, p); }, {5, 6, 7});
    double const shortNormal[3] = {0, 0, 9.9e-5};
    expect([&](double *p) { project_on_plane_normal(a, shortNormal, p); }, {5, 6, 7});
}

} // namespace zvi::lib

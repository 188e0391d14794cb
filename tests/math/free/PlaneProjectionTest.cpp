#include "zvi/math/free/PlaneProjection.h"

#include "tests/math/Near.h"

namespace zvi::lib::test {

TEST(PlaneProjection, FootOnALine) {
    Xyz const a{1, 2, 3}, b{3, 3, 5};
    Random coordinate(23, -9.0, 9.0);
    Xyz out{};
    for (int round = 0; round < 100; ++round) {
        Xyz const p = coordinate.Space();
        project_on_line(a, b, p, out);
        ExpectNear(out, a + Dot(p - a, b - a) / 9.0 * (b - a));
    }
    // On the segment by its angle: unchanged; on the line before and behind it; right over the first point; under less
    // than 0.008 degrees: the full distance.
    for (auto const &[p, foot] : Rows<Xyz, Xyz>("4 1e-5 0  4 1e-5 0; -3 0 0  -3 0 0; 30 0 0  30 0 0; 0 5 0  0 0 0;"
                                                "20 1e-3 0  20.000000025 0 0")) {
        out = p;
        project_on_line(Xyz{0, 0, 0}, Xyz{10, 0, 0}, out, out);
        ExpectNear(out, foot, 1e-13);
        project_on_line(a, a, p, out);
        EXPECT_EQ(out, a) << "no line";
    }
}

TEST(PlaneProjection, FreePointsMoveInPlace) {
    Xyz const a{0, 0, 2}, b{1, 0, 2}, c{0, 1, 2}, p{5, 6, 7}, foot{5, 6, 2};
    Xyz out = p;
    project_on_plane_normal(a, b, c, out);
    ExpectNear(out, foot);
    project_on_plane_normal(a, b, b, out = p);
    EXPECT_EQ(out, p) << "no plane";
    project_on_plane_vector(a, b, b, Xyz{1, 0, 1}, out);
    EXPECT_EQ(out, p);
    for (auto const &[normal, expected] : {std::pair{Xyz{0, 0, -7}, foot}, {Xyz{0, 0, 9.9e-5}, p}}) {
        project_on_plane_normal(a, normal, out = p);
        ExpectNear(out, expected);
    }
    // A direction that is slanted, missing, in the plane, and hardly rising from it.
    for (auto const &[direction, expected] :
         {std::pair{Xyz{1, 0, 1}, Xyz{0, 6, 2}}, {Xyz{0, 0, 9e-9}, foot}, {Xyz{3, 1, 0}, p}, {Xyz{1, 0, 9e-9}, p}}) {
        project_on_plane_vector(a, b, c, direction, out = p);
        ExpectNear(out, expected);
    }
}

} // namespace zvi::lib::test

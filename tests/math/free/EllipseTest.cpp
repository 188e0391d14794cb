#include "zvi/math/free/Ellipse.h"

#include "tests/math/Near.h"

namespace zvi::lib::test {

TEST(Ellipse, ContactsLieOnTheEllipseAndTheirTangentsMeetInThePoint) {
    Random coordinate(29, -9.0, 9.0);
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE(testing::Message() << "seed 29, round " << round);
        Xy const p = coordinate.Plan(), weighted{p[0] / 9.0, p[1] / 4.0};
        double out[4];
        int const count = GetEllipseContactPoint(Xy{3, 2}, p, out);
        ASSERT_EQ(count, Dot(p, weighted) < 1.0 ? 0 : 2);
        if (count == 0)
            continue;
        Xy const contacts[2] = {{out[0], out[1]}, {out[2], out[3]}};
        EXPECT_GT(Length(contacts[0] - contacts[1]), 1e-6);
        for (Xy const &q : contacts) {
            EXPECT_NEAR(q[0] * q[0] / 9.0 + q[1] * q[1] / 4.0, 1.0, 1e-9);
            EXPECT_NEAR(Dot(q, weighted), 1.0, 1e-7) << "the polar of p";
        }
    }
}

TEST(Ellipse, SpecialPlaces) {
    // On the curve or in it: none. One tangent vertical, the other level; slope (36 - 9) / 5 / 6 / 2 = 0.45; slopes
    // (0 -+ 20) / -25: 4/5, then -4/5. On a circle itself; by the squares on the vertical tangent, not at the vertex.
    for (auto const &[axes, p, count, contacts] : Rows<Xy, Xy, int, Coordinates<4>>(
             "5 3  5 0  0  0 0 0 0; 5 3  0 -2.999999991  0  0 0 0 0; 5 3  0 0  0  0 0 0 0;"
             "5 3  5 3  2  5 0 0 3; 5 3  -5 -3  2  -5 0 0 -3; 5 3  5 6  2  5 0 -3 2.4; 5 3  0 5  2  -4 1.8 4 1.8;"
             "5 5  3 -4  2  3 -4 3 -4; 0.01 0.02  0.0100001 0  1  0.0100001 0 0 0")) {
        SCOPED_TRACE(testing::Message() << axes << p);
        Coordinates<4> out{};
        EXPECT_EQ(GetEllipseContactPoint(axes, p, out), count);
        ExpectNear(out, contacts, 1e-8);
    }
}

} // namespace zvi::lib::test

#include "zvi/math/Ellipse.h"

#include "tests/math/Near.h"

#include <cmath>
#include <random>

namespace zvi::lib {

using test::ExpectNear;
using test::Xy;

TEST(Ellipse, ContactsLieOnTheEllipseAndTheirTangentsMeetInThePoint) {
    std::mt19937_64 random(29);
    std::uniform_real_distribution<double> coordinate(-9.0, 9.0);
    double const axes[2] = {3.0, 2.0};
    for (int round = 0; round < 300; ++round) {
        double const p[2] = {coordinate(random), coordinate(random)};
        double out[4];
        int const count = GetEllipseContactPoint(axes, p, out);
        double const level = p[0] * p[0] / 9.0 + p[1] * p[1] / 4.0;
        SCOPED_TRACE(testing::Message() << "seed 29, round " << round);
        ASSERT_EQ(count, level < 1.0 ? 0 : 2);
        for (int i = 0; i < count; ++i) {
            double const *q = out + 2 * i;
            EXPECT_NEAR(q[0] * q[0] / 9.0 + q[1] * q[1] / 4.0, 1.0, 1e-9);
            EXPECT_NEAR(p[0] * q[0] / 9.0 + p[1] * q[1] / 4.0, 1.0, 1e-7); // the polar of p
        }
        if (count == 2) {
            EXPECT_GT(std::hypot(out[0] - out[2], out[1] - out[3]), 1e-6);
        }
    }
}

TEST(Ellipse, SpecialPlaces) {
    double const axes[2] = {5.0, 3.0};
    struct Row {
        double p[2];
        int count;
        Xy first, second;
    };
    Row const rows[] = {
        {{5, 0}, 0, {}, {}},
        {{0, -3 + 9e-9}, 0, {}, {}},
        {{0, 0}, 0, {}, {}},
        {{5, 3}, 2, {5, 0}, {0, 3}},      // one tangent vertical, the other level
        {{-5, -3}, 2, {-5, 0}, {0, -3}},  //
        {{5, 6}, 2, {5, 0}, {-3, 2.4}},   // slope (36 - 9) / 5 / 6 / 2 = 0.45
        {{0, 5}, 2, {-4, 1.8}, {4, 1.8}}, // slopes (0 -+ 20) / -25: 4/5, then -4/5
    };
    for (Row const &row : rows) {
        double out[4] = {0, 0, 0, 0};
        SCOPED_TRACE(&row - rows);
        EXPECT_EQ(GetEllipseContactPoint(axes, row.p, out), row.count);
        ExpectNear(out, row.first, 1e-6);
        ExpectNear(out + 2, row.second, 1e-6);
    }
}

TEST(Ellipse, RareContacts) {
    double const axes[2] = {5.0, 5.0};
    double const p[2] = {3.0, -4.0};
    double out[4];
    ASSERT_EQ(GetEllipseContactPoint(axes, p, out), 2);
    ExpectNear(out, Xy{3, -4});
    ExpectNear(out + 2, Xy{3, -4});
    // By the squares on the vertical tangent, and yet not at the vertex.
    double const smallAxes[2] = {0.01, 0.02};
    double const beside[2] = {0.0100001, 0.0};
    ASSERT_EQ(GetEllipseContactPoint(smallAxes, beside, out), 1);
    ExpectNear(out, Xy{0.0100001, 0});
}

} // namespace zvi::lib

#include "zvi/math/Product.h"

#include "tests/math/Near.h"
#include "zvi/math/Center.h"
#include "zvi/math/Distance.h"

#include <cmath>
#include <random>

namespace zvi::lib {

using test::ExpectNear;
using test::Xyz;

TEST(Product, NormalsAreUnitVectorsOrZero) {
    double const a[3] = {2, 0, 0};
    double const b[3] = {1, 3, 0};
    double const c[3] = {2, 0, 5};
    double out[3];
    cross_product_3d(a, b, out);
    ExpectNear(out, Xyz{0, 0, 6});
    normal_3d(a, b, out);
    ExpectNear(out, Xyz{0, 0, 1});
    cross_product_3d(a, b, c, out); // (-1, 3, 0) x (0, 0, 5)
    ExpectNear(out, Xyz{15, 5, 0});
    normal_3d(a, b, c, out);
    ExpectNear(out, Xyz{3 / std::sqrt(10.0), 1 / std::sqrt(10.0), 0});
    EXPECT_EQ(normal_2d(a, b), 6.0);
    double const small[3] = {0, 4e-9, 0};
    normal_3d(a, small, out);
    ExpectNear(out, Xyz{0, 0, 0}, 0.0);
}

TEST(Product, OutputMayBeAnInput) {
    double a[3] = {1, 2, 3};
    double const b[3] = {4, 5, 6};
    cross_product_3d(a, b, a);
    ExpectNear(a, Xyz{-3, 6, -3});
    Subtract(b, a, a);
    ExpectNear(a, Xyz{7, -1, 9});
    GetMidCoord(a, b, a);
    ExpectNear(a, Xyz{5.5, 2, 7.5});
}

TEST(Product, NormalizeHasAFinerLimit) {
    double small[3] = {0, 2e-12, 0};
    normalize(small);
    ExpectNear(small, Xyz{0, 1, 0});
    double smaller[3] = {0, 9e-13, 0};
    normalize(smaller);
    EXPECT_EQ(smaller[1], 9e-13);
}

TEST(Product, CentersAreMeans) {
    double const a[3] = {0, 0, 0};
    double const b[3] = {3, 0, 6};
    double const c[3] = {0, 9, 3};
    double const d[3] = {1, -1, 3};
    double out[3];
    GetCenterCoord(a, b, c, out);
    ExpectNear(out, Xyz{1, 3, 3});
    GetCenterCoord(a, b, c, d, out);
    ExpectNear(out, Xyz{1, 2, 3});
    EXPECT_EQ(GetCenterPnt(a, b, c).Y(), 3.0);
    EXPECT_EQ(GetCenterPnt(a, b, c, d).Y(), 2.0);
}

void ExpectOrthonormal(double const *e1, double const *e2) {
    EXPECT_NEAR(norm_3d(e1), 1.0, 1e-14);
    EXPECT_NEAR(norm_3d(e2), 1.0, 1e-14);
    EXPECT_NEAR(e1[0] * e2[0] + e1[1] * e2[1] + e1[2] * e2[2], 0.0, 1e-14);
}

TEST(Product, GramSchmidtStaysPerpendicularForFlatAngles) {
    std::mt19937_64 random(3);
    std::uniform_real_distribution<double> coordinate(-1.0, 1.0);
    for (double flatness : {1.0, 1e-3, 1e-6, 1e-9, 1e-11}) {
        double const scale = 1e5;
        double const a[3] = {scale * coordinate(random), scale * coordinate(random), scale * coordinate(random)};
        double b[3];
        for (int i = 0; i < 3; ++i)
            b[i] = -2.0 * a[i] + flatness * scale * coordinate(random);
        double e1[3];
        double e2[3];
        ASSERT_TRUE(gram_schmidt_orthonormal_basis_3d(a, b, e1, e2)) << flatness;
        ExpectOrthonormal(e1, e2);
        EXPECT_GT(b[0] * e2[0] + b[1] * e2[1] + b[2] * e2[2], 0.0);
    }
}

TEST(Product, GramSchmidtOfParallelAndZeroVectors) {
    double const a[3] = {0.1, 0.2, 0.3};
    double const parallel[3] = {-1e7 * 0.1, -1e7 * 0.2, -1e7 * 0.3};
    double const zero[3] = {0, 0, 0};
    double e1[3];
    double e2[3];
    EXPECT_FALSE(gram_schmidt_orthonormal_basis_3d(a, parallel, e1, e2));
    EXPECT_NEAR(norm_3d(e1), 1.0, 1e-15);
    ExpectNear(e2, Xyz{0, 0, 0}, 0.0);
    EXPECT_FALSE(gram_schmidt_orthonormal_basis_3d(zero, a, e1, e2));
    ExpectNear(e1, Xyz{0, 0, 0}, 0.0);
}

TEST(Product, OrthonormalBasisIsRightHanded) {
    double e1[3];
    double e2[3];
    double e3[3];
    double const directions[][3] = {{0, 0, 1}, {0, -2, 0}, {1, 1, 1}, {-3, 1e-9, 4}, {0, 0, -1e-7}};
    for (auto const &direction : directions) {
        ASSERT_TRUE(orthonormal_basis(direction, e1, e2, e3));
        ExpectOrthonormal(e1, e2);
        double cross[3];
        cross_product_3d(e1, e2, cross);
        double const length = norm_3d(direction);
        ExpectNear(cross, Xyz{direction[0] / length, direction[1] / length, direction[2] / length});
    }
    ASSERT_TRUE(orthonormal_basis(directions[0], e1, e2, e3));
    ExpectNear(e1, Xyz{1, 0, 0});
    ExpectNear(e2, Xyz{0, 1, 0});
    double const zero[3] = {0, 0, 9e-9};
    EXPECT_FALSE(orthonormal_basis(zero, e1, e2, e3));
    ExpectNear(e3, Xyz{0, 0, 0}, 0.0);
}

} // namespace zvi::lib

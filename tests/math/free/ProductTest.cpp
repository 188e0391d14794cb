#include "zvi/math/free/Product.h"

#include "tests/math/Near.h"
#include "zvi/math/free/Center.h"

namespace zvi::lib::test {

TEST(Product, NormalsAreUnitVectorsOrZero) {
    Xyz const a{2, 0, 0}, b{1, 3, 0}, c{2, 0, 5};
    Xyz out{};
    cross_product_3d(a, b, out);
    ExpectNear(out, Xyz{0, 0, 6});
    normal_3d(a, b, out);
    ExpectNear(out, Xyz{0, 0, 1});
    cross_product_3d(a, b, c, out); // (-1, 3, 0) x (0, 0, 5)
    ExpectNear(out, Xyz{15, 5, 0});
    normal_3d(a, b, c, out);
    ExpectNear(out, Xyz{3 / std::sqrt(10.0), 1 / std::sqrt(10.0), 0});
    EXPECT_EQ(normal_2d(a, b), 6.0);
    normal_3d(a, Xyz{0, 4e-9, 0}, out);
    EXPECT_EQ(out, (Xyz{0, 0, 0}));
}

TEST(Product, OutputMayBeAnInput) {
    Xyz a{1, 2, 3};
    Xyz const b{4, 5, 6};
    cross_product_3d(a, b, a);
    EXPECT_EQ(a, (Xyz{-3, 6, -3}));
    Subtract(b, a, a);
    EXPECT_EQ(a, (Xyz{7, -1, 9}));
    GetMidCoord(a, b, a);
    EXPECT_EQ(a, (Xyz{5.5, 2, 7.5}));
}

TEST(Product, NormalizeHasAFinerLimit) {
    for (auto const &[before, after] : Rows<2>("2e-12 1; 9e-13 9e-13")) {
        Xyz v{0, before, 0};
        normalize(v);
        EXPECT_EQ(v, (Xyz{0, after, 0}));
    }
}

TEST(Product, CentersAreMeans) {
    Xyz const a{0, 0, 0}, b{3, 0, 6}, c{0, 9, 3}, d{1, -1, 3};
    Xyz out{};
    GetCenterCoord(a, b, c, out);
    ExpectNear(out, Xyz{1, 3, 3});
    GetCenterCoord(a, b, c, d, out);
    ExpectNear(out, Xyz{1, 2, 3});
    EXPECT_EQ(GetCenterPnt(a, b, c).Y(), 3.0);
    EXPECT_EQ(GetCenterPnt(a, b, c, d).Y(), 2.0);
}

void ExpectOrthonormal(Xyz const &e1, Xyz const &e2) {
    EXPECT_NEAR(Length(e1), 1.0, 1e-14);
    EXPECT_NEAR(Length(e2), 1.0, 1e-14);
    EXPECT_NEAR(Dot(e1, e2), 0.0, 1e-14);
}

TEST(Product, GramSchmidtStaysPerpendicularForFlatAngles) {
    Random coordinate(3, -1e5, 1e5);
    Xyz e1{}, e2{};
    for (double flatness : {1.0, 1e-3, 1e-6, 1e-9, 1e-11}) {
        Xyz const a = coordinate.Space(), b = flatness * coordinate.Space() - 2.0 * a;
        ASSERT_TRUE(gram_schmidt_orthonormal_basis_3d(a, b, e1, e2)) << flatness;
        ExpectOrthonormal(e1, e2);
        EXPECT_GT(Dot(b, e2), 0.0);
    }
    Xyz const a{0.1, 0.2, 0.3}, zero{0, 0, 0};
    EXPECT_FALSE(gram_schmidt_orthonormal_basis_3d(a, -1e7 * a, e1, e2)) << "parallel";
    EXPECT_NEAR(Length(e1), 1.0, 1e-15);
    EXPECT_EQ(e2, zero);
    EXPECT_FALSE(gram_schmidt_orthonormal_basis_3d(zero, a, e1, e2));
    EXPECT_EQ(e1, zero);
}

TEST(Product, OrthonormalBasisIsRightHanded) {
    Xyz e1{}, e2{}, e3{};
    for (Xyz const &direction : {Xyz{0, -2, 0}, {1, 1, 1}, {-3, 1e-9, 4}, {0, 0, -1e-7}, {0, 0, 1}}) {
        ASSERT_TRUE(orthonormal_basis(direction, e1, e2, e3));
        ExpectOrthonormal(e1, e2);
        ExpectNear(e3, 1.0 / Length(direction) * direction);
        ExpectNear(Cross(e1, e2), e3);
    }
    ExpectNear(e1, Xyz{1, 0, 0}); // about z itself
    EXPECT_FALSE(orthonormal_basis(Xyz{0, 0, 9e-9}, e1, e2, e3));
    EXPECT_EQ(e3, (Xyz{0, 0, 0}));
}

} // namespace zvi::lib::test

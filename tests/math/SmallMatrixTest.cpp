#include "zvi/math/SmallMatrix.h"

#include "tests/math/Near.h"
#include "zvi/math/SmallVector.h"

#include <cmath>
#include <random>

namespace zvi::lib {

namespace {

/// The operations of one size under common names, so that one test runs for each.
template <int N>
struct Size;

#define ZVI_SIZE(N)                                                                                                    \
    template <>                                                                                                        \
    struct Size<N> {                                                                                                   \
        static constexpr int kRows = N;                                                                                \
        using Matrix = double[N][N];                                                                                   \
        static constexpr auto Zero = zero_matrix_##N##x##N;                                                            \
        static constexpr auto Identity = identity_matrix_##N##x##N;                                                    \
        static constexpr auto Copy = copy_matrix_##N##x##N;                                                            \
        static constexpr auto Add = add_matrix_##N##x##N##_matrix_##N##x##N;                                           \
        static constexpr auto Subtract = subtract_matrix_##N##x##N##_matrix_##N##x##N;                                 \
        static constexpr auto Scale = scale_matrix_##N##x##N;                                                          \
        static constexpr auto Multiply = multiply_matrix_##N##x##N##_matrix_##N##x##N;                                 \
        static constexpr auto MultiplyVector = multiply_matrix_##N##x##N##_vector_##N##x1;                             \
        static constexpr auto Transpose = transpose_matrix_##N##x##N;                                                  \
        static constexpr auto Determinant = determinant_matrix_##N##x##N;                                              \
        static constexpr auto Inverse = inverse_matrix_##N##x##N;                                                      \
        static constexpr auto ZeroVector = zero_vector_##N##x1;                                                        \
        static constexpr auto CopyVector = copy_vector_##N##x1;                                                        \
        static constexpr auto AddVector = add_vector_##N##x1_vector_##N##x1;                                           \
        static constexpr auto SubtractVector = subtract_vector_##N##x1_vector_##N##x1;                                 \
        static constexpr auto ScaleVector = scale_vector_##N##x1;                                                      \
        static constexpr auto Dot = multiply_vector_##N##x1_vector_##N##x1;                                            \
        static constexpr auto Norm = norm_vector_##N##x1;                                                              \
    }
ZVI_SIZE(2);
ZVI_SIZE(3);
ZVI_SIZE(4);
#undef ZVI_SIZE

} // namespace

template <class S>
class SmallMatrix : public testing::Test {
protected:
    static constexpr int kRows = S::kRows;
    using Matrix = typename S::Matrix;

    void Fill(Matrix &m) {
        for (auto &row : m) {
            for (double &element : row)
                element = m_whole(m_random);
        }
    }

    static void ExpectEqual(Matrix const &a, Matrix const &b, double tol = 0.0) {
        for (int i = 0; i < kRows; ++i) {
            for (int j = 0; j < kRows; ++j)
                EXPECT_NEAR(a[i][j], b[i][j], tol) << i << ' ' << j;
        }
    }

    std::mt19937_64 m_random{37};
    std::uniform_int_distribution<int> m_whole{-5, 5};
};

using Sizes = testing::Types<Size<2>, Size<3>, Size<4>>;
TYPED_TEST_SUITE(SmallMatrix, Sizes);

TYPED_TEST(SmallMatrix, ElementwiseOperations) {
    typename TestFixture::Matrix a, b, c, zero;
    this->Fill(a);
    TypeParam::Zero(zero);
    TypeParam::Scale(a, 3.0, b);
    TypeParam::Subtract(b, a, c);
    TypeParam::Subtract(c, a, c);
    this->ExpectEqual(c, a);
    TypeParam::Scale(a, -1.0, b);
    TypeParam::Add(a, b, b);
    this->ExpectEqual(b, zero);
    TypeParam::Copy(a, b);
    TypeParam::Transpose(b, b);
    for (int i = 0; i < TypeParam::kRows; ++i) {
        for (int j = 0; j < TypeParam::kRows; ++j)
            EXPECT_EQ(b[i][j], a[j][i]);
    }
}

TYPED_TEST(SmallMatrix, ProductsAssociateAndTheirDeterminantsMultiply) {
    typename TestFixture::Matrix a, b, c, left, right;
    for (int round = 0; round < 20; ++round) {
        this->Fill(a);
        this->Fill(b);
        this->Fill(c);
        TypeParam::Multiply(a, b, left);
        EXPECT_EQ(TypeParam::Determinant(left), TypeParam::Determinant(a) * TypeParam::Determinant(b));
        TypeParam::Multiply(b, c, right);
        TypeParam::Multiply(left, c, left);   // in place on the left
        TypeParam::Multiply(a, right, right); // and on the right
        this->ExpectEqual(left, right);
        double v[4], once[4], twice[4];
        TypeParam::CopyVector(c[0], v);
        TypeParam::MultiplyVector(b, v, once);
        TypeParam::MultiplyVector(a, once, once);
        TypeParam::Multiply(a, b, left);
        TypeParam::MultiplyVector(left, v, twice);
        TypeParam::SubtractVector(once, twice, once);
        EXPECT_EQ(TypeParam::Norm(once), 0.0);
    }
}

TYPED_TEST(SmallMatrix, InverseTimesMatrixIsIdentity) {
    typename TestFixture::Matrix a, inverse, product, identity;
    TypeParam::Identity(identity);
    int inverted = 0;
    for (int round = 0; round < 300; ++round) {
        this->Fill(a);
        bool const isRegular = TypeParam::Determinant(a) != 0.0;
        TypeParam::Scale(a, round % 2 == 0 ? 1e-9 : 1e6, a); // scale plays no part
        ASSERT_EQ(TypeParam::Inverse(a, inverse), isRegular) << "seed 37, round " << round;
        if (!isRegular)
            continue;
        ++inverted;
        TypeParam::Multiply(inverse, a, product);
        this->ExpectEqual(product, identity, 1e-11);
        TypeParam::Multiply(a, inverse, product);
        this->ExpectEqual(product, identity, 1e-11);
    }
    EXPECT_GT(inverted, 200);
}

TYPED_TEST(SmallMatrix, SingularMatricesWriteNothing) {
    typename TestFixture::Matrix a, out;
    TypeParam::Identity(out);
    TypeParam::Zero(a);
    EXPECT_FALSE(TypeParam::Inverse(a, out));
    TypeParam::Identity(a);
    a[1][0] = std::nan("");
    a[1][1] = std::nan("");
    EXPECT_FALSE(TypeParam::Inverse(a, out));
    EXPECT_EQ(TypeParam::Determinant(out), 1.0);
}

TYPED_TEST(SmallMatrix, Vectors) {
    double a[5] = {1, 2, 3, 4, 99};
    double b[5] = {99, 99, 99, 99, 99};
    constexpr int rows = TypeParam::kRows;
    double const squares[] = {0, 1, 5, 14, 30};
    TypeParam::ScaleVector(a, 2.0, b);
    EXPECT_EQ(TypeParam::Dot(a, b), 2.0 * squares[rows]);
    TypeParam::AddVector(a, b, b);
    EXPECT_EQ(TypeParam::Norm(b), 3.0 * std::sqrt(squares[rows]));
    TypeParam::ZeroVector(b);
    EXPECT_EQ(TypeParam::Norm(b), 0.0);
    EXPECT_EQ(b[rows], 99.0) << "one element too many";
}

TEST(SmallMatrixDeterminant, OfWrittenOutMatrices) {
    double const two[2][2] = {{3, 1}, {4, 2}};
    double const three[3][3] = {{2, 0, 1}, {1, 3, 2}, {1, 1, 4}};
    double const four[4][4] = {{1, 2, 0, 1}, {0, 1, 3, 1}, {2, 0, 1, 0}, {1, 1, 0, 2}};
    EXPECT_EQ(determinant_matrix_2x2(two), 2.0);
    EXPECT_EQ(determinant_matrix_3x3(three), 18.0);
    EXPECT_EQ(determinant_matrix_4x4(four), 20.0);
}

} // namespace zvi::lib

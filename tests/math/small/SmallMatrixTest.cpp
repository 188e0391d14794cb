#include "zvi/math/small/SmallMatrix.h"

#include "tests/math/Near.h"
#include "zvi/math/small/SmallVector.h"

namespace zvi::lib::test {

namespace {

/// The operations of one size under common names, so that one test runs for each.
template <int N>
struct Size;

#define ZVI_SIZE(N)                                                                                                    \
    template <>                                                                                                        \
    struct Size<N> {                                                                                                   \
        static constexpr int kRows = N;                                                                                \
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

template <int N>
struct Square {
    using Rows = double (*)[N];
    using ConstRows = double const (*)[N];

    operator Rows() { return rows; }
    operator ConstRows() const { return rows; }
    friend bool operator==(Square const &, Square const &) = default;

    double rows[N][N];
};

} // namespace

template <class S>
class SmallMatrix : public testing::Test {
protected:
    using Matrix = Square<S::kRows>;

    Matrix Next() {
        Matrix m{};
        for (auto &row : m.rows)
            for (double &element : row)
                element = std::round(m_number());
        return m;
    }

    Random m_number{37, -5.5, 5.5};
};

using Sizes = testing::Types<Size<2>, Size<3>, Size<4>>;
TYPED_TEST_SUITE(SmallMatrix, Sizes);

TYPED_TEST(SmallMatrix, ElementwiseOperations) {
    auto const a = this->Next();
    auto b = a, c = a, zero = a;
    TypeParam::Zero(zero);
    TypeParam::Scale(a, 3.0, b);
    TypeParam::Subtract(b, a, c);
    TypeParam::Subtract(c, a, c);
    EXPECT_EQ(c, a);
    TypeParam::Scale(a, -1.0, b);
    TypeParam::Add(a, b, b);
    EXPECT_EQ(b, zero);
    TypeParam::Copy(a, b);
    TypeParam::Transpose(b, b);
    for (int i = 0; i < TypeParam::kRows; ++i)
        for (int j = 0; j < TypeParam::kRows; ++j)
            EXPECT_EQ(b[i][j], a[j][i]);
}

TYPED_TEST(SmallMatrix, ProductsAssociateAndTheirDeterminantsMultiply) {
    for (int round = 0; round < 20; ++round) {
        auto const a = this->Next(), b = this->Next(), c = this->Next();
        auto ab = a, bc = a;
        TypeParam::Multiply(a, b, ab);
        EXPECT_EQ(TypeParam::Determinant(ab), TypeParam::Determinant(a) * TypeParam::Determinant(b));
        double v[4], once[4], twice[4];
        TypeParam::CopyVector(c[0], v);
        TypeParam::MultiplyVector(b, v, once);
        TypeParam::MultiplyVector(a, once, once);
        TypeParam::MultiplyVector(ab, v, twice);
        TypeParam::SubtractVector(once, twice, once);
        EXPECT_EQ(TypeParam::Norm(once), 0.0);
        TypeParam::Multiply(b, c, bc);
        TypeParam::Multiply(ab, c, ab); // in place on the left
        TypeParam::Multiply(a, bc, bc); // and on the right
        EXPECT_EQ(ab, bc);
    }
}

TYPED_TEST(SmallMatrix, InverseTimesMatrixIsIdentity) {
    int inverted = 0;
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE(testing::Message() << "seed 37, round " << round);
        auto a = this->Next(), inverse = a, left = a, right = a;
        bool const isRegular = TypeParam::Determinant(a) != 0.0;
        TypeParam::Scale(a, round % 2 == 0 ? 1e-9 : 1e6, a); // scale plays no part
        ASSERT_EQ(TypeParam::Inverse(a, inverse), isRegular);
        TypeParam::Multiply(inverse, a, left);
        TypeParam::Multiply(a, inverse, right);
        for (int i = 0; isRegular && i < TypeParam::kRows; ++i)
            for (int j = 0; j < TypeParam::kRows; ++j) {
                EXPECT_NEAR(left[i][j], i == j, 1e-11);
                EXPECT_NEAR(right[i][j], i == j, 1e-11);
            }
        inverted += isRegular;
    }
    EXPECT_GT(inverted, 200);
}

TYPED_TEST(SmallMatrix, SingularMatricesWriteNothing) {
    auto identity = this->Next(), a = identity;
    TypeParam::Identity(identity);
    EXPECT_EQ(TypeParam::Determinant(identity), 1.0);
    auto out = identity;
    TypeParam::Zero(a);
    EXPECT_FALSE(TypeParam::Inverse(a, out));
    a = identity;
    a[1][0] = a[1][1] = NAN;
    EXPECT_FALSE(TypeParam::Inverse(a, out));
    EXPECT_EQ(out, identity);
}

TYPED_TEST(SmallMatrix, Vectors) {
    double const a[5] = {1, 2, 3, 4, 99}, squares[] = {0, 1, 5, 14, 30};
    double b[5] = {99, 99, 99, 99, 99};
    constexpr int kRows = TypeParam::kRows;
    TypeParam::ScaleVector(a, 2.0, b);
    EXPECT_EQ(TypeParam::Dot(a, b), 2.0 * squares[kRows]);
    TypeParam::AddVector(a, b, b);
    EXPECT_EQ(TypeParam::Norm(b), 3.0 * std::sqrt(squares[kRows]));
    TypeParam::ZeroVector(b);
    EXPECT_EQ(TypeParam::Norm(b), 0.0);
    EXPECT_EQ(b[kRows], 99.0) << "one element too many";
}

TEST(SmallMatrixDeterminant, OfWrittenOutMatrices) {
    double const two[2][2] = {{3, 1}, {4, 2}}, three[3][3] = {{2, 0, 1}, {1, 3, 2}, {1, 1, 4}};
    double const four[4][4] = {{1, 2, 0, 1}, {0, 1, 3, 1}, {2, 0, 1, 0}, {1, 1, 0, 2}};
    EXPECT_EQ(determinant_matrix_2x2(two), 2.0);
    EXPECT_EQ(determinant_matrix_3x3(three), 18.0);
    EXPECT_EQ(determinant_matrix_4x4(four), 20.0);
}

} // namespace zvi::lib::test

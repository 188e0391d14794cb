#include "zvi/math/small/SmallMatrix.h"

#include <cmath>
#include <utility>

namespace zvi::lib {

namespace {

/// A pivot at most this share of the largest element is rounding error: the matrix is singular.
constexpr double kSingularPivot = 1e-14;

/// Writes op(i, j) to each element. The values are complete before the first is written, so `out` may be an operand.
template <int N, class Operation>
void Fill(double (*out)[N], Operation op) {
    double values[N][N];
    for (int i = 0; i < N; ++i) {
        for (int j = 0; j < N; ++j)
            values[i][j] = op(i, j);
    }
    for (int i = 0; i < N; ++i) {
        for (int j = 0; j < N; ++j)
            out[i][j] = values[i][j];
    }
}

template <int N>
void SetZero(double (*m)[N]) {
    Fill<N>(m, [](int, int) { return 0.0; });
}

template <int N>
void SetIdentity(double (*m)[N]) {
    Fill<N>(m, [](int i, int j) { return i == j ? 1.0 : 0.0; });
}

template <int N>
void Copy(double const (*a)[N], double (*out)[N]) {
    Fill<N>(out, [a](int i, int j) { return a[i][j]; });
}

template <int N>
void Add(double const (*a)[N], double const (*b)[N], double (*out)[N]) {
    Fill<N>(out, [a, b](int i, int j) { return a[i][j] + b[i][j]; });
}

template <int N>
void Subtract(double const (*a)[N], double const (*b)[N], double (*out)[N]) {
    Fill<N>(out, [a, b](int i, int j) { return a[i][j] - b[i][j]; });
}

template <int N>
void Scale(double const (*a)[N], double factor, double (*out)[N]) {
    Fill<N>(out, [a, factor](int i, int j) { return a[i][j] * factor; });
}

template <int N>
void Multiply(double const (*a)[N], double const (*b)[N], double (*out)[N]) {
    Fill<N>(out, [a, b](int i, int j) {
        double sum = a[i][0] * b[0][j];
        for (int k = 1; k < N; ++k)
            sum += a[i][k] * b[k][j];
        return sum;
    });
}

template <int N>
void MultiplyColumn(double const (*a)[N], double const *v, double *out) {
    double column[N];
    for (int i = 0; i < N; ++i)
        column[i] = v[i];
    for (int i = 0; i < N; ++i) {
        double sum = a[i][0] * column[0];
        for (int k = 1; k < N; ++k)
            sum += a[i][k] * column[k];
        out[i] = sum;
    }
}

template <int N>
void Transpose(double const (*a)[N], double (*out)[N]) {
    Fill<N>(out, [a](int i, int j) { return a[j][i]; });
}

double Determinant2(double const (*a)[2]) {
    return a[0][0] * a[1][1] - a[0][1] * a[1][0];
}

double Determinant3(double const (*a)[3]) {
    return a[0][0] * (a[1][1] * a[2][2] - a[1][2] * a[2][1]) - a[0][1] * (a[1][0] * a[2][2] - a[1][2] * a[2][0]) +
           a[0][2] * (a[1][0] * a[2][1] - a[1][1] * a[2][0]);
}

/// Expanded by the 2 x 2 minors of the upper two rows, each times the complementary minor of the lower two.
double Determinant4(double const (*a)[4]) {
    auto const upper = [a](int i, int j) { return a[0][i] * a[1][j] - a[0][j] * a[1][i]; };
    auto const lower = [a](int i, int j) { return a[2][i] * a[3][j] - a[2][j] * a[3][i]; };
    return upper(0, 1) * lower(2, 3) - upper(0, 2) * lower(1, 3) + upper(0, 3) * lower(1, 2) +
           upper(1, 2) * lower(0, 3) - upper(1, 3) * lower(0, 2) + upper(2, 3) * lower(0, 1);
}

template <int N>
double LargestElement(double const (*a)[N]) {
    double largest = 0.0;
    for (int i = 0; i < N; ++i) {
        for (int j = 0; j < N; ++j)
            largest = std::abs(a[i][j]) > largest ? std::abs(a[i][j]) : largest;
    }
    return largest;
}

/// The row, from `column` on, with the largest element in that column.
template <int N>
int PivotRow(double const (*a)[N], int column) {
    int row = column;
    for (int i = column + 1; i < N; ++i) {
        if (std::abs(a[i][column]) > std::abs(a[row][column]))
            row = i;
    }
    return row;
}

/// Makes the column of `work` a unit column, and does to `inverse` what that takes.
template <int N>
void Eliminate(int column, double (*work)[N], double (*inverse)[N]) {
    double const pivot = work[column][column];
    for (int j = 0; j < N; ++j) {
        work[column][j] /= pivot;
        inverse[column][j] /= pivot;
    }
    for (int i = 0; i < N; ++i) {
        double const factor = work[i][column];
        if (i == column || factor == 0.0)
            continue;
        for (int j = 0; j < N; ++j) {
            work[i][j] -= factor * work[column][j];
            inverse[i][j] -= factor * inverse[column][j];
        }
    }
}

template <int N>
bool Invert(double const (*a)[N], double (*out)[N]) {
    double work[N][N];
    double inverse[N][N];
    Copy<N>(a, work);
    SetIdentity<N>(inverse);
    double const limit = kSingularPivot * LargestElement<N>(a);
    for (int column = 0; column < N; ++column) {
        int const row = PivotRow<N>(work, column);
        if (!(std::abs(work[row][column]) > limit))
            return false;
        std::swap(work[row], work[column]);
        std::swap(inverse[row], inverse[column]);
        Eliminate<N>(column, work, inverse);
    }
    Copy<N>(inverse, out);
    return true;
}

} // namespace

void zero_matrix_2x2(double (*m)[2]) {
    SetZero<2>(m);
}

void identity_matrix_2x2(double (*m)[2]) {
    SetIdentity<2>(m);
}

void copy_matrix_2x2(double const (*a)[2], double (*out)[2]) {
    Copy<2>(a, out);
}

void add_matrix_2x2_matrix_2x2(double const (*a)[2], double const (*b)[2], double (*out)[2]) {
    Add<2>(a, b, out);
}

void subtract_matrix_2x2_matrix_2x2(double const (*a)[2], double const (*b)[2], double (*out)[2]) {
    Subtract<2>(a, b, out);
}

void scale_matrix_2x2(double const (*a)[2], double factor, double (*out)[2]) {
    Scale<2>(a, factor, out);
}

void multiply_matrix_2x2_matrix_2x2(double const (*a)[2], double const (*b)[2], double (*out)[2]) {
    Multiply<2>(a, b, out);
}

void multiply_matrix_2x2_vector_2x1(double const (*a)[2], double const *v, double *out) {
    MultiplyColumn<2>(a, v, out);
}

void transpose_matrix_2x2(double const (*a)[2], double (*out)[2]) {
    Transpose<2>(a, out);
}

double determinant_matrix_2x2(double const (*a)[2]) {
    return Determinant2(a);
}

bool inverse_matrix_2x2(double const (*a)[2], double (*out)[2]) {
    return Invert<2>(a, out);
}

void zero_matrix_3x3(double (*m)[3]) {
    SetZero<3>(m);
}

void identity_matrix_3x3(double (*m)[3]) {
    SetIdentity<3>(m);
}

void copy_matrix_3x3(double const (*a)[3], double (*out)[3]) {
    Copy<3>(a, out);
}

void add_matrix_3x3_matrix_3x3(double const (*a)[3], double const (*b)[3], double (*out)[3]) {
    Add<3>(a, b, out);
}

void subtract_matrix_3x3_matrix_3x3(double const (*a)[3], double const (*b)[3], double (*out)[3]) {
    Subtract<3>(a, b, out);
}

void scale_matrix_3x3(double const (*a)[3], double factor, double (*out)[3]) {
    Scale<3>(a, factor, out);
}

void multiply_matrix_3x3_matrix_3x3(double const (*a)[3], double const (*b)[3], double (*out)[3]) {
    Multiply<3>(a, b, out);
}

void multiply_matrix_3x3_vector_3x1(double const (*a)[3], double const *v, double *out) {
    MultiplyColumn<3>(a, v, out);
}

void transpose_matrix_3x3(double const (*a)[3], double (*out)[3]) {
    Transpose<3>(a, out);
}

double determinant_matrix_3x3(double const (*a)[3]) {
    return Determinant3(a);
}

bool inverse_matrix_3x3(double const (*a)[3], double (*out)[3]) {
    return Invert<3>(a, out);
}

void zero_matrix_4x4(double (*m)[4]) {
    SetZero<4>(m);
}

void identity_matrix_4x4(double (*m)[4]) {
    SetIdentity<4>(m);
}

void copy_matrix_4x4(double const (*a)[4], double (*out)[4]) {
    Copy<4>(a, out);
}

void add_matrix_4x4_matrix_4x4(double const (*a)[4], double const (*b)[4], double (*out)[4]) {
    Add<4>(a, b, out);
}

void subtract_matrix_4x4_matrix_4x4(double const (*a)[4], double const (*b)[4], double (*out)[4]) {
    Subtract<4>(a, b, out);
}

void scale_matrix_4x4(double const (*a)[4], double factor, double (*out)[4]) {
    Scale<4>(a, factor, out);
}

void multiply_matrix_4x4_matrix_4x4(double const (*a)[4], double const (*b)[4], double (*out)[4]) {
    Multiply<4>(a, b, out);
}

void multiply_matrix_4x4_vector_4x1(double const (*a)[4], double const *v, double *out) {
    MultiplyColumn<4>(a, v, out);
}

void transpose_matrix_4x4(double const (*a)[4], double (*out)[4]) {
    Transpose<4>(a, out);
}

double determinant_matrix_4x4(double const (*a)[4]) {
    return Determinant4(a);
}

bool inverse_matrix_4x4(double const (*a)[4], double (*out)[4]) {
    return Invert<4>(a, out);
}

} // namespace zvi::lib

#pragma once

#include "zvi/Export.h"

// Square matrices of two, three and four rows: the same operations for each size. A matrix is a pointer to its rows; it
// stands on the left of a column vector. An output may be an input; sums run in order of the index; NaN passes through.
//
// The determinant is expanded by cofactors, so that matrices of small whole numbers give exact ones. The inverse is
// found by elimination with the largest pivot of each column. A matrix is singular when a pivot falls to 1e-14 of its
// largest element or below, or is NaN; the determinant plays no part, so a small matrix is no singular one.

namespace zvi::lib {

/// m = 0.
ZVI_API void zero_matrix_2x2(double (*m)[2]);
/// m = I.
ZVI_API void identity_matrix_2x2(double (*m)[2]);
/// out = a.
ZVI_API void copy_matrix_2x2(double const (*a)[2], double (*out)[2]);
/// out = a + b.
ZVI_API void add_matrix_2x2_matrix_2x2(double const (*a)[2], double const (*b)[2], double (*out)[2]);
/// out = a - b.
ZVI_API void subtract_matrix_2x2_matrix_2x2(double const (*a)[2], double const (*b)[2], double (*out)[2]);
/// out = a * factor.
ZVI_API void scale_matrix_2x2(double const (*a)[2], double factor, double (*out)[2]);
/// out = a b.
ZVI_API void multiply_matrix_2x2_matrix_2x2(double const (*a)[2], double const (*b)[2], double (*out)[2]);
/// out = a v, with v a column.
ZVI_API void multiply_matrix_2x2_vector_2x1(double const (*a)[2], double const *v, double *out);
/// out = a^T.
ZVI_API void transpose_matrix_2x2(double const (*a)[2], double (*out)[2]);
/// det a.
ZVI_API double determinant_matrix_2x2(double const (*a)[2]);
/// out = a^-1; false with nothing written if a is singular.
ZVI_API bool inverse_matrix_2x2(double const (*a)[2], double (*out)[2]);

/// m = 0.
ZVI_API void zero_matrix_3x3(double (*m)[3]);
/// m = I.
ZVI_API void identity_matrix_3x3(double (*m)[3]);
/// out = a.
ZVI_API void copy_matrix_3x3(double const (*a)[3], double (*out)[3]);
/// out = a + b.
ZVI_API void add_matrix_3x3_matrix_3x3(double const (*a)[3], double const (*b)[3], double (*out)[3]);
/// out = a - b.
ZVI_API void subtract_matrix_3x3_matrix_3x3(double const (*a)[3], double const (*b)[3], double (*out)[3]);
/// out = a * factor.
ZVI_API void scale_matrix_3x3(double const (*a)[3], double factor, double (*out)[3]);
/// out = a b.
ZVI_API void multiply_matrix_3x3_matrix_3x3(double const (*a)[3], double const (*b)[3], double (*out)[3]);
/// out = a v, with v a column.
ZVI_API void multiply_matrix_3x3_vector_3x1(double const (*a)[3], double const *v, double *out);
/// out = a^T.
ZVI_API void transpose_matrix_3x3(double const (*a)[3], double (*out)[3]);
/// det a.
ZVI_API double determinant_matrix_3x3(double const (*a)[3]);
/// out = a^-1; false with nothing written if a is singular.
ZVI_API bool inverse_matrix_3x3(double const (*a)[3], double (*out)[3]);

/// m = 0.
ZVI_API void zero_matrix_4x4(double (*m)[4]);
/// m = I.
ZVI_API void identity_matrix_4x4(double (*m)[4]);
/// out = a.
ZVI_API void copy_matrix_4x4(double const (*a)[4], double (*out)[4]);
/// out = a + b.
ZVI_API void add_matrix_4x4_matrix_4x4(double const (*a)[4], double const (*b)[4], double (*out)[4]);
/// out = a - b.
ZVI_API void subtract_matrix_4x4_matrix_4x4(double const (*a)[4], double const (*b)[4], double (*out)[4]);
/// out = a * factor.
ZVI_API void scale_matrix_4x4(double const (*a)[4], double factor, double (*out)[4]);
/// out = a b.
ZVI_API void multiply_matrix_4x4_matrix_4x4(double const (*a)[4], double const (*b)[4], double (*out)[4]);
/// out = a v, with v a column.
ZVI_API void multiply_matrix_4x4_vector_4x1(double const (*a)[4], double const *v, double *out);
/// out = a^T.
ZVI_API void transpose_matrix_4x4(double const (*a)[4], double (*out)[4]);
/// det a.
ZVI_API double determinant_matrix_4x4(double const (*a)[4]);
/// out = a^-1; false with nothing written if a is singular.
ZVI_API bool inverse_matrix_4x4(double const (*a)[4], double (*out)[4]);

} // namespace zvi::lib

#pragma once

#include "zvi/Export.h"

// Columns of two, three and four adjacent doubles: the same operations for each size. An output may be an input; sums
// run in order of the index; NaN passes through.

namespace zvi::lib {

/// v = 0.
ZVI_API void zero_vector_2x1(double *v);
/// out = a.
ZVI_API void copy_vector_2x1(double const *a, double *out);
/// out = a + b.
ZVI_API void add_vector_2x1_vector_2x1(double const *a, double const *b, double *out);
/// out = a - b.
ZVI_API void subtract_vector_2x1_vector_2x1(double const *a, double const *b, double *out);
/// out = a * factor.
ZVI_API void scale_vector_2x1(double const *a, double factor, double *out);
/// The dot product a . b.
ZVI_API double multiply_vector_2x1_vector_2x1(double const *a, double const *b);
/// The length of a.
ZVI_API double norm_vector_2x1(double const *a);

/// v = 0.
ZVI_API void zero_vector_3x1(double *v);
/// out = a.
ZVI_API void copy_vector_3x1(double const *a, double *out);
/// out = a + b.
ZVI_API void add_vector_3x1_vector_3x1(double const *a, double const *b, double *out);
/// out = a - b.
ZVI_API void subtract_vector_3x1_vector_3x1(double const *a, double const *b, double *out);
/// out = a * factor.
ZVI_API void scale_vector_3x1(double const *a, double factor, double *out);
/// The dot product a . b.
ZVI_API double multiply_vector_3x1_vector_3x1(double const *a, double const *b);
/// The length of a.
ZVI_API double norm_vector_3x1(double const *a);

/// v = 0.
ZVI_API void zero_vector_4x1(double *v);
/// out = a.
ZVI_API void copy_vector_4x1(double const *a, double *out);
/// out = a + b.
ZVI_API void add_vector_4x1_vector_4x1(double const *a, double const *b, double *out);
/// out = a - b.
ZVI_API void subtract_vector_4x1_vector_4x1(double const *a, double const *b, double *out);
/// out = a * factor.
ZVI_API void scale_vector_4x1(double const *a, double factor, double *out);
/// The dot product a . b.
ZVI_API double multiply_vector_4x1_vector_4x1(double const *a, double const *b);
/// The length of a.
ZVI_API double norm_vector_4x1(double const *a);

} // namespace zvi::lib

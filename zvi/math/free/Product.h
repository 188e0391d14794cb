#pragma once

#include "zvi/Export.h"

// Products, normals and bases of the free family. Vectors are three adjacent doubles, two in the operations named 2d.
// An output may be one of the inputs. NaN coordinates give NaN.

namespace zvi::lib {

/// a x b, not normalised.
ZVI_API void cross_product_3d(double const *a, double const *b, double *out);
/// (p2 - p1) x (p3 - p1), not normalised: its length is twice the area of the triangle.
ZVI_API void cross_product_3d(double const *p1, double const *p2, double const *p3, double *out);
/// a.x b.y - a.y b.x: positive when b lies to the left of a.
ZVI_API double normal_2d(double const *a, double const *b);
/// a x b with length 1, or (0, 0, 0) if the cross product is shorter than 1e-8.
ZVI_API void normal_3d(double const *a, double const *b, double *out);
/// (p2 - p1) x (p3 - p1) with length 1, or (0, 0, 0) if it is shorter than 1e-8.
ZVI_API void normal_3d(double const *p1, double const *p2, double const *p3, double *out);
/// Gives the vector length 1; one shorter than 1e-12 stays as it is.
ZVI_API void normalize(double *v);
/// out = a - b, three coordinates.
ZVI_API void Subtract(double const *a, double const *b, double *out);

/// Unit vectors e1 along `a` and e2 in the plane of `a` and `b`, perpendicular to e1 and on the side of `b`: the method
/// of Gram and Schmidt, with the second step made twice so that e2 is perpendicular to rounding however flat the angle.
/// Returns true if both exist. With `a` shorter than 1e-8 both are (0, 0, 0); with `b` closer to the line of `a` than
/// 1e-8, or than 1e-14 of its length, e2 is (0, 0, 0). The outputs must not be the inputs.
ZVI_API bool gram_schmidt_orthonormal_basis_3d(double const *a, double const *b, double *e1, double *e2);
/// A right-handed basis of unit vectors whose third is along `direction`: e1 is the coordinate axis least aligned with
/// it (x before y before z), made perpendicular; e2 = e3 x e1. The direction (0, 0, 1) gives the coordinate axes.
/// Returns false, with all three (0, 0, 0), for a direction shorter than 1e-8. The outputs must not be the input.
ZVI_API bool orthonormal_basis(double const *direction, double *e1, double *e2, double *e3);

} // namespace zvi::lib

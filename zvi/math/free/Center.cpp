#include "zvi/math/free/Center.h"

#include "zvi/math/free/FreeFamilyDetail.h"

namespace zvi::lib {

void GetMidCoord(double const *a, double const *b, double *out) {
    for (int i = 0; i < 3; ++i)
        out[i] = (a[i] + b[i]) * 0.5;
}

void GetCenterCoord(double const *a, double const *b, double const *c, double *out) {
    math::Copy3(GetCenterPnt(a, b, c).Data(), out);
}

void GetCenterCoord(double const *a, double const *b, double const *c, double const *d, double *out) {
    math::Copy3(GetCenterPnt(a, b, c, d).Data(), out);
}

CMathPnt GetCenterPnt(double const *a, double const *b, double const *c) {
    return CMathPnt(CMathPnt(a), CMathPnt(b), CMathPnt(c));
}

CMathPnt GetCenterPnt(double const *a, double const *b, double const *c, double const *d) {
    return CMathPnt(CMathPnt(a), CMathPnt(b), CMathPnt(c), CMathPnt(d));
}

} // namespace zvi::lib

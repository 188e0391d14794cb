#include "zvi/math/free/LineRectangle.h"

#include "zvi/math/free/Angle.h"
#include "zvi/math/free/FreeFamilyDetail.h"
#include "zvi/math/free/Motion.h"

namespace zvi::lib {

namespace {

/// A narrower rectangle is the segment itself; model units.
constexpr double kNoWidth = 1e-8;

/// How far the rectangle reaches to the left and to the right of its segment, in widths, by mode.
struct Reach {
    double up;
    double down;
};
constexpr Reach kReaches[] = {{0.5, -0.5}, {1.0, 0.0}, {0.0, -1.0}};

} // namespace

void line_rectangle_2d(double const *a, double const *b, int mode, double width, double *c1, double *c2, double *c3,
                       double *c4) {
    double const start[2] = {a[0], a[1]};
    double const end[2] = {b[0], b[1]};
    if (width < kNoWidth) {
        math::Copy2(start, c1);
        math::Copy2(start, c2);
        math::Copy2(end, c3);
        math::Copy2(end, c4);
        return;
    }
    if (mode < 1 || mode > 3)
        return;
    double const up = width * kReaches[mode - 1].up;
    double const down = width * kReaches[mode - 1].down;
    double const angle = angle_2d(1.0, 0.0, end[0] - start[0], end[1] - start[1]);
    double turned[2];
    rotate_2d(end, start, -angle, turned);
    double const corners[4][2] = {{start[0], start[1] + up},
                                  {start[0], start[1] + down},
                                  {turned[0], turned[1] + down},
                                  {turned[0], turned[1] + up}};
    rotate_2d(corners[0], start, angle, c1);
    rotate_2d(corners[1], start, angle, c2);
    rotate_2d(corners[2], start, angle, c3);
    rotate_2d(corners[3], start, angle, c4);
}

} // namespace zvi::lib

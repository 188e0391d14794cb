#pragma once

#include "zvi/Export.h"

namespace zvi::lib {

/// The corners of the rectangle of `width` along the segment a to b, all points two adjacent doubles. `up` is the left
/// of the direction a to b. mode 1: width/2 to each side; c1 = a up, c2 = a down, c3 = b down, c4 = b up. mode 2: all
/// on the left; c1 = a up, c2 = a, c3 = b, c4 = b up. mode 3: all on the right; c1 = a, c2 = a down, c3 = b down, c4 =
/// b. Any other mode writes nothing. A width below 1e-8 gives a, a, b, b in every mode. A segment without length points
/// along the x axis. The direction is that of `angle_2d`, so one within 0.008 degrees of the x axis counts as the axis.
ZVI_API void line_rectangle_2d(double const *a, double const *b, int mode, double width, double *c1, double *c2,
                               double *c3, double *c4);

} // namespace zvi::lib

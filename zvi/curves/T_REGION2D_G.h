#pragma once

namespace zvi::lib {

/// Plan box of a curve, both minima first.
struct T_REGION2D_G {
    double MinX = 0.0;
    double MinY = 0.0;
    double MaxX = 0.0;
    double MaxY = 0.0;
};

} // namespace zvi::lib

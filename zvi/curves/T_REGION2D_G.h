#pragma once

namespace zvi::lib {

/// Plan box of a curve, both minima first.
struct T_REGION2D_G {
    double MinX = 0.0; ///< left side
    double MinY = 0.0; ///< lower side
    double MaxX = 0.0; ///< right side
    double MaxY = 0.0; ///< upper side
};

} // namespace zvi::lib

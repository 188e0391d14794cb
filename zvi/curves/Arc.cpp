#include "zvi/curves/ArcDetail.h"

#include "zvi/curves/VectorDetail.h"
#include "zvi/math/func/MMathFunc.h"

#include <algorithm>
#include <cassert>
#include <cmath>

namespace zvi::lib::curves {

namespace {

/// Directions of shorter vectors are left to the angles, which take a vector of zero length as it is (units of the
/// input).
constexpr double kShortestRadius = 1e-9;

/// A vector this far off `start` is also certainly off what is nearly opposite to it.
constexpr double kSurelyOffSine = 2.0 * kCertainSine;

// Parts of a circle, counted from the x axis.
constexpr int kQuarters = 4;
constexpr int kEighths = 8;
constexpr double kDegreesPerQuarter = 90.0;
constexpr double kFullTurn = 360.0;

/// Direction of the vector from the x axis, -180 to 180; a vector of zero length is taken as it is.
double SignedDirection(double x, double y) {
    double const length = std::sqrt(x * x + y * y);
    if (!IsZeroLength(length)) {
        x /= length;
        y /= length;
    }
    return MMathFunc::mathCrossAngle2D(1.0, 0.0, x, y);
}

/// Widens the box by the quarter point at `quarter`, 0 or more, times 90 degrees.
void WidenToQuarter(int quarter, double const *center, double radius, T_REGION2D_G &box) {
    assert(quarter >= 0);
    switch (quarter % kQuarters) {
    case 0:
        box.MaxX = std::max(box.MaxX, center[0] + radius);
        break;
    case 1:
        box.MaxY = std::max(box.MaxY, center[1] + radius);
        break;
    case 2:
        box.MinX = std::min(box.MinX, center[0] - radius);
        break;
    default:
        box.MinY = std::min(box.MinY, center[1] - radius);
    }
}

/// Where a direction is on the circle in eighths: 0, 2, 4, 6 for one exactly along an axis, whose angle comes out as
/// exactly 0, 90, 180 or 270, and 1, 3, 5, 7 for one that is certainly between axes; -1 if that is not certain.
int CertainEighth(PlanVector v) {
    double const size = std::fabs(v.x) + std::fabs(v.y);
    double const limit = kCertainSine * size;
    if (!(size > kShortestRadius))
        return -1;
    if (v.y == 0.0)
        return v.x > 0.0 ? 0 : 4;
    if (v.x == 0.0)
        return v.y > 0.0 ? 2 : 6;
    if (!(std::fabs(v.x) > limit && std::fabs(v.y) > limit))
        return -1;
    if (v.y > 0.0)
        return v.x > 0.0 ? 1 : 3;
    return v.x < 0.0 ? 5 : 7;
}

/// Numbers of the first quarter point not before `start` and of the last one not behind `end`, from the eighths alone.
/// False if that is not certain.
bool QuartersBetween(PlanVector start, PlanVector end, int &first, int &last) {
    int const startEighth = CertainEighth(start);
    int const endEighth = CertainEighth(end);
    if (startEighth < 0 || endEighth < 0)
        return false;
    bool wraps = endEighth < startEighth;
    if (startEighth == endEighth && startEighth % 2 != 0) {
        int const turn = CertainTurn(start, end);
        if (turn == 0)
            return false;
        wraps = turn < 0;
    }
    first = (startEighth + 1) / 2;
    last = (endEighth + (wraps ? kEighths : 0)) / 2;
    return true;
}

/// The same from the angles.
void QuartersBetweenAngles(PlanVector start, PlanVector end, int &first, int &last) {
    double a = SignedDirection(start.x, start.y);
    double b = SignedDirection(end.x, end.y);
    if (a < 0.0)
        a += kFullTurn;
    if (b < 0.0)
        b += kFullTurn;
    if (a > b)
        b += kFullTurn;
    first = 2 * kQuarters + 1; // none: the last one is before it
    last = -1;
    for (int quarter = 0; quarter <= 2 * kQuarters; ++quarter) {
        double const q = kDegreesPerQuarter * quarter;
        if (a <= q && q <= b) {
            first = std::min(first, quarter);
            last = quarter;
        }
    }
}

} // namespace

int CompareSweep(PlanVector start, PlanVector v, PlanVector w) {
    int const turnV = CertainTurn(start, v, kSurelyOffSine);
    if (turnV == 0)
        return 0;
    int const turnW = CertainTurn(start, w);
    if (turnW == 0) {
        // Either about 180, which `v` is certainly off, or about 0 or 360.
        bool const isOpposite = start.x * w.x + start.y * w.y < 0.0;
        return isOpposite ? turnV : 0;
    }
    if (turnV != turnW)
        return turnV;
    return CertainTurn(v, w);
}

T_REGION2D_G ArcBox(double const *p1, double const *p2, double const *center, double radius, bool counterClockwise) {
    T_REGION2D_G box = BoxOfEnds(p1, p2);
    PlanVector start = {p1[0] - center[0], p1[1] - center[1]};
    PlanVector end = {p2[0] - center[0], p2[1] - center[1]};
    if (!counterClockwise)
        std::swap(start, end);
    int first = 0;
    int last = 0;
    if (!QuartersBetween(start, end, first, last))
        QuartersBetweenAngles(start, end, first, last);
    for (int quarter = first; quarter <= last; ++quarter)
        WidenToQuarter(quarter, center, radius, box);
    return box;
}

} // namespace zvi::lib::curves

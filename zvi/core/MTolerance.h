#pragma once

#include "zvi/Export.h"

namespace zvi::lib {

/// How close two values must be to count as the same.
///
/// The getters read the tolerances in force out of `MOptionDB`, on every call, so that a `ReadData` is seen by
/// everybody at once; a loop fetches its tolerance once. They hold the built-in default until a settings file says
/// otherwise:
/// ```
/// double const zero = MTolerance::GetRegardAsZero(); // 1e-10
/// if (MTolerance::IsZero(a, zero)) ...
/// ```
/// The comparisons take the tolerance as an argument. All are strict, deliberately: a difference of exactly the
/// tolerance is not equal, and neither less nor greater; with a tolerance of 0 nothing is zero and nothing equals
/// itself; where one operand is not-a-number each of them gives 0, `IsNotZero` too. Callers rely on it.
///
/// The getters need the group `OptionGenTol` in the registry, where it is from load to exit unless it is taken out.
class ZVI_API MTolerance {
public:
    /// Holds nothing: the tolerances in force are asked for without an object.
    MTolerance();
    /// There is nothing to free.
    virtual ~MTolerance();

    /// A value below this in magnitude counts as zero; 1e-10 by default.
    static double GetRegardAsZero();
    /// Two points closer than this are one point; 0.001 by default.
    static double GetMergeTolerance();
    /// The angle tolerance, in the unit that the application takes; 1 by default.
    static double GetAngleTolerance();
    /// As `GetRegardAsZero` for the results of an analysis; 1e-12 by default.
    static double GetRegardAsZeroForPost();

    /// Whether a lies between -t and t.
    static int IsZero(double a, double t) { return t > a && a > -t; }
    /// Whether a lies beyond -t or t. With |a| = t neither this nor `IsZero` holds.
    static int IsNotZero(double a, double t) { return a > t || -t > a; }
    /// Whether two points (three coordinates each) are closer than t, by squared distances.
    static int IsSamePos(double const *p, double const *q, double t) {
        double const dx = p[0] - q[0];
        double const dy = p[1] - q[1];
        double const dz = p[2] - q[2];
        return t * t > dx * dx + dy * dy + dz * dz;
    }
    /// Whether a is less than b by more than t.
    static int IsLess(double a, double b, double t) { return b - t > a; }
    /// Whether a is less than b, or greater by less than t.
    static int IsLessOrEQ(double a, double b, double t) { return b + t > a; }
    /// Whether a and b differ by less than t.
    static int IsEqual(double a, double b, double t) { return t > a - b && a - b > -t; }
    /// Whether a is greater than b by more than t.
    static int IsGreater(double a, double b, double t) { return a > b + t; }
    /// Whether a is greater than b, or less by less than t.
    static int IsGreaterOrEQ(double a, double b, double t) { return a > b - t; }
};

} // namespace zvi::lib

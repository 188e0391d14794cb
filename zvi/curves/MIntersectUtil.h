#pragma once

#include "zvi/Export.h"
#include "zvi/core/MArray.h"
#include "zvi/core/MVector.h"
#include "zvi/curves/T_LINE_G.h"
#include "zvi/curves/T_MBR3D.h"

namespace zvi::lib {

/// Whether a point lies on a curve, and where two curves meet.
///
/// All arc work is done in plan: meeting points with an arc are found in x and y, and take their z from the start of
/// one curve. An arc out of the horizontal plane (|Normal z| below 1e-9) gives 0 in every test. A result is 1 for yes
/// and 0 for no; there are no other codes, no messages and no exceptions. `tol` is a distance in the units of the
/// curves. A shared end counts as a meeting point; curves that overlap give 0.
///
///     MArray<MVector<double, 3>> points;
///     MIntersectUtil::GetIntersectPointByLine2Line(line, circle, points, 1e-6); // 1, and the points along `line`
class ZVI_API MIntersectUtil {
public:
    /// A point, or a vector, of space.
    using Point = MVector<double, 3>;

    /// 1 if `p` lies on the curve within `tol`. With `withEnds` 0 a point closer than `tol` to an end does not count.
    static int IsPointOnLine(Point const &p, T_LINE_G const &line, double tol, int withEnds);
    /// Box of the ends of a line, or the cube around the circle of an arc, grown by `tol`. Always 1.
    static int GetMbr_line(T_MBR3D &box, T_LINE_G const &line, double tol);
    /// Replaces `out` by the meeting points of the curves, in their order along `a`, points closer than 1e-9 once. 0,
    /// with no points, when the plan boxes are apart or the curves do not meet or overlap.
    static int GetIntersectPointByLine2Line(T_LINE_G const &a, T_LINE_G const &b, MArray<Point> &out, double tol);
    /// The same without the boxes and without sorting. When the curves overlap the result is 0, but the points stay in
    /// `out`.
    static int IsIntersectLine2Line(T_LINE_G const &a, T_LINE_G const &b, MArray<Point> &out, double tol);
    /// Sorts the points along the curve and removes each that lies closer than 1e-9 to the one before it. Always 1.
    static int SortDividedPoints(T_LINE_G const &line, MArray<Point> &points);

protected:
    /// The test on the ends of a line (`center` null) or of a counter-clockwise plan arc.
    static int IsPointOnLine(Point const &p, Point const &a, Point const &b, Point const *center, double tol,
                             int withEnds);
    static int GetMbr_line(T_MBR3D &box, Point const &a, Point const &b, Point const *center, double tol);
    /// Closed box test.
    static int IsInnerPoint(T_MBR3D const &box, Point const &p);
    /// 1 if `p` is within `tol` of the line ab and its foot is in `box`; of the infinite line with `checkRange` 0.
    static int IsPointOnLineSub_line(Point const &p, Point const &a, Point const &b, double tol, T_MBR3D const &box,
                                     int checkRange);
    /// 1 if `p` is within `tol` of the plan arc; of its full circle with `checkRange` 0.
    static int IsPointOnLineSub_curv(Point const &p, Point const &a, Point const &b, double tol, T_MBR3D const &box,
                                     Point const &center, int checkRange);
    static int IsIntersectLine2LineSub_line2line(T_LINE_G const &a, T_LINE_G const &b, MArray<Point> &out, double tol);
    static int IsIntersectLine2LineSub_curv2line(T_LINE_G const &arc, T_LINE_G const &line, MArray<Point> &out,
                                                 double tol);
    static int IsIntersectLine2LineSub_curv2curv(T_LINE_G const &a, T_LINE_G const &b, MArray<Point> &out, double tol);
};

} // namespace zvi::lib

#pragma once

#include "zvi/Export.h"
#include "zvi/core/MArray.h"
#include "zvi/curves/GeomRecords.h"

namespace zvi::lib {

/// Predicates on segments, polylines and polygons of the plane, and the local axes of lines, arcs and plates.
///
/// An int result is 1 for yes or success and 0 for no or failure unless said otherwise; on failure outputs keep what
/// they had. Nothing throws or logs. A polygon for point tests does not repeat its first vertex: the closing edge is
/// implied, and it may run either way. A point, where it is a pointer, is three adjacent coordinates. Angles are
/// degrees. Coordinates that are not numbers give some result, never a crash.
///
/// Three limits govern the class: a point counts as lying on a segment at 1e-10, a line shorter than 1e-8 has no
/// direction, and 0.01 is the slope within which a line is vertical or horizontal.
class ZVI_API MGeomFunc {
public:
    /// The class holds nothing; an instance is for clients that derive from it.
    MGeomFunc() = default;
    /// Copies nothing, there being nothing.
    MGeomFunc(MGeomFunc const &) = default;
    /// Likewise.
    MGeomFunc &operator=(MGeomFunc const &) = default;
    /// There is nothing to free.
    virtual ~MGeomFunc();

    // --- Segments and polylines ---

    /// Where two directed segments L = ab and M = cd touch:
    ///
    ///     0 no contact         5 b on d                  10 collinear overlap, only c lies within L
    ///     1 a on c             6 b on the inside of M    11 collinear overlap, only d lies within L
    ///     2 a on d             7 c on the inside of L    12 collinear, M lies within L
    ///     3 a on inside of M   8 d on the inside of L    13 collinear, L lies within M
    ///     4 b on c             9 proper crossing
    ///
    /// Segments whose directions differ by a sine below 0.0001 have no meeting point; they are collinear when
    /// |cd x ab| is at most 1e-10. A parallel M to the left of L is apart; one to the right is deliberately judged by
    /// the boxes alone, so a slanted M in the box of L counts as lying on it.
    static int GetTopologyOfTwoLines(T_LINE2D const &l, T_LINE2D const &m);

    /// Segment ab against segment cd in space. With `anyContact` any touching counts. Without it, segments that touch
    /// in exactly two end tests (a shared end) do not count when a or b is exactly c or d. Segments that do not touch
    /// within 1e-10 must cross exactly, without any gap between their lines.
    static int CheckLineIntersection(double const *a, double const *b, double const *c, double const *d,
                                     int anyContact);

    /// 1 if two segments of the polyline intersect; neighbours that share a vertex do not. Fewer than three points
    /// give 0.
    static int CheckPolylineSelfIntersection(MArray<T_POINT3D> const &points);

    /// 1 if two polylines meet. A polyline of fewer than two points gives 0. For a segment ab of the first and cd of
    /// the second, c and d near ab and a near cd count; b near cd counts in space only.
    static int CheckPolylineCrossIntersection(MArray<T_POINT3D> const &a, MArray<T_POINT3D> const &b);
    /// The same in the plane.
    static int CheckPolylineCrossIntersection(MArray<T_POINT2D> const &a, MArray<T_POINT2D> const &b);

    // --- Boxes, polygons, areas ---

    /// Box of the points; 0 for an empty array.
    static int GetMBR(MArray<T_POINT2D> const &points, T_REGION2D &region);
    /// 1 if the point is strictly inside the box.
    static int IsPointInRegion(T_POINT2D const &p, T_REGION2D const &region);
    /// 1 if the point is inside; the boundary counts when `closed` is nonzero.
    static int IsPointInRegion2(T_POINT2D const &p, T_REGION2D const &region, int closed);
    /// `IsPointInPolygon2` with `closed` 0.
    static int IsPointInPolygon(T_POINT2D const &p, MArray<T_POINT2D> const &polygon);
    /// 1 if the point is inside. A point within 1e-10 of an edge (true distance) gives 1 when `closed` is nonzero and 0
    /// otherwise. Elsewhere the result is the parity of `GetLinePolygonCrossCount` for the ray from `p` to
    /// (box minimum x - 1, p.y). Fewer than three vertices give 0. A ray that runs along an edge can give the wrong
    /// parity, because both ends of the edge are counted; it stays so, since stored domains depend on it.
    static int IsPointInPolygon2(T_POINT2D const &p, MArray<T_POINT2D> const &polygon, int closed);
    /// Number of crossings of the line with the polygon's edges. A vertex on the line counts once where the polygon
    /// passes through and twice where it only touches.
    static int GetLinePolygonCrossCount(T_LINE2D const &line, MArray<T_POINT2D> const &polygon);
    /// 1 if the point is in the convex hull of the points, by the spread of the directions from the point on both sides
    /// of the line to the first point. The directions are compared by dot products that are not divided by lengths, so
    /// within a distance of about 1 of the points results can surprise; callers rely on them as they are. No points
    /// give 0; a point equal to the first one gives 1.
    static int CheckInsideConvexHull(MArray<T_POINT2D> const &points, T_POINT2D const &p);
    /// Area of the outer ring less the areas of the inner rings, whichever way each runs. A ring of fewer than three
    /// points (not counting the repeated one) has area 0.
    static double CalcPolyArea(T_COMPLEX_POLYGON2D const &polygon);

    // --- Directions and local axes ---

    /// Angle from the up direction of the line ab (row 2 of its local axes with beta 0 and mode 0) to row 2 of `m`,
    /// negative when that turn runs against row 0 of `m`. 0 if the line is shorter than 1e-8 or the angle at most
    /// 0.0001.
    static double calcLineLocalAngle(double const *a, double const *b, double const m[3][3]);
    /// Local axes of the line ab as the rows of `m`: row 0 along the line, row 2 its up direction turned by `beta`
    /// about the line, row 1 = row 2 x row 0. Up is +z, and -x for a line that counts as vertical: with `mode` 0 one by
    /// `IsVerticalLine`, otherwise one that is not horizontal. `isVertical` receives that verdict; `isOther` receives 1
    /// when `mode` is nonzero and the line is neither vertical nor horizontal. Either may be null. 0 for a line shorter
    /// than 1e-8.
    static int calcLineLocalVector(double const *a, double const *b, double beta, double m[3][3], int mode,
                                   int *isVertical, int *isOther);
    /// The same between two points, without `isOther`.
    static int calcLineLocalVector(T_POINT3D const &a, T_POINT3D const &b, double beta, double m[3][3], int mode,
                                   int *isVertical);
    /// The same, computed in double precision and stored in single.
    static int calcLineLocalVector(float const *a, float const *b, double beta, float m[3][3], int mode,
                                   int *isVertical, int *isOther);
    /// With `mode` 0 `IsVerticalLine`, otherwise the opposite of `IsHorizontalLine`; 0 for a line shorter than 1e-8.
    static int IsVertical(double const *a, double const *b, int mode);
    /// 1 if the plan length is below 0.01 of the length.
    static int IsVerticalLine(double const *a, double const *b);
    /// 1 if the height is below 0.01 of the length.
    static int IsHorizontalLine(double const *a, double const *b);

    // --- Circles and plates ---

    /// Circle through three points. With `flatten` they are all taken at the lower of the heights of a and c. Rows of
    /// `m`: along the chord from a to c, row 2 x row 0, and the circle's normal, about which a, b, c run
    /// counter-clockwise. 0 if twice the length of (a - b) x (b - c), or the radius, is below 1e-10.
    static int CalcCurvInfoFrom3P(double const *a, double const *b, double const *c, double *center, double m[3][3],
                                  int flatten);
    /// The same, with the normal alone.
    static int CalcCurvInfoFrom3P(double const *a, double const *b, double const *c, double *center, double *normal,
                                  int flatten);
    /// Rise of the arc a, b, c over its chord, taken in plan, and the rotation of its plane about the chord.
    static int CalcCurvInfoFrom3P(double const *a, double const *b, double const *c, double &width, double &beta,
                                  int flatten);
    /// Axes of a plate of 3 or 4 points as the rows of `m`: row 0 along the first side (of 4 points: between the
    /// middles of opposite sides), row 2 the normal. 0 for another count or a side of zero length.
    static int calcPlaneLocalVector(int count, double const pts[][3], double m[3][3]);
};

} // namespace zvi::lib

#pragma once

#include "zvi/Export.h"

// Lengths and distances of the free family. A point is two adjacent doubles in the operations named 2d and three
// otherwise; results are in the units of the input. NaN coordinates give NaN, save the one along an axis-parallel line,
// which is not looked at.

namespace zvi::lib {

/// What a distance answers when there is nothing to measure from (a line or segment without length).
inline constexpr double kNoAnswer = 1e35;

/// Distance of two points.
ZVI_API double distance_2d(double x1, double y1, double x2, double y2);
/// The same of two points.
ZVI_API double distance_2d(double const *p1, double const *p2);
/// Distance of two points of space.
ZVI_API double distance_3d(double x1, double y1, double z1, double x2, double y2, double z2);
/// The same of two points.
ZVI_API double distance_3d(double const *p1, double const *p2);
/// Squared distance of two points.
ZVI_API double squared_distance_3d(double x1, double y1, double z1, double x2, double y2, double z2);
/// The same of two points.
ZVI_API double squared_distance_3d(double const *p1, double const *p2);

/// Length of a vector.
ZVI_API double norm_2d(double x, double y);
/// The same of a vector.
ZVI_API double norm_2d(double const *v);
/// Length of a vector of space.
ZVI_API double norm_3d(double x, double y, double z);
/// The same of a vector.
ZVI_API double norm_3d(double const *v);

/// Distance of `pt` from the infinite line through `p1` and `p2`.
/// On a line that is parallel to an axis within 1e-8, a point of the line answers its distance to the nearer of `p1`
/// and `p2`, not 0; on a slanted line it answers 0. The asymmetry is deliberate. Coincident ends count as a vertical
/// line.
ZVI_API double distance_line_point_2d(double const *p1, double const *p2, double const *pt);
/// The same for the line through `p` along `dir` (any length). A point of an axis-parallel line answers its distance to
/// `p`. A zero direction counts as a vertical one.
ZVI_API double distance_line_point_2d_vec(double const *p, double const *dir, double const *pt);
/// |(p2 - p1) x (pt - p1)| / |p2 - p1|: distance from the infinite line. `kNoAnswer` if |p2 - p1| < 1e-8.
ZVI_API double distance_line_point_3d(double const *p1, double const *p2, double const *pt);

/// Distance of `pt` from the segment. `kNoAnswer` if the segment is shorter than 1e-8; 0.0 where `is_on_line_2d` holds
/// with the tolerance 1e-8.
ZVI_API double distance_segment_point_2d(double const *p1, double const *p2, double const *pt);
/// The same in space, measured in the plane of the three points.
ZVI_API double distance_segment_point_3d(double const *p1, double const *p2, double const *pt);

/// Distance of `pt` from the plane through three points. If they are collinear or coincide (their cross product is
/// shorter than 1e-8), 0.0.
ZVI_API double distance_plane_point_3d(double const *p1, double const *p2, double const *p3, double const *pt);
/// |(pt - base) . n|; the normal is used as it is given, so the caller provides a unit vector.
ZVI_API double distance_plane_point_3d(double const *n, double const *base, double const *pt);
/// The four-point `distance_plane_point_3d` under another name: the distance along the normal.
ZVI_API double distance_plane_point_normal_3d(double const *p1, double const *p2, double const *p3, double const *pt);
/// Distance from `pt` to where the line through it along `dir` meets the plane through three points. Degenerate input
/// is that of `project_on_plane_vector`: a direction that lies in the plane gives 0.0, a zero direction counts as the
/// plane's normal.
ZVI_API double distance_plane_point_vector_3d(double const *p1, double const *p2, double const *p3, double const *dir,
                                              double const *pt);

} // namespace zvi::lib

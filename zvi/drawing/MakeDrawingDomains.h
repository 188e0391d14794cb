#pragma once

#include "zvi/Export.h"
#include "zvi/drawing/DrawingRecords.h"

#include <functional>
#include <vector>

namespace zvi::lib {

/// From a loose, untidy set of curves to its true closed domains, in one call: gaps are closed, curves are cut where
/// they meet, duplicates are dropped, and what encloses nothing is returned with its reason.
///
/// What holds for every result:
/// 1. Each stretch of each curve is on the border of a domain, at most once on each side, or among the leftovers, once.
/// 2. Loops are closed to the last bit and run through no place twice; outer ones run counter-clockwise, holes
///    clockwise and inside their domain. A hole is a simple loop: parts of the drawing that touch in one point are
///    holes of their own.
/// 3. Every area is positive, domains do not overlap, and the sum of their areas is the area that the curves enclose,
///    within the join tolerance times their length. Arcs stay arcs, and areas are those of the pieces that are
///    returned.
/// 4. The number of domains and their areas, within the tolerance times the length, do not depend on the order of the
///    curves, nor on turning, mirroring, moving, or scaling the drawing together with the tolerance, as long as no
///    distance equals the tolerance but for rounding.
/// 5. A larger tolerance closes gaps, and otherwise only merges or drops what is thinner.
/// 6. The same curves in the same order give the same result. Domains come in the order of the places where their outer
///    loops begin, from left to right and then from below; each loop begins at its first place in that order.
/// 3 and 4 are for tolerances small against the drawing. From about a tenth of it on, and rarely below, lengths and
/// ranks that are equal but for rounding may be told apart by it, and a part may stand in a domain that has become too
/// small for it. With `split` off 1 holds, loops are closed, and areas are positive; the rest needs curves that meet at
/// their ends alone. With `keepDuplicates` the pieces of a domain are those of the curves that were drawn for it, so
/// that areas are within the tolerance times the length of those without, pieces begin and end within two tolerances of
/// their curves, and 2 and 3 hold up to that.
///
/// Method: the curves, and a connector across each gap below the tolerance, are cut at every place where they meet at
/// the precision of rounding, and ordered round each place. Euler's formula proves the map planar. Only then comes the
/// tolerance, as steps on that map which keep it planar: connectors and short edges are contracted, and faces thinner
/// than it are folded up. Of two sides that lie on one another but for rounding the later curve is the duplicate; of
/// others the one whose curve lies farther along a direction that turns with the drawing, whatever the order of the
/// curves. The same direction settles which of equal gaps, edges and faces comes first.
///
/// Joining: a loose end is joined to the ends and curves nearer than the tolerance, near ones first; a corner, where
/// several ends meet already, to other corners, and to curves nearer than a tenth of the tolerance; curves that nearly
/// touch, to one another. Places that become one are nearer to one another than the tolerance, all of them, so that a
/// chain of gaps does not close into one place. A curve of which all becomes one place has no length, nor has one no
/// longer than a millionth of the tolerance.
///
/// Ids are carried through and not looked at. Curves with coordinates or radii that are not finite, beyond 1e150, or
/// with a radius below 1e-150, and arcs whose ends miss their circle by more than the join tolerance and a millionth of
/// the radius, are unsupported. An arc that starts where it ends has no length; a full turn is a kCircle.
/// Cost, with n curves, k meeting points of theirs and s = n + k places: finding pairs and cutting n log n + k log k;
/// ordering round the places, contracting, folding, walking and nesting s log s. Memory grows as s. Boxes that meet
/// without the curves doing so cost little: parallel, concentric and diverging curves are told apart by families.
/// Curves that overlap one another on one line or circle, many at once, have as many cuts as pairs, but cost far less
/// than these: each stretch is held once, and what later curves have of it is counted only (not with `keepDuplicates`).
/// Lines through one exact point meet in one place. Once their ends are rounded, to four decimals say, they meet in as
/// many places as they have pairs: n squared vertices, which are all looked at.
ZVI_API DrawingResult MakeDrawingDomains(std::vector<DrawingCurve> const &curves, DrawingOptions const &options = {});

/// Is told from time to time, on the thread of the call, which share of the work is done, from 0 to 1 and growing.
using DrawingProgress = std::function<void(double done)>;

/// The same, telling how far it is. The shares are those of the time that a plan of many rooms takes. What `progress`
/// throws goes through to the caller.
ZVI_API DrawingResult MakeDrawingDomains(std::vector<DrawingCurve> const &curves, DrawingOptions const &options,
                                         DrawingProgress const &progress);

} // namespace zvi::lib

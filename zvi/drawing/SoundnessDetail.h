#pragma once

#include "zvi/drawing/ArrangementDetail.h"
#include "zvi/drawing/FacesDetail.h"

#include <vector>

namespace zvi::lib::drawing {

/// What must hold of a divided drawing, whatever was drawn: the map is planar, its edges meet at their ends to the last
/// bit, each bounded face has a positive area, and those of each connected part make up what its outside encloses.
bool IsSound(PlanarMap const &map, double snap);

/// Whether no bounded face of a map whose edges are not moved yet runs the wrong way round by more than rounding.
bool IsNoFaceInsideOut(PlanarMap const &map, double snap);

/// Whether the loops of the faces run through no place twice, outer ones counter-clockwise and holes clockwise, and
/// each side of an edge is on one of them at most; and whether no two edges share a part of their curve.
bool AreSimple(PlanarMap const &map, std::vector<Face> const &faces);

/// Whether the faces cover what the curves enclose once gaps below the tolerance are closed, within the tolerance times
/// the length of the curves and of what closes the gaps. Arranges the curves anew for that.
bool CoverWhatIsEnclosed(std::vector<Face> const &faces, UsableCurves const &curves, double tolerance,
                         bool keepDuplicates);

/// Whether holes stand inside their faces and no two faces overlap. It looks beside the middle of the longest edge of
/// each loop, where that has the ground to itself: there must be the face, and no other. What the tolerance may have
/// moved across a border does not count, so that `clear`, the room that it takes, is what two edges may have come
/// nearer to one another; nor does what an arc rises or falls by less than the snap distance.
bool AreApart(PlanarMap const &map, std::vector<Face> const &faces, double snap, double clear);

} // namespace zvi::lib::drawing

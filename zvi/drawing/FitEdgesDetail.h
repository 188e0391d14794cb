#pragma once

#include "zvi/drawing/PlanarMapDetail.h"
#include "zvi/drawing/ShortestFirstDetail.h"

#include <span>
#include <vector>

namespace zvi::lib::drawing {

/// Lets all edges that are not contracted or dropped end exactly where the clusters of their ends stand: at the place
/// of the cluster where most edges end or did so, then at the one nearest to the middle of all, those as far from it
/// but for `same` as the landmarks rank them. Arcs whose ends stay within `same` of their circle keep it. Returns where
/// the clusters stand, at the index of each place that stands for one.
std::vector<DrawingPoint> FitEdges(PlanarMap &map, double same, Landmarks const &landmarks,
                                   base::Workers const &workers);

/// The edges of curves, whatever their state, by these and along each.
struct CurveEdges {
    std::vector<int> edges;
    std::vector<int> begins; ///< where those of each of the caller's curves begin, and the end

    std::size_t CurveCount() const { return begins.size() - 1; }
    std::span<int const> Of(std::size_t curve) const {
        return std::span(edges).subspan(Index(begins[curve]), Index(begins[curve + 1] - begins[curve]));
    }
};

/// The edges of the map by their curves, of which there are so many; connectors are left out.
CurveEdges EdgesAlongCurves(PlanarMap const &map, std::size_t curveCount, base::Workers const &workers);

/// Gives what contracted edges had of their curves to the edge before each on its curve, or else to the one behind it.
/// Curves of which nothing else is left are put into `vanished`, in the order of the curves. `alongCurves` are the
/// edges along curves, whose order stays what it is.
void AbsorbContracted(PlanarMap &map, CurveEdges const &alongCurves, std::vector<Stretch> &vanished);

} // namespace zvi::lib::drawing

#pragma once

#include "zvi/drawing/BoxIndexDetail.h"
#include "zvi/drawing/CarriersDetail.h"
#include "zvi/drawing/NetworkDetail.h"

#include <vector>

namespace zvi::lib::drawing {

/// Large sets of edges whose boxes all meet although most of them keep apart: parallel lines, arcs of one centre or
/// nearly so, edges that leave one place, and lines that cross in one point. Each family is looked at in coordinates in
/// which it is spread out: offset and distance along, radius and angle, or the angle round the place.
class CurveFamilies {
public:
    /// No families at all.
    CurveFamilies() = default;

    /// `reach` is the distance below which edges are of interest to one another. Those of one carrier are a family in
    /// which all is settled.
    CurveFamilies(Network const &network, Carriers const &carriers, double reach);

    /// Of each edge its family by number, or BoxIndex::kNoGroup.
    std::vector<int> const &FamilyOfEdges() const { return m_familyOf; }

    /// Adds the edges of the same family that may come nearer to an edge than the reach elsewhere than at the place, or
    /// the point, that the family has in common; itself may be among them, and some come several times. Of lines that
    /// cross in one point two come near all others, so that the point becomes a place of each.
    /// `boxes` is room for what is found on the way.
    void AddNear(int edge, std::vector<int> &out, std::vector<int> &boxes) const;

private:
    struct Family {
        std::vector<Box> boxes; ///< of the members, in the coordinates of the family
        std::vector<int> owners;
        BoxIndex index{{}, base::Workers()};
        /// Of lines that cross in one point, two that lead to it from different directions.
        std::vector<int> leading;
    };

    std::vector<int> m_familyOf;
    std::vector<std::size_t> m_begins; ///< of each edge, where its boxes begin in those of its family
    std::vector<Family> m_families;
};

} // namespace zvi::lib::drawing

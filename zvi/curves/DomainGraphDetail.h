#pragma once

#include "zvi/core/MArray.h"
#include "zvi/curves/DomainRecords.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace zvi::lib::detail {

/// The edge graph as half-edges. The half-edges that leave one vertex stand side by side in the order of the vertex's
/// edge list, so a turn at a vertex is a step to the neighbour, and their fields share cache lines.
class DomainGraph {
public:
    /// `vtexEdges` are sorted by angle and hold neither duplicates nor edges of one vertex.
    DomainGraph(MArray<DM_VTEX> const &coordinates, MArray<std::pair<int, int>> const &edgeVtex,
                MArray<MArray<int>> const &vtexEdges);

    int VtexCount() const { return static_cast<int>(m_firstOut.size()) - 1; }
    int EdgeCount() const { return m_edgeCount; }
    int HalfEdgeCount() const { return static_cast<int>(m_halfEdges.size()); }

    int Target(int half) const { return m_halfEdges[Index(half)].target; }
    int Twin(int half) const { return m_halfEdges[Index(half)].twin; }
    int Origin(int half) const { return m_halfEdges[Index(half)].origin; }
    /// The edge of the half-edge.
    int Edge(int half) const { return m_halfEdges[Index(half)].edgeAndSide >> 1; }
    /// 0 when the half-edge runs from the first vertex of its edge to the second, 1 the other way.
    int Side(int half) const { return m_halfEdges[Index(half)].edgeAndSide & 1; }

    /// The half-edges that leave `vtex` are FirstOut(vtex) up to, but not including, EndOut(vtex).
    int FirstOut(int vtex) const { return m_firstOut[Index(vtex)]; }
    int EndOut(int vtex) const { return m_firstOut[Index(vtex) + 1]; }
    int Degree(int vtex) const { return EndOut(vtex) - FirstOut(vtex); }
    /// The neighbours, round `vtex`, of a half-edge that leaves it.
    int Clockwise(int vtex, int half) const { return (half == FirstOut(vtex) ? EndOut(vtex) : half) - 1; }
    int CounterClockwise(int vtex, int half) const { return half + 1 == EndOut(vtex) ? FirstOut(vtex) : half + 1; }

    DM_VTEX const &Coordinate(int vtex) const { return (*m_coordinates)[Index(vtex)]; }

    /// Whether every coordinate is a number small enough for squares and sums to be numbers too.
    bool IsTame() const { return m_isTame; }

private:
    struct HalfEdge {
        int origin;
        int target;
        int twin;
        int edgeAndSide;
    };

    static std::size_t Index(int index) { return static_cast<std::size_t>(index); }

    MArray<DM_VTEX> const *m_coordinates;
    int m_edgeCount;
    bool m_isTame = true;
    std::vector<int> m_firstOut;
    std::vector<HalfEdge> m_halfEdges;
};

} // namespace zvi::lib::detail

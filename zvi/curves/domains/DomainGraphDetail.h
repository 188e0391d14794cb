#pragma once

#include "zvi/base/Index.h"
#include "zvi/core/MArray.h"
#include "zvi/curves/DomainRecords.h"
#include "zvi/curves/domains/VertexStarsDetail.h"

#include <cassert>
#include <cstddef>
#include <vector>

namespace zvi::lib::curves {

/// The edge graph as half-edges. The half-edges that leave one node stand side by side in the order of the vertex's
/// edge list, so a turn at a node is a step to the neighbour, and their fields share cache lines.
///
/// The nodes are the vertices that have edges. In a graph too large for the caches whose vertices are scattered they
/// are numbered by cells along a Z-shaped curve (Morton, 1966): what lies close in the drawing then lies close in
/// memory, in whatever order the curves came. The numbers show in no result.
class DomainGraph {
public:
    /// `stars` are sorted by angle and hold neither duplicates nor edges of one vertex.
    DomainGraph(MArray<DM_VTEX> const &coordinates, VertexStars const &stars, std::size_t edgeCount);

    int NodeCount() const { return static_cast<int>(m_firstOut.size()) - 1; }
    int EdgeCount() const { return static_cast<int>(m_halfOfEdge.size()); }
    int HalfEdgeCount() const { return static_cast<int>(m_halfEdges.size()); }

    int Target(int half) const { return m_halfEdges[base::Index(half)].target; }
    int Twin(int half) const { return m_halfEdges[base::Index(half)].twin; }
    int Origin(int half) const { return m_halfEdges[base::Index(half)].origin; }
    /// The edge of the half-edge.
    int Edge(int half) const { return m_halfEdges[base::Index(half)].edgeAndSide >> 1; }
    /// 0 when the half-edge runs from the first vertex of its edge to the second, 1 the other way.
    int Side(int half) const { return m_halfEdges[base::Index(half)].edgeAndSide & 1; }
    /// Twice the edge plus the side.
    int EdgeAndSide(int half) const { return m_halfEdges[base::Index(half)].edgeAndSide; }
    /// The half-edge that stands for the edge of `half`: the smaller one of the two. What is known by edge is kept
    /// under it, near to what is known by half-edge.
    int Whole(int half) const { return half < Twin(half) ? half : Twin(half); }

    /// The half-edges that leave `node` are FirstOut(node) up to, but not including, EndOut(node).
    int FirstOut(int node) const { return m_firstOut[base::Index(node)]; }
    int EndOut(int node) const { return m_firstOut[base::Index(node) + 1]; }
    int Degree(int node) const { return EndOut(node) - FirstOut(node); }
    /// The neighbours, round `node`, of a half-edge that leaves it.
    int Clockwise(int node, int half) const {
        assert(Origin(half) == node);
        return (half == FirstOut(node) ? EndOut(node) : half) - 1;
    }
    int CounterClockwise(int node, int half) const {
        assert(Origin(half) == node);
        return half + 1 == EndOut(node) ? FirstOut(node) : half + 1;
    }
    /// Whether two edges of the node may run along one another.
    bool IsNarrow(int node) const { return m_isNarrow[base::Index(node)] != 0; }

    DM_VTEX const &Coordinate(int node) const { return m_coordinates[base::Index(node)]; }
    /// The vertex of a node.
    int Vtex(int node) const { return m_vtex[base::Index(node)]; }
    /// The node of a vertex with edges; -1 for any other.
    int Node(int vtex) const { return m_node[base::Index(vtex)]; }
    /// One of the half-edges of an edge; -1 for one that was dropped.
    int HalfOf(int edge) const { return m_halfOfEdge[base::Index(edge)]; }

    /// Whether every coordinate is a number small enough for squares and sums to be numbers too.
    bool IsMeasurable() const { return m_isMeasurable; }

private:
    struct HalfEdge {
        int origin;
        int target;
        int twin;
        int edgeAndSide;
    };

    void NumberNodes(MArray<DM_VTEX> const &coordinates, VertexStars const &stars);
    void AddHalfEdges(VertexStars const &stars);

    bool m_isMeasurable = true;
    std::vector<int> m_vtex;
    std::vector<int> m_node;
    std::vector<int> m_firstOut;
    std::vector<HalfEdge> m_halfEdges;
    std::vector<int> m_halfOfEdge;
    std::vector<char> m_isNarrow;
    std::vector<DM_VTEX> m_coordinates;
};

} // namespace zvi::lib::curves

#pragma once

#include "zvi/base/Index.h"
#include "zvi/core/MArray.h"
#include "zvi/curves/DomainRecords.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace zvi::lib::curves {

/// The rotation system of a graph that is being tidied: the edges about each vertex. Those of one vertex stand side by
/// side, in the order of its edge list, and each knows the vertex it leads to, so the steps run through memory instead
/// of across it.
class VertexStars {
public:
    /// An edge as seen from one of its ends.
    struct EdgeEnd {
        int far;         ///< the other end
        int edgeAndSide; ///< twice the edge, plus 1 when the edge runs from the far end to this one

        int Edge() const { return edgeAndSide >> 1; }
    };

    VertexStars(MArray<std::pair<int, int>> const &edgeVtex, MArray<MArray<int>> const &vtexEdges);

    int VtexCount() const { return static_cast<int>(m_firstEnd.size()) - 1; }
    EdgeEnd const *begin(int vtex) const { return m_ends.data() + m_firstEnd[base::Index(vtex)]; }
    EdgeEnd const *end(int vtex) const { return m_ends.data() + m_firstEnd[base::Index(vtex) + 1]; }
    int Degree(int vtex) const { return m_firstEnd[base::Index(vtex) + 1] - m_firstEnd[base::Index(vtex)]; }
    /// Whether two edges of the vertex may run along one another: neighbours in the order of angles are nearest to one
    /// another, so no two edges do when no two neighbours do. Known once the ends are sorted.
    bool IsNarrow(int vtex) const { return m_isNarrow[base::Index(vtex)] != 0; }

    /// Of the edges that join the same two vertices the first one in a list stays. An edge whose ends are one vertex
    /// stands twice in its list and so goes as a duplicate of itself.
    void DropDuplicates();
    /// Drops, until none is left, the only edge of a vertex; gives the dropped edges.
    std::vector<int> DropDangling();
    /// Sorts the ends of each vertex with more than two of them by their direction angles in degrees; equal angles
    /// stay as they are.
    void SortByAngle(MArray<DM_VTEX> const &coordinates);

    /// Puts the edges back into the lists that they came from.
    void CopyTo(MArray<MArray<int>> &vtexEdges) const;

    /// Whether the numbers of neighbours have little to do with one another.
    bool IsScattered() const;

private:
    void Drop(std::vector<char> const &isDropped);
    bool SortAt(int vtex, MArray<DM_VTEX> const &coordinates);
    void SortByDegrees(int vtex, MArray<DM_VTEX> const &coordinates);

    std::size_t m_edgeCount;
    std::vector<int> m_firstEnd; ///< by vertex; one more entry marks the end
    std::vector<EdgeEnd> m_ends;
    std::vector<char> m_isNarrow;
    bool m_isAnyDropped = false;
};

/// Direction angle in degrees, from 0 to 360, which only a direction just below that of x can reach; 0 for no
/// direction.
double DirectionAngle(double dx, double dy);

} // namespace zvi::lib::curves

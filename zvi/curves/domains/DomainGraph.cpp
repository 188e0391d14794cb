#include "zvi/curves/domains/DomainGraphDetail.h"

#include "zvi/curves/domains/ZCurveDetail.h"

#include <cmath>

namespace zvi::lib::curves {

using base::Index;

namespace {

/// Beyond this, in drawing units, squares and sums of squares may overflow.
constexpr double kLargestMeasurable = 1e150;

/// From this many nodes on they are numbered by cells.
constexpr std::size_t kManyNodes = 8192;

bool IsMeasurableNumber(double value) {
    return std::abs(value) < kLargestMeasurable;
}

} // namespace

DomainGraph::DomainGraph(MArray<DM_VTEX> const &coordinates, VertexStars const &stars, std::size_t edgeCount)
    : m_node(coordinates.Size(), -1), m_halfOfEdge(edgeCount, -1) {
    for (DM_VTEX const &vtex : coordinates)
        m_isMeasurable = m_isMeasurable && IsMeasurableNumber(vtex.x) && IsMeasurableNumber(vtex.y);
    NumberNodes(coordinates, stars);
    AddHalfEdges(stars);
}

void DomainGraph::NumberNodes(MArray<DM_VTEX> const &coordinates, VertexStars const &stars) {
    m_vtex.reserve(Index(stars.VtexCount()));
    for (int vtex = 0; vtex < stars.VtexCount(); ++vtex) {
        if (stars.Degree(vtex) != 0)
            m_vtex.push_back(vtex);
    }
    if (m_isMeasurable && m_vtex.size() >= kManyNodes && stars.IsScattered())
        SortAlongZCurve(m_vtex, coordinates);

    m_firstOut.reserve(m_vtex.size() + 1);
    m_isNarrow.reserve(m_vtex.size());
    m_coordinates.reserve(m_vtex.size());
    m_firstOut.push_back(0);
    for (int const vtex : m_vtex) {
        m_node[Index(vtex)] = static_cast<int>(m_isNarrow.size());
        m_firstOut.push_back(m_firstOut.back() + stars.Degree(vtex));
        m_isNarrow.push_back(stars.IsNarrow(vtex) ? 1 : 0);
        m_coordinates.push_back(coordinates[Index(vtex)]);
    }
}

void DomainGraph::AddHalfEdges(VertexStars const &stars) {
    m_halfEdges.resize(Index(m_firstOut.back()));
    // Each half-edge finds the other one of its edge, which was met first, in `m_halfOfEdge`.
    int half = 0;
    for (int node = 0; node < NodeCount(); ++node) {
        int const vtex = Vtex(node);
        for (VertexStars::EdgeEnd const *edgeEnd = stars.begin(vtex); edgeEnd != stars.end(vtex); ++edgeEnd, ++half) {
            int &met = m_halfOfEdge[Index(edgeEnd->Edge())];
            m_halfEdges[Index(half)] = {node, Node(edgeEnd->far), met, edgeEnd->edgeAndSide};
            if (met >= 0)
                m_halfEdges[Index(met)].twin = half;
            met = half;
        }
    }
}

} // namespace zvi::lib::curves

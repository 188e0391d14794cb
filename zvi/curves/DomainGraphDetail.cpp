#include "zvi/curves/DomainGraphDetail.h"

#include <cmath>

namespace zvi::lib::detail {

namespace {

/// Beyond this, in drawing units, squares and sums of squares may overflow.
constexpr double kLargestTame = 1e150;

bool IsTameNumber(double value) {
    return std::abs(value) < kLargestTame;
}

} // namespace

DomainGraph::DomainGraph(MArray<DM_VTEX> const &coordinates, MArray<std::pair<int, int>> const &edgeVtex,
                         MArray<MArray<int>> const &vtexEdges)
    : m_coordinates(&coordinates), m_edgeCount(static_cast<int>(edgeVtex.Size())) {
    m_firstOut.reserve(vtexEdges.Size() + 1);
    m_firstOut.push_back(0);
    for (MArray<int> const &edges : vtexEdges)
        m_firstOut.push_back(m_firstOut.back() + static_cast<int>(edges.Size()));
    m_halfEdges.resize(Index(m_firstOut.back()));

    // Each half-edge finds the other one of its edge, which was met first, in `met`.
    std::vector<int> met(edgeVtex.Size(), -1);
    int half = 0;
    for (std::size_t vtex = 0; vtex < vtexEdges.Size(); ++vtex) {
        for (int const edge : vtexEdges[vtex]) {
            auto const &[first, second] = edgeVtex[Index(edge)];
            bool const runsBack = first != static_cast<int>(vtex);
            int &twin = met[Index(edge)];
            m_halfEdges[Index(half)] = {static_cast<int>(vtex), runsBack ? first : second, twin,
                                        2 * edge + (runsBack ? 1 : 0)};
            if (twin >= 0)
                m_halfEdges[Index(twin)].twin = half;
            twin = half;
            ++half;
        }
    }
    for (DM_VTEX const &vtex : coordinates)
        m_isTame = m_isTame && IsTameNumber(vtex.x) && IsTameNumber(vtex.y);
}

} // namespace zvi::lib::detail

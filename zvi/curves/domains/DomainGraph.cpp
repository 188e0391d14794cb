#include "zvi/curves/domains/DomainGraphDetail.h"

#include "zvi/base/Buckets.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <utility>

namespace zvi::lib::curves {

namespace {

/// Beyond this, in drawing units, squares and sums of squares may overflow.
constexpr double kLargestTame = 1e150;

/// From this many nodes on they are numbered by cells.
constexpr std::size_t kManyNodes = 8192;

/// So many nodes, and up to four times as many, are in a cell on average: their half-edges fill a page of memory or so.
constexpr std::size_t kNodesPerCell = 16;

bool IsTameNumber(double value) {
    return std::abs(value) < kLargestTame;
}

/// Moves the low 16 bits apart so that a free bit stands above each.
std::uint32_t SpreadBits(std::uint32_t value) {
    value = (value | (value << 8)) & 0x00FF00FFu;
    value = (value | (value << 4)) & 0x0F0F0F0Fu;
    value = (value | (value << 2)) & 0x33333333u;
    return (value | (value << 1)) & 0x55555555u;
}

/// Square cells about points, numbered along a Z-shaped curve.
class ZCurve {
public:
    ZCurve(std::vector<int> const &vtexes, MArray<DM_VTEX> const &coordinates) {
        int const cellBits = static_cast<int>(std::bit_width(vtexes.size() / kNodesPerCell)) - 1;
        m_bits = std::min(cellBits / 2, kMostBits);
        DM_VTEX high = m_low = coordinates[Index(vtexes.front())];
        for (int const vtex : vtexes) {
            DM_VTEX const &at = coordinates[Index(vtex)];
            m_low = {std::min(m_low.x, at.x), std::min(m_low.y, at.y)};
            high = {std::max(high.x, at.x), std::max(high.y, at.y)};
        }
        double const perSide = static_cast<double>(1 << m_bits);
        m_cellsPerUnit = {perSide / (high.x - m_low.x), perSide / (high.y - m_low.y)};
    }

    std::size_t CellCount() const { return std::size_t{1} << (2 * m_bits); }
    std::size_t CellOf(DM_VTEX const &at) const {
        return SpreadBits(Step((at.x - m_low.x) * m_cellsPerUnit.x)) |
               (SpreadBits(Step((at.y - m_low.y) * m_cellsPerUnit.y)) << 1);
    }

private:
    static constexpr int kMostBits = 12;

    std::uint32_t Step(double cells) const {
        std::uint32_t const last = (std::uint32_t{1} << m_bits) - 1;
        return cells < static_cast<double>(last) ? static_cast<std::uint32_t>(std::max(cells, 0.0)) : last;
    }

    DM_VTEX m_low;
    DM_VTEX m_cellsPerUnit;
    int m_bits;
};

/// Sorts vertices by their cells, those of one cell in their order.
void SortByCells(std::vector<int> &vtexes, MArray<DM_VTEX> const &coordinates) {
    ZCurve const curve(vtexes, coordinates);
    std::vector<std::uint32_t> cells;
    cells.reserve(vtexes.size());
    for (int const vtex : vtexes)
        cells.push_back(static_cast<std::uint32_t>(curve.CellOf(coordinates[Index(vtex)])));
    std::vector<std::size_t> begins(curve.CellCount() + 1);
    std::vector<int> sorted(vtexes.size());
    base::SortIntoBuckets<std::size_t>(
        vtexes.size(), begins, [&](std::size_t i) { return cells[i]; },
        [&](std::size_t place, std::size_t i) { sorted[place] = vtexes[i]; });
    vtexes = std::move(sorted);
}

} // namespace

DomainGraph::DomainGraph(MArray<DM_VTEX> const &coordinates, VertexStars const &stars, std::size_t edgeCount)
    : m_node(coordinates.Size(), -1), m_halfOfEdge(edgeCount, -1) {
    for (DM_VTEX const &vtex : coordinates)
        m_isTame = m_isTame && IsTameNumber(vtex.x) && IsTameNumber(vtex.y);
    NumberNodes(coordinates, stars);
    AddHalfEdges(stars);
}

void DomainGraph::NumberNodes(MArray<DM_VTEX> const &coordinates, VertexStars const &stars) {
    m_vtex.reserve(Index(stars.VtexCount()));
    for (int vtex = 0; vtex < stars.VtexCount(); ++vtex) {
        if (stars.Degree(vtex) != 0)
            m_vtex.push_back(vtex);
    }
    if (m_isTame && m_vtex.size() >= kManyNodes && stars.IsScattered())
        SortByCells(m_vtex, coordinates);

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
        for (VertexStars::Spoke const *spoke = stars.begin(vtex); spoke != stars.end(vtex); ++spoke, ++half) {
            int &met = m_halfOfEdge[Index(spoke->Edge())];
            m_halfEdges[Index(half)] = {node, Node(spoke->far), met, spoke->edgeAndSide};
            if (met >= 0)
                m_halfEdges[Index(met)].twin = half;
            met = half;
        }
    }
}

} // namespace zvi::lib::curves

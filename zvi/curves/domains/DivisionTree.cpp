#include "zvi/curves/domains/DivisionTreeDetail.h"

#include "zvi/base/HashMix.h"
#include "zvi/base/Index.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace zvi::lib::curves {

using base::Index;

namespace {

/// Vertices of domains that are kept for comparison, for each edge of the graph. More find endless divisions that only
/// show after a long way; they cost memory.
constexpr std::size_t kKeptPerEdge = 64;

std::uint64_t Mixed(std::uint64_t hash, MArray<int> const &values) {
    for (int const value : values)
        hash = base::Mix(hash, static_cast<std::uint32_t>(value));
    return hash;
}

bool AreEqual(MArray<int> const &a, MArray<int> const &b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end());
}

} // namespace

DivisionTree::DivisionTree(std::size_t edgeCount) : m_room(kKeptPerEdge * edgeCount) {}

void DivisionTree::AddRoot(DM_SURF surf) {
    Add(-1, std::move(surf));
}

DM_SURF &DivisionTree::Next() {
    assert(HasNext());
    m_current = m_waiting.back();
    m_waiting.pop_back();
    return m_nodes[Index(m_current)].surf;
}

bool DivisionTree::AddHalves(DM_SURF outA, DM_SURF outB) {
    assert(m_current >= 0 && m_nodes[Index(m_current)].outA < 0);
    auto const current = Index(m_current);
    std::size_t const size = m_nodes[current].surf.Vtex.Size();
    if (size <= m_room) {
        m_room -= size;
        m_nodeOfHash.emplace(HashOf(m_nodes[current].surf), m_current);
    } else {
        m_nodes[current].surf = DM_SURF();
    }
    int const nodeA = Add(m_current, std::move(outA));
    int const nodeB = Add(m_current, std::move(outB));
    m_nodes[current].outA = nodeA;
    m_nodes[current].outB = nodeB;
    return !RepeatsOneAbove(nodeA) && !RepeatsOneAbove(nodeB);
}

void DivisionTree::MoveWholeOnes(MArray<DM_SURF> &domains) {
    assert(!m_nodes.empty());
    std::vector<std::size_t> round{0};
    for (std::vector<std::size_t> next; !round.empty(); round.swap(next)) {
        next.clear();
        for (std::size_t const at : round) {
            Node &node = m_nodes[at];
            if (node.outA < 0) {
                domains.PushBack(std::move(node.surf));
                continue;
            }
            next.push_back(Index(node.outA));
            next.push_back(Index(node.outB));
        }
    }
}

int DivisionTree::Add(int above, DM_SURF surf) {
    int const added = static_cast<int>(m_nodes.size());
    m_nodes.push_back({above, -1, -1, std::move(surf)});
    m_waiting.push_back(added);
    return added;
}

bool DivisionTree::RepeatsOneAbove(int node) {
    auto const at = [this](int index) -> Node const & { return m_nodes[Index(index)]; };
    auto const [first, last] = m_nodeOfHash.equal_range(HashOf(at(node).surf));
    for (auto same = first; same != last; ++same) {
        if (!AreSame(at(same->second).surf, at(node).surf))
            continue;
        int above = at(node).above;
        while (above > same->second) // a node above has a smaller number
            above = at(above).above;
        if (above == same->second)
            return true;
    }
    return false;
}

std::uint64_t DivisionTree::HashOf(DM_SURF const &surf) {
    std::uint64_t hash = Mixed(surf.Holes.Size(), surf.Vtex);
    for (DM_SURF_SUB const &hole : surf.Holes)
        hash = Mixed(hash, hole.Vtex);
    return hash;
}

/// The vertices say it all: no two edges join the same ones.
bool DivisionTree::AreSame(DM_SURF const &a, DM_SURF const &b) {
    auto const sameVertices = [](DM_SURF_SUB const &x, DM_SURF_SUB const &y) { return AreEqual(x.Vtex, y.Vtex); };
    return sameVertices(a, b) &&
           std::equal(a.Holes.begin(), a.Holes.end(), b.Holes.begin(), b.Holes.end(), sameVertices);
}

} // namespace zvi::lib::curves

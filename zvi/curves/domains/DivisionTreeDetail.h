#pragma once

#include "zvi/core/MArray.h"
#include "zvi/curves/DomainRecords.h"

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace zvi::lib::curves {

/// The domains that the division of one loop goes through, each below the one it was divided from.
///
/// A division depends on its domain alone, so the order of work is free: the left half of a division comes first, which
/// finds endless divisions soon. The result is in the order of rounds: all domains of a round before those of the next.
///
/// A domain that equals one above it would be divided in the same way for ever and exceed any limit, so the tree
/// refuses it. Domains are kept for that comparison while they fit a bound in proportion to the graph.
class DivisionTree {
public:
    explicit DivisionTree(std::size_t edgeCount);

    void AddRoot(DM_SURF surf);

    bool HasNext() const { return !m_waiting.empty(); }
    /// The next domain to divide, which there is; it stays where it is until another one is added.
    DM_SURF &Next();
    /// Puts the halves below the last `Next`. False when one of them equals a domain above it.
    bool AddHalves(DM_SURF outA, DM_SURF outB);

    /// Appends the domains below the root that were not divided, in the order of rounds.
    void MoveWholeOnes(MArray<DM_SURF> &domains);

private:
    struct Node {
        int above;
        int outA = -1;
        int outB = -1;
        DM_SURF surf;
    };

    int Add(int above, DM_SURF surf);
    bool RepeatsOneAbove(int node);
    static std::uint64_t HashOf(DM_SURF const &surf);
    static bool AreSame(DM_SURF const &a, DM_SURF const &b);

    std::vector<Node> m_nodes;
    std::vector<int> m_waiting;
    std::unordered_multimap<std::uint64_t, int> m_nodeOfHash; ///< of the nodes whose domains are kept
    int m_current = -1;
    std::size_t m_room; ///< vertices that kept domains may still have
};

} // namespace zvi::lib::curves

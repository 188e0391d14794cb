#pragma once

#include "zvi/core/MArray.h"
#include "zvi/curves/DomainRecords.h"
#include "zvi/curves/domains/DomainGraphDetail.h"
#include "zvi/curves/domains/DomainIndexDetail.h"
#include "zvi/curves/domains/LoopDividerDetail.h"
#include "zvi/curves/domains/OuterWalksDetail.h"

#include <cstddef>
#include <vector>

namespace zvi::lib {
class MDomainMaker;
}

namespace zvi::lib::curves {

/// The main scan of `MDomainMaker::MakeDomain`: outer loops, holes, divisions and marks, candidate by candidate.
class DomainScan {
public:
    DomainScan(MDomainMaker &maker, DomainGraph const &graph);

    /// Appends the domains that walks from the candidates find to those of the maker.
    void Run(MArray<int> const &candidates);

private:
    /// A candidate whose loop could not be divided within the limit.
    struct Abandoned {
        int node;
        std::vector<int> loop;
        int firstUnasked; ///< the domains before this one do not hold the loop, and never will
    };

    bool ScanCandidate(int node);
    bool RetryAbandoned(Abandoned &known);
    int AddToHoles(std::vector<int> const &loop, int first);
    int FirstDomainWith(DM_VTEX const &point);
    bool DivideLoop(std::vector<int> const &loop);
    void MarkDone(DM_SURF_SUB const &loop);

    MDomainMaker &m_maker;
    DomainGraph const &m_graph;
    OuterWalks m_walks; ///< also knows which nodes and edges are finished
    LoopDivider m_divider;
    DomainIndex m_index;                ///< of the finished domains
    std::vector<int> m_loop;            ///< the half-edges of the present candidate's loop
    std::vector<Abandoned> m_abandoned; ///< in the order of the candidates
};

} // namespace zvi::lib::curves

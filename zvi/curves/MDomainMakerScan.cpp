// The main scan of MakeDomain: outer loops, holes, divisions and marks, candidate by candidate.

#include "zvi/curves/DomainDividerDetail.h"
#include "zvi/curves/DomainGraphDetail.h"
#include "zvi/curves/DomainIndexDetail.h"
#include "zvi/curves/DomainRulesDetail.h"
#include "zvi/curves/DomainWalkDetail.h"
#include "zvi/curves/MDomainMaker.h"

#include <algorithm>
#include <vector>

namespace zvi::lib {

using detail::At;
using detail::DomainGraph;
using detail::LoopDivider;

struct MDomainMaker::Run {
    /// A candidate whose loop could not be divided within the limit.
    struct Abandoned {
        int vtex;
        std::vector<int> loop;
    };

    explicit Run(MDomainMaker const &maker)
        : graph(maker.VtexCoord, maker.EdgeVtex, maker.VtexEdges), walks(graph), divider(graph),
          index(maker.ResultSurf, maker.VtexCoord) {}

    DomainGraph graph;
    detail::OuterWalks walks; ///< also knows which vertices and edges are finished
    LoopDivider divider;
    detail::DomainIndex index;        ///< of the finished domains
    std::vector<Abandoned> abandoned; ///< in the order of the candidates
};

namespace {

/// The loop that the half-edges run along, as a domain without directions.
DM_SURF MakeSurf(DomainGraph const &graph, std::vector<int> const &halfEdges) {
    DM_SURF surf;
    for (int const half : halfEdges) {
        surf.Vtex.PushBack(graph.Origin(half));
        surf.Curv.PushBack(graph.Edge(half));
    }
    surf.Vtex.PushBack(graph.Origin(halfEdges.front()));
    return surf;
}

} // namespace

/// After each group of new domains the scan starts again at the first candidate. Of the earlier ones only those whose
/// division was abandoned need another look: the others are finished, or at a dead end for good.
void MDomainMaker::ScanCandidates(zvi::MArray<int> const &candidates) {
    Run run(*this);
    for (int const vtex : candidates) {
        while (!run.walks.IsVtexDone(vtex) && ScanCandidate(vtex, run)) {
            for (std::size_t i = 0; i < run.abandoned.size();)
                i = RetryAbandoned(i, run) ? 0 : i + 1;
        }
    }
}

bool MDomainMaker::ScanCandidate(int vtex, Run &run) {
    std::vector<int> loop;
    if (!run.walks.Walk(vtex, loop))
        return false;
    AddToHoles(loop, run);
    if (!DivideLoop(loop, run)) {
        run.abandoned.push_back({vtex, std::move(loop)});
        return false;
    }
    return true;
}

bool MDomainMaker::RetryAbandoned(std::size_t index, Run &run) {
    Run::Abandoned &known = run.abandoned[index];
    std::vector<int> loop;
    if (run.walks.IsVtexDone(known.vtex) || !run.walks.Walk(known.vtex, loop))
        return false;
    AddToHoles(loop, run);
    // The division depends on the loop alone.
    if (loop == known.loop)
        return false;
    known.loop = loop;
    return DivideLoop(loop, run);
}

/// A loop inside an existing domain is a hole of the first such domain, and still becomes a domain of its own. The
/// vertex in the middle of the list stands for the loop.
void MDomainMaker::AddToHoles(std::vector<int> const &loop, Run &run) {
    DM_VTEX const &middle = VtexCoord[At(run.graph.Origin(loop[(loop.size() + 1) / 2]))];
    int const domain = run.graph.IsTame() ? run.index.FirstWith(middle) : FirstDomainWith(middle);
    if (domain < 0)
        return;
    DM_SURF_SUB hole = MakeSurf(run.graph, loop);
    std::reverse(hole.Vtex.begin(), hole.Vtex.end());
    std::reverse(hole.Curv.begin(), hole.Curv.end());
    ResultSurf[At(domain)].Holes.PushBack(std::move(hole));
    if (run.graph.IsTame())
        run.index.AddLastHole(domain);
}

int MDomainMaker::FirstDomainWith(DM_VTEX const &point) {
    for (std::size_t i = 0; i < ResultSurf.Size(); ++i) {
        if (Util_IsPointInSurf(point.x, point.y, ResultSurf[i]) != 0)
            return static_cast<int>(i);
    }
    return -1;
}

/// Appends the domains of the loop to the result and marks what they use; false when the division was abandoned.
bool MDomainMaker::DivideLoop(std::vector<int> const &loop, Run &run) {
    std::size_t const first = ResultSurf.Size();
    LoopDivider::Outcome const outcome = run.divider.Divide(loop, ResultSurf);
    if (outcome == LoopDivider::Outcome::kUnproven)
        DivideInRounds(MakeSurf(run.graph, loop));
    for (std::size_t i = first; i < ResultSurf.Size(); ++i) {
        MarkDone(ResultSurf[i], run);
        for (DM_SURF_SUB const &hole : ResultSurf[i].Holes)
            MarkDone(hole, run);
    }
    run.walks.BarLooseEnds();
    return ResultSurf.Size() > first;
}

void MDomainMaker::MarkDone(DM_SURF_SUB const &loop, Run &run) const {
    for (int const vtex : loop.Vtex)
        run.walks.MarkVtex(vtex);
    for (int const edge : loop.Curv)
        run.walks.MarkEdge(edge);
}

void MDomainMaker::DivideInRounds(DM_SURF loop) {
    long long const limit = detail::kDivisionsPerEdge * static_cast<long long>(EdgeVtex.Size());
    long long counter = 0;
    std::vector<DM_SURF> done;
    std::vector<DM_SURF> work;
    work.push_back(std::move(loop));
    while (!work.empty()) {
        std::vector<DM_SURF> next;
        for (DM_SURF &surf : work) {
            if (++counter > limit)
                return;
            DM_SURF outA;
            DM_SURF outB;
            if (Sub1_DivideDomain(surf, outA, outB) == 0) {
                done.push_back(std::move(surf));
                continue;
            }
            next.push_back(std::move(outA));
            next.push_back(std::move(outB));
        }
        work = std::move(next);
    }
    for (DM_SURF &surf : done)
        ResultSurf.PushBack(std::move(surf));
}

} // namespace zvi::lib

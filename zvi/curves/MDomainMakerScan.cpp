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
        int firstUnasked; ///< the domains before this one do not hold the loop, and never will
    };

    explicit Run(MDomainMaker const &maker)
        : graph(maker.VtexCoord, maker.EdgeVtex, maker.VtexEdges), walks(graph), divider(graph),
          index(maker.ResultSurf, maker.VtexCoord) {}

    DomainGraph graph;
    detail::OuterWalks walks; ///< also knows which vertices and edges are finished
    LoopDivider divider;
    detail::DomainIndex index;        ///< of the finished domains
    std::vector<int> loop;            ///< the half-edges of the present candidate's loop
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
    std::vector<int> &loop = run.loop;
    if (!run.walks.Walk(vtex, loop))
        return false;
    int const firstUnasked = AddToHoles(loop, 0, run);
    if (!DivideLoop(loop, run)) {
        run.abandoned.push_back({vtex, loop, firstUnasked});
        return false;
    }
    return true;
}

bool MDomainMaker::RetryAbandoned(std::size_t index, Run &run) {
    Run::Abandoned &known = run.abandoned[index];
    std::vector<int> loop;
    if (run.walks.IsVtexDone(known.vtex) || !run.walks.Walk(known.vtex, loop))
        return false;
    bool const isSame = loop == known.loop;
    known.firstUnasked = AddToHoles(loop, isSame ? known.firstUnasked : 0, run);
    // The division depends on the loop alone.
    if (isSame)
        return false;
    known.loop = loop;
    return DivideLoop(loop, run);
}

/// A loop inside an existing domain is a hole of the first such domain, and still becomes a domain of its own. The
/// vertex in the middle of the list stands for the loop. Domains before `first` are known not to hold it.
///
/// Returns the first domain that could still take the loop at a later try: a domain only gains holes, so what does not
/// hold a point now never will, and what took the loop has the point on the border of that hole from now on. With
/// coordinates beyond all measure neither is sure, and every domain is asked again.
int MDomainMaker::AddToHoles(std::vector<int> const &loop, int first, Run &run) {
    DM_VTEX const &middle = VtexCoord[At(run.graph.Origin(loop[(loop.size() + 1) / 2]))];
    bool const isTame = run.graph.IsTame();
    int const domain = isTame ? run.index.FirstWith(middle, first) : FirstDomainWith(middle);
    if (domain < 0)
        return isTame ? static_cast<int>(ResultSurf.Size()) : 0;
    DM_SURF_SUB hole = MakeSurf(run.graph, loop);
    std::reverse(hole.Vtex.begin(), hole.Vtex.end());
    std::reverse(hole.Curv.begin(), hole.Curv.end());
    ResultSurf[At(domain)].Holes.PushBack(std::move(hole));
    if (!isTame)
        return 0;
    run.index.AddLastHole(domain);
    return domain + 1;
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
        DividePlainly(MakeSurf(run.graph, loop));
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
    for (std::size_t i = 0; i < loop.Curv.Size(); ++i)
        run.walks.MarkEdge(loop.Curv[i], loop.Vtex[i], loop.Vtex[i + 1]);
}

} // namespace zvi::lib

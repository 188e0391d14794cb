// The main scan of MakeDomain: outer loops, holes, divisions and marks, candidate by candidate.

#include "zvi/base/Index.h"
#include "zvi/curves/MDomainMaker.h"
#include "zvi/curves/domains/DomainGraphDetail.h"
#include "zvi/curves/domains/DomainIndexDetail.h"
#include "zvi/curves/domains/DomainRulesDetail.h"
#include "zvi/curves/domains/LoopDividerDetail.h"
#include "zvi/curves/domains/OuterWalksDetail.h"

#include <vector>

namespace zvi::lib {

using base::Index;
using curves::DomainGraph;
using curves::LoopDivider;

struct MDomainMaker::Run {
    /// A candidate whose loop could not be divided within the limit.
    struct Abandoned {
        int node;
        std::vector<int> loop;
        int firstUnasked; ///< the domains before this one do not hold the loop, and never will
    };

    Run(MDomainMaker const &maker, DomainGraph const &edges)
        : graph(edges), walks(edges), divider(edges), index(maker.ResultSurf, maker.VtexCoord) {}

    DomainGraph const &graph;
    curves::OuterWalks walks; ///< also knows which nodes and edges are finished
    LoopDivider divider;
    curves::DomainIndex index;        ///< of the finished domains
    std::vector<int> loop;            ///< the half-edges of the present candidate's loop
    std::vector<Abandoned> abandoned; ///< in the order of the candidates
};

namespace {

/// The loop that the half-edges run along, as a domain without directions.
DM_SURF MakeSurf(DomainGraph const &graph, std::vector<int> const &halfEdges) {
    std::size_t const count = halfEdges.size();
    DM_SURF surf{{curves::ListOf(count + 1), curves::ListOf(count), {}}, {}};
    for (std::size_t i = 0; i < count; ++i) {
        surf.Vtex[i] = graph.Vtex(graph.Origin(halfEdges[i]));
        surf.Curv[i] = graph.Edge(halfEdges[i]);
    }
    surf.Vtex[count] = surf.Vtex[0];
    return surf;
}

/// The loop that the half-edges run along, as a hole: run the other way.
DM_SURF_SUB MakeHole(DomainGraph const &graph, std::vector<int> const &halfEdges) {
    std::size_t const count = halfEdges.size();
    DM_SURF_SUB hole{curves::ListOf(count + 1), curves::ListOf(count), {}};
    for (std::size_t i = 0; i < count; ++i) {
        hole.Vtex[count - i] = graph.Vtex(graph.Origin(halfEdges[i]));
        hole.Curv[count - 1 - i] = graph.Edge(halfEdges[i]);
    }
    hole.Vtex[0] = hole.Vtex[count];
    return hole;
}

} // namespace

/// After each group of new domains the scan starts again at the first candidate. Of the earlier ones only those whose
/// division was abandoned need another look: the others are finished, or at a dead end for good.
void MDomainMaker::ScanCandidates(DomainGraph const &graph, zvi::MArray<int> const &candidates) {
    Run run(*this, graph);
    for (int const vtex : candidates) {
        int const node = graph.Node(vtex);
        while (!run.walks.IsNodeDone(node) && ScanCandidate(node, run)) {
            for (std::size_t i = 0; i < run.abandoned.size();)
                i = RetryAbandoned(i, run) ? 0 : i + 1;
        }
    }
}

bool MDomainMaker::ScanCandidate(int node, Run &run) {
    std::vector<int> &loop = run.loop;
    if (!run.walks.Walk(node, loop))
        return false;
    int const firstUnasked = AddToHoles(loop, 0, run);
    if (!DivideLoop(loop, run)) {
        run.abandoned.push_back({node, loop, firstUnasked});
        return false;
    }
    return true;
}

bool MDomainMaker::RetryAbandoned(std::size_t index, Run &run) {
    Run::Abandoned &known = run.abandoned[index];
    std::vector<int> loop;
    if (run.walks.IsNodeDone(known.node) || !run.walks.Walk(known.node, loop))
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
    DM_VTEX const &middle = run.graph.Coordinate(run.graph.Origin(loop[(loop.size() + 1) / 2]));
    bool const isTame = run.graph.IsTame();
    int const domain = isTame ? run.index.FirstWith(middle, first) : FirstDomainWith(middle);
    if (domain < 0)
        return isTame ? static_cast<int>(ResultSurf.Size()) : 0;
    ResultSurf[Index(domain)].Holes.PushBack(MakeHole(run.graph, loop));
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
    if (outcome == LoopDivider::Outcome::kDivided) {
        run.divider.VisitUsed([&](int half) {
            run.walks.MarkEdge(half);
            run.walks.MarkNode(run.graph.Origin(half));
        });
    } else if (outcome == LoopDivider::Outcome::kUnproven) {
        DividePlainly(MakeSurf(run.graph, loop));
        for (std::size_t i = first; i < ResultSurf.Size(); ++i) {
            MarkDone(ResultSurf[i], run);
            for (DM_SURF_SUB const &hole : ResultSurf[i].Holes)
                MarkDone(hole, run);
        }
    }
    run.walks.BarLooseEnds();
    return ResultSurf.Size() > first;
}

void MDomainMaker::MarkDone(DM_SURF_SUB const &loop, Run &run) {
    for (int const vtex : loop.Vtex)
        run.walks.MarkNode(run.graph.Node(vtex));
    for (int const edge : loop.Curv)
        run.walks.MarkEdge(run.graph.HalfOf(edge));
}

} // namespace zvi::lib

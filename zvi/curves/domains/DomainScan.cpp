#include "zvi/curves/domains/DomainScanDetail.h"

#include "zvi/base/Index.h"
#include "zvi/curves/MDomainMaker.h"
#include "zvi/curves/domains/DomainRulesDetail.h"
#include "zvi/curves/domains/PlainDivisionDetail.h"

#include <cassert>

namespace zvi::lib::curves {

using base::Index;

namespace {

/// The loop that the half-edges run along, as a domain without directions.
DM_SURF MakeSurf(DomainGraph const &graph, std::vector<int> const &halfEdges) {
    std::size_t const count = halfEdges.size();
    DM_SURF surf{{ListOf(count + 1), ListOf(count), {}}, {}};
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
    DM_SURF_SUB hole{ListOf(count + 1), ListOf(count), {}};
    for (std::size_t i = 0; i < count; ++i) {
        hole.Vtex[count - i] = graph.Vtex(graph.Origin(halfEdges[i]));
        hole.Curv[count - 1 - i] = graph.Edge(halfEdges[i]);
    }
    hole.Vtex[0] = hole.Vtex[count];
    return hole;
}

} // namespace

DomainScan::DomainScan(MDomainMaker &maker, DomainGraph const &graph)
    : m_maker(maker), m_graph(graph), m_walks(graph), m_divider(graph), m_index(maker.ResultSurf, maker.VtexCoord) {}

/// After each group of new domains the scan starts again at the first candidate. Of the earlier ones only those whose
/// division was abandoned need another look: the others are finished, or at a dead end for good.
void DomainScan::Run(MArray<int> const &candidates) {
    for (int const vtex : candidates) {
        int const node = m_graph.Node(vtex);
        while (!m_walks.IsNodeDone(node) && ScanCandidate(node)) {
            for (std::size_t i = 0; i < m_abandoned.size();)
                i = RetryAbandoned(m_abandoned[i]) ? 0 : i + 1;
        }
    }
}

/// True when the walk from the candidate found domains.
bool DomainScan::ScanCandidate(int node) {
    if (!m_walks.Walk(node, m_loop))
        return false;
    int const firstUnasked = AddToHoles(m_loop, 0);
    if (!DivideLoop(m_loop)) {
        m_abandoned.push_back({node, m_loop, firstUnasked});
        return false;
    }
    return true;
}

bool DomainScan::RetryAbandoned(Abandoned &known) {
    std::vector<int> loop;
    if (m_walks.IsNodeDone(known.node) || !m_walks.Walk(known.node, loop))
        return false;
    bool const isSame = loop == known.loop;
    known.firstUnasked = AddToHoles(loop, isSame ? known.firstUnasked : 0);
    // The division depends on the loop alone.
    if (isSame)
        return false;
    known.loop = loop;
    return DivideLoop(loop);
}

/// A loop inside an existing domain is a hole of the first such domain, and still becomes a domain of its own. The
/// vertex in the middle of the list stands for the loop. Domains before `first` are known not to hold it.
///
/// Returns the first domain that could still take the loop at a later try: a domain only gains holes, so what does not
/// hold a point now never will, and what took the loop has the point on the border of that hole from now on. With
/// coordinates beyond all measure neither is sure, and every domain is asked again.
int DomainScan::AddToHoles(std::vector<int> const &loop, int first) {
    assert(loop.size() > 1);
    DM_VTEX const &middle = m_graph.Coordinate(m_graph.Origin(loop[(loop.size() + 1) / 2]));
    bool const isMeasurable = m_graph.IsMeasurable();
    int const domain = isMeasurable ? m_index.FirstWith(middle, first) : FirstDomainWith(middle);
    MArray<DM_SURF> &domains = m_maker.ResultSurf;
    if (domain < 0)
        return isMeasurable ? static_cast<int>(domains.Size()) : 0;
    domains[Index(domain)].Holes.PushBack(MakeHole(m_graph, loop));
    if (!isMeasurable)
        return 0;
    m_index.AddLastHole(domain);
    return domain + 1;
}

int DomainScan::FirstDomainWith(DM_VTEX const &point) {
    MArray<DM_SURF> &domains = m_maker.ResultSurf;
    for (std::size_t i = 0; i < domains.Size(); ++i) {
        if (m_maker.Util_IsPointInSurf(point.x, point.y, domains[i]) != 0)
            return static_cast<int>(i);
    }
    return -1;
}

/// Appends the domains of the loop to the result and marks what they use; false when the division was abandoned.
bool DomainScan::DivideLoop(std::vector<int> const &loop) {
    MArray<DM_SURF> &domains = m_maker.ResultSurf;
    std::size_t const first = domains.Size();
    LoopDivider::Outcome const outcome = m_divider.Divide(loop, domains);
    if (outcome == LoopDivider::Outcome::kDivided) {
        m_divider.VisitUsed([&](int half) {
            m_walks.MarkEdge(half);
            m_walks.MarkNode(m_graph.Origin(half));
        });
    } else if (outcome == LoopDivider::Outcome::kUnproven) {
        PlainDivision(m_maker).Divide(MakeSurf(m_graph, loop));
        for (std::size_t i = first; i < domains.Size(); ++i) {
            MarkDone(domains[i]);
            for (DM_SURF_SUB const &hole : domains[i].Holes)
                MarkDone(hole);
        }
    }
    m_walks.BarLooseEnds();
    return domains.Size() > first;
}

void DomainScan::MarkDone(DM_SURF_SUB const &loop) {
    for (int const vtex : loop.Vtex)
        m_walks.MarkNode(m_graph.Node(vtex));
    for (int const edge : loop.Curv)
        m_walks.MarkEdge(m_graph.HalfOf(edge));
}

} // namespace zvi::lib::curves

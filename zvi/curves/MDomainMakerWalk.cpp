// The walks along edges.

#include "zvi/base/Index.h"
#include "zvi/curves/MDomainMaker.h"
#include "zvi/curves/domains/DomainRulesDetail.h"
#include "zvi/curves/domains/PlainDivisionDetail.h"

#include <algorithm>

namespace zvi::lib {

using base::Index;
using curves::EdgeSet;
using curves::Holds;

int MDomainMaker::Sub1_DivideDomain(DM_SURF &surf, DM_SURF &outA, DM_SURF &outB) {
    return curves::PlainDivision(*this).DivideOnce(surf, outA, outB);
}

int MDomainMaker::Sub2_FindConnectedLoop(int edge, int reverse, bool ccw, const DM_SURF &boundary, DM_SURF &path,
                                         DM_SURF &loop, int &status, zvi::MHashMap<int, int> *barred) {
    EdgeSet onBoundary;
    for (int const vtex : boundary.Vtex)
        onBoundary.SetAt(vtex, 1);

    auto const [first, second] = EdgeVtex[Index(edge)];
    int const start = reverse != 0 ? second : first;
    int const next = reverse != 0 ? first : second;
    zvi::MArray<int> vtexes{start, next};
    zvi::MArray<int> edges{edge};
    if (Holds(onBoundary, next)) {
        status = 1;
        path.Vtex = std::move(vtexes);
        path.Curv = std::move(edges);
        return 1;
    }
    // A visited vertex, and where it stands in the walk.
    zvi::MHashMap<int, int> visited;
    visited.SetAt(next, 1);
    visited.SetAt(start, 0);
    for (;;) {
        int const previous = vtexes[vtexes.Size() - 2];
        int const current = edges[edges.Size() - 1];
        int nextVtex = -1;
        int nextEdge = -1;
        int const turned = EdgeVtex[Index(current)].first != previous ? 1 : 0;
        Sub3_FindCCWVtexIdx(current, turned, nextVtex, nextEdge, !ccw, barred);
        if (nextVtex == -1 || nextVtex == previous)
            return 0;
        int const *const inWalk = visited.Lookup(nextVtex);
        bool const meetsBoundary = Holds(onBoundary, nextVtex);
        int const index = static_cast<int>(vtexes.Size());
        vtexes.PushBack(nextVtex);
        edges.PushBack(nextEdge);
        if (!inWalk && !meetsBoundary) {
            visited.SetAt(nextVtex, index);
            continue;
        }
        if (meetsBoundary)
            status = inWalk ? 2 : 1;
        if (inWalk) {
            loop.Vtex = vtexes;
            loop.Curv = edges;
            curves::DropFront(loop.Vtex, Index(*inWalk));
            curves::DropFront(loop.Curv, Index(*inWalk));
        }
        path.Vtex = std::move(vtexes);
        path.Curv = std::move(edges);
        return 1;
    }
}

void MDomainMaker::Sub3_FindCCWVtexIdx(int edge, int reverse, int &nextVtex, int &nextEdge, bool clockwise,
                                       zvi::MHashMap<int, int> *barred) {
    nextVtex = -1;
    nextEdge = -1;
    auto const [first, second] = EdgeVtex[Index(edge)];
    int const reached = reverse != 0 ? first : second;
    zvi::MArray<int> const &edges = VtexEdges[Index(reached)];
    std::size_t const size = edges.Size();
    int const *const found = std::find(edges.begin(), edges.end(), edge);
    if (found == edges.end() || size == 1)
        return;
    std::size_t position = static_cast<std::size_t>(found - edges.begin());
    for (std::size_t step = 1; step < size; ++step) {
        if (clockwise)
            position = position == 0 ? size - 1 : position - 1;
        else
            position = position + 1 == size ? 0 : position + 1;
        if (!barred || !Holds(*barred, edges[position])) {
            nextEdge = edges[position];
            nextVtex = curves::FarEnd(EdgeVtex[Index(nextEdge)], reached);
            return;
        }
    }
}

} // namespace zvi::lib

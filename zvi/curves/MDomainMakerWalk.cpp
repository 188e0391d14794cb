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

namespace {

/// A walk along edges, with one vertex more than edges.
struct Walk {
    zvi::MArray<int> vtexes;
    zvi::MArray<int> edges;
    zvi::MHashMap<int, int> places; ///< where each vertex stands in it but for the last one

    /// Gives what begins at the vertex of that place.
    void CopyFrom(std::size_t place, DM_SURF &loop) const {
        loop.Vtex = vtexes;
        loop.Curv = edges;
        curves::DropFront(loop.Vtex, place);
        curves::DropFront(loop.Curv, place);
    }
    void MoveTo(DM_SURF &path) {
        path.Vtex = std::move(vtexes);
        path.Curv = std::move(edges);
    }
};

} // namespace

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
    int nextVtex = reverse != 0 ? first : second;
    int nextEdge = edge;
    Walk walk{{start, nextVtex}, {nextEdge}, {}};
    int const *inWalk = nullptr;
    bool meetsBoundary = Holds(onBoundary, nextVtex);
    if (!meetsBoundary) {
        walk.places.SetAt(nextVtex, 1);
        walk.places.SetAt(start, 0);
    }
    while (!inWalk && !meetsBoundary) {
        int const previous = walk.vtexes[walk.vtexes.Size() - 2];
        int const turned = EdgeVtex[Index(nextEdge)].first != previous ? 1 : 0;
        Sub3_FindCCWVtexIdx(nextEdge, turned, nextVtex, nextEdge, !ccw, barred);
        if (nextVtex == -1 || nextVtex == previous)
            return 0;
        inWalk = walk.places.Lookup(nextVtex);
        meetsBoundary = Holds(onBoundary, nextVtex);
        if (!inWalk && !meetsBoundary)
            walk.places.SetAt(nextVtex, static_cast<int>(walk.vtexes.Size()));
        walk.vtexes.PushBack(nextVtex);
        walk.edges.PushBack(nextEdge);
    }
    if (meetsBoundary)
        status = inWalk ? 2 : 1;
    if (inWalk)
        walk.CopyFrom(Index(*inWalk), loop);
    walk.MoveTo(path);
    return 1;
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

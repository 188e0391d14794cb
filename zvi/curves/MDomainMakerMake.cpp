// MakeDomain: from the edge graph to the finished domains.

#include "zvi/base/Index.h"
#include "zvi/core/MQSort.h"
#include "zvi/curves/MDomainMaker.h"
#include "zvi/curves/domains/CurvIdIndexDetail.h"
#include "zvi/curves/domains/DomainGraphDetail.h"
#include "zvi/curves/domains/DomainScanDetail.h"
#include "zvi/curves/domains/VertexStarsDetail.h"
#include "zvi/curves/domains/VtexXIndexDetail.h"

#include <algorithm>
#include <cassert>

namespace zvi::lib {

using base::Index;
using curves::DomainGraph;
using curves::VertexStars;

namespace {

/// The vertices that have edges, where walks may start, by x.
zvi::MArray<int> SortedCandidates(zvi::MArray<DM_VTEX> const &coordinates, zvi::MHashMap<int, int> const &dead) {
    zvi::MArray<int> candidates;
    zvi::MArray<double> keys;
    candidates.Reserve(coordinates.Size());
    keys.Reserve(coordinates.Size());
    for (std::size_t i = 0; i < coordinates.Size(); ++i) {
        if (dead.Lookup(static_cast<int>(i)))
            continue;
        candidates.PushBack(static_cast<int>(i));
        keys.PushBack(coordinates[i].x);
    }
    MQSort::QSortDblWithIndex(candidates.Data(), keys.Data(), candidates.Size());
    return candidates;
}

/// Keeps the entries from `first` on.
void KeepFrom(zvi::MArray<int> &values, std::size_t first) {
    if (first == 0)
        return;
    std::size_t kept = 0;
    for (std::size_t i = first; i < values.Size(); ++i)
        values[kept++] = values[i];
    values.Resize(kept);
}

/// Replaces edges by the ids of their curves.
void MapCurvIds(zvi::MArray<int> &curv, zvi::MArray<unsigned int> const &ids) {
    for (int &entry : curv) {
        if (entry >= 0 && Index(entry) < ids.Size())
            entry = static_cast<int>(ids[Index(entry)]);
    }
}

/// Cuts off the tail by which a hole with vertices hangs, and maps its edges to their ids.
void MapHole(DM_SURF_SUB &hole, zvi::MArray<unsigned int> const &ids) {
    assert(!hole.Vtex.Empty());
    std::size_t const last = hole.Vtex.Size() - 1;
    std::size_t first = 0;
    while (hole.Vtex[first] != hole.Vtex[last])
        ++first;
    if (first == last)
        return;
    KeepFrom(hole.Vtex, first);
    KeepFrom(hole.Curv, first);
    KeepFrom(hole.CurvDir, first);
    MapCurvIds(hole.Curv, ids);
}

/// Drops each entry of `Curv` that equals the one before it, with its fellows in the other arrays.
void MergeEqualNeighbours(DM_SURF_SUB &loop) {
    zvi::MArray<int> &curv = loop.Curv;
    if (std::adjacent_find(curv.begin(), curv.end()) == curv.end())
        return;
    auto const isRepeat = [&](std::size_t i) { return i > 0 && i < curv.Size() && curv[i] == curv[i - 1]; };
    for (zvi::MArray<int> *values : {&loop.Vtex, &loop.CurvDir}) {
        std::size_t kept = 0;
        for (std::size_t i = 0; i < values->Size(); ++i) {
            if (!isRepeat(i))
                (*values)[kept++] = (*values)[i];
        }
        values->Resize(kept);
    }
    curv.Resize(static_cast<std::size_t>(std::unique(curv.begin(), curv.end()) - curv.begin()));
}

void FinishDomains(zvi::MArray<DM_SURF> &domains, zvi::MArray<unsigned int> const &ids) {
    for (DM_SURF &surf : domains) {
        MapCurvIds(surf.Curv, ids);
        MergeEqualNeighbours(surf);
        for (DM_SURF_SUB &hole : surf.Holes) {
            MapHole(hole, ids);
            MergeEqualNeighbours(hole);
        }
    }
}

} // namespace

void MDomainMaker::MakeDomain() {
    // Drops duplicate and dangling edges and sorts what is left about each vertex.
    auto const tidyGraph = [this] {
        VertexStars stars(EdgeVtex, VtexEdges);
        stars.DropDuplicates();
        for (int const edge : stars.DropDangling())
            CurvId[Index(edge)] = 0;
        m_idIndex->Forget();
        stars.SortByAngle(VtexCoord);
        stars.CopyTo(VtexEdges);
        for (int vtex = 0; vtex < stars.VtexCount(); ++vtex) {
            if (stars.Degree(vtex) == 0)
                DeadVtex.SetAt(vtex, 1);
        }
        return DomainGraph(VtexCoord, stars, EdgeVtex.Size());
    };
    try {
        DomainGraph const graph = tidyGraph();
        curves::DomainScan(*this, graph).Run(SortedCandidates(VtexCoord, DeadVtex));
    } catch (...) {
        ResultSurf.Clear();
        throw;
    }
    FinishDomains(ResultSurf, CurvId);
}

} // namespace zvi::lib

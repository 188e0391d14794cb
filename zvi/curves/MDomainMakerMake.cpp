// MakeDomain: from the edge graph to the finished domains.

#include "zvi/base/Index.h"
#include "zvi/core/MQSort.h"
#include "zvi/curves/MDomainMaker.h"
#include "zvi/curves/domains/DomainGraphDetail.h"
#include "zvi/curves/domains/DomainRulesDetail.h"
#include "zvi/curves/domains/VertexStarsDetail.h"

#include <algorithm>

namespace zvi::lib {

using base::Index;

namespace {

/// Keeps the entries from `first` on.
void KeepFrom(zvi::MArray<int> &values, std::size_t first) {
    if (first == 0)
        return;
    std::size_t kept = 0;
    for (std::size_t i = first; i < values.Size(); ++i)
        values[kept++] = values[i];
    values.Resize(kept);
}

/// Drops each entry of `Curv` that equals the one before it, with its fellows in the other arrays.
void MergeEqualNeighbours(DM_SURF_SUB &loop) {
    zvi::MArray<int> &curv = loop.Curv;
    if (std::adjacent_find(curv.begin(), curv.end()) == curv.end())
        return;
    zvi::MArray<int> const before(curv);
    auto const isRepeat = [&](std::size_t i) { return i > 0 && i < before.Size() && before[i] == before[i - 1]; };
    for (zvi::MArray<int> *values : {&loop.Vtex, &loop.Curv, &loop.CurvDir}) {
        std::size_t kept = 0;
        for (std::size_t i = 0; i < values->Size(); ++i) {
            if (!isRepeat(i))
                (*values)[kept++] = (*values)[i];
        }
        values->Resize(kept);
    }
}

} // namespace

void MDomainMaker::MakeDomain() {
    zvi::MArray<int> candidates;
    curves::DomainGraph const graph = TidyGraph(candidates);
    ScanCandidates(graph, candidates);
    FinishDomains();
}

/// Drops duplicate and dangling edges, sorts what is left about each vertex, and collects where walks may start.
curves::DomainGraph MDomainMaker::TidyGraph(zvi::MArray<int> &candidates) {
    curves::VertexStars stars(EdgeVtex, VtexEdges);
    stars.DropDuplicates();
    for (int const edge : stars.DropDangling())
        CurvId[Index(edge)] = 0;
    IdIndex.Forget();
    stars.SortByAngle(VtexCoord);
    stars.CopyTo(VtexEdges);
    for (int vtex = 0; vtex < stars.VtexCount(); ++vtex) {
        if (stars.Degree(vtex) == 0)
            DeadVtex.SetAt(vtex, 1);
    }
    CollectCandidates(candidates);
    return {VtexCoord, stars, EdgeVtex.Size()};
}

void MDomainMaker::CollectCandidates(zvi::MArray<int> &candidates) const {
    zvi::MArray<double> keys;
    candidates.Reserve(VtexCoord.Size());
    keys.Reserve(VtexCoord.Size());
    for (std::size_t i = 0; i < VtexCoord.Size(); ++i) {
        if (DeadVtex.Lookup(static_cast<int>(i)) != nullptr)
            continue;
        candidates.PushBack(static_cast<int>(i));
        keys.PushBack(VtexCoord[i].x);
    }
    MQSort::QSortDblWithIndex(candidates.Data(), keys.Data(), candidates.Size());
}

void MDomainMaker::MapCurvIds(zvi::MArray<int> &curv) const {
    for (int &entry : curv) {
        if (entry >= 0 && Index(entry) < CurvId.Size())
            entry = static_cast<int>(CurvId[Index(entry)]);
    }
}

/// Cuts off the tail by which a hole hangs, and maps its edges to their ids.
void MDomainMaker::MapHole(DM_SURF_SUB &hole) const {
    std::size_t const last = hole.Vtex.Size() - 1;
    std::size_t first = 0;
    while (hole.Vtex[first] != hole.Vtex[last])
        ++first;
    if (first == last)
        return;
    KeepFrom(hole.Vtex, first);
    KeepFrom(hole.Curv, first);
    KeepFrom(hole.CurvDir, first);
    MapCurvIds(hole.Curv);
}

void MDomainMaker::FinishDomains() {
    for (DM_SURF &surf : ResultSurf) {
        MapCurvIds(surf.Curv);
        MergeEqualNeighbours(surf);
        for (DM_SURF_SUB &hole : surf.Holes) {
            MapHole(hole);
            MergeEqualNeighbours(hole);
        }
    }
}

} // namespace zvi::lib

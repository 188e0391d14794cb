// MakeDomain: from the edge graph to the finished domains.

#include "zvi/core/MQSort.h"
#include "zvi/curves/DomainRulesDetail.h"
#include "zvi/curves/MDomainMaker.h"

#include <algorithm>
#include <vector>

namespace zvi::lib {

using detail::At;

namespace {

/// Keeps the entries from `first` on.
void KeepFrom(zvi::MArray<int> &values, std::size_t first) {
    std::size_t kept = 0;
    for (std::size_t i = first; i < values.Size(); ++i)
        values[kept++] = values[i];
    values.Resize(kept);
}

/// Drops each entry of `Curv` that equals the one before it, with its fellows in the other arrays.
void MergeEqualNeighbours(DM_SURF_SUB &loop) {
    zvi::MArray<int> const curv(loop.Curv);
    auto const isRepeat = [&](std::size_t i) { return i > 0 && i < curv.Size() && curv[i] == curv[i - 1]; };
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
    DropDuplicateEdges();
    DropDanglingEdges();
    CollectDeadVtex();
    SortVtexEdges();
    zvi::MArray<int> candidates;
    CollectCandidates(candidates);
    ScanCandidates(candidates);
    MapCurvIds();
    MapHoles();
    MergeCurvPieces();
}

/// Of the edges that join the same two vertices the first one in a list stays. An edge whose ends are one vertex
/// stands twice in its list and so goes as a duplicate of itself.
void MDomainMaker::DropDuplicateEdges() {
    std::vector<char> isDuplicate(EdgeVtex.Size());
    std::vector<int> seenFrom(VtexCoord.Size(), -1);
    bool isAny = false;
    for (std::size_t i = 0; i < VtexEdges.Size(); ++i) {
        int const vtex = static_cast<int>(i);
        for (int const edge : VtexEdges[i]) {
            if (isDuplicate[At(edge)] != 0)
                continue;
            int &seen = seenFrom[At(FarVtex(edge, vtex))];
            isDuplicate[At(edge)] = seen == vtex ? 1 : 0;
            isAny = isAny || seen == vtex;
            seen = vtex;
        }
    }
    if (isAny)
        RemoveFromLists(isDuplicate);
}

void MDomainMaker::DropDanglingEdges() {
    std::vector<int> degree;
    std::vector<int> loose;
    degree.reserve(VtexEdges.Size());
    for (std::size_t i = 0; i < VtexEdges.Size(); ++i) {
        degree.push_back(static_cast<int>(VtexEdges[i].Size()));
        if (degree[i] == 1)
            loose.push_back(static_cast<int>(i));
    }
    if (loose.empty())
        return;
    std::vector<char> isDangling(EdgeVtex.Size());
    while (!loose.empty()) {
        int const vtex = loose.back();
        loose.pop_back();
        if (degree[At(vtex)] != 1)
            continue;
        zvi::MArray<int> const &edges = VtexEdges[At(vtex)];
        int const edge = *std::find_if(edges.begin(), edges.end(), [&](int e) { return isDangling[At(e)] == 0; });
        isDangling[At(edge)] = 1;
        CurvId[At(edge)] = 0;
        for (int const end : {vtex, FarVtex(edge, vtex)}) {
            if (--degree[At(end)] == 1)
                loose.push_back(end);
        }
    }
    RemoveFromLists(isDangling);
}

void MDomainMaker::RemoveFromLists(std::vector<char> const &isRemoved) {
    for (zvi::MArray<int> &edges : VtexEdges) {
        int *const end = std::remove_if(edges.begin(), edges.end(), [&](int edge) { return isRemoved[At(edge)] != 0; });
        edges.Resize(static_cast<std::size_t>(end - edges.begin()));
    }
}

void MDomainMaker::CollectDeadVtex() {
    for (std::size_t i = 0; i < VtexEdges.Size(); ++i) {
        if (VtexEdges[i].Empty())
            DeadVtex.SetAt(static_cast<int>(i), 1);
    }
}

void MDomainMaker::SortVtexEdges() {
    zvi::MArray<double> angles;
    for (std::size_t i = 0; i < VtexEdges.Size(); ++i) {
        zvi::MArray<int> &edges = VtexEdges[i];
        if (edges.Size() <= 2)
            continue;
        angles.Clear();
        for (int const edge : edges) {
            DM_VTEX const &far = VtexCoord[At(FarVtex(edge, static_cast<int>(i)))];
            angles.PushBack(Util_CalcAngle(far.x - VtexCoord[i].x, far.y - VtexCoord[i].y));
        }
        MQSort::QSortDblWithIndex(edges.Data(), angles.Data(), edges.Size());
    }
}

void MDomainMaker::CollectCandidates(zvi::MArray<int> &candidates) const {
    zvi::MArray<double> keys;
    for (std::size_t i = 0; i < VtexCoord.Size(); ++i) {
        if (DeadVtex.Lookup(static_cast<int>(i)) != nullptr)
            continue;
        candidates.PushBack(static_cast<int>(i));
        keys.PushBack(VtexCoord[i].x);
    }
    MQSort::QSortDblWithIndex(candidates.Data(), keys.Data(), candidates.Size());
}

void MDomainMaker::MapCurvIds() {
    for (DM_SURF &surf : ResultSurf) {
        for (int &entry : surf.Curv) {
            if (entry >= 0 && At(entry) < CurvId.Size())
                entry = static_cast<int>(CurvId[At(entry)]);
        }
    }
}

void MDomainMaker::MapHoles() {
    for (DM_SURF &surf : ResultSurf) {
        for (DM_SURF_SUB &hole : surf.Holes) {
            std::size_t const last = hole.Vtex.Size() - 1;
            std::size_t first = 0;
            while (hole.Vtex[first] != hole.Vtex[last])
                ++first;
            if (first == last)
                continue;
            KeepFrom(hole.Vtex, first);
            KeepFrom(hole.Curv, first);
            KeepFrom(hole.CurvDir, first);
            for (int &entry : hole.Curv) {
                if (entry >= 0 && At(entry) < CurvId.Size())
                    entry = static_cast<int>(CurvId[At(entry)]);
            }
        }
    }
}

void MDomainMaker::MergeCurvPieces() {
    for (DM_SURF &surf : ResultSurf) {
        MergeEqualNeighbours(surf);
        for (DM_SURF_SUB &hole : surf.Holes)
            MergeEqualNeighbours(hole);
    }
}

} // namespace zvi::lib

// MakeDomain: from the edge graph to the finished domains.

#include "zvi/core/MQSort.h"
#include "zvi/curves/DomainRulesDetail.h"
#include "zvi/curves/MDomainMaker.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace zvi::lib {

using detail::At;

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

/// Angles that differ by more than this, on a scale of four to the full turn, are in the same order in degrees; the
/// rounding of either is far below it.
constexpr double kSurelyInOrder = 1e-9;

/// Vertices with more edges than this are sorted by their angles in degrees at once.
constexpr std::size_t kFewEdges = 16;

/// Grows with the direction angle like `Util_CalcAngle`, from 0 to 4, without an arc tangent. Not a number when there
/// is no direction, or one too long to add up.
double TurnOf(double dx, double dy) {
    double const length = std::abs(dx) + std::abs(dy);
    if (!(length < std::numeric_limits<double>::max()))
        return std::numeric_limits<double>::quiet_NaN();
    double const slope = dy / length;
    if (dx < 0.0)
        return 2.0 - slope;
    return slope < 0.0 ? 4.0 + slope : slope;
}

/// Sorts a few edges by their turns; false, and nothing changed, when two of them are too close to tell.
bool SortByTurns(int *edges, double *turns, std::size_t count) {
    int sorted[kFewEdges];
    for (std::size_t i = 0; i < count; ++i) {
        double const turn = turns[i];
        std::size_t at = i;
        for (; at > 0 && turn < turns[at - 1]; --at) {
            turns[at] = turns[at - 1];
            sorted[at] = sorted[at - 1];
        }
        turns[at] = turn;
        sorted[at] = edges[i];
    }
    for (std::size_t i = 1; i < count; ++i) {
        if (!(turns[i] - turns[i - 1] > kSurelyInOrder))
            return false;
    }
    std::copy(sorted, sorted + count, edges);
    return true;
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
    FinishDomains();
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
    double turns[kFewEdges];
    for (std::size_t i = 0; i < VtexEdges.Size(); ++i) {
        zvi::MArray<int> &edges = VtexEdges[i];
        if (edges.Size() <= 2)
            continue;
        if (edges.Size() <= kFewEdges) {
            for (std::size_t k = 0; k < edges.Size(); ++k) {
                DM_VTEX const &far = VtexCoord[At(FarVtex(edges[k], static_cast<int>(i)))];
                turns[k] = TurnOf(far.x - VtexCoord[i].x, far.y - VtexCoord[i].y);
            }
            if (SortByTurns(edges.Data(), turns, edges.Size()))
                continue;
        }
        SortByAngle(static_cast<int>(i));
    }
}

void MDomainMaker::SortByAngle(int vtex) {
    zvi::MArray<int> &edges = VtexEdges[At(vtex)];
    zvi::MArray<double> angles;
    angles.Reserve(edges.Size());
    for (int const edge : edges) {
        DM_VTEX const &far = VtexCoord[At(FarVtex(edge, vtex))];
        angles.PushBack(Util_CalcAngle(far.x - VtexCoord[At(vtex)].x, far.y - VtexCoord[At(vtex)].y));
    }
    MQSort::QSortDblWithIndex(edges.Data(), angles.Data(), edges.Size());
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

void MDomainMaker::MapCurvIds(zvi::MArray<int> &curv) const {
    for (int &entry : curv) {
        if (entry >= 0 && At(entry) < CurvId.Size())
            entry = static_cast<int>(CurvId[At(entry)]);
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

// MakeDomain: from the edge graph to the finished domains.

#include "zvi/core/MQSort.h"
#include "zvi/curves/DomainRulesDetail.h"
#include "zvi/curves/MDomainMaker.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace zvi::lib {

using detail::At;

struct MDomainMaker::Run {
    zvi::MHashMap<int, int> DoneVtex; ///< vertices finished with; they no longer start a walk
    zvi::MHashMap<int, int> DoneEdge; ///< edges finished with; walks may not use them
};

namespace {

using Ends = std::pair<int, int>;

bool JoinSame(Ends const &a, Ends const &b) {
    return (a.first == b.first && a.second == b.second) || (a.first == b.second && a.second == b.first);
}

void RemoveValue(zvi::MArray<int> &values, int value) {
    for (std::size_t i = values.Size(); i-- > 0;) {
        if (values[i] == value)
            values.RemoveAt(i);
    }
}

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

void MDomainMaker::DropDuplicateEdges() {
    zvi::MHashMap<int, int> duplicates;
    for (zvi::MArray<int> const &edges : VtexEdges) {
        for (std::size_t i = 0; i < edges.Size(); ++i) {
            if (duplicates.Lookup(edges[i]) != nullptr)
                continue;
            for (std::size_t k = i + 1; k < edges.Size(); ++k) {
                if (JoinSame(EdgeVtex[At(edges[i])], EdgeVtex[At(edges[k])]))
                    duplicates.SetAt(edges[k], 1);
            }
        }
    }
    if (duplicates.Empty())
        return;
    for (zvi::MArray<int> &edges : VtexEdges) {
        for (std::size_t i = edges.Size(); i-- > 0;) {
            if (duplicates.Lookup(edges[i]) != nullptr)
                edges.RemoveAt(i);
        }
    }
}

void MDomainMaker::DropDanglingEdges() {
    for (bool changed = true; changed;) {
        changed = false;
        for (zvi::MArray<int> &edges : VtexEdges) {
            if (edges.Size() != 1)
                continue;
            int const edge = edges[0];
            auto const [first, second] = EdgeVtex[At(edge)];
            RemoveValue(VtexEdges[At(first)], edge);
            RemoveValue(VtexEdges[At(second)], edge);
            CurvId[At(edge)] = 0;
            changed = true;
        }
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

void MDomainMaker::ScanCandidates(zvi::MArray<int> const &candidates) {
    Run run;
    for (std::size_t i = 0; i < candidates.Size();) {
        int const vtex = candidates[i];
        bool const restart = run.DoneVtex.Lookup(vtex) == nullptr && ScanCandidate(vtex, run);
        i = restart ? 0 : i + 1;
    }
}

int MDomainMaker::FirstEdge(int vtex) {
    zvi::MArray<int> far;
    Util_GetConnectedVtexIdx(vtex, far);
    int best = -1;
    double bestSine = 0.0;
    for (std::size_t i = 0; i < far.Size(); ++i) {
        double const dx = VtexCoord[At(far[i])].x - VtexCoord[At(vtex)].x;
        double const dy = VtexCoord[At(far[i])].y - VtexCoord[At(vtex)].y;
        double const length = std::sqrt(dx * dx + dy * dy);
        double const sine = length == 0.0 ? dy : dy / length;
        if (best < 0 || sine < bestSine) {
            best = VtexEdges[At(vtex)][i];
            bestSine = sine;
        }
    }
    return best;
}

bool MDomainMaker::ScanCandidate(int vtex, Run &run) {
    int const edge = FirstEdge(vtex);
    if (edge < 0)
        return false;
    DM_SURF const nothing;
    DM_SURF path;
    DM_SURF loop;
    int status = 0;
    int const reverse = EdgeVtex[At(edge)].first != vtex ? 1 : 0;
    if (Sub2_FindConnectedLoop(edge, reverse, true, nothing, path, loop, status, &run.DoneEdge) == 0)
        return false;
    AddToHoles(loop);
    zvi::MArray<DM_SURF> done;
    DivideLoop(loop, done);
    for (DM_SURF const &surf : done)
        ResultSurf.PushBack(surf);
    MarkDone(done, run);
    BarLooseEnds(run);
    return !done.Empty();
}

void MDomainMaker::AddToHoles(DM_SURF const &loop) {
    DM_VTEX const point = VtexCoord[At(loop.Vtex[loop.Vtex.Size() / 2])];
    for (DM_SURF &surf : ResultSurf) {
        if (Util_IsPointInSurf(point.x, point.y, surf) == 0)
            continue;
        DM_SURF_SUB hole(loop);
        for (zvi::MArray<int> *values : {&hole.Vtex, &hole.Curv, &hole.CurvDir})
            std::reverse(values->begin(), values->end());
        surf.Holes.PushBack(std::move(hole));
        return;
    }
}

void MDomainMaker::DivideLoop(DM_SURF &loop, zvi::MArray<DM_SURF> &done) {
    long long const limit = detail::kDivisionsPerEdge * static_cast<long long>(EdgeVtex.Size());
    long long counter = 0;
    std::vector<DM_SURF> work;
    work.push_back(std::move(loop));
    while (!work.empty()) {
        std::vector<DM_SURF> next;
        for (DM_SURF &surf : work) {
            if (++counter > limit) {
                done.Clear();
                return;
            }
            DM_SURF outA;
            DM_SURF outB;
            if (Sub1_DivideDomain(surf, outA, outB) == 0) {
                done.PushBack(std::move(surf));
                continue;
            }
            next.push_back(std::move(outA));
            next.push_back(std::move(outB));
        }
        work = std::move(next);
    }
}

void MDomainMaker::MarkDone(zvi::MArray<DM_SURF> const &done, Run &run) const {
    auto const mark = [&run](DM_SURF_SUB const &loop) {
        for (int const vtex : loop.Vtex)
            run.DoneVtex.SetAt(vtex, 1);
        for (int const edge : loop.Curv)
            run.DoneEdge.SetAt(edge, 1);
    };
    for (DM_SURF const &surf : done) {
        mark(surf);
        for (DM_SURF_SUB const &hole : surf.Holes)
            mark(hole);
    }
}

void MDomainMaker::BarLooseEnds(Run &run) const {
    for (bool changed = true; changed;) {
        changed = false;
        for (zvi::MArray<int> const &edges : VtexEdges) {
            int open = 0;
            int last = -1;
            for (int const edge : edges) {
                if (run.DoneEdge.Lookup(edge) != nullptr)
                    continue;
                ++open;
                last = edge;
            }
            if (open != 1)
                continue;
            run.DoneEdge.SetAt(last, 1);
            changed = true;
        }
    }
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

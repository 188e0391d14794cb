// The division of one domain, walk by walk.

#include "zvi/base/Index.h"
#include "zvi/curves/MDomainMaker.h"
#include "zvi/curves/domains/DivisionTreeDetail.h"
#include "zvi/curves/domains/DomainRulesDetail.h"

#include <algorithm>

namespace zvi::lib {

using base::Index;

namespace {

using EdgeSet = zvi::MHashMap<int, int>;

bool Holds(EdgeSet const &set, int key) {
    return set.Lookup(key) != nullptr;
}

zvi::MArray<int> Reversed(zvi::MArray<int> const &values) {
    zvi::MArray<int> reversed(values);
    std::reverse(reversed.begin(), reversed.end());
    return reversed;
}

/// The loop run the other way: all its arrays reversed, the directions not turned.
void ReverseLoop(DM_SURF_SUB &loop) {
    loop.Vtex = Reversed(loop.Vtex);
    loop.Curv = Reversed(loop.Curv);
    loop.CurvDir = Reversed(loop.CurvDir);
}

/// Drops the first `count` entries, or all of a shorter array.
void DropFront(zvi::MArray<int> &values, std::size_t count) {
    std::size_t const size = values.Size();
    std::size_t const kept = size > count ? size - count : 0;
    for (std::size_t i = 0; i < kept; ++i)
        values[i] = values[i + count];
    values.Resize(kept);
}

void DropFront(DM_SURF_SUB &path, std::size_t count) {
    DropFront(path.Vtex, count);
    DropFront(path.Curv, count);
    DropFront(path.CurvDir, count);
}

/// Appends the entries of `curv` from `from` up to, but not including, `to`, going round.
void AppendRun(zvi::MArray<int> const &curv, std::size_t from, std::size_t to, zvi::MArray<int> &out) {
    for (std::size_t i = from; i != to; i = i + 1 == curv.Size() ? 0 : i + 1)
        out.PushBack(curv[i]);
}

/// The last entries of a loop that start at given vertices; -1 for none.
struct ChordEnds {
    int first = -1;
    int last = -1;
};

ChordEnds FindChordEnds(DM_SURF const &surf, zvi::MArray<std::pair<int, int>> const &edges, int first, int last) {
    ChordEnds ends;
    for (std::size_t i = 0; i < surf.Curv.Size(); ++i) {
        auto const &[start, end] = edges[Index(surf.Curv[i])];
        int const from = surf.CurvDir[i] == 0 ? start : end;
        if (from == first)
            ends.first = static_cast<int>(i);
        if (from == last)
            ends.last = static_cast<int>(i);
    }
    return ends;
}

} // namespace

std::size_t MDomainMaker::CountOpenEdges(int vtex, EdgeSet const &barred) const {
    std::size_t count = 0;
    for (int const edge : VtexEdges[Index(vtex)])
        count += Holds(barred, edge) ? 0 : 1;
    return count;
}

void MDomainMaker::BarEdgesAlongBoundary(Corner const &corner, EdgeSet &barred) const {
    DM_VTEX const at = VtexCoord[Index(corner.vtex)];
    DM_VTEX const back = curves::UnitVector(at, VtexCoord[Index(corner.previousVtex)]);
    DM_VTEX const ahead = curves::UnitVector(at, VtexCoord[Index(FarVtex(corner.outgoing, corner.vtex))]);
    for (int const edge : VtexEdges[Index(corner.vtex)]) {
        if (edge == corner.incoming || edge == corner.outgoing || Holds(barred, edge))
            continue;
        DM_VTEX const direction = curves::UnitVector(at, VtexCoord[Index(FarVtex(edge, corner.vtex))]);
        if (curves::RunsAlong(direction, back) || curves::RunsAlong(direction, ahead))
            barred.SetAt(edge, 1);
    }
}

int MDomainMaker::FindChordAt(Corner const &corner, EdgeSet &barred) {
    if (CountOpenEdges(corner.vtex, barred) <= 2)
        return -1;
    BarEdgesAlongBoundary(corner, barred);
    int const reverse = EdgeVtex[Index(corner.incoming)].first != corner.previousVtex ? 1 : 0;
    int vtex = -1;
    int chord = -1;
    Sub3_FindCCWVtexIdx(corner.incoming, reverse, vtex, chord, true, &barred);
    return chord == corner.outgoing ? -1 : chord;
}

/// Divides by the plain operations, for loops that the divider of rings does not cover.
void MDomainMaker::DividePlainly(DM_SURF loop) {
    long long const limit = curves::kDivisionsPerEdge * static_cast<long long>(EdgeVtex.Size());
    curves::DivisionTree tree(EdgeVtex.Size());
    tree.AddRoot(std::move(loop));
    for (long long counter = 1; tree.HasNext(); ++counter) {
        if (counter > limit)
            return;
        DM_SURF outA;
        DM_SURF outB;
        DM_SURF &surf = tree.Next();
        if (Sub1_DivideDomain(surf, outA, outB) != 0 && !tree.AddHalves(std::move(outA), std::move(outB)))
            return;
    }
    tree.MoveWholeOnes(ResultSurf);
}

int MDomainMaker::Sub1_DivideDomain(DM_SURF &surf, DM_SURF &outA, DM_SURF &outB) {
    EdgeSet chordBarrier;
    for (DM_SURF_SUB const &hole : surf.Holes) {
        for (int const edge : hole.Curv)
            chordBarrier.SetAt(edge, 1);
    }
    std::size_t const size = surf.Vtex.Size();
    std::size_t const count = surf.Curv.Size();
    if (size < 2)
        return 0;
    for (std::size_t i = 1; i < size; ++i) {
        Corner const corner{surf.Vtex[i % size], surf.Vtex[i - 1], surf.Curv[i - 1], surf.Curv[i % count]};
        int const chord = FindChordAt(corner, chordBarrier);
        if (chord < 0)
            continue;
        int const reverse = EdgeVtex[Index(chord)].first != corner.vtex ? 1 : 0;
        DM_SURF path;
        DM_SURF loop;
        int status = 0;
        if (Sub2_FindConnectedLoop(chord, reverse, false, surf, path, loop, status, &chordBarrier) == 0)
            return 0;
        if (status == 1)
            return SplitAlongChord(surf, path, outA, outB);
        HangLoop(surf, path, loop, chordBarrier, outA, outB);
        return 1;
    }
    return 0;
}

void MDomainMaker::HangLoop(DM_SURF const &surf, DM_SURF &path, DM_SURF const &loop, EdgeSet const &barred,
                            DM_SURF &outA, DM_SURF &outB) {
    Util_FillCurvDirArrayInSurf(path);
    // The tail reaches from the boundary to the loop. Of it, the part behind the junction nearest to the loop stays.
    for (std::size_t i = path.Curv.Size() - loop.Curv.Size(); i-- > 0;) {
        if (CountOpenEdges(path.Vtex[i], barred) > 2) {
            DropFront(path, i);
            break;
        }
    }
    DM_SURF withHole(surf);
    withHole.Holes.PushBack(path);
    outA = std::move(withHole);
    outB = loop;
    ReverseLoop(outB);
    for (DM_SURF_SUB &hole : outB.Holes)
        ReverseLoop(hole);
}

int MDomainMaker::SplitAlongChord(DM_SURF &surf, DM_SURF &path, DM_SURF &outA, DM_SURF &outB) {
    Util_FillCurvDirArrayInSurf(surf);
    Util_FillCurvDirArrayInSurf(path);
    ChordEnds const ends = FindChordEnds(surf, EdgeVtex, path.Vtex[0], path.Vtex[path.Vtex.Size() - 1]);
    if (ends.first < 0 || ends.last < 0)
        return 0;

    DM_SURF right;
    DM_SURF left;
    AppendRun(surf.Curv, Index(ends.first), Index(ends.last), right.Curv);
    AppendRun(surf.Curv, Index(ends.last), Index(ends.first), left.Curv);
    for (std::size_t i = path.Curv.Size(); i-- > 0;)
        right.Curv.PushBack(path.Curv[i]);
    for (int const edge : path.Curv)
        left.Curv.PushBack(edge);
    for (DM_SURF *half : {&right, &left}) {
        Util_FillCurvDirArrayInSurf(*half);
        Util_FillVtexArrayInSurf(*half);
    }
    for (DM_SURF_SUB const &hole : surf.Holes) {
        DM_VTEX const point = VtexCoord[Index(hole.Vtex[hole.Vtex.Size() / 2])];
        DM_SURF_SUB &rightLoop = right;
        DM_SURF &owner = Util_IsPointInSurf(point.x, point.y, rightLoop) != 0 ? right : left;
        owner.Holes.PushBack(hole);
    }
    outA = std::move(right);
    outB = std::move(left);
    return 1;
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
    zvi::MArray<int> curves{edge};
    if (Holds(onBoundary, next)) {
        status = 1;
        path.Vtex = std::move(vtexes);
        path.Curv = std::move(curves);
        return 1;
    }
    // A visited vertex, and where it stands in the walk.
    zvi::MHashMap<int, int> visited;
    visited.SetAt(next, 1);
    visited.SetAt(start, 0);
    for (;;) {
        int const previous = vtexes[vtexes.Size() - 2];
        int const current = curves[curves.Size() - 1];
        int nextVtex = -1;
        int nextEdge = -1;
        Sub3_FindCCWVtexIdx(current, EdgeVtex[Index(current)].first != previous ? 1 : 0, nextVtex, nextEdge, !ccw,
                            barred);
        if (nextVtex == -1 || nextVtex == previous)
            return 0;
        int const *const inWalk = visited.Lookup(nextVtex);
        bool const meetsBoundary = Holds(onBoundary, nextVtex);
        int const index = static_cast<int>(vtexes.Size());
        vtexes.PushBack(nextVtex);
        curves.PushBack(nextEdge);
        if (inWalk == nullptr && !meetsBoundary) {
            visited.SetAt(nextVtex, index);
            continue;
        }
        if (meetsBoundary)
            status = inWalk != nullptr ? 2 : 1;
        if (inWalk != nullptr) {
            loop.Vtex = vtexes;
            loop.Curv = curves;
            DropFront(loop.Vtex, Index(*inWalk));
            DropFront(loop.Curv, Index(*inWalk));
        }
        path.Vtex = std::move(vtexes);
        path.Curv = std::move(curves);
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
        if (barred == nullptr || !Holds(*barred, edges[position])) {
            nextEdge = edges[position];
            nextVtex = FarVtex(nextEdge, reached);
            return;
        }
    }
}

} // namespace zvi::lib

#include "zvi/curves/domains/PlainDivisionDetail.h"

#include "zvi/base/Index.h"
#include "zvi/curves/MDomainMaker.h"
#include "zvi/curves/domains/DivisionTreeDetail.h"
#include "zvi/curves/domains/DomainRulesDetail.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace zvi::lib::curves {

using base::Index;

namespace {

MArray<int> Reversed(MArray<int> const &values) {
    MArray<int> reversed(values);
    std::reverse(reversed.begin(), reversed.end());
    return reversed;
}

/// The loop run the other way: all its arrays reversed, the directions not turned.
void ReverseLoop(DM_SURF_SUB &loop) {
    loop.Vtex = Reversed(loop.Vtex);
    loop.Curv = Reversed(loop.Curv);
    loop.CurvDir = Reversed(loop.CurvDir);
}

/// Appends the entries of `curv` from `from` up to, but not including, `to`, going round.
void AppendRun(MArray<int> const &curv, std::size_t from, std::size_t to, MArray<int> &out) {
    assert(from < curv.Size() && to < curv.Size());
    for (std::size_t i = from; i != to; i = i + 1 == curv.Size() ? 0 : i + 1)
        out.PushBack(curv[i]);
}

/// The last entries of a loop that start at given vertices; -1 for none.
struct ChordEnds {
    int first = -1;
    int last = -1;
};

ChordEnds FindChordEnds(DM_SURF const &surf, MArray<std::pair<int, int>> const &edges, int first, int last) {
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

void DropFront(MArray<int> &values, std::size_t count) {
    std::size_t const size = values.Size();
    std::size_t const kept = size > count ? size - count : 0;
    for (std::size_t i = 0; i < kept; ++i)
        values[i] = values[i + count];
    values.Resize(kept);
}

void PlainDivision::Divide(DM_SURF loop) {
    std::size_t const edgeCount = m_maker.EdgeVtex.Size();
    long long const limit = kDivisionsPerEdge * static_cast<long long>(edgeCount);
    DivisionTree tree(edgeCount);
    tree.AddRoot(std::move(loop));
    for (long long counter = 1; tree.HasNext(); ++counter) {
        if (counter > limit)
            return;
        DM_SURF outA;
        DM_SURF outB;
        if (DivideOnce(tree.Next(), outA, outB) != 0 && !tree.AddHalves(std::move(outA), std::move(outB)))
            return;
    }
    tree.MoveWholeOnes(m_maker.ResultSurf);
}

int PlainDivision::DivideOnce(DM_SURF &surf, DM_SURF &outA, DM_SURF &outB) {
    m_barred.RemoveAll();
    for (DM_SURF_SUB const &hole : surf.Holes) {
        for (int const edge : hole.Curv)
            m_barred.SetAt(edge, 1);
    }
    std::size_t const size = surf.Vtex.Size();
    std::size_t const count = surf.Curv.Size();
    if (size < 2)
        return 0;
    for (std::size_t i = 1; i < size; ++i) {
        Corner const corner{surf.Vtex[i % size], surf.Vtex[i - 1], surf.Curv[i - 1], surf.Curv[i % count]};
        int const chord = FindChordAt(corner);
        if (chord < 0)
            continue;
        int const reverse = m_maker.EdgeVtex[Index(chord)].first != corner.vtex ? 1 : 0;
        DM_SURF path;
        DM_SURF loop;
        int status = 0;
        if (m_maker.Sub2_FindConnectedLoop(chord, reverse, false, surf, path, loop, status, &m_barred) == 0)
            return 0;
        if (status == 1)
            return SplitAlongChord(surf, path, outA, outB);
        HangLoop(surf, path, loop, outA, outB);
        return 1;
    }
    return 0;
}

std::size_t PlainDivision::CountOpenEdges(int vtex) const {
    MArray<int> const &edges = m_maker.VtexEdges[Index(vtex)];
    auto const isOpen = [this](int edge) { return !Holds(m_barred, edge); };
    return static_cast<std::size_t>(std::count_if(edges.begin(), edges.end(), isOpen));
}

void PlainDivision::BarEdgesAlongBoundary(Corner const &corner) {
    DM_VTEX const at = m_maker.VtexCoord[Index(corner.vtex)];
    auto const directionOf = [&](int edge) {
        return UnitVector(at, m_maker.VtexCoord[Index(FarEnd(m_maker.EdgeVtex[Index(edge)], corner.vtex))]);
    };
    DM_VTEX const back = UnitVector(at, m_maker.VtexCoord[Index(corner.previousVtex)]);
    DM_VTEX const ahead = directionOf(corner.outgoing);
    for (int const edge : m_maker.VtexEdges[Index(corner.vtex)]) {
        if (edge == corner.incoming || edge == corner.outgoing || Holds(m_barred, edge))
            continue;
        DM_VTEX const direction = directionOf(edge);
        if (RunsAlong(direction, back) || RunsAlong(direction, ahead))
            m_barred.SetAt(edge, 1);
    }
}

/// The chord that begins at the corner; -1 for none.
int PlainDivision::FindChordAt(Corner const &corner) {
    if (CountOpenEdges(corner.vtex) <= 2)
        return -1;
    BarEdgesAlongBoundary(corner);
    int const reverse = m_maker.EdgeVtex[Index(corner.incoming)].first != corner.previousVtex ? 1 : 0;
    int vtex = -1;
    int chord = -1;
    m_maker.Sub3_FindCCWVtexIdx(corner.incoming, reverse, vtex, chord, true, &m_barred);
    return chord == corner.outgoing ? -1 : chord;
}

void PlainDivision::HangLoop(DM_SURF const &surf, DM_SURF &path, DM_SURF const &loop, DM_SURF &outA, DM_SURF &outB) {
    m_maker.Util_FillCurvDirArrayInSurf(path);
    assert(path.Curv.Size() >= loop.Curv.Size());
    // The tail reaches from the boundary to the loop. Of it, the part behind the junction nearest to the loop stays.
    for (std::size_t i = path.Curv.Size() - loop.Curv.Size(); i-- > 0;) {
        if (CountOpenEdges(path.Vtex[i]) > 2) {
            DropFront(path.Vtex, i);
            DropFront(path.Curv, i);
            DropFront(path.CurvDir, i);
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

int PlainDivision::SplitAlongChord(DM_SURF &surf, DM_SURF &path, DM_SURF &outA, DM_SURF &outB) {
    m_maker.Util_FillCurvDirArrayInSurf(surf);
    m_maker.Util_FillCurvDirArrayInSurf(path);
    ChordEnds const ends = FindChordEnds(surf, m_maker.EdgeVtex, path.Vtex[0], path.Vtex[path.Vtex.Size() - 1]);
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
        m_maker.Util_FillCurvDirArrayInSurf(*half);
        m_maker.Util_FillVtexArrayInSurf(*half);
    }
    for (DM_SURF_SUB const &hole : surf.Holes) {
        DM_VTEX const point = m_maker.VtexCoord[Index(hole.Vtex[hole.Vtex.Size() / 2])];
        DM_SURF_SUB &rightLoop = right;
        DM_SURF &owner = m_maker.Util_IsPointInSurf(point.x, point.y, rightLoop) != 0 ? right : left;
        owner.Holes.PushBack(hole);
    }
    outA = std::move(right);
    outB = std::move(left);
    return 1;
}

} // namespace zvi::lib::curves

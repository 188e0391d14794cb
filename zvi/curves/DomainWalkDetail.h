#pragma once

#include "zvi/curves/DomainGraphDetail.h"

#include <cstdint>
#include <vector>

namespace zvi::lib::detail {

/// The outer walks of the main scan, and the marks of what is finished: vertices that start no walk any more, and edges
/// that no walk may use.
///
/// A turn past finished edges leaves links behind that lead past them at once the next time, so the turns of all walks
/// together pass each of them hardly more than once. A walk from the start of the walk before it goes on where that one
/// is still valid: edges only ever become finished, so each step of a walk stays what it is until the edge that it
/// chose is finished.
class OuterWalks {
public:
    explicit OuterWalks(DomainGraph const &graph);

    bool IsVtexDone(int vtex) const { return m_isVtexDone[Index(vtex)] != 0; }
    void MarkVtex(int vtex) { m_isVtexDone[Index(vtex)] = 1; }
    /// `a` and `b` are the ends of the edge.
    void MarkEdge(int edge, int a, int b);

    /// Marks, until none is left, the last unfinished edge of every vertex that has one only. Later walks thus keep out
    /// of the stubs that finished domains leave behind.
    void BarLooseEnds();

    /// Walks from `start` along its steepest falling edge, turning right as sharply as it can, until the walk meets
    /// itself. `loop` gets the half-edges of the closed part. False at a dead end; since no vertex keeps a single
    /// unfinished edge, that happens behind the first edge only, and it happens at every later try as well.
    bool Walk(int start, std::vector<int> &loop);

private:
    static std::size_t Index(int index) { return static_cast<std::size_t>(index); }

    int FirstHalfEdge(int start) const;
    int NextOpen(int half);
    void Begin(int start);
    void DropFinishedSteps();
    int SkipFinished(int vtex, int half);
    void CountDown(int vtex);
    bool IsVisited(int vtex) const { return m_visitedAt[Index(vtex)] == m_walkNumber; }
    void Visit(int vtex, std::size_t index);

    DomainGraph const &m_graph;
    std::vector<char> m_isVtexDone;
    std::vector<char> m_isEdgeDone;
    std::vector<int> m_skip;      ///< by finished half-edge: none before this one is unfinished; -1 for no such link
    std::vector<int> m_openCount; ///< by vertex: unfinished edges
    std::vector<int> m_loose;     ///< vertices that came down to one unfinished edge

    int m_start = -1;
    std::vector<int> m_path;                ///< the half-edges of the present walk
    std::vector<int> m_pathIndex;           ///< by edge: where it stood in a walk
    std::size_t m_firstFinished;            ///< the present walk is valid before this half-edge
    std::vector<std::uint32_t> m_visitedAt; ///< by vertex: the last walk that was there
    std::vector<int> m_visitIndex;          ///< by vertex: how many half-edges of the walk lead to it
    std::uint32_t m_walkNumber = 0;
};

} // namespace zvi::lib::detail

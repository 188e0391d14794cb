#pragma once

#include "zvi/curves/DomainGraphDetail.h"

#include <cstdint>
#include <vector>

namespace zvi::lib::detail {

/// The outer walks of the main scan, and the marks of what is finished: vertices that start no walk any more, and edges
/// that no walk may use.
///
/// The edges that are not finished form a ring at each vertex, so a turn past any number of finished ones is one step.
/// A walk from the start of the walk before it goes on where that one is still valid: edges only ever become finished,
/// so each step of a walk stays what it is until the edge that it chose is finished.
class OuterWalks {
public:
    explicit OuterWalks(DomainGraph const &graph);

    bool IsVtexDone(int vtex) const { return m_isVtexDone[Index(vtex)] != 0; }
    void MarkVtex(int vtex) { m_isVtexDone[Index(vtex)] = 1; }
    void MarkEdge(int edge);

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
    void Unlink(int half);
    bool IsVisited(int vtex) const { return m_visitedAt[Index(vtex)] == m_walkNumber; }
    void Visit(int vtex, std::size_t index);

    DomainGraph const &m_graph;
    std::vector<char> m_isVtexDone;
    std::vector<char> m_isEdgeDone;
    std::vector<int> m_nextOpen;     ///< by half-edge: the next unfinished one counter-clockwise
    std::vector<int> m_previousOpen; ///< by half-edge: the one before
    std::vector<int> m_someOpen;     ///< by vertex: an unfinished half-edge, while there is one
    std::vector<int> m_openCount;    ///< by vertex: unfinished edges
    std::vector<int> m_loose;        ///< vertices that came down to one unfinished edge

    int m_start = -1;
    std::vector<int> m_path;                ///< the half-edges of the present walk
    std::vector<int> m_pathIndex;           ///< by edge: where it stood in a walk
    std::size_t m_firstFinished;            ///< the present walk is valid before this half-edge
    std::vector<std::uint32_t> m_visitedAt; ///< by vertex: the last walk that was there
    std::vector<int> m_visitIndex;          ///< by vertex: how many half-edges of the walk lead to it
    std::uint32_t m_walkNumber = 0;
};

} // namespace zvi::lib::detail

#pragma once

#include "zvi/base/Index.h"
#include "zvi/curves/domains/DomainGraphDetail.h"

#include <cstdint>
#include <vector>

namespace zvi::lib::curves {

/// The outer walks of the main scan, and the marks of what is finished: nodes that start no walk any more, and edges
/// that no walk may use.
///
/// A turn past finished edges leaves links behind that lead past them at once the next time, so the turns of all walks
/// together pass each of them hardly more than once. A walk from the start of the walk before it goes on where that one
/// is still valid: edges only ever become finished, so each step of a walk stays what it is until the edge that it
/// chose is finished.
class OuterWalks {
public:
    explicit OuterWalks(DomainGraph const &graph);

    bool IsNodeDone(int node) const { return m_isNodeDone[base::Index(node)] != 0; }
    void MarkNode(int node) { m_isNodeDone[base::Index(node)] = 1; }
    /// Marks the edge of a half-edge.
    void MarkEdge(int half);

    /// Marks, until none is left, the last unfinished edge of every node that has one only. Later walks thus keep out
    /// of the stubs that finished domains leave behind.
    void BarLooseEnds();

    /// Walks from `start`, a node with edges, along its steepest falling edge, turning right as sharply as it can,
    /// until the walk meets itself. `loop` gets the half-edges of the closed part. False at a dead end; since no node
    /// keeps a single unfinished edge, that happens behind the first edge only, and it happens at every later try as
    /// well.
    bool Walk(int start, std::vector<int> &loop);

private:
    struct Visited {
        std::uint32_t walk = 0; ///< the last walk that was at the node
        int index = 0;          ///< how many half-edges of that walk lead to it
    };

    struct Step {
        int skip = -1;  ///< of a finished half-edge: none before this one is unfinished; -1 for no such link
        int index = -1; ///< of an edge, kept at its `Whole` half-edge: where it stood in a walk
    };

    int FirstHalfEdge(int start) const;
    int NextOpen(int half);
    void Begin(int start);
    void DropFinishedSteps();
    bool IsFinished(int half) const { return m_isEdgeDone[base::Index(m_graph.Whole(half))] != 0; }
    int SkipFinished(int node, int half);
    void CountDown(int node);

    DomainGraph const &m_graph;
    std::vector<char> m_isNodeDone;
    std::vector<char> m_isEdgeDone;
    std::vector<Step> m_steps;    ///< by half-edge
    std::vector<int> m_openCount; ///< by node: unfinished edges
    std::vector<int> m_loose;     ///< nodes that came down to one unfinished edge

    int m_start = -1;
    std::vector<int> m_path;     ///< the half-edges of the present walk
    std::size_t m_firstFinished; ///< the present walk is valid before this half-edge
    std::vector<Visited> m_visited;
    std::uint32_t m_walkNumber = 0;
};

} // namespace zvi::lib::curves

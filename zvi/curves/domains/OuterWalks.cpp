#include "zvi/curves/domains/OuterWalksDetail.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>

namespace zvi::lib::curves {

using base::Index;

namespace {

constexpr std::size_t kNothingFinished = std::numeric_limits<std::size_t>::max();

} // namespace

OuterWalks::OuterWalks(DomainGraph const &graph)
    : m_graph(graph), m_isNodeDone(Index(graph.NodeCount())), m_isEdgeDone(Index(graph.HalfEdgeCount())),
      m_steps(Index(graph.HalfEdgeCount())), m_openCount(Index(graph.NodeCount())), m_firstFinished(kNothingFinished),
      m_visited(Index(graph.NodeCount())) {
    for (int node = 0; node < graph.NodeCount(); ++node)
        m_openCount[Index(node)] = graph.Degree(node);
}

void OuterWalks::MarkEdge(int half) {
    int const edge = m_graph.Whole(half);
    if (m_isEdgeDone[Index(edge)] != 0)
        return;
    m_isEdgeDone[Index(edge)] = 1;
    CountDown(m_graph.Origin(half));
    CountDown(m_graph.Target(half));
    // The first edge of a walk is used even when it is finished.
    int const index = m_steps[Index(edge)].index;
    if (index > 0 && Index(index) < m_path.size() && m_graph.Whole(m_path[Index(index)]) == edge)
        m_firstFinished = std::min(m_firstFinished, Index(index));
}

void OuterWalks::CountDown(int node) {
    assert(m_openCount[Index(node)] > 0);
    if (--m_openCount[Index(node)] == 1)
        m_loose.push_back(node);
}

void OuterWalks::BarLooseEnds() {
    while (!m_loose.empty()) {
        int const node = m_loose.back();
        m_loose.pop_back();
        if (m_openCount[Index(node)] == 1)
            MarkEdge(SkipFinished(node, m_graph.FirstOut(node)));
    }
}

bool OuterWalks::Walk(int start, std::vector<int> &loop) {
    if (start == m_start)
        DropFinishedSteps();
    else
        Begin(start);
    for (;;) {
        int const next = NextOpen(m_path.back());
        if (next < 0)
            return false;
        Visited &visited = m_visited[Index(m_graph.Target(next))];
        if (visited.walk == m_walkNumber) {
            loop.assign(m_path.begin() + visited.index, m_path.end());
            loop.push_back(next);
            return true;
        }
        m_steps[Index(m_graph.Whole(next))].index = static_cast<int>(m_path.size());
        m_path.push_back(next);
        visited = {m_walkNumber, static_cast<int>(m_path.size())};
    }
}

void OuterWalks::Begin(int start) {
    assert(m_graph.Degree(start) > 0);
    ++m_walkNumber;
    m_start = start;
    m_firstFinished = kNothingFinished;
    int const half = FirstHalfEdge(start);
    m_path.assign(1, half);
    m_visited[Index(start)] = {m_walkNumber, 0};
    m_visited[Index(m_graph.Target(half))] = {m_walkNumber, 1};
}

void OuterWalks::DropFinishedSteps() {
    while (m_path.size() > m_firstFinished) {
        m_visited[Index(m_graph.Target(m_path.back()))].walk = m_walkNumber - 1;
        m_path.pop_back();
    }
    m_firstFinished = kNothingFinished;
}

/// The half-edge of the smallest sine; the earliest of equal ones.
int OuterWalks::FirstHalfEdge(int start) const {
    DM_VTEX const &at = m_graph.Coordinate(start);
    int best = -1;
    double bestSine = 0.0;
    for (int half = m_graph.FirstOut(start); half < m_graph.EndOut(start); ++half) {
        DM_VTEX const &far = m_graph.Coordinate(m_graph.Target(half));
        double const dx = far.x - at.x;
        double const dy = far.y - at.y;
        double const length = std::sqrt(dx * dx + dy * dy);
        double const sine = length == 0.0 ? dy : dy / length;
        if (best < 0 || sine < bestSine) {
            best = half;
            bestSine = sine;
        }
    }
    return best;
}

/// The next unfinished half-edge counter-clockwise from the one that the walk arrived by; -1 for none.
int OuterWalks::NextOpen(int half) {
    int const node = m_graph.Target(half);
    if (m_openCount[Index(node)] <= (IsFinished(half) ? 0 : 1))
        return -1;
    return SkipFinished(node, m_graph.CounterClockwise(node, m_graph.Twin(half)));
}

/// The first unfinished half-edge counter-clockwise from `half` on; there is one.
int OuterWalks::SkipFinished(int node, int half) {
    assert(m_graph.Origin(half) == node && m_openCount[Index(node)] > 0);
    auto const after = [&](int at) {
        int const skip = m_steps[Index(at)].skip;
        return skip >= 0 ? skip : m_graph.CounterClockwise(node, at);
    };
    int open = half;
    while (IsFinished(open))
        open = after(open);
    for (int at = half; at != open;) {
        int const next = after(at);
        m_steps[Index(at)].skip = open;
        at = next;
    }
    return open;
}

} // namespace zvi::lib::curves

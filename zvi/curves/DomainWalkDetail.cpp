#include "zvi/curves/DomainWalkDetail.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace zvi::lib::detail {

namespace {

constexpr std::size_t kNothingFinished = std::numeric_limits<std::size_t>::max();

} // namespace

OuterWalks::OuterWalks(DomainGraph const &graph)
    : m_graph(graph), m_isVtexDone(Index(graph.VtexCount())), m_isEdgeDone(Index(graph.EdgeCount())),
      m_nextOpen(Index(graph.HalfEdgeCount())), m_previousOpen(Index(graph.HalfEdgeCount())),
      m_someOpen(Index(graph.VtexCount()), -1), m_openCount(Index(graph.VtexCount())),
      m_pathIndex(Index(graph.EdgeCount()), -1), m_firstFinished(kNothingFinished),
      m_visitedAt(Index(graph.VtexCount())), m_visitIndex(Index(graph.VtexCount())) {
    for (int vtex = 0; vtex < graph.VtexCount(); ++vtex) {
        m_openCount[Index(vtex)] = graph.Degree(vtex);
        if (graph.Degree(vtex) > 0)
            m_someOpen[Index(vtex)] = graph.FirstOut(vtex);
        for (int half = graph.FirstOut(vtex); half < graph.EndOut(vtex); ++half) {
            m_nextOpen[Index(half)] = graph.CounterClockwise(vtex, half);
            m_previousOpen[Index(half)] = graph.Clockwise(vtex, half);
        }
    }
}

void OuterWalks::MarkEdge(int edge) {
    if (m_isEdgeDone[Index(edge)] != 0)
        return;
    m_isEdgeDone[Index(edge)] = 1;
    int const half = m_graph.HalfEdgeOf(edge);
    Unlink(half);
    Unlink(m_graph.Twin(half));
    // The first edge of a walk is used even when it is finished.
    std::size_t const step = Index(m_pathIndex[Index(edge)]);
    if (m_pathIndex[Index(edge)] > 0 && step < m_path.size() && m_graph.Edge(m_path[step]) == edge)
        m_firstFinished = std::min(m_firstFinished, step);
}

/// Takes the half-edge out of the ring at its vertex. Its own link stays: a walk that comes along a finished edge finds
/// the next unfinished one through it.
void OuterWalks::Unlink(int half) {
    int const vtex = m_graph.Origin(half);
    int const next = m_nextOpen[Index(half)];
    int const previous = m_previousOpen[Index(half)];
    m_nextOpen[Index(previous)] = next;
    m_previousOpen[Index(next)] = previous;
    m_someOpen[Index(vtex)] = next;
    if (--m_openCount[Index(vtex)] == 1)
        m_loose.push_back(vtex);
}

void OuterWalks::BarLooseEnds() {
    while (!m_loose.empty()) {
        int const vtex = m_loose.back();
        m_loose.pop_back();
        if (m_openCount[Index(vtex)] == 1)
            MarkEdge(m_graph.Edge(m_someOpen[Index(vtex)]));
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
        int const vtex = m_graph.Target(next);
        if (IsVisited(vtex)) {
            loop.assign(m_path.begin() + m_visitIndex[Index(vtex)], m_path.end());
            loop.push_back(next);
            return true;
        }
        m_pathIndex[Index(m_graph.Edge(next))] = static_cast<int>(m_path.size());
        m_path.push_back(next);
        Visit(vtex, m_path.size());
    }
}

void OuterWalks::Begin(int start) {
    ++m_walkNumber;
    m_start = start;
    m_firstFinished = kNothingFinished;
    int const half = FirstHalfEdge(start);
    m_path.assign(1, half);
    Visit(start, 0);
    Visit(m_graph.Target(half), 1);
}

void OuterWalks::DropFinishedSteps() {
    while (m_path.size() > m_firstFinished) {
        m_visitedAt[Index(m_graph.Target(m_path.back()))] = m_walkNumber - 1;
        m_path.pop_back();
    }
    m_firstFinished = kNothingFinished;
}

void OuterWalks::Visit(int vtex, std::size_t index) {
    m_visitedAt[Index(vtex)] = m_walkNumber;
    m_visitIndex[Index(vtex)] = static_cast<int>(index);
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
    int const vtex = m_graph.Target(half);
    int const arrived = m_graph.Twin(half);
    bool const isFinished = m_isEdgeDone[Index(m_graph.Edge(half))] != 0;
    if (m_openCount[Index(vtex)] <= (isFinished ? 0 : 1))
        return -1;
    int next = m_nextOpen[Index(arrived)];
    while (m_isEdgeDone[Index(m_graph.Edge(next))] != 0)
        next = m_nextOpen[Index(next)];
    // Links of finished half-edges that were passed now lead straight there.
    for (int passed = arrived; passed != next && m_isEdgeDone[Index(m_graph.Edge(passed))] != 0;) {
        int const after = m_nextOpen[Index(passed)];
        m_nextOpen[Index(passed)] = next;
        passed = after;
    }
    return next;
}

} // namespace zvi::lib::detail

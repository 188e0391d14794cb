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
      m_skip(Index(graph.HalfEdgeCount()), -1), m_openCount(Index(graph.VtexCount())),
      m_pathIndex(Index(graph.EdgeCount()), -1), m_firstFinished(kNothingFinished),
      m_visitedAt(Index(graph.VtexCount())), m_visitIndex(Index(graph.VtexCount())) {
    for (int vtex = 0; vtex < graph.VtexCount(); ++vtex)
        m_openCount[Index(vtex)] = graph.Degree(vtex);
}

void OuterWalks::MarkEdge(int edge, int a, int b) {
    if (m_isEdgeDone[Index(edge)] != 0)
        return;
    m_isEdgeDone[Index(edge)] = 1;
    CountDown(a);
    CountDown(b);
    // The first edge of a walk is used even when it is finished.
    std::size_t const step = Index(m_pathIndex[Index(edge)]);
    if (m_pathIndex[Index(edge)] > 0 && step < m_path.size() && m_graph.Edge(m_path[step]) == edge)
        m_firstFinished = std::min(m_firstFinished, step);
}

void OuterWalks::CountDown(int vtex) {
    if (--m_openCount[Index(vtex)] == 1)
        m_loose.push_back(vtex);
}

void OuterWalks::BarLooseEnds() {
    while (!m_loose.empty()) {
        int const vtex = m_loose.back();
        m_loose.pop_back();
        if (m_openCount[Index(vtex)] != 1)
            continue;
        int const half = SkipFinished(vtex, m_graph.FirstOut(vtex));
        MarkEdge(m_graph.Edge(half), vtex, m_graph.Target(half));
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
    return SkipFinished(vtex, m_graph.CounterClockwise(vtex, arrived));
}

/// The first unfinished half-edge counter-clockwise from `half` on; there is one.
int OuterWalks::SkipFinished(int vtex, int half) {
    auto const isFinished = [this](int at) { return m_isEdgeDone[Index(m_graph.Edge(at))] != 0; };
    auto const after = [&](int at) {
        return m_skip[Index(at)] >= 0 ? m_skip[Index(at)] : m_graph.CounterClockwise(vtex, at);
    };
    int open = half;
    while (isFinished(open))
        open = after(open);
    for (int at = half; at != open;) {
        int const next = after(at);
        m_skip[Index(at)] = open;
        at = next;
    }
    return open;
}

} // namespace zvi::lib::detail

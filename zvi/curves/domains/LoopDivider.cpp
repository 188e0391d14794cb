#include "zvi/curves/domains/LoopDividerDetail.h"

#include "zvi/curves/PointInPolygonDetail.h"
#include "zvi/curves/domains/DomainRulesDetail.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace zvi::lib::curves {

using base::Index;

namespace {

/// Nodes with more edges than this find their corner of a loop in a hash map, others by looking at their edges.
constexpr int kManyEdges = 16;

std::uint64_t CornerKey(int node, int loop) {
    return (static_cast<std::uint64_t>(static_cast<std::uint32_t>(node)) << 32) | static_cast<std::uint32_t>(loop);
}

double Length(DM_VTEX const &from, DM_VTEX const &to) {
    double const dx = to.x - from.x;
    double const dy = to.y - from.y;
    return std::sqrt(dx * dx + dy * dy);
}

} // namespace

LoopDivider::LoopDivider(DomainGraph const &graph)
    : m_graph(graph), m_loopOf(Index(graph.HalfEdgeCount()), -1), m_links(Index(graph.HalfEdgeCount())),
      m_visited(Index(graph.NodeCount())) {
    m_entries.reserve(m_loopOf.size());
}

LoopDivider::Outcome LoopDivider::Divide(std::vector<int> const &halfEdges, MArray<DM_SURF> &domains) {
    assert(!halfEdges.empty() && m_graph.Target(halfEdges.back()) == m_graph.Origin(halfEdges.front()));
    if (!m_graph.IsMeasurable())
        return Outcome::kUnproven;
    Forget();
    AddLoop(halfEdges);
    Outcome const outcome = DivideInRounds();
    if (outcome == Outcome::kDivided)
        AppendDomains(domains);
    return outcome;
}

LoopDivider::Outcome LoopDivider::DivideInRounds() {
    long long const limit = kDivisionsPerEdge * m_graph.EdgeCount();
    long long counter = 0;
    m_round.assign(1, 0);
    while (!m_round.empty()) {
        m_nextRound.clear();
        for (int const loop : m_round) {
            if (++counter > limit)
                return Outcome::kAbandoned;
            int outA = -1;
            int outB = -1;
            Step const step = DivideOnce(loop, outA, outB);
            if (step == Step::kUnproven)
                return Outcome::kUnproven;
            if (step == Step::kWhole) {
                RecordLoop(loop);
                continue;
            }
            m_nextRound.push_back(outA);
            m_nextRound.push_back(outB);
        }
        m_round.swap(m_nextRound);
    }
    return Outcome::kDivided;
}

int LoopDivider::AddLoop(std::vector<int> const &halfEdges) {
    assert(!halfEdges.empty());
    int const loop = static_cast<int>(m_loops.size());
    for (std::size_t i = 0; i < halfEdges.size(); ++i) {
        SetLoop(halfEdges[i], loop);
        Join(halfEdges[i], halfEdges[i + 1 == halfEdges.size() ? 0 : i + 1]);
    }
    OpenList open;
    for (std::size_t i = 1; i < halfEdges.size(); ++i)
        AppendIfOpen(open, halfEdges[i]);
    AppendIfOpen(open, halfEdges[0]);
    m_loops.push_back({halfEdges[0], Close(open), -1, -1, false});
    return loop;
}

void LoopDivider::Join(int half, int next) {
    assert(m_graph.Target(half) == m_graph.Origin(next));
    At(half).next = next;
    At(next).previous = half;
}

void LoopDivider::SetLoop(int half, int loop) {
    int &loopOf = m_loopOf[Index(half)];
    int const origin = m_graph.Origin(half);
    if (m_graph.Degree(origin) > kManyEdges) {
        if (loopOf >= 0)
            m_cornerOn.erase(CornerKey(origin, loopOf));
        m_cornerOn[CornerKey(origin, loop)] = half;
    }
    loopOf = loop;
}

/// The half-edge with which `loop` leaves `node`; -1 when it does not pass there.
int LoopDivider::CornerOn(int node, int loop) const {
    if (m_graph.Degree(node) > kManyEdges) {
        auto const found = m_cornerOn.find(CornerKey(node, loop));
        return found == m_cornerOn.end() ? -1 : found->second;
    }
    for (int half = m_graph.FirstOut(node); half < m_graph.EndOut(node); ++half) {
        if (LoopOf(half) == loop)
            return half;
    }
    return -1;
}

// --- Corners ---

bool LoopDivider::IsOpen(int half) const {
    int const node = m_graph.Origin(half);
    if (m_graph.Clockwise(node, m_graph.Twin(At(half).previous)) != half)
        return true;
    return m_graph.IsNarrow(node) && IsBarring(half);
}

bool LoopDivider::IsBarring(int half) const {
    bool found = false;
    VisitAlongBoundary(half, [&](int) {
        found = true;
        return false;
    });
    return found;
}

/// Whether `half`, which leaves the corner's vertex, lies in the corner's sector.
bool LoopDivider::IsInSector(int corner, int half) const {
    int const node = m_graph.Origin(corner);
    assert(m_graph.Origin(half) == node);
    int const degree = m_graph.Degree(node);
    int const incoming = m_graph.Twin(At(corner).previous);
    auto const stepsTo = [&](int other) { return incoming - other + (incoming < other ? degree : 0); };
    return half != incoming && stepsTo(half) < stepsTo(corner);
}

void LoopDivider::Append(OpenList &list, int half) {
    assert(half != list.last);
    if (list.first < 0) {
        list.first = half;
    } else {
        At(list.last).nextOpen = half;
        At(half).previousOpen = list.last;
    }
    list.last = half;
}

void LoopDivider::AppendIfOpen(OpenList &list, int half) {
    if (IsOpen(half))
        Append(list, half);
}

/// Appends the open corners from `first` up to, but not including, `end`, which are linked already.
void LoopDivider::AppendRun(OpenList &list, int first, int end) {
    if (first == end)
        return;
    int const last = At(end).previousOpen;
    Append(list, first);
    list.last = last;
}

/// Closes the list to a ring; its first corner, -1 for none.
int LoopDivider::Close(OpenList const &list) {
    if (list.first >= 0) {
        At(list.last).nextOpen = list.first;
        At(list.first).previousOpen = list.last;
    }
    return list.first;
}

// --- One division ---

LoopDivider::Step LoopDivider::DivideOnce(int loop, int &outA, int &outB) {
    ++m_scan;
    m_anyBarred = false;
    int const first = m_loops[Index(loop)].firstOpen;
    if (first < 0)
        return Step::kWhole;
    int corner = first;
    do {
        int const chord = FindChord(loop, corner);
        if (chord >= 0)
            return FollowChord(loop, corner, chord, outA, outB);
        corner = At(corner).nextOpen;
    } while (corner != first);
    return Step::kWhole;
}

/// The first edge of the corner's sector that is not barred; -1 for none. Edges along the boundary get barred first.
int LoopDivider::FindChord(int loop, int corner) {
    int const node = m_graph.Origin(corner);
    if (m_graph.IsNarrow(node)) {
        m_barredAt.resize(m_loopOf.size());
        VisitAlongBoundary(corner, [&](int half) {
            m_barredAt[Index(m_graph.Whole(half))] = m_scan;
            m_anyBarred = true;
            return true;
        });
    }
    int half = m_graph.Clockwise(node, m_graph.Twin(At(corner).previous));
    while (half != corner && IsBarred(half, loop))
        half = m_graph.Clockwise(node, half);
    return half == corner ? -1 : half;
}

/// Calls `visit` for every edge at the corner that runs along its incoming or outgoing edge, until it says no; an edge
/// may come twice. The directions of the list are in order, so the search leaves each of the two both ways until the
/// directions are surely apart.
template <typename Visit>
void LoopDivider::VisitAlongBoundary(int corner, Visit visit) const {
    int const node = m_graph.Origin(corner);
    int const incoming = m_graph.Twin(At(corner).previous);
    DM_VTEX const &at = m_graph.Coordinate(node);
    auto const far = [&](int half) -> DM_VTEX const & { return m_graph.Coordinate(m_graph.Target(half)); };
    DM_VTEX const back = UnitVector(at, far(incoming));
    DM_VTEX const ahead = UnitVector(at, far(corner));
    for (auto const &[from, boundary] : {std::pair{incoming, back}, std::pair{corner, ahead}}) {
        for (bool const clockwise : {false, true}) {
            for (int half = from;;) {
                half = clockwise ? m_graph.Clockwise(node, half) : m_graph.CounterClockwise(node, half);
                if (half == from)
                    break;
                if (Length(at, far(half)) < kNoDirection)
                    continue;
                DM_VTEX const direction = UnitVector(at, far(half));
                if (Dot(direction, boundary) < kSurelyApart)
                    break;
                bool const isAlong = RunsAlong(direction, back) || RunsAlong(direction, ahead);
                if (half != incoming && half != corner && isAlong && !visit(half))
                    return;
            }
        }
    }
}

bool LoopDivider::IsBarred(int half, int loop) const {
    if (m_anyBarred && m_barredAt[Index(m_graph.Whole(half))] == m_scan)
        return true;
    if (m_holes.empty())
        return false;
    int const hole = m_holeOfEdge[Index(m_graph.Whole(half))];
    return hole >= 0 && m_holes[Index(hole)].owner == loop;
}

/// Walks from the chord, by the sharpest left turn at each vertex, until it meets the loop or itself.
LoopDivider::Step LoopDivider::FollowChord(int loop, int corner, int chord, int &outA, int &outB) {
    ++m_walkNumber;
    m_walk.clear();
    m_visited[Index(m_graph.Origin(corner))] = {m_walkNumber, 0};
    for (int half = chord;;) {
        m_walk.push_back(half);
        int const node = m_graph.Target(half);
        Visited &visited = m_visited[Index(node)];
        if (visited.walk == m_walkNumber)
            return Hang(loop, Index(visited.index), outA, outB);
        if (int const met = CornerOn(node, loop); met >= 0)
            return Split(loop, corner, met, outA, outB);
        visited = {m_walkNumber, static_cast<int>(m_walk.size())};

        int const arrived = m_graph.Twin(half);
        half = m_graph.Clockwise(node, arrived);
        while (half != arrived && IsBarred(half, loop))
            half = m_graph.Clockwise(node, half);
        if (half == arrived)
            return Step::kWhole; // a dead end: the loop stays as it is
    }
}

/// The chord joins two corners of the loop: the right loop runs from a to b and back along the chord, the left one from
/// b to a and on along the chord.
LoopDivider::Step LoopDivider::Split(int loop, int cornerA, int cornerB, int &outA, int &outB) {
    assert(cornerA != cornerB && LoopOf(cornerA) == loop && LoopOf(cornerB) == loop);
    if (!IsInSector(cornerB, m_graph.Twin(m_walk.back())))
        return Step::kUnproven;
    for (int const half : m_walk) {
        if (LoopOf(half) >= 0 || LoopOf(m_graph.Twin(half)) >= 0)
            return Step::kUnproven;
    }
    int const added = static_cast<int>(m_loops.size());
    bool const isLeftShorter = IsLeftShorter(cornerA, cornerB);
    outA = isLeftShorter ? loop : added;
    outB = isLeftShorter ? added : loop;
    int const end = isLeftShorter ? cornerA : cornerB;
    for (int half = isLeftShorter ? cornerB : cornerA; half != end; half = At(half).next)
        SetLoop(half, added);

    LinkChord(cornerA, cornerB, outA, outB);

    OpenList right;
    OpenList left;
    SplitOpenCorners(cornerA, cornerB, right, left);
    int const firstHole = m_loops[Index(loop)].firstHole;
    m_loops.push_back({});
    m_loops[Index(outA)] = {cornerA, Close(right), -1, -1, true};
    m_loops[Index(outB)] = {cornerB, Close(left), -1, -1, true};
    if (firstHole >= 0)
        ShareHoles(firstHole, outA, outB);
    return Step::kDivided;
}

/// Relinks the two rings at the ends of the chord, and gives its sides to the right and the left loop.
void LoopDivider::LinkChord(int cornerA, int cornerB, int right, int left) {
    int previousLeft = At(cornerA).previous;
    int const beforeB = At(cornerB).previous;
    int nextRight = cornerA;
    for (int const half : m_walk) {
        SetLoop(half, left);
        SetLoop(m_graph.Twin(half), right);
        Join(previousLeft, half);
        Join(m_graph.Twin(half), nextRight);
        previousLeft = half;
        nextRight = m_graph.Twin(half);
    }
    Join(previousLeft, cornerB);
    Join(beforeB, nextRight);
}

/// Which of the runs from b to a and from a to b has fewer edges; both are walked side by side until one ends.
bool LoopDivider::IsLeftShorter(int cornerA, int cornerB) const {
    int right = cornerA;
    int left = cornerB;
    for (;;) {
        left = At(left).next;
        if (left == cornerA)
            return true;
        right = At(right).next;
        if (right == cornerB)
            return false;
    }
}

void LoopDivider::SplitOpenCorners(int cornerA, int cornerB, OpenList &right, OpenList &left) {
    int const afterA = At(cornerA).nextOpen;
    int const afterB = At(cornerB).nextOpen;
    AppendRun(right, afterA, cornerB);
    AppendRun(left, afterB, cornerA);
    for (std::size_t i = m_walk.size(); i-- > 0;)
        AppendIfOpen(right, m_graph.Twin(m_walk[i]));
    AppendIfOpen(right, cornerA);
    for (int const half : m_walk)
        AppendIfOpen(left, half);
    AppendIfOpen(left, cornerB);
}

/// A hole goes to the right loop if the vertex in the middle of its list lies in it, otherwise to the left one.
void LoopDivider::ShareHoles(int firstHole, int right, int left) {
    MArray<T_POINT2D> vertices;
    int const start = m_loops[Index(right)].start;
    int half = start;
    do {
        DM_VTEX const &at = m_graph.Coordinate(m_graph.Origin(half));
        vertices.PushBack({at.x, at.y});
        half = At(half).next;
    } while (half != start);
    curves::PointInPolygon const polygon(vertices);
    for (int hole = firstHole, next = -1; hole >= 0; hole = next) {
        next = m_holes[Index(hole)].next;
        DM_VTEX const &middle = m_graph.Coordinate(m_holes[Index(hole)].middle);
        int const owner = polygon.Contains({middle.x, middle.y}, 1) != 0 ? right : left;
        AppendHole(hole, owner);
    }
}

void LoopDivider::AppendHole(int hole, int owner) {
    Loop &loop = m_loops[Index(owner)];
    m_holes[Index(hole)].owner = owner;
    m_holes[Index(hole)].next = -1;
    if (loop.firstHole < 0)
        loop.firstHole = hole;
    else
        m_holes[Index(loop.lastHole)].next = hole;
    loop.lastHole = hole;
}

/// The walk came back to itself: a loop hangs from the boundary, by a tail or directly. The walk becomes a hole of the
/// loop, and what it encloses a loop of its own, run the other way.
LoopDivider::Step LoopDivider::Hang(int loop, std::size_t loopAt, int &outA, int &outB) {
    assert(loopAt < m_walk.size());
    m_holeOfEdge.resize(m_loopOf.size(), -1);
    std::vector<int> enclosed;
    for (std::size_t i = m_walk.size(); i-- > loopAt;)
        enclosed.push_back(m_graph.Twin(m_walk[i]));
    auto const isTaken = [this](int half) { return LoopOf(half) >= 0; };
    auto const isInHole = [this](int half) { return m_holeOfEdge[Index(m_graph.Whole(half))] >= 0; };
    if (std::any_of(enclosed.begin(), enclosed.end(), isTaken) || std::any_of(m_walk.begin(), m_walk.end(), isInHole))
        return Step::kUnproven;

    std::size_t const start = TailStart(loop, loopAt);
    std::size_t const count = m_walk.size() - start;
    int const number = static_cast<int>(m_holes.size());
    Hole hole{{ListOf(count + 1), ListOf(count), ListOf(count)}, -1, loop, -1};
    for (std::size_t i = 0; i < count; ++i) {
        int const half = m_walk[start + i];
        hole.lists.Vtex[i] = m_graph.Vtex(m_graph.Origin(half));
        hole.lists.Curv[i] = m_graph.Edge(half);
        hole.lists.CurvDir[i] = m_graph.Side(half);
        m_holeOfEdge[Index(m_graph.Whole(half))] = number;
        m_holeHalves.push_back(half);
    }
    hole.lists.Vtex[count] = m_graph.Vtex(m_graph.Target(m_walk.back()));
    hole.middle = m_graph.Origin(m_walk[start + (count + 1) / 2]);
    m_holes.push_back(std::move(hole));
    AppendHole(number, loop);
    outA = loop;
    outB = AddLoop(enclosed);
    return Step::kDivided;
}

/// Of the tail, the part behind the junction nearest to the loop stays; without a junction all of it does.
std::size_t LoopDivider::TailStart(int loop, std::size_t loopAt) const {
    for (std::size_t i = loopAt; i-- > 0;) {
        int const node = m_graph.Origin(m_walk[i]);
        int open = 0;
        for (int half = m_graph.FirstOut(node); half < m_graph.EndOut(node); ++half)
            open += IsBarred(half, loop) ? 0 : 1;
        if (open > 2)
            return i;
    }
    return 0;
}

// --- Result ---

/// Notes the steps of a loop that stays whole, just walked as a rule and so at hand.
void LoopDivider::RecordLoop(int loop) {
    m_domains.push_back({loop, m_entries.size()});
    int const start = m_loops[Index(loop)].start;
    int half = start;
    do {
        m_entries.push_back({half, m_graph.Vtex(m_graph.Origin(half)), m_graph.EdgeAndSide(half)});
        half = At(half).next;
    } while (half != start);
}

void LoopDivider::AppendDomains(MArray<DM_SURF> &domains) {
    domains.Reserve(m_domains.size());
    for (std::size_t i = 0; i < m_domains.size(); ++i) {
        std::size_t const behind = i + 1 < m_domains.size() ? m_domains[i + 1].firstEntry : m_entries.size();
        Loop const &loop = m_loops[Index(m_domains[i].loop)];
        m_lists.Vtex.Clear();
        m_lists.Curv.Clear();
        m_lists.CurvDir.Clear();
        for (std::size_t k = m_domains[i].firstEntry; k < behind; ++k) {
            m_lists.Vtex.PushBack(m_entries[k].vtex);
            m_lists.Curv.PushBack(m_entries[k].edgeAndSide >> 1);
            if (loop.hasDirections)
                m_lists.CurvDir.PushBack(m_entries[k].edgeAndSide & 1);
        }
        m_lists.Vtex.PushBack(m_lists.Vtex[0]);
        DM_SURF surf{m_lists, {}}; // blocks of just the size
        for (int hole = loop.firstHole; hole >= 0; hole = m_holes[Index(hole)].next)
            surf.Holes.PushBack(std::move(m_holes[Index(hole)].lists));
        domains.PushBack(std::move(surf));
    }
}

/// Makes room for the next loop.
void LoopDivider::Forget() {
    for (Loop const &loop : m_loops) {
        int half = loop.start;
        do {
            m_loopOf[Index(half)] = -1;
            half = At(half).next;
        } while (half != loop.start);
    }
    for (int const half : m_holeHalves)
        m_holeOfEdge[Index(m_graph.Whole(half))] = -1;
    m_holeHalves.clear();
    m_holes.clear();
    m_loops.clear();
    m_domains.clear();
    m_entries.clear();
    if (!m_cornerOn.empty()) // clearing costs the room it once took
        m_cornerOn.clear();
}

} // namespace zvi::lib::curves

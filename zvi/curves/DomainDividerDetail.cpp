#include "zvi/curves/DomainDividerDetail.h"

#include "zvi/curves/DomainRulesDetail.h"
#include "zvi/curves/PointInPolygonDetail.h"

#include <algorithm>
#include <utility>

namespace zvi::lib::detail {

namespace {

/// Cosine below which two directions certainly do not run along one another, far from the rounding of `kRunsAlong`.
constexpr double kSurelyApart = 0.999998;

/// Vertices with more edges than this find their corner of a loop in a hash map, others by looking at their edges.
constexpr int kManyEdges = 12;

std::uint64_t CornerKey(int vtex, int loop) {
    return (static_cast<std::uint64_t>(static_cast<std::uint32_t>(vtex)) << 32) | static_cast<std::uint32_t>(loop);
}

double Length(DM_VTEX const &from, DM_VTEX const &to) {
    double const dx = to.x - from.x;
    double const dy = to.y - from.y;
    return std::sqrt(dx * dx + dy * dy);
}

} // namespace

LoopDivider::LoopDivider(DomainGraph const &graph)
    : m_graph(graph), m_nodes(Index(graph.HalfEdgeCount())), m_isNarrow(Index(graph.VtexCount())),
      m_holeOfEdge(Index(graph.EdgeCount()), -1), m_barredAt(Index(graph.EdgeCount())),
      m_visitedAt(Index(graph.VtexCount())), m_visitIndex(Index(graph.VtexCount())) {
    FindNarrowVertices();
}

void LoopDivider::FindNarrowVertices() {
    for (int vtex = 0; vtex < m_graph.VtexCount(); ++vtex)
        m_isNarrow[Index(vtex)] = m_graph.Degree(vtex) > 2 && IsNarrow(vtex) ? 1 : 0;
}

/// Neighbours in the angular order are nearest to one another, so no pair is close when no pair of neighbours is. An
/// edge without a direction stands anywhere in that order, so with one of them nothing is known.
bool LoopDivider::IsNarrow(int vtex) const {
    DM_VTEX const &at = m_graph.Coordinate(vtex);
    auto const vectorTo = [&](int half) {
        DM_VTEX const &far = m_graph.Coordinate(m_graph.Target(half));
        return DM_VTEX{far.x - at.x, far.y - at.y};
    };
    DM_VTEX previous = vectorTo(m_graph.EndOut(vtex) - 1);
    double previousSquare = Dot(previous, previous);
    for (int half = m_graph.FirstOut(vtex); half < m_graph.EndOut(vtex); ++half) {
        DM_VTEX const vector = vectorTo(half);
        double const square = Dot(vector, vector);
        double const dot = Dot(vector, previous);
        bool const isApart = dot <= 0.0 || dot * dot < kSurelyApart * kSurelyApart * square * previousSquare;
        if (!isApart || !(square > 4 * kNoDirection * kNoDirection))
            return true;
        previous = vector;
        previousSquare = square;
    }
    return false;
}

LoopDivider::Outcome LoopDivider::Divide(std::vector<int> const &halfEdges, MArray<DM_SURF> &domains) {
    if (!m_graph.IsTame())
        return Outcome::kUnproven;
    AddLoop(halfEdges);
    Outcome const outcome = DivideInRounds();
    if (outcome == Outcome::kDivided) {
        domains.Reserve(m_done.size());
        for (int const loop : m_done)
            domains.PushBack(Record(loop));
    }
    Forget();
    return outcome;
}

LoopDivider::Outcome LoopDivider::DivideInRounds() {
    long long const limit = kDivisionsPerEdge * m_graph.EdgeCount();
    long long counter = 0;
    m_done.clear();
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
                m_done.push_back(loop);
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
    At(half).next = next;
    At(next).previous = half;
}

void LoopDivider::SetLoop(int half, int loop) {
    Node &node = At(half);
    int const origin = m_graph.Origin(half);
    if (m_graph.Degree(origin) > kManyEdges) {
        if (node.loop >= 0)
            m_cornerOn.erase(CornerKey(origin, node.loop));
        m_cornerOn[CornerKey(origin, loop)] = half;
    }
    if (node.loop < 0)
        m_touched.push_back(half);
    node.loop = loop;
}

/// The half-edge with which `loop` leaves `vtex`; -1 when it does not pass there.
int LoopDivider::CornerOn(int vtex, int loop) const {
    if (m_graph.Degree(vtex) > kManyEdges) {
        auto const found = m_cornerOn.find(CornerKey(vtex, loop));
        return found == m_cornerOn.end() ? -1 : found->second;
    }
    for (int half = m_graph.FirstOut(vtex); half < m_graph.EndOut(vtex); ++half) {
        if (At(half).loop == loop)
            return half;
    }
    return -1;
}

// --- Corners ---

bool LoopDivider::IsOpen(int half) const {
    int const vtex = m_graph.Origin(half);
    if (m_graph.Clockwise(vtex, m_graph.Twin(At(half).previous)) != half)
        return true;
    return m_isNarrow[Index(vtex)] != 0 && IsBarring(half);
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
    int const vtex = m_graph.Origin(corner);
    int const degree = m_graph.Degree(vtex);
    int const incoming = m_graph.Twin(At(corner).previous);
    auto const stepsTo = [&](int other) { return (incoming - other + degree) % degree; };
    return half != incoming && stepsTo(half) < stepsTo(corner);
}

void LoopDivider::Append(OpenList &list, int half) {
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
    int const vtex = m_graph.Origin(corner);
    if (m_isNarrow[Index(vtex)] != 0) {
        VisitAlongBoundary(corner, [&](int half) {
            m_barredAt[Index(m_graph.Edge(half))] = m_scan;
            m_anyBarred = true;
            return true;
        });
    }
    int half = m_graph.Clockwise(vtex, m_graph.Twin(At(corner).previous));
    while (half != corner && IsBarred(half, loop))
        half = m_graph.Clockwise(vtex, half);
    return half == corner ? -1 : half;
}

/// Calls `visit` for every edge at the corner that runs along its incoming or outgoing edge, until it says no; an edge
/// may come twice. The directions of the
/// list are in order, so the search leaves each of the two both ways until the directions are surely apart.
template <typename Visit>
void LoopDivider::VisitAlongBoundary(int corner, Visit visit) const {
    int const vtex = m_graph.Origin(corner);
    int const incoming = m_graph.Twin(At(corner).previous);
    DM_VTEX const &at = m_graph.Coordinate(vtex);
    auto const far = [&](int half) -> DM_VTEX const & { return m_graph.Coordinate(m_graph.Target(half)); };
    DM_VTEX const back = UnitVector(at, far(incoming));
    DM_VTEX const ahead = UnitVector(at, far(corner));
    for (auto const &[from, boundary] : {std::pair{incoming, back}, std::pair{corner, ahead}}) {
        for (bool const clockwise : {false, true}) {
            for (int half = from;;) {
                half = clockwise ? m_graph.Clockwise(vtex, half) : m_graph.CounterClockwise(vtex, half);
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
    int const edge = m_graph.Edge(half);
    if (m_anyBarred && m_barredAt[Index(edge)] == m_scan)
        return true;
    if (m_holes.empty())
        return false;
    int const hole = m_holeOfEdge[Index(edge)];
    return hole >= 0 && m_holes[Index(hole)].owner == loop;
}

/// Walks from the chord, by the sharpest left turn at each vertex, until it meets the loop or itself.
LoopDivider::Step LoopDivider::FollowChord(int loop, int corner, int chord, int &outA, int &outB) {
    ++m_walkNumber;
    m_walk.clear();
    int const start = m_graph.Origin(corner);
    m_visitedAt[Index(start)] = m_walkNumber;
    m_visitIndex[Index(start)] = 0;
    for (int half = chord;;) {
        m_walk.push_back(half);
        int const vtex = m_graph.Target(half);
        if (m_visitedAt[Index(vtex)] == m_walkNumber)
            return Hang(loop, Index(m_visitIndex[Index(vtex)]), outA, outB);
        if (int const met = CornerOn(vtex, loop); met >= 0)
            return Split(loop, corner, met, outA, outB);
        m_visitedAt[Index(vtex)] = m_walkNumber;
        m_visitIndex[Index(vtex)] = static_cast<int>(m_walk.size());

        int const arrived = m_graph.Twin(half);
        half = m_graph.Clockwise(vtex, arrived);
        while (half != arrived && IsBarred(half, loop))
            half = m_graph.Clockwise(vtex, half);
        if (half == arrived)
            return Step::kWhole; // a dead end: the loop stays as it is
    }
}

/// The chord joins two corners of the loop: the right loop runs from a to b and back along the chord, the left one from
/// b to a and on along the chord.
LoopDivider::Step LoopDivider::Split(int loop, int cornerA, int cornerB, int &outA, int &outB) {
    if (!IsInSector(cornerB, m_graph.Twin(m_walk.back())))
        return Step::kUnproven;
    for (int const half : m_walk) {
        if (At(half).loop >= 0 || At(m_graph.Twin(half)).loop >= 0)
            return Step::kUnproven;
    }
    int const added = static_cast<int>(m_loops.size());
    bool const isLeftShorter = IsLeftShorter(cornerA, cornerB);
    outA = isLeftShorter ? loop : added;
    outB = isLeftShorter ? added : loop;
    int const end = isLeftShorter ? cornerA : cornerB;
    for (int half = isLeftShorter ? cornerB : cornerA; half != end; half = At(half).next)
        SetLoop(half, added);

    int const beforeA = At(cornerA).previous;
    int const beforeB = At(cornerB).previous;
    int previousLeft = beforeA;
    int nextRight = cornerA;
    for (int const half : m_walk) {
        SetLoop(half, outB);
        SetLoop(m_graph.Twin(half), outA);
        Join(previousLeft, half);
        Join(m_graph.Twin(half), nextRight);
        previousLeft = half;
        nextRight = m_graph.Twin(half);
    }
    Join(previousLeft, cornerB);
    Join(beforeB, nextRight);

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
        DM_VTEX const &vtex = m_graph.Coordinate(m_graph.Origin(half));
        vertices.PushBack({vtex.x, vtex.y});
        half = At(half).next;
    } while (half != start);
    curves::PointInPolygon const polygon(vertices);
    for (int hole = firstHole, next = -1; hole >= 0; hole = next) {
        next = m_holes[Index(hole)].next;
        MArray<int> const &list = m_holes[Index(hole)].lists.Vtex;
        DM_VTEX const &middle = m_graph.Coordinate(list[list.Size() / 2]);
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
    std::vector<int> enclosed;
    for (std::size_t i = m_walk.size(); i-- > loopAt;)
        enclosed.push_back(m_graph.Twin(m_walk[i]));
    auto const isTaken = [this](int half) { return At(half).loop >= 0; };
    auto const isInHole = [this](int half) { return m_holeOfEdge[Index(m_graph.Edge(half))] >= 0; };
    if (std::any_of(enclosed.begin(), enclosed.end(), isTaken) || std::any_of(m_walk.begin(), m_walk.end(), isInHole))
        return Step::kUnproven;

    Hole hole{{}, loop, -1};
    int const number = static_cast<int>(m_holes.size());
    for (std::size_t i = TailStart(loop, loopAt); i < m_walk.size(); ++i) {
        hole.lists.Vtex.PushBack(m_graph.Origin(m_walk[i]));
        hole.lists.Curv.PushBack(m_graph.Edge(m_walk[i]));
        hole.lists.CurvDir.PushBack(m_graph.Side(m_walk[i]));
        m_holeOfEdge[Index(m_graph.Edge(m_walk[i]))] = number;
    }
    hole.lists.Vtex.PushBack(m_graph.Target(m_walk.back()));
    m_holes.push_back(std::move(hole));
    AppendHole(number, loop);
    outA = loop;
    outB = AddLoop(enclosed);
    return Step::kDivided;
}

/// Of the tail, the part behind the junction nearest to the loop stays; without a junction all of it does.
std::size_t LoopDivider::TailStart(int loop, std::size_t loopAt) const {
    for (std::size_t i = loopAt; i-- > 0;) {
        int const vtex = m_graph.Origin(m_walk[i]);
        int open = 0;
        for (int half = m_graph.FirstOut(vtex); half < m_graph.EndOut(vtex); ++half)
            open += IsBarred(half, loop) ? 0 : 1;
        if (open > 2)
            return i;
    }
    return 0;
}

// --- Result ---

DM_SURF LoopDivider::Record(int loop) const {
    Loop const &source = m_loops[Index(loop)];
    std::size_t count = 0;
    int half = source.start;
    do {
        ++count;
        half = At(half).next;
    } while (half != source.start);

    DM_SURF surf;
    surf.Vtex.Reserve(count + 1);
    surf.Curv.Reserve(count);
    surf.CurvDir.Reserve(source.hasDirections ? count : 0);
    do {
        surf.Vtex.PushBack(m_graph.Origin(half));
        surf.Curv.PushBack(m_graph.Edge(half));
        if (source.hasDirections)
            surf.CurvDir.PushBack(m_graph.Side(half));
        half = At(half).next;
    } while (half != source.start);
    surf.Vtex.PushBack(m_graph.Origin(half));
    for (int hole = source.firstHole; hole >= 0; hole = m_holes[Index(hole)].next)
        surf.Holes.PushBack(m_holes[Index(hole)].lists);
    return surf;
}

/// Makes room for the next loop.
void LoopDivider::Forget() {
    for (int const half : m_touched)
        At(half).loop = -1;
    for (Hole const &hole : m_holes) {
        for (int const edge : hole.lists.Curv)
            m_holeOfEdge[Index(edge)] = -1;
    }
    m_touched.clear();
    m_holes.clear();
    m_loops.clear();
    m_cornerOn.clear();
}

} // namespace zvi::lib::detail

#include "zvi/drawing/FitEdgesDetail.h"

#include "zvi/base/Buckets.h"

#include <algorithm>
#include <span>
#include <tuple>

namespace zvi::lib::drawing {

namespace {

bool IsLeft(MapEdge const &e) {
    return e.state == EdgeState::kInMap || e.state == EdgeState::kSetAside;
}

/// Of each place how many edges end there, or did so: which of two that lie on one another is left does not count, and
/// neither does what is no longer than nothing. It is asked for only where places have become one.
std::vector<int> CountEnds(PlanarMap const &map, double same) {
    std::vector<int> counts(Index(map.Places().Count()), 0);
    if (map.Places().AreAllAlone())
        return counts;
    for (int e = 0; e < map.EdgeCount(); ++e)
        if (Stretch const &s = map.Edge(e).stretch; !s.IsConnector() && LengthOf(s) >= same)
            for (int const place : {map.Edge(e).startPlace, map.Edge(e).endPlace})
                ++counts[Index(place)];
    return counts;
}

/// A place of a cluster, with the others of it that are the same place but for nothing.
struct Member {
    DrawingPoint at;
    int ends = 0;      ///< of edges, at this place
    int endsInAll = 0; ///< and at all that are the same place
    int copies = 0;    ///< how many these are
};

std::vector<Member> MembersOf(PlaceClusters const &places, int root, std::vector<int> const &counts, double same) {
    std::vector<Member> members;
    places.ForEachMember(root, [&](int p) { members.push_back({places.Position(p), counts[Index(p)]}); });
    std::sort(members.begin(), members.end(), [](Member const &a, Member const &b) { return ComesFirst(a.at, b.at); });
    for (std::size_t i = 0; i < members.size(); ++i)
        for (std::size_t j = i; j < members.size() && members[j].at.x - members[i].at.x < same; ++j)
            if (Distance(members[i].at, members[j].at) < same) {
                members[i].endsInAll += members[j].ends;
                ++members[i].copies;
                if (i == j)
                    continue;
                members[j].endsInAll += members[i].ends;
                ++members[j].copies;
            }
    return members;
}

/// The middle of a cluster, in which what is the same place but for nothing counts once: whether rounding tells such
/// places apart does not matter.
DrawingPoint MiddleOf(std::vector<Member> const &members) {
    DrawingPoint sum;
    double weights = 0.0;
    for (Member const &member : members) {
        double const weight = 1.0 / member.copies;
        sum = sum + member.at * weight;
        weights += weight;
    }
    return sum * (1.0 / weights);
}

/// Keeps those of `members` whose key is less than the least one by more than `same`.
template <typename Key>
void KeepLeast(std::vector<Member> &members, double same, Key key) {
    double least = HUGE_VAL;
    for (Member const &member : members)
        least = std::min(least, key(member));
    std::erase_if(members, [&](Member const &member) { return key(member) > least + same; });
}

/// The place of a cluster at which most edges end, of such the one nearest to the middle, of those the one that the
/// landmarks rank lowest.
DrawingPoint BestPlace(PlaceClusters const &places, int root, std::vector<int> const &counts, double same,
                       Landmarks const &landmarks) {
    if (places.IsAlone(root))
        return places.Position(root);
    std::vector<Member> members = MembersOf(places, root, counts, same);
    DrawingPoint const middle = MiddleOf(members);
    KeepLeast(members, 0.0, [](Member const &member) { return static_cast<double>(-member.endsInAll); });
    KeepLeast(members, same, [&](Member const &member) { return Distance(member.at, middle); });
    KeepLeast(members, same, [&](Member const &member) { return landmarks.Rank(member.at); });
    return members.front().at;
}

/// Of each place that stands for a cluster, where that is put.
std::vector<DrawingPoint> ClusterPositions(PlanarMap const &map, double same, Landmarks const &landmarks,
                                           base::Workers const &workers) {
    PlaceClusters const &places = map.Places();
    std::vector<int> const counts = CountEnds(map, same);
    std::vector<DrawingPoint> positions(Index(places.Count()));
    workers.ForEach(positions.size(), [&](std::size_t i) {
        if (int const root = static_cast<int>(i); places.Root(root) == root)
            positions[i] = BestPlace(places, root, counts, same, landmarks);
    });
    return positions;
}

/// Cuts an edge in its middle and fits both halves.
void FitHalved(PlanarMap &map, int edge, std::vector<DrawingPoint> &positions, double same) {
    DrawingPoint const start = positions[Index(map.Origin(HalfEdge::Along(edge)))];
    DrawingPoint const end = positions[Index(map.Target(HalfEdge::Along(edge)))];
    int const second = map.Split(edge, 0.5);
    DrawingPoint const middle = map.Edge(second).stretch.start;
    positions.push_back(middle);
    FitToEnds(map.StretchOf(edge), start, middle, same);
    FitToEnds(map.StretchOf(second), middle, end, same);
}

} // namespace

std::vector<DrawingPoint> FitEdges(PlanarMap &map, double same, Landmarks const &landmarks,
                                   base::Workers const &workers) {
    map.SettlePlaces();
    std::vector<DrawingPoint> positions = ClusterPositions(map, same, landmarks, workers);
    std::vector<int> const halved =
        workers.Collect<int>(Index(map.EdgeCount()), [&](std::size_t i, std::vector<int> &better) {
            int const e = static_cast<int>(i);
            if (!IsLeft(map.Edge(e)))
                return;
            DrawingPoint const start = positions[Index(map.Origin(HalfEdge::Along(e)))];
            DrawingPoint const end = positions[Index(map.Target(HalfEdge::Along(e)))];
            if (IsBetterHalved(map.Edge(e).stretch, start, end, same))
                better.push_back(e);
            else
                FitToEnds(map.StretchOf(e), start, end, same);
        });
    for (int const e : halved)
        FitHalved(map, e, positions, same);
    return positions;
}

CurveEdges EdgesAlongCurves(PlanarMap const &map, std::size_t curveCount, base::Workers const &workers) {
    CurveEdges along;
    along.edges.resize(Index(map.EdgeCount()));
    along.begins.assign(curveCount + 2, 0);
    std::vector<int> curves(along.edges.size());
    workers.ForEach(curves.size(), [&](std::size_t e) { curves[e] = map.Edge(static_cast<int>(e)).stretch.curve; });
    // Connectors behind all curves, and off.
    base::SortIntoBuckets(
        curves.size(), std::span(along.begins),
        [&](std::size_t e) { return curves[e] == kNoCurve ? curveCount : Index(curves[e]); },
        [&](std::size_t place, std::size_t e) { along.edges[place] = static_cast<int>(e); });
    along.begins.pop_back();
    along.edges.resize(Index(along.begins.back()));
    workers.ForEach(curveCount, [&](std::size_t c) {
        std::sort(along.edges.begin() + along.begins[c], along.edges.begin() + along.begins[c + 1], [&](int a, int b) {
            Stretch const &s = map.Edge(a).stretch, &t = map.Edge(b).stretch;
            return std::tie(s.from, s.to) < std::tie(t.from, t.to);
        });
    });
    return along;
}

void AbsorbContracted(PlanarMap &map, CurveEdges const &alongCurves, std::vector<Stretch> &vanished) {
    std::size_t const curveCount = map.HasEdges(EdgeState::kContracted) ? alongCurves.CurveCount() : 0;
    for (std::size_t curve = 0; curve < curveCount; ++curve) {
        std::span const edges = alongCurves.Of(curve);
        int kept = -1;
        for (int const e : edges) {
            // What is contracted at the beginning keeps its place in the order of the edges, too.
            if (kept < 0)
                map.StretchOf(e).from = map.Edge(edges.front()).stretch.from;
            if (map.Edge(e).state != EdgeState::kContracted)
                kept = e;
            else if (kept >= 0)
                map.StretchOf(kept).to = map.Edge(e).stretch.to;
        }
        if (kept < 0 && !edges.empty()) {
            vanished.push_back(map.Edge(edges.front()).stretch);
            vanished.back().to = map.Edge(edges.back()).stretch.to;
            vanished.back().end = map.Edge(edges.back()).stretch.end;
        }
    }
    std::sort(vanished.begin(), vanished.end(), [](Stretch const &a, Stretch const &b) { return a.curve < b.curve; });
}

} // namespace zvi::lib::drawing

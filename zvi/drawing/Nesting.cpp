#include "zvi/drawing/NestingDetail.h"

#include "zvi/drawing/RunsDetail.h"
#include "zvi/drawing/StretchIndexDetail.h"

#include <algorithm>
#include <array>
#include <tuple>

namespace zvi::lib::drawing {

namespace {

/// A drawing as it lies along and across the direction that moves with it, so that what stands in what does not change
/// with how that is turned, and hardly anything stands straight above anything else.
class TurnedView {
public:
    explicit TurnedView(Landmarks const &landmarks) : m_middle(landmarks.middle) {
        if (double const length = Length(landmarks.direction); length > 0.0)
            m_along = landmarks.direction * (1.0 / length);
    }

    Stretch Turned(Stretch s) const {
        for (DrawingPoint *const p : {&s.start, &s.end, &s.center}) {
            DrawingPoint const q = *p - m_middle;
            *p = {Dot(m_along, q), Cross(m_along, q)};
        }
        return s;
    }
    /// A point of the view as it lies in the drawing.
    DrawingPoint TurnedBack(DrawingPoint p) const { return m_middle + m_along * p.x + Left(m_along) * p.y; }
    /// The direction to the left of the view.
    DrawingPoint Leftwards() const { return m_along * -1.0; }

private:
    DrawingPoint m_middle;
    DrawingPoint m_along{1.0, 0.0};
};

/// An edge that is seen, and where.
struct Sight {
    int edge = -1; ///< as numbered among those in the map
    Run run;
    double x = -HUGE_VAL;
    int order = 0;     ///< of its stretch; it settles in which order ties are looked at
    double from = 0.0; ///< of its stretch likewise
};

/// What rises and falls of an edge, once it has been asked for.
struct Runs {
    std::array<Run, 3> runs;
    int count = 0;
};

/// What is seen farther behind the nearest than so many snap distances has no part in ties with it.
constexpr double kTies = 16.0;

/// Finds what the parts see to their left.
class LeftView {
public:
    LeftView(PlanarMap const &map, FaceWalks const &walks, double snap, Landmarks const &landmarks)
        : m_map(map), m_walks(walks), m_snap(snap), m_view(landmarks) {}

    /// For each part, by its outside, the walk that its leftmost point sees, -1 for none; `order` gets the outsides
    /// from left to right.
    std::vector<int> SeenWalks(std::vector<int> &order) {
        for (int w = 0; w < static_cast<int>(m_walks.walks.size()); ++w)
            if (m_walks.walks[Index(w)].isOutside)
                order.push_back(w);
        std::vector<int> seen(m_walks.walks.size(), -1);
        if (order.size() < 2)
            return seen;
        m_parts = PartsOf();
        FindLeftmost();
        std::sort(order.begin(), order.end(),
                  [this](int a, int b) { return ComesFirst(m_leftmost[Index(a)], m_leftmost[Index(b)]); });
        StretchIndex const index = MakeIndex();
        m_runs.resize(m_stretches.size());
        for (int const outside : order)
            seen[Index(outside)] = WalkLeftOf(index, outside);
        return seen;
    }

private:
    /// Of each walk the outside of its part.
    std::vector<int> PartsOf() const {
        std::vector<int> parts(m_walks.walks.size(), -1);
        std::vector<int> pending;
        for (int w = 0; w < static_cast<int>(parts.size()); ++w) {
            if (!m_walks.walks[Index(w)].isOutside)
                continue;
            parts[Index(w)] = w;
            pending.push_back(w);
            while (!pending.empty()) {
                HalfEdge const first = m_walks.walks[Index(pending.back())].first;
                pending.pop_back();
                HalfEdge h = first;
                do {
                    int const other = m_walks.Of(h.Twin());
                    if (parts[Index(other)] < 0) {
                        parts[Index(other)] = w;
                        pending.push_back(other);
                    }
                    h = m_map.Next(h);
                } while (!(h == first));
            }
        }
        return parts;
    }

    int PartOf(int edge) const { return m_parts[Index(m_walks.Of(HalfEdge::Along(edge)))]; }

    void FindLeftmost() {
        m_leftmost.assign(m_walks.walks.size(), {HUGE_VAL, HUGE_VAL});
        for (int e = 0; e < m_map.EdgeCount(); ++e) {
            if (!m_map.IsInMap(e))
                continue;
            Stretch const s = m_view.Turned(m_map.Edge(e).stretch);
            Box const box = BoxOf(s);
            m_edges.push_back(e);
            m_stretches.push_back(s);
            double const y = s.start.x == box.minX ? s.start.y : s.end.x == box.minX ? s.end.y : s.center.y;
            DrawingPoint &leftmost = m_leftmost[Index(PartOf(e))];
            if (ComesFirst({box.minX, y}, leftmost))
                leftmost = {box.minX, y};
        }
    }

    /// The index of the edges as they lie in the drawing, where boxes are often as thin as the lines that they hold. If
    /// they crowd there, as those of circles do, it is that of the edges in the view, where the boxes that a look to
    /// the left meets first are the thin ones.
    StretchIndex MakeIndex() {
        std::vector<Stretch const *> stretches;
        stretches.reserve(m_edges.size());
        for (int const e : m_edges)
            stretches.push_back(&m_map.Edge(e).stretch);
        StretchIndex index = StretchIndex::OfWholes(stretches, m_snap);
        m_isIndexTurned = index.DoBoxesCrowd();
        if (!m_isIndexTurned)
            return index;
        for (std::size_t i = 0; i < stretches.size(); ++i)
            stretches[i] = &m_stretches[i];
        return StretchIndex(stretches, m_snap);
    }

    /// The walk on the near side of the curve next to the left of the part's leftmost point.
    int WalkLeftOf(StretchIndex const &index, int part) {
        DrawingPoint const p = m_leftmost[Index(part)];
        double const behind = kTies * m_snap;
        double farthest = -HUGE_VAL; // what is of interest so far
        m_sights.clear();
        DrawingPoint const from = m_isIndexTurned ? p : m_view.TurnedBack(p);
        index.LookAlong(from, m_isIndexTurned ? DrawingPoint{-1.0, 0.0} : m_view.Leftwards(), [&](int i) {
            if (PartOf(m_edges[Index(i)]) != part)
                farthest = std::max(farthest, AddSights(i, p, farthest) - behind);
            return p.x - farthest + m_snap;
        });
        std::erase_if(m_sights, [&](Sight const &sight) { return sight.x < farthest; });
        std::stable_sort(m_sights.begin(), m_sights.end(), [](Sight const &a, Sight const &b) {
            return std::tie(a.order, a.from) < std::tie(b.order, b.from);
        });
        Sight nearest;
        for (Sight const &sight : m_sights)
            if (bool const isTie = nearest.edge >= 0 && std::fabs(sight.x - nearest.x) <= m_snap;
                isTie ? IsRightOf(sight, nearest) : sight.x > nearest.x)
                nearest = sight;
        return nearest.edge < 0 ? -1
                                : m_walks.Of(nearest.run.upward ? HalfEdge::Against(m_edges[Index(nearest.edge)])
                                                                : HalfEdge::Along(m_edges[Index(nearest.edge)]));
    }

    /// Notes where an edge passes the height of `p` on its left, from `farthest` on. Returns the nearest of that.
    double AddSights(int i, DrawingPoint p, double farthest) {
        Stretch const &s = m_stretches[Index(i)];
        Runs &of = m_runs[Index(i)];
        if (of.count == 0)
            of.count = RunsOf(s, m_snap, of.runs);
        double nearest = -HUGE_VAL;
        for (int k = 0; k < of.count; ++k) {
            Run const &run = of.runs[Index(k)];
            if (!(run.lowY <= p.y) || !(p.y < run.highY))
                continue;
            double const x = XAt(s, run, p.y);
            if (x > p.x || x < farthest)
                continue;
            m_sights.push_back({i, run, x, s.order, s.from});
            nearest = std::max(nearest, x);
        }
        return nearest;
    }

    /// Whether what passes the height at the same place as the nearest one so far is further right than that where the
    /// two part: above, where they have a place in common below, or else below.
    bool IsRightOf(Sight const &sight, Sight const &nearest) const {
        Stretch const &s = m_stretches[Index(sight.edge)], &other = m_stretches[Index(nearest.edge)];
        double const top = std::min(sight.run.highY, nearest.run.highY);
        double const bottom = std::max(sight.run.lowY, nearest.run.lowY);
        for (double const y : {top, bottom, 0.5 * (top + bottom)})
            if (double const ahead = XAt(s, sight.run, y) - XAt(other, nearest.run, y); std::fabs(ahead) > m_snap)
                return ahead > 0.0;
        return false;
    }

    PlanarMap const &m_map;
    FaceWalks const &m_walks;
    double m_snap;
    TurnedView m_view;
    std::vector<int> m_parts;
    std::vector<int> m_edges;             ///< those in the map
    std::vector<Stretch> m_stretches;     ///< theirs, turned
    std::vector<Runs> m_runs;             ///< likewise
    std::vector<DrawingPoint> m_leftmost; ///< of each part, at its outside
    bool m_isIndexTurned = false;
    std::vector<Sight> m_sights; ///< of the part looked at last
};

} // namespace

std::vector<int> NestOutsides(PlanarMap const &map, FaceWalks const &walks, double snap, Landmarks const &landmarks) {
    std::vector<int> order;
    std::vector<int> const seen = LeftView(map, walks, snap, landmarks).SeenWalks(order);
    std::vector<int> parents(walks.walks.size(), -1);
    for (int const outside : order) {
        int const around = seen[Index(outside)];
        if (around >= 0)
            parents[Index(outside)] = walks.walks[Index(around)].isOutside ? parents[Index(around)] : around;
    }
    return parents;
}

} // namespace zvi::lib::drawing

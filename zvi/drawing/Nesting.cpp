#include "zvi/drawing/NestingDetail.h"

#include "zvi/drawing/LeftIndexDetail.h"
#include "zvi/drawing/RunsDetail.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>

namespace zvi::lib::drawing {

namespace {

/// A point that stands that many times as far from others as another one stands clearly clearer.
constexpr double kClearer = 2.0;

/// A look to the left takes as long as so many small things.
constexpr std::size_t kThingsOfLook = 8;

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
};

/// What rises and falls of an edge, once it has been asked for.
struct Runs {
    std::array<Run, 3> runs;
    int count = 0;
};

/// Finds what the parts see to their left.
class LeftView {
public:
    LeftView(PlanarMap const &map, FaceWalks const &walks, double snap, double same, double moved,
             Landmarks const &landmarks, base::Workers const &workers)
        : m_workers(workers), m_map(map), m_walks(walks), m_snap(snap), m_same(same), m_moved(moved),
          m_view(landmarks) {}

    /// For each part, by its outside, the walk that its leftmost point lies in, -1 for none; `order` gets the outsides
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
        m_index.emplace(MakeIndex());
        std::size_t const parts = m_workers.PartsOf(kThingsOfLook * order.size());
        m_workers.Do(parts, [&](std::size_t part) {
            Glance glance = NewGlance();
            for (std::size_t i = part * order.size() / parts; i < (part + 1) * order.size() / parts; ++i)
                seen[Index(order[i])] = WalkLeftOf(order[i], glance);
        });
        return seen;
    }

    /// The least of the bounded faces that a part stands in, from all that passes on its left.
    int WalkAround(int part) const {
        Glance glance = NewGlance();
        return LeastWalkAround(PointOf(part, glance), part, glance);
    }

private:
    /// What is seen from a part, and what is known of the edges by then; one for each thread.
    struct Glance {
        std::vector<Sight> sights;
        std::vector<Runs> runs; ///< of each edge
        std::vector<int> near;
        StretchIndex::Search search;
    };

    Glance NewGlance() const { return {{}, std::vector<Runs>(m_stretches.size()), {}, {}}; }

    /// Of each walk the outside of its part.
    std::vector<int> PartsOf() const {
        std::vector<int> const &firstOf = m_walks.numbers->partOf;
        std::vector<int> outsides(firstOf.size(), -1), parts(firstOf.size());
        for (std::size_t w = 0; w < firstOf.size(); ++w)
            if (m_walks.walks[w].isOutside)
                outsides[Index(firstOf[w])] = static_cast<int>(w);
        std::transform(firstOf.begin(), firstOf.end(), parts.begin(),
                       [&](int first) { return outsides[Index(first)]; });
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
    /// they crowd there, as those of circles do, parts of the edges in the view are looked at instead.
    StretchIndex MakeIndex() {
        std::vector<Stretch const *> stretches;
        stretches.reserve(m_edges.size());
        for (int const e : m_edges)
            stretches.push_back(&m_map.Edge(e).stretch);
        StretchIndex index = StretchIndex::OfWholes(stretches, m_snap, m_workers);
        if (index.DoBoxesCrowd())
            m_parted.emplace(m_stretches, index.PartsOfMean(), m_snap, m_workers);
        return index;
    }

    /// Calls `look(stretch)` for what may pass on the left of a point of the view, until that is too far away.
    template <typename Look>
    void LookLeft(DrawingPoint p, Look look) const {
        if (m_parted)
            m_parted->LookLeft(p, look);
        else
            m_index->LookAlong(m_view.TurnedBack(p), m_view.Leftwards(), look);
    }

    /// Notes what may come nearer to a point of the view than `m_moved`; some may come several times.
    void FindNear(DrawingPoint p, Glance &glance) const {
        DrawingPoint const at = m_parted ? p : m_view.TurnedBack(p);
        Box const box = Grown({at.x, at.y, at.x, at.y}, m_moved);
        if (m_parted)
            m_parted->Find(box, glance.near);
        else
            m_index->Find(box, glance.near, glance.search);
    }

    /// How far the edges of other parts keep from a point of the view, as far as `m_moved`.
    double ClearanceOf(DrawingPoint p, int part, Glance &glance) const {
        FindNear(p, glance);
        double clearance = m_moved;
        for (int const i : glance.near) {
            Stretch const &s = m_stretches[Index(i)];
            bool const isFar = s.isArc && std::fabs(OutOfCircle(s, p)) >= clearance;
            if (!isFar && PartOf(m_edges[Index(i)]) != part)
                clearance = std::min(clearance, DistanceTo(s, p));
        }
        return clearance;
    }

    /// The point of a part that is looked from: its leftmost one, or, if places have moved and that has come to lie on
    /// another part, of its last one from the left, the middle of its longest edge, and its lowest and highest ones the
    /// first that none stands clearly clearer than.
    DrawingPoint PointOf(int part, Glance &glance) const {
        DrawingPoint const leftmost = m_leftmost[Index(part)];
        if (m_map.Places().AreAllAlone() || ClearanceOf(leftmost, part, glance) >= m_same)
            return leftmost;
        DrawingPoint rightmost = leftmost, lowest = leftmost, highest = leftmost, middle = leftmost;
        double longest = 0.0;
        for (HalfEdge const h : WalkFrom(m_map, m_walks.walks[Index(part)].first)) {
            Stretch const s = m_view.Turned(m_map.Edge(h).stretch);
            rightmost = std::max(rightmost, s.start, ComesFirst);
            lowest = s.start.y < lowest.y ? s.start : lowest;
            highest = s.start.y > highest.y ? s.start : highest;
            if (LengthOf(s) > longest) {
                longest = LengthOf(s);
                middle = PointAt(s, 0.5);
            }
        }
        DrawingPoint clearest = leftmost;
        double most = 0.0;
        for (DrawingPoint const p : {rightmost, middle, lowest, highest})
            if (double const clearance = ClearanceOf(p, part, glance); clearance > kClearer * most) {
                most = clearance;
                clearest = p;
            }
        return clearest;
    }

    /// The walk on the near side of the curve next to the left of the part.
    int WalkLeftOf(int part, Glance &glance) const {
        DrawingPoint const p = PointOf(part, glance);
        double farthest = -HUGE_VAL; // what is of interest so far
        glance.sights.clear();
        LookLeft(p, [&](int i) {
            if (PartOf(m_edges[Index(i)]) != part)
                farthest = std::max(farthest, AddSights(i, p, farthest, glance) - m_moved);
            return p.x - farthest + m_snap;
        });
        std::erase_if(glance.sights, [&](Sight const &sight) { return sight.x < farthest; });
        if (glance.sights.empty())
            return -1;
        // A stretch that was met several times is one border.
        Sight const &first = glance.sights.front();
        bool const isAlone = std::all_of(glance.sights.begin(), glance.sights.end(), [&first](Sight const &sight) {
            return sight.edge == first.edge && sight.x == first.x;
        });
        return isAlone ? RightOf(first) : LeastWalkAround(p, part, glance);
    }

    /// The least of the bounded faces that a point of a part lies in: those whose borders, all that pass on its
    /// left, lead into them once more than out of them. Which of the borders that have come near one another, or have
    /// changed places, stands before the other does not count.
    int LeastWalkAround(DrawingPoint p, int part, Glance &glance) const {
        std::vector<int> edges;
        LookLeft(p, [&](int i) {
            if (PartOf(m_edges[Index(i)]) != part)
                edges.push_back(i);
            return HUGE_VAL;
        });
        std::sort(edges.begin(), edges.end());
        edges.erase(std::unique(edges.begin(), edges.end()), edges.end());
        glance.sights.clear();
        for (int const i : edges)
            AddSights(i, p, -HUGE_VAL, glance);
        std::map<int, int> entered;
        for (Sight const &sight : glance.sights) {
            ++entered[RightOf(sight)];
            --entered[LeftOf(sight)];
        }
        int least = -1;
        for (auto const &[walk, count] : entered)
            if (FaceWalk const &face = m_walks.walks[Index(walk)];
                count > 0 && !face.isOutside && (least < 0 || face.area < m_walks.walks[Index(least)].area))
                least = walk;
        return least;
    }

    int RightOf(Sight const &sight) const {
        HalfEdge const along = HalfEdge::Along(m_edges[Index(sight.edge)]);
        return m_walks.Of(sight.run.upward ? along.Twin() : along);
    }
    int LeftOf(Sight const &sight) const {
        HalfEdge const along = HalfEdge::Along(m_edges[Index(sight.edge)]);
        return m_walks.Of(sight.run.upward ? along : along.Twin());
    }

    /// Notes where an edge passes the height of `p` on its left, from `farthest` on. Returns the nearest of that.
    double AddSights(int i, DrawingPoint p, double farthest, Glance &glance) const {
        Stretch const &s = m_stretches[Index(i)];
        Runs &of = glance.runs[Index(i)];
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
            glance.sights.push_back({i, run, x});
            nearest = std::max(nearest, x);
        }
        return nearest;
    }

    base::Workers m_workers;
    PlanarMap const &m_map;
    FaceWalks const &m_walks;
    double m_snap;
    double m_same; ///< a distance that is nothing
    double m_moved;
    TurnedView m_view;
    std::vector<int> m_parts;
    std::vector<int> m_edges;             ///< those in the map
    std::vector<Stretch> m_stretches;     ///< theirs, turned
    std::vector<DrawingPoint> m_leftmost; ///< of each part, at its outside
    std::optional<StretchIndex> m_index;
    std::optional<LeftIndex> m_parted; ///< where the boxes of the edges crowd
};

} // namespace

std::vector<int> NestOutsides(PlanarMap const &map, FaceWalks const &walks, double snap, double same, double moved,
                              Landmarks const &landmarks, base::Workers const &workers) {
    std::vector<int> order;
    LeftView view(map, walks, snap, same, moved, landmarks, workers);
    std::vector<int> const seen = view.SeenWalks(order);
    std::vector<int> parents(walks.walks.size(), -1);
    std::vector<bool> isSettled(walks.walks.size(), false), isPending = isSettled;
    std::vector<int> pending; // each sees the outside of the next one
    for (int const outside : order) {
        int part = outside, around = -1;
        while (!isSettled[Index(part)] && !isPending[Index(part)]) {
            isPending[Index(part)] = true;
            pending.push_back(part);
            around = seen[Index(part)];
            if (around < 0 || !walks.walks[Index(around)].isOutside)
                break;
            part = around;
        }
        if (isSettled[Index(part)])
            around = parents[Index(part)];
        else if (part == around)
            around = view.WalkAround(part); // parts that see one another stand in the same face
        for (; !pending.empty(); pending.pop_back()) {
            parents[Index(pending.back())] = around;
            isSettled[Index(pending.back())] = true;
        }
    }
    return parents;
}

} // namespace zvi::lib::drawing

#include "zvi/drawing/RotationDetail.h"

#include "zvi/base/Buckets.h"
#include "zvi/math/elementary/Elementary.h"

#include <algorithm>
#include <cassert>
#include <span>
#include <utility>

namespace zvi::lib::drawing {

namespace {

/// Half-edges whose sideways distance is below this many snap distances, where the nearest of their place ends, are
/// compared with one another by pairs.
constexpr double kNearby = 4.0;

/// Those farther apart than this angle are not, however near something ends: they would go round the place in a circle.
constexpr double kFarApart = 0.5 * kPi;

/// Lines leave in clearly different directions when their angles differ by more than what makes them comparable by
/// pairs, and by this for rounding.
constexpr double kClearly = 1e-9;

/// The angle that differs from `angle` by whole turns and lies nearest to 0.
double Wrapped(double angle) {
    return angle - kTwoPi * std::round(angle / kTwoPi);
}

/// How a half-edge leaves its place.
struct EdgeEnd {
    HalfEdge half;
    int origin = 0;
    int target = 0;
    double chordAngle = 0.0; ///< towards where it ends; of a full turn, its tangent
    double halfSweep = 0.0;  ///< half the angle that it turns through
    double radius = 0.0;     ///< 0 for a line
    double reach = 0.0;      ///< distance from the place up to which it only leads away, at most to its end

    double Tangent() const { return IsLoop() ? chordAngle : chordAngle - halfSweep; }
    bool IsLoop() const { return origin == target; }

    /// Direction of the point at which it is `distance` away from the place; at most `reach`.
    double AngleAt(double distance) const {
        assert(distance <= reach);
        if (radius == 0.0 || (distance == reach && std::fabs(halfSweep) <= 0.5 * kPi))
            return chordAngle;
        return Tangent() + std::copysign(Asin(std::min(1.0, 0.5 * distance / radius)), halfSweep);
    }
};

EdgeEnd EdgeEndOf(PlanarMap const &map, HalfEdge h) {
    MapEdge const &e = map.Edge(h);
    EdgeEnd edgeEnd{h, h.IsReversed() ? e.endPlace : e.startPlace, h.IsReversed() ? e.startPlace : e.endPlace};
    DrawingPoint const from = map.Places().Position(edgeEnd.origin), to = map.Places().Position(edgeEnd.target);
    DrawingPoint chord = to - from;
    edgeEnd.reach = Length(chord);
    if (e.stretch.isArc) {
        edgeEnd.radius = e.stretch.radius;
        edgeEnd.halfSweep = h.IsReversed() ? -0.5 * e.stretch.sweep : 0.5 * e.stretch.sweep;
        if (edgeEnd.IsLoop())
            chord = Left(from - e.stretch.center) * std::copysign(1.0, edgeEnd.halfSweep);
        if (std::fabs(edgeEnd.halfSweep) > 0.5 * kPi)
            edgeEnd.reach = edgeEnd.radius;
    }
    edgeEnd.chordAngle = Atan2(chord.y, chord.x);
    return edgeEnd;
}

/// Whether `a` comes before `b`, counter-clockwise, where both leave in nearly the same direction.
bool IsBefore(EdgeEnd const &a, EdgeEnd const &b) {
    // Between the same two places: by how they bulge, and equal ones by their numbers, the other way at the other end.
    if (a.target == b.target && !a.IsLoop() && a.halfSweep != b.halfSweep)
        return a.halfSweep > b.halfSweep;
    double const distance = std::min(a.reach, b.reach);
    double const angle = Wrapped(b.AngleAt(distance) - a.AngleAt(distance));
    if (a.target != b.target || (a.IsLoop() && angle != 0.0))
        return angle > 0.0;
    bool const isFarEnd = a.IsLoop() ? a.half.IsReversed() : a.origin > a.target;
    return (a.half.Edge() < b.half.Edge()) != isFarEnd;
}

/// Orders the ends of edges at one place, of which there are some.
class EdgeEndOrder {
public:
    explicit EdgeEndOrder(double snap) : m_snap(snap) {}

    void Sort(std::vector<EdgeEnd> &ends) {
        assert(!ends.empty());
        double distance = HUGE_VAL;
        for (EdgeEnd const &edgeEnd : ends)
            distance = std::min(distance, edgeEnd.reach);
        m_keyed.clear();
        for (EdgeEnd const &edgeEnd : ends)
            m_keyed.push_back({Wrapped(edgeEnd.AngleAt(distance)), edgeEnd});
        std::sort(m_keyed.begin(), m_keyed.end(), [](Keyed const &a, Keyed const &b) { return a.angle < b.angle; });
        if (distance > 0.0)
            SortRuns(std::min(kNearby * m_snap / distance, kFarApart));
        for (std::size_t i = 0; i < ends.size(); ++i)
            ends[i] = m_keyed[i].end;
    }

private:
    struct Keyed {
        double angle;
        EdgeEnd end;
    };

    /// Sorts each run of ends whose angles follow one another nearer than `near`, from the widest gap on.
    void SortRuns(double near) {
        std::size_t const count = m_keyed.size();
        std::size_t widest = 0;
        double width = m_keyed[0].angle + kTwoPi - m_keyed[count - 1].angle;
        for (std::size_t i = 1; i < count; ++i)
            if (double const gap = m_keyed[i].angle - m_keyed[i - 1].angle; gap > width) {
                width = gap;
                widest = i;
            }
        auto const begin = m_keyed.begin();
        std::rotate(begin, begin + static_cast<std::ptrdiff_t>(widest), m_keyed.end());
        for (std::size_t i = 0, j = 0; i < count; i = j) {
            for (j = i + 1; j < count && std::fabs(Wrapped(m_keyed[j].angle - m_keyed[j - 1].angle)) < near; ++j)
                for (std::size_t k = j; k > i && IsBefore(m_keyed[k].end, m_keyed[k - 1].end); --k)
                    std::swap(m_keyed[k], m_keyed[k - 1]);
        }
    }

    double m_snap;
    std::vector<Keyed> m_keyed;
};

/// Where a direction lies along a square on its corner, from -2 to 2: that grows with the angle, and by no more than
/// the angle does.
double AlongSquare(DrawingPoint direction) {
    double const y = direction.y / (std::fabs(direction.x) + std::fabs(direction.y));
    return direction.x >= 0.0 ? y : std::copysign(2.0, y) - y;
}

/// Orders lines that leave one place in clearly different directions, which takes no angles.
class ClearLines {
public:
    ClearLines(PlanarMap const &map, double snap) : m_map(map), m_snap(snap) {}

    /// False, with nothing done, when there is anything else among them.
    bool Sort(std::span<HalfEdge> leaving) {
        double shortest = HUGE_VAL;
        m_lines.clear();
        for (HalfEdge const h : leaving) {
            if (m_map.WasArc(h.Edge()))
                return false;
            MapEdge const e = m_map.Edge(h);
            DrawingPoint const along = m_map.Places().Position(e.endPlace) - m_map.Places().Position(e.startPlace);
            shortest = std::min(shortest, Dot(along, along));
            if (!(shortest > 0.0))
                return false;
            m_lines.push_back({AlongSquare(h.IsReversed() ? along * -1.0 : along), h});
        }
        std::sort(m_lines.begin(), m_lines.end(), [](Line const &a, Line const &b) { return a.at < b.at; });
        double const least = kNearby * m_snap / std::sqrt(shortest) + kClearly;
        double before = m_lines.back().at - 4.0; // once round
        for (Line const &line : m_lines)
            if (!(line.at - std::exchange(before, line.at) > least))
                return false;
        std::transform(m_lines.begin(), m_lines.end(), leaving.begin(), [](Line const &line) { return line.half; });
        return true;
    }

private:
    struct Line {
        double at; ///< along the square
        HalfEdge half;
    };

    PlanarMap const &m_map;
    double m_snap;
    std::vector<Line> m_lines;
};

/// Orders the half-edges of one place after the other.
class PlaceTurner {
public:
    PlaceTurner(PlanarMap &map, double snap) : m_map(map), m_lines(map, snap), m_order(snap) {}

    void Order(std::span<HalfEdge> leaving) {
        if (leaving.size() > 2 && !m_lines.Sort(leaving)) {
            m_ends.clear();
            for (HalfEdge const h : leaving)
                m_ends.push_back(EdgeEndOf(m_map, h));
            m_order.Sort(m_ends);
            for (std::size_t i = 0; i < leaving.size(); ++i)
                leaving[i] = m_ends[i].half;
        }
        m_map.SetOrder(leaving);
    }

private:
    PlanarMap &m_map;
    ClearLines m_lines;
    EdgeEndOrder m_order;
    std::vector<EdgeEnd> m_ends;
};

} // namespace

void OrderRoundPlaces(PlanarMap &map, double snap, base::Workers const &workers) {
    std::size_t const halfCount = 2 * Index(map.EdgeCount());
    std::vector<int> begins(Index(map.Places().Count()) + 1, 0);
    std::vector<HalfEdge> halves(halfCount);
    auto const halfOf = [](std::size_t i) { return HalfEdge{static_cast<int>(i)}; };
    base::SortIntoBuckets(
        halfCount, std::span(begins), [&](std::size_t i) { return map.Origin(halfOf(i)); },
        [&](std::size_t place, std::size_t i) { halves[place] = halfOf(i); });
    workers.ForEachPart(begins.size() - 1, [&](std::size_t, std::size_t first, std::size_t last) {
        PlaceTurner turner(map, snap);
        for (std::size_t p = first; p < last; ++p)
            turner.Order({halves.begin() + begins[p], halves.begin() + begins[p + 1]});
    });
}

} // namespace zvi::lib::drawing

#include "tests/drawing/DrawingInvariants.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <sstream>

namespace zvi::lib::test {

namespace {

/// Fractions of one curve closer than this are one.
constexpr double kSameFraction = 1e-9;
/// Areas of the pieces and of the domain agree to this share.
constexpr double kSameArea = 1e-9;
/// Coordinates agree to this share of the drawing.
constexpr double kRounding = 1e-13;
/// Ends of pieces stand within this share of the drawing from their curves: 256 snap distances, for far from the origin
/// drawings are looked at more coarsely where rounding leaves doubts.
constexpr double kCoarsest = 0x1p-37;
/// Between its ends a piece that was moved may stray by this many tolerances, and probes keep off by as many.
constexpr double kStray = 2.0;
/// A probe stands off by this share of what the next curve leaves.
constexpr double kProbeShare = 0.4;

/// Arcs whose ends are nearer than this share of the drawing turn once or not at all, as the share of the curve says.
constexpr double kNoTurn = 1e-12;

using Loop = std::vector<DrawingPiece>;

/// Whether a point lies outside the circle round the chord of an arc below a half turn, and so not between the two. The
/// line through the ends of a short one may pass far away on the wrong side of it.
bool IsBeyondEnds(DrawingPiece const &arc, DrawingPoint p) {
    DrawingPoint const middle{0.5 * (arc.start.x + arc.end.x), 0.5 * (arc.start.y + arc.end.y)};
    double const side = (arc.end.x - arc.start.x) * (arc.center.y - arc.start.y) -
                        (arc.end.y - arc.start.y) * (arc.center.x - arc.start.x);
    return (arc.clockwise ? -side : side) > 0.0 && Distance(p, middle) > 0.5 * Distance(arc.start, arc.end);
}

/// How often a closed loop runs around the point, counter-clockwise: chords by a ray to the right, then the segments
/// between chords and arcs.
int WindingOf(Loop const &loop, DrawingPoint p) {
    int winding = 0;
    for (DrawingPiece const &c : loop) {
        bool const isLine = c.type == DrawingCurveType::kLine;
        bool const isInDisc = !isLine && Distance(c.center, p) < c.radius;
        if (c.type == DrawingCurveType::kCircle) {
            winding += isInDisc ? (c.clockwise ? -1 : 1) : 0;
            continue;
        }
        double const cross = (c.end.x - c.start.x) * (p.y - c.start.y) - (c.end.y - c.start.y) * (p.x - c.start.x);
        bool const isUp = c.end.y > c.start.y || (c.end.y == c.start.y && c.end.x < c.start.x);
        bool const isRight = isUp ? cross <= 0.0 : cross < 0.0;
        if ((c.start.y > p.y) != (c.end.y > p.y))
            winding += isUp ? !isRight : -static_cast<int>(isRight);
        if (isInDisc && isRight != c.clockwise && !IsBeyondEnds(c, p))
            winding += c.clockwise ? -1 : 1;
    }
    return winding;
}

bool Holds(DrawingDomain const &d, DrawingPoint p) {
    int winding = WindingOf(d.outer, p);
    for (Loop const &hole : d.holes)
        winding += WindingOf(hole, p);
    return winding != 0;
}

/// The point beside the middle of a piece, to its left as the loop runs for a positive distance.
DrawingPoint Beside(DrawingPiece const &p, DrawingPoint middle, double distance) {
    double dx = p.end.x - p.start.x, dy = p.end.y - p.start.y;
    if (p.type != DrawingCurveType::kLine) {
        dx = p.clockwise ? middle.y - p.center.y : p.center.y - middle.y;
        dy = p.clockwise ? p.center.x - middle.x : middle.x - p.center.x;
    }
    double const length = std::hypot(dx, dy);
    return length > 0.0 ? DrawingPoint{middle.x - distance * dy / length, middle.y + distance * dx / length} : middle;
}

double Clearance(std::vector<DrawingCurve> const &curves, DrawingPoint p, unsigned int except) {
    double clearance = HUGE_VAL;
    for (DrawingCurve const &c : curves)
        if (c.id != except)
            clearance = std::min(clearance, DistanceTo(c, p));
    return clearance;
}

/// How far to both sides of its middle a piece has the ground to itself.
double RoomBeside(std::vector<DrawingCurve> const &curves, DrawingPiece const &p, DrawingPoint middle) {
    double const own = p.type == DrawingCurveType::kLine ? HUGE_VAL : 0.5 * p.radius;
    double const room = std::min(own, Clearance(curves, middle, p.curve));
    return kProbeShare * std::min(room, p.type == DrawingCurveType::kCircle ? room : Distance(p.start, p.end));
}

template <class Do>
void ForEachLoop(DrawingDomain const &d, Do const &run) {
    run(d.outer, 1.0);
    for (Loop const &hole : d.holes)
        run(hole, -1.0);
}

/// Faces of a plane graph are edges - vertices + parts. The edges are the stretches between the fractions that pieces
/// begin and end at, the vertices the points that stand there.
class EulerCount {
public:
    void Add(DrawingPiece const &p) {
        DrawingPoint const a = p.reversed ? p.end : p.start, b = p.reversed ? p.start : p.end;
        m_ends[{p.curve, p.from}] = PlaceAt(a);
        m_ends[{p.curve, p.to}] = PlaceAt(b);
        m_stretches.push_back({{p.curve, p.from}, {p.curve, p.to}});
    }
    int Faces() {
        int faces = -static_cast<int>(m_places.size());
        std::set<Key> counted;
        for (auto const &[from, to] : m_stretches)
            for (auto at = m_ends.find(from), end = m_ends.find(to); at != end; ++at)
                if (counted.insert(at->first).second) {
                    ++faces;
                    m_link[Root(at->second)] = Root(std::next(at)->second);
                }
        for (std::size_t i = 0; i < m_link.size(); ++i)
            faces += Root(i) == i;
        return faces;
    }

private:
    using Key = std::pair<unsigned int, double>;

    std::size_t PlaceAt(DrawingPoint p) {
        auto const [at, isNew] = m_places.try_emplace({p.x, p.y}, m_link.size());
        if (isNew)
            m_link.push_back(m_link.size());
        return at->second;
    }
    std::size_t Root(std::size_t v) const {
        while (m_link[v] != v)
            v = m_link[v];
        return v;
    }

    std::map<std::pair<double, double>, std::size_t> m_places;
    std::map<Key, std::size_t> m_ends;
    std::vector<std::pair<Key, Key>> m_stretches;
    std::vector<std::size_t> m_link;
};

class Check {
public:
    Check(std::vector<DrawingCurve> const &curves, DrawingOptions const &options, DrawingResult const &result)
        : m_curves(curves), m_options(options), m_result(result) {
        for (DrawingCurve const &c : curves)
            m_uses[c.id].curve = &c;
        m_size = SizeOf(curves);
    }

    std::string Text() {
        for (DrawingDomain const &d : m_result.domains)
            LookAt(d);
        LookAtLeftovers();
        for (auto &[id, uses] : m_uses)
            LookAtUses(id, uses.stretches);
        if (m_options.split && m_wrong.tellp() == 0) {
            if (!m_options.keepDuplicates && m_euler.Faces() != static_cast<int>(m_result.domains.size()))
                m_wrong << m_result.domains.size() << " domains, by Euler " << m_euler.Faces() << "\n";
            for (std::size_t i = 0; i < m_result.domains.size(); ++i)
                LookBeside(static_cast<int>(i));
        }
        return m_wrong.str();
    }

private:
    enum Side { kAgainst, kAlong, kLeftover };
    struct Stretch {
        double from, to;
        Side side;
    };
    struct Uses {
        DrawingCurve const *curve = nullptr;
        std::vector<Stretch> stretches;
    };

    void Add(DrawingPiece const &p, Side side) {
        if (!(p.from <= p.to) || p.from < 0.0 || p.to > 1.0)
            m_wrong << "curve " << p.curve << " from " << p.from << " to " << p.to << "\n";
        m_uses[p.curve].stretches.push_back({p.from, p.to, side});
    }

    void LookAtLeftovers() {
        for (DrawingLeftover const &left : m_result.leftovers) {
            Add(left.piece, kLeftover);
            if (left.reason == LeftoverReason::kDangle || left.reason == LeftoverReason::kBridge) {
                m_euler.Add(left.piece);
                LookAtPlace(left.piece, SweepIn(left.piece));
            }
        }
    }

    /// As the record of the piece says; how much of its curve it is settles only whether it turns once or not at all.
    double SweepIn(DrawingPiece const &p) {
        double const sweep = SweepOf(CurveOf(p));
        DrawingCurve const *const c = m_uses[p.curve].curve;
        if (!c || std::fabs(std::remainder(sweep, 2.0 * kPi)) * p.radius > kNoTurn * m_size)
            return c ? sweep : 0.0;
        double const whole = c->type == DrawingCurveType::kCircle ? 2.0 * kPi : std::fabs(SweepOf(*c));
        return SweepOf(CurveOf(p), (p.clockwise ? p.from - p.to : p.to - p.from) * whole);
    }

    void LookAt(DrawingDomain const &d) {
        double area = 0.0, outer = 0.0;
        ForEachLoop(d, [&](Loop const &loop, double sign) {
            double const loopArea = LookAtLoop(loop);
            // A loop of kept duplicates may have less than what bounds in their place, by the tolerance.
            double const missing = m_options.keepDuplicates ? m_options.joinTolerance * d.perimeter : 0.0;
            if (m_options.split && !(sign * loopArea > -missing) && !(sign * loopArea > 0.0))
                m_wrong << "loop at curve " << loop[0].curve << " runs the wrong way, area " << loopArea << "\n";
            area += loopArea;
            outer += std::max(0.0, loopArea);
        });
        if (!m_options.split)
            return;
        double const rounding = kSameArea * outer + kRounding * m_size * d.perimeter;
        if (!(std::fabs(area - d.area) <= rounding) || !(d.area > 0.0))
            m_wrong << "area " << d.area << " of pieces " << area << "\n";
    }

    /// Looks at a loop and gives its area: chords and circular segments.
    double LookAtLoop(Loop const &loop) {
        double area = 0.0;
        DrawingPoint const o = loop.empty() ? DrawingPoint() : loop[0].start;
        std::vector<std::pair<double, double>> starts;
        for (std::size_t i = 0; i < loop.size(); ++i) {
            DrawingPiece const &p = loop[i];
            DrawingPoint const next = loop[(i + 1) % loop.size()].start;
            if (p.end.x != next.x || p.end.y != next.y)
                m_wrong << "open loop at curve " << p.curve << "\n";
            starts.push_back({p.start.x, p.start.y});
            double const sweep = SweepIn(p);
            area += AreaFrom(o, CurveOf(p), sweep);
            Add(p, p.reversed ? kAgainst : kAlong);
            m_euler.Add(p);
            LookAtPlace(p, sweep);
        }
        std::sort(starts.begin(), starts.end());
        if (m_options.split && std::adjacent_find(starts.begin(), starts.end()) != starts.end())
            m_wrong << "loop through one point twice at curve " << loop[0].curve << "\n";
        return area;
    }

    void LookAtPlace(DrawingPiece const &p, double sweep) {
        DrawingCurve const *const c = m_uses[p.curve].curve;
        if (!c) {
            m_wrong << "no curve " << p.curve << "\n";
            return;
        }
        double const whole = SweepOf(*c), rounding = kCoarsest * m_size + OffCircle(*c);
        // A duplicate is kept within the tolerance of what bounds in its place, which stands as far from its own curve.
        double const allowed = (m_options.keepDuplicates ? 2.0 : 1.0) * m_options.joinTolerance + rounding;
        // Where a circle starts nothing was joined: that is as good as between the ends.
        auto const allowedAt = [&](double t) {
            bool const isStart = c->type == DrawingCurveType::kCircle && (t == 0.0 || t == 1.0);
            return isStart ? std::max(allowed, kStray * (m_options.joinTolerance + rounding)) : allowed;
        };
        double const starts = Distance(p.start, PointAt(*c, whole, p.reversed ? p.to : p.from));
        double const ends = Distance(p.end, PointAt(*c, whole, p.reversed ? p.from : p.to));
        double const strays = DistanceTo(*c, PointAt(CurveOf(p), sweep, 0.5));
        if (!(starts <= allowedAt(p.reversed ? p.to : p.from)) || !(ends <= allowedAt(p.reversed ? p.from : p.to)) ||
            !(strays <= kStray * m_options.joinTolerance + rounding))
            m_wrong << "piece of curve " << p.curve << " from " << p.from << " to " << p.to << " starts " << starts
                    << ", ends " << ends << ", strays " << strays << " off it\n";
    }

    /// By how much an arc's ends miss its circle.
    static double OffCircle(DrawingCurve const &c) {
        if (c.type != DrawingCurveType::kArc)
            return 0.0;
        return std::fabs(Distance(c.start, c.center) - c.radius) + std::fabs(Distance(c.end, c.center) - c.radius);
    }

    /// The stretches of one side, one after another, and the leftovers must not overlap, and together cover the curve.
    void LookAtUses(unsigned int id, std::vector<Stretch> &stretches) {
        auto const order = [](Stretch const &a, Stretch const &b) {
            return std::pair(a.from, a.to) < std::pair(b.from, b.to);
        };
        std::sort(stretches.begin(), stretches.end(), order);
        double reached[] = {0.0, 0.0}; // along the curve and against it
        double covered = 0.0;
        for (Stretch const &s : stretches) {
            if (s.from > covered + kSameFraction)
                m_wrong << "curve " << id << " is lost from " << covered << " to " << s.from << "\n";
            for (Side const side : {kAgainst, kAlong})
                if (s.side == side || s.side == kLeftover) {
                    if (s.from < reached[side] - kSameFraction)
                        m_wrong << "curve " << id << " is used twice from " << s.from << " to " << reached[side]
                                << "\n";
                    reached[side] = std::max(reached[side], s.to);
                }
            covered = std::max(covered, s.to);
        }
        if (covered < 1.0 - kSameFraction)
            m_wrong << "curve " << id << " is lost from " << covered << "\n";
    }

    void LookBeside(int domain) {
        double const least = (kStray + 1.0) * m_options.joinTolerance + 1e3 * kRounding * m_size;
        ForEachLoop(m_result.domains[static_cast<std::size_t>(domain)], [&](Loop const &loop, double) {
            for (DrawingPiece const &p : loop) {
                DrawingPoint const middle = PointAt(CurveOf(p), SweepIn(p), 0.5);
                double const room = RoomBeside(m_curves, p, middle);
                if (room < least)
                    continue;
                int const left = DomainAt(m_result, Beside(p, middle, room));
                int const right = DomainAt(m_result, Beside(p, middle, -room));
                if (left != domain || right == domain || right == -2)
                    m_wrong << "beside curve " << p.curve << " from " << p.from << " of domain " << domain
                            << " lie the domains " << left << " and " << right << "\n";
            }
        });
    }

    std::vector<DrawingCurve> const &m_curves;
    DrawingOptions const &m_options;
    DrawingResult const &m_result;
    double m_size = 0.0;
    std::map<unsigned int, Uses> m_uses;
    EulerCount m_euler;
    std::ostringstream m_wrong;
};

} // namespace

std::size_t HoleCount(DrawingResult const &result) {
    std::size_t count = 0;
    for (DrawingDomain const &d : result.domains)
        count += d.holes.size();
    return count;
}

double TotalArea(DrawingResult const &result) {
    double area = 0.0;
    for (DrawingDomain const &d : result.domains)
        area += d.area;
    return area;
}

std::vector<double> AreasOf(DrawingResult const &result) {
    std::vector<double> areas;
    for (DrawingDomain const &d : result.domains)
        areas.push_back(d.area);
    std::sort(areas.rbegin(), areas.rend());
    return areas;
}

std::string WhatIsWrong(std::vector<DrawingCurve> const &curves, DrawingOptions const &options,
                        DrawingResult const &result) {
    return Check(curves, options, result).Text();
}

int DomainAt(DrawingResult const &result, DrawingPoint p) {
    int domain = -1;
    for (std::size_t i = 0; i < result.domains.size(); ++i)
        if (Holds(result.domains[i], p))
            domain = domain == -1 ? static_cast<int>(i) : -2;
    return domain;
}

std::vector<Probe> ProbesOf(std::vector<DrawingCurve> const &curves, double distance, DrawingResult const &result) {
    std::vector<Probe> probes;
    for (std::size_t i = 0; i < result.domains.size(); ++i)
        for (DrawingPiece const &p : result.domains[i].outer) {
            DrawingCurve const c = CurveOf(p);
            DrawingPoint const at = Beside(p, PointAt(c, SweepOf(c), 0.5), 1.5 * distance);
            if (Clearance(curves, at, 0) > distance && Holds(result.domains[i], at))
                probes.push_back({at, static_cast<int>(i)});
        }
    return probes;
}

} // namespace zvi::lib::test

#include "zvi/drawing/ReportDetail.h"

#include "zvi/drawing/DomainAreaDetail.h"
#include "zvi/drawing/KeptDuplicatesDetail.h"

#include <algorithm>
#include <span>
#include <tuple>

namespace zvi::lib::drawing {

namespace {

bool IsLeft(MapEdge const &e) {
    return e.state == EdgeState::kInMap || e.state == EdgeState::kSetAside;
}

/// The edges of a face are fetched so many faces before they are looked at, and twice as many which they are.
constexpr std::size_t kAhead = 4;

/// An arc turns by less than this: once, and by rounding.
constexpr double kMostTurn = kTwoPi * (1.0 + 1e-9);

/// An edge, or a duplicate of it, as a loop runs through it.
struct Step {
    Stretch const *stretch = nullptr;
    bool isReversed = false;
    int duplicate = -1; ///< which duplicate it is, -1 for the edge itself

    DrawingPoint Begin() const { return isReversed ? stretch->end : stretch->start; }
    DrawingPoint End() const { return isReversed ? stretch->start : stretch->end; }
};

/// Makes pieces of loops, and remembers which duplicates they took.
class PieceMaker {
public:
    PieceMaker(DividedDrawing const &drawing, std::vector<DrawingCurve> const &curves,
               std::vector<KeptDuplicate> const &duplicates)
        : m_map(drawing.map), m_snap(drawing.snap), m_duplicates(duplicates),
          m_isTaken(duplicates.empty() ? 0 : Index(drawing.map.EdgeCount()), false),
          m_isDuplicateTaken(duplicates.size(), false), m_duplicatesOf(m_isTaken.size()) {
        m_ids.reserve(curves.size());
        for (DrawingCurve const &curve : curves)
            m_ids.push_back(curve.id);
        for (std::size_t d = duplicates.size(); d-- > 0;)
            m_duplicatesOf[Index(duplicates[d].original)].push_back(static_cast<int>(d));
    }

    bool IsDuplicateTaken(std::size_t duplicate) const { return m_isDuplicateTaken[duplicate]; }

    /// The loop with neighbouring stretches of one curve put together. Adds its area and length to those of `domain`;
    /// `steps` is room for what it does. Without duplicates several threads may do so.
    std::vector<DrawingPiece> PiecesOf(Loop const &loop, DrawingDomain &domain, std::vector<Step> &steps) {
        steps.clear();
        for (HalfEdge const h : loop.halves)
            steps.push_back(Take(h));
        // Duplicates that lie so far off that they run round nothing are no border.
        if (!m_duplicates.empty() && !(AreaOf(steps) * loop.area > 0.0))
            GiveBack(loop, steps);
        std::vector<DrawingPiece> pieces;
        pieces.reserve(StartAtBreak(steps));
        DrawingPoint const origin = steps.front().Begin();
        for (std::size_t i = 0; i < steps.size();) {
            bool const isReversed = steps[i].isReversed;
            Stretch whole = *steps[i].stretch;
            std::size_t const end = EndOfPiece(steps, i);
            for (++i; i < end; ++i)
                Extend(whole, *steps[i].stretch, isReversed);
            domain.area += AreaShare(whole, isReversed, origin);
            domain.perimeter += LengthOf(whole);
            pieces.push_back(PieceOf(whole, m_ids[Index(whole.curve)], isReversed));
        }
        if (pieces.size() == 1 && steps[0].stretch->isArc)
            pieces[0].type = DrawingCurveType::kCircle;
        return pieces;
    }

private:
    /// The edge of the half-edge for the loop that asks first, and for the one on its other side the next of its
    /// duplicates.
    Step Take(HalfEdge h) {
        if (m_duplicates.empty())
            return {&m_map.Edge(h).stretch, h.IsReversed()};
        std::size_t const e = Index(h.Edge());
        if (!m_isTaken[e] || m_duplicatesOf[e].empty()) {
            m_isTaken[e] = true;
            return {&m_map.Edge(h).stretch, h.IsReversed()};
        }
        int const number = m_duplicatesOf[e].back();
        KeptDuplicate const &duplicate = m_duplicates[Index(number)];
        m_duplicatesOf[e].pop_back();
        m_isDuplicateTaken[Index(number)] = true;
        return {&duplicate.stretch, h.IsReversed() != duplicate.isReversed, number};
    }

    /// Takes the edges themselves instead of their duplicates.
    void GiveBack(Loop const &loop, std::vector<Step> &steps) {
        for (std::size_t i = 0; i < steps.size(); ++i) {
            HalfEdge const h = loop.halves[i];
            if (Stretch const &own = m_map.Edge(h).stretch; steps[i].stretch != &own) {
                m_isDuplicateTaken[Index(steps[i].duplicate)] = false;
                m_duplicatesOf[Index(h.Edge())].push_back(steps[i].duplicate);
                steps[i] = {&own, h.IsReversed()};
            }
        }
    }

    static double AreaOf(std::vector<Step> const &steps) {
        DrawingPoint const origin = steps.front().Begin();
        double area = 0.0;
        for (Step const &step : steps)
            area += AreaShare(*step.stretch, step.isReversed, origin);
        return area;
    }

    /// Turns the loop so that it does not begin inside a piece, but at the first of the places between pieces. Returns
    /// the number of pieces.
    std::size_t StartAtBreak(std::vector<Step> &steps) const {
        std::size_t first = steps.size(), breaks = 0;
        for (std::size_t i = 0; i < steps.size(); ++i)
            if (!Continues(i > 0 ? steps[i - 1] : steps.back(), steps[i])) {
                ++breaks;
                if (first == steps.size() || ComesFirst(steps[i].Begin(), steps[first].Begin()))
                    first = i;
            }
        if (first < steps.size())
            std::rotate(steps.begin(), steps.begin() + static_cast<std::ptrdiff_t>(first), steps.end());
        return std::max(breaks, std::size_t{1});
    }

    /// Whether `next` goes on along the curve of `s` as one line or one arc.
    bool Continues(Step s, Step next) const {
        Stretch const &a = *s.stretch, &b = *next.stretch;
        if (&a == &b || a.curve != b.curve || s.isReversed != next.isReversed || a.isArc != b.isArc)
            return false;
        if (s.isReversed ? a.from != b.to : a.to != b.from)
            return false;
        if (a.isArc)
            return a.center == b.center && a.radius == b.radius && (a.sweep < 0.0) == (b.sweep < 0.0);
        DrawingPoint const u = a.end - a.start, v = b.end - b.start;
        return std::fabs(Cross(u, v)) <= m_snap * std::max(Length(u), Length(v)) && Dot(u, v) > 0.0;
    }

    /// Behind which step the piece that begins with the step `first` ends. An arc goes round once at most, where ends
    /// that were moved along it lie behind one another.
    std::size_t EndOfPiece(std::span<Step const> steps, std::size_t first) const {
        std::size_t end = first;
        double turn = 0.0;
        do
            turn += std::fabs(steps[end++].stretch->sweep);
        while (end < steps.size() && Continues(steps[end - 1], steps[end]) &&
               turn + std::fabs(steps[end].stretch->sweep) < kMostTurn);
        return steps[first].stretch->isArc ? end : EndOfLine(steps, first, end);
    }

    /// The same for steps along a line up to `end`. Each turns by nothing from the one before, and yet many short ones
    /// may lead away: a piece has the places between its steps on it.
    std::size_t EndOfLine(std::span<Step const> steps, std::size_t first, std::size_t end) const {
        while (end > first + 1) {
            DrawingPoint const begin = steps[first].Begin(), chord = steps[end - 1].End() - begin;
            auto const off = [&](Step const &step) { return std::fabs(Cross(chord, step.Begin() - begin)); };
            std::span const inner = steps.subspan(first + 1, end - first - 1);
            auto const farthest = std::max_element(inner.begin(), inner.end(),
                                                   [&](Step const &a, Step const &b) { return off(a) < off(b); });
            if (off(*farthest) <= m_snap * Length(chord))
                break;
            end = first + 1 + static_cast<std::size_t>(farthest - inner.begin());
        }
        return end;
    }

    /// Puts the stretch that follows as the loop runs to another one.
    static void Extend(Stretch &s, Stretch const &more, bool isReversed) {
        (isReversed ? s.start : s.end) = isReversed ? more.start : more.end;
        (isReversed ? s.from : s.to) = isReversed ? more.from : more.to;
        s.sweep += more.sweep;
    }

    PlanarMap const &m_map;
    std::vector<unsigned int> m_ids; ///< of the caller's curves, side by side
    double m_snap;
    std::vector<KeptDuplicate> const &m_duplicates;
    std::vector<bool> m_isTaken; ///< of each edge, whether a loop runs through it already
    std::vector<bool> m_isDuplicateTaken;
    std::vector<std::vector<int>> m_duplicatesOf; ///< of each edge those not taken yet, the first one last
};

/// Marks the edges that hang on one end, or on a chain that does, of those that are left.
std::vector<bool> FindDangles(PlanarMap const &map) {
    std::vector<std::vector<int>> edgesAt(Index(map.Places().Count()));
    std::vector<int> degree(edgesAt.size(), 0);
    for (int e = 0; e < map.EdgeCount(); ++e) {
        if (!IsLeft(map.Edge(e)))
            continue;
        for (HalfEdge const h : {HalfEdge::Along(e), HalfEdge::Against(e)}) {
            ++degree[Index(map.Origin(h))];
            if (map.Edge(e).state == EdgeState::kSetAside)
                edgesAt[Index(map.Origin(h))].push_back(e);
        }
    }
    std::vector<int> pending;
    for (std::size_t p = 0; p < degree.size(); ++p)
        if (degree[p] == 1)
            pending.push_back(static_cast<int>(p));
    std::vector<bool> isDangle(Index(map.EdgeCount()), false);
    while (!pending.empty()) {
        int const place = pending.back();
        pending.pop_back();
        for (int const e : edgesAt[Index(place)]) {
            if (isDangle[Index(e)])
                continue;
            isDangle[Index(e)] = true;
            HalfEdge const h = HalfEdge::Along(e);
            int const far = map.Origin(h) == place ? map.Target(h) : map.Origin(h);
            if (--degree[Index(far)] == 1)
                pending.push_back(far);
        }
    }
    return isDangle;
}

/// Puts neighbouring stretches of one curve, in their order, together.
std::vector<Stretch> Merged(std::vector<Stretch> stretches) {
    std::sort(stretches.begin(), stretches.end(), [](Stretch const &a, Stretch const &b) {
        return std::tie(a.curve, a.from, a.to) < std::tie(b.curve, b.from, b.to);
    });
    std::vector<Stretch> merged;
    for (Stretch const &s : stretches) {
        if (!merged.empty() && merged.back().curve == s.curve && merged.back().to == s.from) {
            merged.back().to = s.to;
            merged.back().end = s.end;
            merged.back().sweep += s.sweep;
        } else {
            merged.push_back(s);
        }
    }
    return merged;
}

/// What is counted along the curves.
struct AlongCurves {
    int joined = 0; ///< ends that stand elsewhere than they are written, but for curves that became one place
    std::vector<HalfEdge> between; ///< that begin a stretch of a curve behind another one
};

/// Looks at the edges of one curve.
void LookAlong(std::span<int const> edges, DividedDrawing const &drawing, DrawingCurve const &curve,
               AlongCurves &along) {
    PlanarMap const &map = drawing.map;
    auto const standsAt = [&](HalfEdge h) { return drawing.positions[Index(map.Origin(h))]; };
    bool isLeft = false;
    for (int const e : edges) {
        if (map.Edge(e).state == EdgeState::kContracted)
            continue;
        if (isLeft)
            along.between.push_back(HalfEdge::Along(e));
        isLeft = true;
    }
    if (!isLeft || curve.type == DrawingCurveType::kCircle)
        return;
    along.joined += standsAt(HalfEdge::Along(edges.front())) == curve.start ? 0 : 1;
    along.joined += standsAt(HalfEdge::Against(edges.back())) == curve.end ? 0 : 1;
}

AlongCurves LookAlongCurves(DividedDrawing const &drawing, std::vector<DrawingCurve> const &curves,
                            base::Workers const &workers) {
    std::vector<AlongCurves> parts(workers.PartsOf(drawing.alongCurves.edges.size()));
    workers.Do(parts.size(), [&](std::size_t part) {
        std::size_t const end = (part + 1) * curves.size() / parts.size();
        for (std::size_t curve = part * curves.size() / parts.size(); curve < end; ++curve)
            LookAlong(drawing.alongCurves.Of(curve), drawing, curves[curve], parts[part]);
    });
    for (std::size_t part = 1; part < parts.size(); ++part) {
        parts[0].joined += parts[part].joined;
        parts[0].between.insert(parts[0].between.end(), parts[part].between.begin(), parts[part].between.end());
    }
    return std::move(parts[0]);
}

/// Places between two stretches of one curve at which another edge ends as well.
int CountCuts(DividedDrawing const &drawing, std::vector<HalfEdge> const &between) {
    PlanarMap const &map = drawing.map;
    if (between.empty())
        return drawing.covered.cuts;
    std::vector<int> endCounts(Index(map.Places().Count()), 0);
    for (int e = 0; e < map.EdgeCount(); ++e)
        if (map.Edge(e).state != EdgeState::kContracted)
            for (HalfEdge const h : {HalfEdge::Along(e), HalfEdge::Against(e)})
                ++endCounts[Index(map.Origin(h))];
    for (int const place : drawing.covered.passedPlaces)
        ++endCounts[Index(map.Places().Root(place))];
    return drawing.covered.cuts + static_cast<int>(std::count_if(between.begin(), between.end(), [&](HalfEdge h) {
               return endCounts[Index(map.Origin(h))] > 2;
           }));
}

class Reporter {
public:
    Reporter(DividedDrawing const &drawing, std::vector<DrawingCurve> const &curves)
        : m_drawing(drawing), m_curves(curves) {}

    /// What was sorted out before there was a map, and the counts that do not depend on what the map bounds.
    void Begin(std::vector<DrawingLeftover> &leftovers, DrawingCounts &counts, base::Workers const &workers) const {
        leftovers = m_drawing.curves.leftovers;
        for (Stretch const &s : m_drawing.vanished) {
            DrawingPiece piece = PieceOf(s, m_curves, false);
            piece.type = m_curves[Index(s.curve)].type;
            leftovers.push_back({piece, LeftoverReason::kZeroLength});
        }
        AlongCurves const along = LookAlongCurves(m_drawing, m_curves, workers);
        counts.joined = along.joined;
        counts.cut = CountCuts(m_drawing, along.between);
    }

    void AddSetAside(std::vector<DrawingLeftover> &leftovers) const {
        if (!m_drawing.map.HasEdges(EdgeState::kSetAside))
            return;
        std::vector<bool> const isDangle = FindDangles(m_drawing.map);
        for (int const e : m_drawing.alongCurves.edges)
            if (m_drawing.map.Edge(e).state == EdgeState::kSetAside)
                leftovers.push_back({PieceOf(m_drawing.map.Edge(e).stretch, m_curves, false),
                                     isDangle[Index(e)] ? LeftoverReason::kDangle : LeftoverReason::kBridge});
    }

    void AddDuplicates(std::vector<Stretch> stretches, std::vector<DrawingLeftover> &leftovers,
                       DrawingCounts &counts) const {
        for (Stretch const &s : Merged(std::move(stretches))) {
            ++counts.duplicates;
            leftovers.push_back({PieceOf(s, m_curves, false), LeftoverReason::kDuplicate});
        }
    }

    std::vector<Stretch> Dropped() const {
        std::vector<Stretch> stretches = m_drawing.repeated;
        for (DroppedEdge const &d : m_drawing.dropped)
            stretches.push_back(m_drawing.map.Edge(d.edge).stretch);
        return stretches;
    }

private:
    DividedDrawing const &m_drawing;
    std::vector<DrawingCurve> const &m_curves;
};

/// The faces as domains. Which loop takes which duplicate follows from their order: one thread makes those of drawings
/// that have some.
std::vector<DrawingDomain> DomainsOf(std::vector<Face> const &faces, PlanarMap const &map, PieceMaker &pieces,
                                     base::Workers const &workers) {
    std::vector<DrawingDomain> domains(faces.size());
    workers.ForEachPart(faces.size(), [&](std::size_t, std::size_t begin, std::size_t end) {
        std::vector<Step> room;
        for (std::size_t f = begin; f < end; ++f) {
            if (f + 2 * kAhead < end)
                base::Prefetch(faces[f + 2 * kAhead].outer.halves.front());
            if (f + kAhead < end)
                for (HalfEdge const h : faces[f + kAhead].outer.halves)
                    map.Prefetch(h);
            domains[f].outer = pieces.PiecesOf(faces[f].outer, domains[f], room);
            for (Loop const &hole : faces[f].holes)
                domains[f].holes.push_back(pieces.PiecesOf(hole, domains[f], room));
        }
    });
    return domains;
}

} // namespace

DrawingResult ReportDomains(DividedDrawing drawing, std::vector<Face> const &faces,
                            std::vector<DrawingCurve> const &curves, bool keepDuplicates,
                            base::Workers const &workers) {
    DrawingResult result;
    Reporter const reporter(drawing, curves);
    reporter.Begin(result.leftovers, result.counts, workers);
    reporter.AddSetAside(result.leftovers);
    std::vector<int> notKept;
    std::vector<KeptDuplicate> duplicates;
    if (keepDuplicates)
        duplicates = KeptDuplicates(drawing, notKept);
    // Room for the pieces, of which there are many.
    drawing.positions = std::vector<DrawingPoint>();
    drawing.alongCurves = CurveEdges();
    PieceMaker pieces(drawing, curves, duplicates);
    result.domains = DomainsOf(faces, drawing.map, pieces, duplicates.empty() ? workers : base::Workers());
    std::vector<Stretch> dropped;
    if (keepDuplicates) {
        for (int const e : notKept)
            dropped.push_back(drawing.map.Edge(e).stretch);
        for (std::size_t d = 0; d < duplicates.size(); ++d)
            if (!pieces.IsDuplicateTaken(d))
                dropped.push_back(duplicates[d].stretch);
    } else {
        dropped = reporter.Dropped();
    }
    reporter.AddDuplicates(std::move(dropped), result.leftovers, result.counts);
    return result;
}

DrawingPieces ReportPieces(DividedDrawing const &drawing, std::vector<DrawingCurve> const &curves,
                           bool keepDuplicates) {
    DrawingPieces result;
    Reporter const reporter(drawing, curves);
    reporter.Begin(result.leftovers, result.counts, base::Workers());
    result.pieces.reserve(drawing.alongCurves.edges.size());
    for (int const e : drawing.alongCurves.edges)
        if (MapEdge const &edge = drawing.map.Edge(e);
            IsLeft(edge) || (keepDuplicates && edge.state == EdgeState::kDuplicate))
            result.pieces.push_back(PieceOf(edge.stretch, curves, false));
    if (!keepDuplicates)
        reporter.AddDuplicates(reporter.Dropped(), result.leftovers, result.counts);
    return result;
}

} // namespace zvi::lib::drawing

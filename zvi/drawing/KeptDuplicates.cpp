#include "zvi/drawing/KeptDuplicatesDetail.h"

#include "zvi/drawing/FaceWalkDetail.h"

#include <algorithm>

namespace zvi::lib::drawing {

namespace {

/// A kept duplicate begins and ends within so many tolerances of where its curve does.
constexpr double kFarInTolerances = 2.0;

class DuplicateFinder {
public:
    explicit DuplicateFinder(DividedDrawing const &drawing)
        : m_map(drawing.map), m_drop(Index(drawing.map.EdgeCount()), nullptr) {
        for (DroppedEdge const &d : drawing.dropped)
            m_drop[Index(d.edge)] = &d;
    }

    /// The edges that are left of those that bound what the dropped edge bounded. Of a contracted one nothing is left
    /// to lie on.
    std::vector<int> OriginalsOf(DroppedEdge const &drop) const {
        std::vector<int> originals;
        std::vector<DroppedEdge const *> pending{&drop};
        while (!pending.empty()) {
            DroppedEdge const *d = pending.back();
            pending.pop_back();
            for (int e = d->original; e >= 0 && e != d->stop; e = m_map.NextPart(e)) {
                if (m_drop[Index(e)])
                    pending.push_back(m_drop[Index(e)]);
                else if (m_map.Edge(e).state != EdgeState::kContracted)
                    originals.push_back(e);
            }
        }
        return originals;
    }

    /// The parts of a dropped edge that lie on the originals, one behind the other, between the places of those. An
    /// original that the edge has nothing beside has no part. None where one of them would have to go `far` from where
    /// it is.
    std::vector<KeptDuplicate> PartsOn(int edge, std::vector<int> const &originals, double snap, double far) const {
        std::vector<KeptDuplicate> kept;
        Stretch const &s = m_map.Edge(edge).stretch;
        std::vector<std::pair<double, int>> order; // fraction of the middle, original
        order.reserve(originals.size());
        for (int const original : originals)
            order.emplace_back(std::clamp(FractionAt(s, PointAt(m_map.Edge(original).stretch, 0.5)), 0.0, 1.0),
                               original);
        std::sort(order.begin(), order.end());
        double from = 0.0;
        for (std::size_t i = 0; i < order.size(); ++i) {
            Stretch const &on = m_map.Edge(order[i].second).stretch;
            double const to =
                i + 1 < order.size() ? std::max(from, CutBetween(s, order[i].second, order[i + 1].second)) : 1.0;
            KeptDuplicate part{PartOf(s, from, to), order[i].second, false};
            if (!(part.stretch.from < part.stretch.to))
                continue;
            part.isReversed = FractionAt(s, PointAt(on, kEarly)) > FractionAt(s, PointAt(on, 1.0 - kEarly));
            DrawingPoint const start = part.isReversed ? on.end : on.start, end = part.isReversed ? on.start : on.end;
            if (Distance(part.stretch.start, start) >= far || Distance(part.stretch.end, end) >= far)
                return {};
            FitToEnds(part.stretch, start, end, snap);
            kept.push_back(part);
            from = to;
        }
        return kept;
    }

private:
    /// Points at this fraction from the ends of an edge tell which way it runs.
    static constexpr double kEarly = 0.25;

    /// The fraction at which a stretch passes from one edge to the next: at their common place, or else halfway between
    /// the ends that are nearest to one another.
    double CutBetween(Stretch const &s, int edge, int next) const {
        DrawingPoint best;
        double nearest = HUGE_VAL;
        for (HalfEdge const h : {HalfEdge::Along(edge), HalfEdge::Against(edge)})
            for (HalfEdge const g : {HalfEdge::Along(next), HalfEdge::Against(next)}) {
                DrawingPoint const p = BeginOf(m_map, h), q = BeginOf(m_map, g);
                if (double const distance = Distance(p, q); distance < nearest) {
                    nearest = distance;
                    best = (p + q) * 0.5;
                }
            }
        return std::clamp(FractionAt(s, best), 0.0, 1.0);
    }

    PlanarMap const &m_map;
    std::vector<DroppedEdge const *> m_drop; ///< of each edge
};

} // namespace

std::vector<KeptDuplicate> KeptDuplicates(DividedDrawing const &drawing, std::vector<int> &rest) {
    DuplicateFinder const finder(drawing);
    double const far = kFarInTolerances * std::max(drawing.curves.tolerance, drawing.snap);
    std::vector<KeptDuplicate> kept;
    for (DroppedEdge const &drop : drawing.dropped) {
        std::vector<KeptDuplicate> const parts = finder.PartsOn(drop.edge, finder.OriginalsOf(drop), drawing.snap, far);
        kept.insert(kept.end(), parts.begin(), parts.end());
        if (parts.empty())
            rest.push_back(drop.edge);
    }
    std::sort(kept.begin(), kept.end(), [](KeptDuplicate const &a, KeptDuplicate const &b) {
        return a.stretch.curve != b.stretch.curve ? a.stretch.curve < b.stretch.curve : a.stretch.from < b.stretch.from;
    });
    return kept;
}

} // namespace zvi::lib::drawing

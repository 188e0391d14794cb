#include "zvi/drawing/KeptDuplicatesDetail.h"

#include <algorithm>

namespace zvi::lib::drawing {

namespace {

class DuplicateFinder {
public:
    explicit DuplicateFinder(DividedDrawing const &drawing)
        : m_map(drawing.map), m_drop(Index(drawing.map.EdgeCount()), nullptr) {
        for (DroppedEdge const &d : drawing.dropped)
            m_drop[Index(d.edge)] = &d;
    }

    /// The edges that are left of those that bound what the dropped edge bounded.
    std::vector<int> OriginalsOf(DroppedEdge const &drop) const {
        std::vector<int> originals;
        std::vector<DroppedEdge const *> pending{&drop};
        while (!pending.empty()) {
            DroppedEdge const *d = pending.back();
            pending.pop_back();
            for (int e = d->original; e >= 0 && e != d->stop; e = m_map.NextPart(e)) {
                if (m_drop[Index(e)])
                    pending.push_back(m_drop[Index(e)]);
                else
                    originals.push_back(e);
            }
        }
        return originals;
    }

    /// The parts of a dropped edge that lie on the originals, one behind the other, between the places of those.
    void AddParts(int edge, std::vector<int> const &originals, double snap, std::vector<KeptDuplicate> &kept) const {
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
            double const to = i + 1 < order.size() ? Between(s, on, order[i].first, order[i + 1].first) : 1.0;
            KeptDuplicate part{PartOf(s, from, to), order[i].second, false};
            part.isReversed = FractionAt(s, PointAt(on, kEarly)) > FractionAt(s, PointAt(on, 1.0 - kEarly));
            FitToEnds(part.stretch, part.isReversed ? on.end : on.start, part.isReversed ? on.start : on.end, snap);
            kept.push_back(part);
            from = to;
        }
    }

private:
    /// Points at this fraction from the ends of an edge tell which way it runs.
    static constexpr double kEarly = 0.25;

    /// The fraction at which one of the ends of `on` lies between two fractions.
    static double Between(Stretch const &s, Stretch const &on, double low, double high) {
        for (DrawingPoint const p : {on.start, on.end})
            if (double const t = FractionAt(s, p); t > low && t < high)
                return t;
        return 0.5 * (low + high);
    }

    PlanarMap const &m_map;
    std::vector<DroppedEdge const *> m_drop; ///< of each edge
};

} // namespace

std::vector<KeptDuplicate> KeptDuplicates(DividedDrawing const &drawing, std::vector<int> &rest) {
    DuplicateFinder const finder(drawing);
    std::vector<KeptDuplicate> kept;
    for (DroppedEdge const &drop : drawing.dropped) {
        std::vector<int> const originals = finder.OriginalsOf(drop);
        finder.AddParts(drop.edge, originals, drawing.snap, kept);
        if (originals.empty())
            rest.push_back(drop.edge);
    }
    std::sort(kept.begin(), kept.end(), [](KeptDuplicate const &a, KeptDuplicate const &b) {
        return a.stretch.curve != b.stretch.curve ? a.stretch.curve < b.stretch.curve : a.stretch.from < b.stretch.from;
    });
    return kept;
}

} // namespace zvi::lib::drawing

#include "zvi/drawing/ThinFacesDetail.h"

#include "zvi/drawing/ContractionDetail.h"
#include "zvi/drawing/FaceWalkDetail.h"

#include <algorithm>

namespace zvi::lib::drawing {

namespace {

/// An edge is cut at this fraction from its end where the point to cut it at falls beyond.
constexpr double kNearEnd = 1e-6;

/// What is left of an edge of a thin face while its sides are laid on one another.
struct Side {
    HalfEdge half;
    double low = 0.0; ///< the part that is left, in fractions of the edge along the edge
    double high = 1.0;
    Stretch part;

    DrawingPoint Begin() const { return half.IsReversed() ? part.end : part.start; }
    DrawingPoint End() const { return half.IsReversed() ? part.start : part.end; }
};

/// One step: the far end of a short side comes to lie on the long side beside it.
struct Fold {
    std::size_t shortSide = 0; ///< as numbered at first
    std::size_t longSide = 0;
    DrawingPoint point; ///< where on the border of the long one
};

/// Plans how the sides of one face are laid on one another, from its tips on, without touching the map.
class FoldPlan {
public:
    FoldPlan(PlanarMap const &map, std::vector<HalfEdge> const &walk, double tolerance)
        : m_map(map), m_tolerance(tolerance) {
        for (HalfEdge const h : walk) {
            m_sides.push_back({h, 0.0, 1.0, map.Border(h)});
            m_rest.push_back(m_rest.size());
        }
    }

    /// Whether the whole face can be folded, that is, whether it is thinner than the tolerance.
    bool Make() {
        std::size_t tip = 0;
        while (m_rest.size() > 2) {
            std::size_t tried = 0;
            while (tried < m_rest.size() && !FoldAt(tip)) {
                tip = (tip + 1) % m_rest.size();
                ++tried;
            }
            if (tried == m_rest.size())
                return false;
            tip = tip < m_rest.size() ? tip : 0;
        }
        return m_rest.size() == 2 ? AreNear(Left(0), Left(1)) : IsSmall(Left(0));
    }

    std::vector<Fold> const &Folds() const { return m_folds; }
    /// The sides that are left at the end, one or two.
    std::vector<std::size_t> const &Rest() const { return m_rest; }

private:
    Side &Left(std::size_t i) { return m_sides[m_rest[i]]; }

    bool AreNear(Side const &a, Side const &b) const {
        return DeviationOf(a.part, b.part) < m_tolerance && DeviationOf(b.part, a.part) < m_tolerance;
    }

    bool IsSmall(Side const &side) const {
        Stretch const &s = side.part;
        double const extent = !s.isArc ? LengthOf(s) : std::min(LengthOf(s), 2.0 * s.radius);
        return extent < m_tolerance;
    }

    /// Folds at the tip between the side `i` and the next one, when they stay near one another that far.
    bool FoldAt(std::size_t i) {
        std::size_t const j = (i + 1) % m_rest.size();
        Side const &a = Left(i), &b = Left(j);
        bool const isFirstShort = LengthOf(a.part) <= LengthOf(b.part);
        std::size_t const shorter = isFirstShort ? i : j, longer = isFirstShort ? j : i;
        Side const &shortSide = Left(shorter);
        Side &longSide = Left(longer);
        DrawingPoint const far = isFirstShort ? a.Begin() : b.End();
        int const farPlace = isFirstShort ? m_map.Origin(a.half) : m_map.Target(b.half);
        Foot foot;
        if (!FootOn(longSide.part, far, foot) || foot.distance >= m_tolerance ||
            !m_map.Places().Fit(farPlace, foot.point, m_tolerance) ||
            DeviationOf(shortSide.part, longSide.part) >= m_tolerance)
            return false;
        Trim(longSide, foot.t, isFirstShort);
        m_folds.push_back({m_rest[shorter], m_rest[longer], foot.point});
        m_rest.erase(m_rest.begin() + static_cast<std::ptrdiff_t>(shorter));
        return true;
    }

    /// Takes off the begin or the end of a side as the face runs, up to the fraction `t` of what was left.
    void Trim(Side &side, double t, bool isBegin) const {
        double const at = side.low + t * (side.high - side.low);
        (isBegin != side.half.IsReversed() ? side.low : side.high) = at;
        side.part = PartOf(m_map.Border(side.half), side.low, side.high);
    }

    PlanarMap const &m_map;
    double m_tolerance;
    std::vector<Side> m_sides;
    std::vector<std::size_t> m_rest; ///< the sides that are left, in the order of the walk
    std::vector<Fold> m_folds;
};

class ThinFaces {
public:
    ThinFaces(PlanarMap &map, double tolerance, std::vector<DroppedEdge> &dropped)
        : m_map(map), m_tolerance(tolerance), m_dropped(dropped) {}

    /// Collapses what is thin now. Returns whether there was anything.
    bool Collapse() {
        FaceWalks const faces = WalkFaces(m_map);
        bool any = false;
        for (FaceWalk const &face : faces.walks)
            // What lets no disc of the tolerance in has less area than this.
            if (!face.isOutside && face.area < 0.5 * m_tolerance * face.perimeter && m_map.IsInMap(face.first.Edge()))
                any = CollapseFace(face.first) || any;
        return any;
    }

private:
    bool CollapseFace(HalfEdge first) {
        std::vector<HalfEdge> const walk = WalkFrom(m_map, first);
        if (HasBothSidesOfAnEdge(walk))
            return false;
        FoldPlan plan(m_map, walk, m_tolerance);
        if (!plan.Make())
            return false;
        Apply(plan, walk);
        return true;
    }

    static bool HasBothSidesOfAnEdge(std::vector<HalfEdge> const &walk) {
        std::vector<int> edges;
        for (HalfEdge const h : walk)
            edges.push_back(h.Edge());
        std::sort(edges.begin(), edges.end());
        return std::adjacent_find(edges.begin(), edges.end()) != edges.end();
    }

    void Apply(FoldPlan const &plan, std::vector<HalfEdge> halves) {
        for (Fold const &fold : plan.Folds()) {
            HalfEdge &longHalf = halves[fold.longSide];
            HalfEdge const shortHalf = halves[fold.shortSide];
            bool const isShortFirst = m_map.Next(shortHalf) == longHalf;
            int const edge = longHalf.Edge();
            int const second = m_map.Split(edge, SplitAt(longHalf, fold.point));
            // The long half-edge as the face runs, before and after the cut.
            bool const isReversed = longHalf.IsReversed();
            HalfEdge const before = isReversed ? HalfEdge::Against(second) : HalfEdge::Along(edge);
            HalfEdge const after = isReversed ? HalfEdge::Against(edge) : HalfEdge::Along(second);
            HalfEdge const folded = isShortFirst ? before : after;
            longHalf = isShortFirst ? after : before;
            m_map.MergeAcrossFace(isShortFirst ? shortHalf : m_map.Next(shortHalf), after);
            DropLater(shortHalf, folded);
        }
        if (plan.Rest().size() == 2)
            DropLater(halves[plan.Rest()[0]], halves[plan.Rest()[1]]);
        else
            m_map.Remove(halves[plan.Rest()[0]].Edge(), EdgeState::kContracted);
    }

    /// The fraction of the edge at which a point of its border falls on it.
    double SplitAt(HalfEdge h, DrawingPoint p) const {
        return std::clamp(FractionAt(m_map.Edge(h).stretch, p), kNearEnd, 1.0 - kNearEnd);
    }

    /// Of two half-edges that bound a face by themselves the one of the later curve goes.
    void DropLater(HalfEdge a, HalfEdge b) {
        Stretch const &s = m_map.Edge(a).stretch, &other = m_map.Edge(b).stretch;
        bool const isFirstLater = s.curve != other.curve ? s.curve > other.curve : s.from > other.from;
        HalfEdge const later = isFirstLater ? a : b, original = isFirstLater ? b : a;
        m_map.Drop(later, original);
        m_dropped.push_back({later.Edge(), original.Edge(), m_map.NextPart(original.Edge())});
    }

    PlanarMap &m_map;
    double m_tolerance;
    std::vector<DroppedEdge> &m_dropped;
};

/// The longest edge of the walk that has another face on its other side, -1 if there is none.
int LongestOuterEdge(PlanarMap const &map, FaceWalks const &faces, HalfEdge first) {
    int longest = -1;
    double length = -1.0;
    for (HalfEdge const h : WalkFrom(map, first))
        if (double const own = LengthOf(map.Edge(h).stretch); faces.Of(h) != faces.Of(h.Twin()) && own > length) {
            length = own;
            longest = h.Edge();
        }
    return longest;
}

} // namespace

void CollapseThinFaces(PlanarMap &map, double tolerance, double snap, Landmarks const &landmarks,
                       std::vector<DroppedEdge> &dropped) {
    do {
        ContractShortEdges(map, tolerance, snap, landmarks);
        SetAsideUnboundingEdges(map);
    } while (ThinFaces(map, tolerance, dropped).Collapse());
}

void DropEmptyFaces(PlanarMap &map, double thinnest, std::vector<DroppedEdge> &dropped) {
    for (bool any = true; any;) {
        any = false;
        FaceWalks const faces = WalkFaces(map);
        std::vector<bool> isTouched(faces.walks.size(), false);
        for (std::size_t w = 0; w < faces.walks.size(); ++w) {
            FaceWalk const &face = faces.walks[w];
            if (face.isOutside || isTouched[w] || face.area > 0.5 * thinnest * face.perimeter)
                continue;
            int const edge = LongestOuterEdge(map, faces, face.first);
            if (edge < 0)
                continue;
            int const neighbour = faces.Of(HalfEdge::Along(edge)) == static_cast<int>(w)
                                      ? faces.Of(HalfEdge::Against(edge))
                                      : faces.Of(HalfEdge::Along(edge));
            if (isTouched[At(neighbour)])
                continue;
            isTouched[w] = isTouched[At(neighbour)] = true;
            map.Remove(edge, EdgeState::kDuplicate);
            dropped.push_back({edge});
            any = true;
        }
        if (any)
            SetAsideUnboundingEdges(map);
    }
}

} // namespace zvi::lib::drawing

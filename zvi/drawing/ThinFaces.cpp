#include "zvi/drawing/ThinFacesDetail.h"

#include "zvi/drawing/ContractionDetail.h"
#include "zvi/drawing/FaceWalkDetail.h"

#include <algorithm>
#include <queue>
#include <tuple>
#include <utility>

namespace zvi::lib::drawing {

namespace {

/// A foot nearer to an end of a side than so many snap distances is that end.
constexpr double kAtEnd = 16.0;

/// An edge is cut this fraction from its end where the point to cut it at falls beyond.
constexpr double kNearEnd = 0x1p-40;

/// What is left of an edge of a thin face while its sides are laid on one another.
struct Side {
    HalfEdge half;
    double low = 0.0; ///< the part that is left, in fractions of the edge along the edge
    double high = 1.0;
    Stretch part; ///< of the border in the face
    Stretch back; ///< of the border in the face behind it
    std::size_t previous = 0;
    std::size_t next = 0;
    unsigned changes = 0; ///< how often its part or its neighbours have changed

    DrawingPoint Begin() const { return half.IsReversed() ? part.end : part.start; }
    DrawingPoint End() const { return half.IsReversed() ? part.start : part.end; }
};

/// One step: the far end of a short side comes to lie on the long side beside it.
struct Fold {
    std::size_t shortSide = 0; ///< as numbered along the walk
    std::size_t longSide = 0;
    Foot foot; ///< on what was left of the border of the long one
};

/// A fold that could be made at the tip behind a side, as long as neither that side nor the next one has changed.
struct TipFold {
    Fold fold;
    std::size_t side = 0;
    unsigned changes = 0;
    unsigned nextChanges = 0;
    double steps = 0.0; ///< the distance of the fold in steps that rounding does not change
    double rank = 0.0;  ///< by the landmarks

    /// The least far fold is on top of a heap.
    bool operator<(TipFold const &other) const {
        return std::tie(steps, rank, side) > std::tie(other.steps, other.rank, other.side);
    }
};

/// Plans how the sides of one face are laid on one another, from its tips on and nearest first, without touching the
/// map.
class FoldPlan {
public:
    FoldPlan(PlanarMap const &map, std::vector<HalfEdge> const &walk, double tolerance, double snap,
             Landmarks const &landmarks)
        : m_map(map), m_tolerance(tolerance), m_snap(snap), m_landmarks(landmarks), m_left(walk.size()) {
        for (HalfEdge const h : walk) {
            std::size_t const i = m_sides.size();
            m_sides.push_back(
                {h, 0.0, 1.0, map.Border(h), map.Border(h.Twin()), (i + m_left - 1) % m_left, (i + 1) % m_left});
        }
    }

    /// Whether the whole face can be folded, that is, whether it is thinner than the tolerance.
    bool Make() {
        if (m_left > 2)
            for (std::size_t i = 0; i < m_sides.size(); ++i)
                LookAtTip(i);
        while (m_left > 2) {
            if (m_tips.empty())
                return false;
            TipFold const tip = m_tips.top();
            m_tips.pop();
            if (tip.changes == m_sides[tip.side].changes && tip.nextChanges == m_sides[m_sides[tip.side].next].changes)
                Make(tip.fold);
        }
        Side const &last = m_sides[m_any];
        return m_left == 2 ? AreNear(last, m_sides[last.next]) : IsSmall(last.part) && IsSmall(last.back);
    }

    std::vector<Fold> const &Folds() const { return m_folds; }
    /// The two sides that are left at the end, or twice the only one.
    std::pair<std::size_t, std::size_t> Rest() const { return {m_any, m_sides[m_any].next}; }

private:
    /// Whether two sides stay near one another, and so does what has been laid on them from behind.
    bool AreNear(Side const &a, Side const &b) const {
        return DeviationOf(a.part, b.part) < m_tolerance && DeviationOf(b.part, a.part) < m_tolerance &&
               DeviationOf(a.back, b.back) < m_tolerance && DeviationOf(b.back, a.back) < m_tolerance;
    }

    /// Whether a foot is one of the ends of the side, or of its edge, but for rounding: there is a place already.
    bool IsAtEnd(Side const &side, DrawingPoint foot) const {
        Stretch const &edge = m_map.Edge(side.half).stretch;
        double const t = FractionAt(edge, foot), near = kAtEnd * m_snap;
        return std::min(Distance(foot, side.part.start), Distance(foot, side.part.end)) < near ||
               std::min(t, 1.0 - t) * LengthOf(edge) < near;
    }

    bool IsSmall(Stretch const &s) const {
        double const extent = !s.isArc ? LengthOf(s) : std::min(LengthOf(s), 2.0 * s.radius);
        return extent < m_tolerance;
    }

    /// Notes the folds at the tip between the side `i` and the next one: the shorter side on the longer one, and both
    /// when they are equally long.
    void LookAtTip(std::size_t i) {
        std::size_t const j = m_sides[i].next;
        double const difference = LengthOf(m_sides[i].part) - LengthOf(m_sides[j].part);
        if (difference < kStepInSnaps * m_snap)
            LookAtFold(i, i, j);
        if (difference > -kStepInSnaps * m_snap)
            LookAtFold(i, j, i);
    }

    /// Notes the fold of one side on the other when they stay near one another that far.
    void LookAtFold(std::size_t tip, std::size_t shorter, std::size_t longer) {
        Side const &shortSide = m_sides[shorter], &longSide = m_sides[longer];
        bool const isFirst = shorter == tip;
        DrawingPoint const far = isFirst ? shortSide.Begin() : shortSide.End();
        int const farPlace = isFirst ? m_map.Origin(shortSide.half) : m_map.Target(shortSide.half);
        Fold fold{shorter, longer, {}};
        if (FootOn(longSide.part, far, fold.foot) && fold.foot.distance < m_tolerance &&
            !IsAtEnd(longSide, fold.foot.point) && m_map.Places().Fit(farPlace, fold.foot.point, m_tolerance) &&
            DeviationOf(shortSide.part, longSide.part) < m_tolerance &&
            DeviationOf(shortSide.back, longSide.back) < m_tolerance)
            m_tips.push({fold, tip, m_sides[tip].changes, m_sides[m_sides[tip].next].changes,
                         std::round(fold.foot.distance / (kStepInSnaps * m_snap)),
                         m_landmarks.Rank((far + fold.foot.point) * 0.5)});
    }

    void Make(Fold const &fold) {
        Side const gone = m_sides[fold.shortSide];
        Trim(m_sides[fold.longSide], fold.foot.t, gone.next == fold.longSide);
        m_sides[gone.previous].next = gone.next;
        m_sides[gone.next].previous = gone.previous;
        ++m_sides[fold.shortSide].changes;
        ++m_sides[fold.longSide].changes;
        m_any = fold.longSide;
        --m_left;
        m_folds.push_back(fold);
        LookAtTip(m_sides[fold.longSide].previous);
        LookAtTip(fold.longSide);
    }

    /// Takes off the begin or the end of a side as the face runs, up to the fraction `t` of what was left.
    void Trim(Side &side, double t, bool isBegin) const {
        double const at = side.low + t * (side.high - side.low);
        (isBegin != side.half.IsReversed() ? side.low : side.high) = at;
        side.part = PartOf(m_map.Border(side.half), side.low, side.high);
        side.back = PartOf(m_map.Border(side.half.Twin()), side.low, side.high);
    }

    PlanarMap const &m_map;
    double m_tolerance;
    double m_snap;
    Landmarks const &m_landmarks;
    std::vector<Side> m_sides;
    std::size_t m_left;    ///< how many sides are left
    std::size_t m_any = 0; ///< one that is left
    std::priority_queue<TipFold> m_tips;
    std::vector<Fold> m_folds;
};

class ThinFaces {
public:
    ThinFaces(PlanarMap &map, double tolerance, double snap, Landmarks const &landmarks,
              std::vector<DroppedEdge> &dropped)
        : m_map(map), m_tolerance(tolerance), m_snap(snap), m_landmarks(landmarks), m_dropped(dropped) {}

    /// Collapses what is thin now, the thinnest first. Returns whether there was anything.
    bool Collapse() {
        FaceWalks const faces = WalkFaces(m_map);
        std::vector<Measured> thin;
        std::vector<std::vector<HalfEdge>> walks;
        for (FaceWalk const &face : faces.walks) {
            // What lets no disc of the tolerance in has less area than this.
            if (face.isOutside || face.area >= 0.5 * m_tolerance * face.perimeter)
                continue;
            DrawingPoint const middle = MiddleOf(face.first);
            thin.push_back(
                {0, face.area / face.perimeter, m_landmarks.Rank(middle), middle, static_cast<int>(walks.size())});
            walks.push_back(WalkFrom(m_map, face.first));
        }
        SortShortestFirst(thin, m_snap);
        bool any = false;
        for (Measured const &face : thin) {
            // Neighbours that have collapsed took edges away; those that are left still bound the face.
            std::vector<HalfEdge> const &walk = walks[Index(face.number)];
            auto const left =
                std::find_if(walk.begin(), walk.end(), [&](HalfEdge h) { return m_map.IsInMap(h.Edge()); });
            if (left != walk.end())
                any = CollapseFace(*left) || any;
        }
        return any;
    }

private:
    /// The middle of the border by length.
    DrawingPoint MiddleOf(HalfEdge first) const {
        DrawingPoint sum;
        double total = 0.0;
        for (HalfEdge const h : WalkFrom(m_map, first)) {
            double const length = LengthOf(m_map.Border(h));
            sum = sum + PointAt(m_map.Border(h), 0.5) * length;
            total += length;
        }
        return sum * (1.0 / total);
    }

    bool CollapseFace(HalfEdge first) {
        std::vector<HalfEdge> const walk = WalkFrom(m_map, first);
        if (HasBothSidesOfAnEdge(walk))
            return false;
        FoldPlan plan(m_map, walk, m_tolerance, m_snap, m_landmarks);
        if (!plan.Make())
            return false;
        Apply(plan, walk);
        return true;
    }

    static bool HasBothSidesOfAnEdge(std::vector<HalfEdge> const &walk) {
        std::vector<int> edges;
        edges.reserve(walk.size());
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
            int const second =
                SplitAt(edge, fold.foot.point, isShortFirst ? m_map.Origin(shortHalf) : m_map.Target(shortHalf));
            // The long half-edge as the face runs, before and after the cut.
            bool const isReversed = longHalf.IsReversed();
            HalfEdge const before = isReversed ? HalfEdge::Against(second) : HalfEdge::Along(edge);
            HalfEdge const after = isReversed ? HalfEdge::Against(edge) : HalfEdge::Along(second);
            HalfEdge const folded = isShortFirst ? before : after;
            longHalf = isShortFirst ? after : before;
            m_map.MergeAcrossFace(isShortFirst ? shortHalf : m_map.Next(shortHalf), after);
            DropLater(shortHalf, folded);
        }
        auto const [a, b] = plan.Rest();
        if (a != b)
            DropLater(halves[a], halves[b]);
        else
            m_map.Remove(halves[a].Edge(), EdgeState::kContracted);
    }

    /// Cuts an edge where a point of its border falls on it. The new place stands there, or at the point itself when
    /// that is beyond an end of the edge or too far from the place `partner` that will join it.
    int SplitAt(int edge, DrawingPoint p, int partner) {
        double const t = FractionAt(m_map.Edge(edge).stretch, p);
        double const inside = std::clamp(t, kNearEnd, 1.0 - kNearEnd);
        DrawingPoint const onEdge = PointAt(m_map.Edge(edge).stretch, inside);
        bool const isNear = t == inside && m_map.Places().Fit(partner, onEdge, m_tolerance);
        return m_map.Split(edge, inside, isNear ? onEdge : p);
    }

    /// Of two stretches the one farther from the landmarks is the later one, and of those that are alike the one of the
    /// later curve.
    bool IsLater(Stretch const &s, Stretch const &other) const {
        if (s.curve == other.curve)
            return s.from > other.from;
        double const beyond = m_landmarks.Rank(PointAt(s, 0.5)) - m_landmarks.Rank(PointAt(other, 0.5));
        return m_landmarks.AreAlike(std::fabs(beyond)) ? s.curve > other.curve : beyond > 0.0;
    }

    /// Of two half-edges that bound a face by themselves the later one goes.
    void DropLater(HalfEdge a, HalfEdge b) {
        Stretch const &s = m_map.Edge(a).stretch, &other = m_map.Edge(b).stretch;
        bool const isFirstLater = IsLater(s, other);
        HalfEdge const later = isFirstLater ? a : b, original = isFirstLater ? b : a;
        m_map.Drop(later, original);
        m_dropped.push_back({later.Edge(), original.Edge(), m_map.NextPart(original.Edge())});
    }

    PlanarMap &m_map;
    double m_tolerance;
    double m_snap;
    Landmarks const &m_landmarks;
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
    } while (ThinFaces(map, tolerance, snap, landmarks, dropped).Collapse());
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
            if (isTouched[Index(neighbour)])
                continue;
            isTouched[w] = isTouched[Index(neighbour)] = true;
            map.Remove(edge, EdgeState::kDuplicate);
            dropped.push_back({edge});
            any = true;
        }
        if (any)
            SetAsideUnboundingEdges(map);
    }
}

} // namespace zvi::lib::drawing

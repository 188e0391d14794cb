#include "zvi/drawing/ThinFacesDetail.h"

#include "zvi/drawing/ContractionDetail.h"
#include "zvi/drawing/FaceWalkDetail.h"

#include <algorithm>
#include <map>
#include <queue>
#include <tuple>
#include <unordered_map>
#include <utility>

namespace zvi::lib::drawing {

namespace {

/// What is left of an edge of a thin face while its sides are laid on one another.
struct Side {
    HalfEdge half;
    Stretch edge;
    Stretch front;      ///< the border in the face
    Stretch back;       ///< the border in the face behind it
    int beginPlace = 0; ///< the clusters at its ends as the face runs
    int endPlace = 0;
    std::size_t previous = 0;
    std::size_t next = 0;
    unsigned changes = 0; ///< how often its part has changed

    DrawingPoint Begin() const { return half.IsReversed() ? front.end : front.start; }
    DrawingPoint End() const { return half.IsReversed() ? front.start : front.end; }
};

/// One step: the far end of a short side comes to lie on the long side beside it.
struct Fold {
    std::size_t shortSide = 0; ///< as numbered along the walk
    std::size_t longSide = 0;
    int farPlace = 0;      ///< the cluster at the far end
    double t = 0.0;        ///< where what is left of the long edge is cut, a fraction of that
    DrawingPoint place;    ///< there, on the edge
    double distance = 0.0; ///< of the far end from the border of the long side
    DrawingPoint middle;   ///< between the two
};

/// A fold that could be made at the tip behind a side, as long as the same side comes next and neither has changed.
struct TipFold {
    Fold fold;
    std::size_t side = 0;
    unsigned changes = 0;
    unsigned nextChanges = 0;
    double steps = 0.0;     ///< the distance of the fold, in steps that rounding does not change
    double rank = 0.0;      ///< of the fold by the landmarks, in such steps
    double shortRank = 0.0; ///< of the short side

    /// The least far fold is on top of a heap.
    bool operator<(TipFold const &other) const {
        return std::tie(steps, rank, shortRank, side) > std::tie(other.steps, other.rank, other.shortRank, other.side);
    }
};

/// Plans how the sides of one face are laid on one another, from its tips on and nearest first, without touching the
/// map: what it foresees is what the folds do to the map, edge by edge and place by place.
class FoldPlan {
public:
    FoldPlan(PlanarMap const &map, std::vector<HalfEdge> const &walk, double tolerance, double same,
             Landmarks const &landmarks)
        : m_map(map), m_tolerance(tolerance), m_same(same), m_landmarks(landmarks), m_left(walk.size()) {
        for (HalfEdge const h : walk) {
            std::size_t const i = m_sides.size();
            m_sides.push_back({h, map.Edge(h).stretch, map.Border(h), map.Border(h.Twin()), map.Origin(h),
                               map.Target(h), (i + m_left - 1) % m_left, (i + 1) % m_left});
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
            if (IsThereStill(tip) && Fits(tip.fold.farPlace, tip.fold.place))
                Make(tip.fold);
        }
        Side const &last = m_sides[m_any];
        return m_left == 2 ? AreNear(last, m_sides[last.next]) : IsSmall(last.front) && IsSmall(last.back);
    }

    std::vector<Fold> const &Folds() const { return m_folds; }
    /// The two sides that are left at the end, or twice the only one.
    std::pair<std::size_t, std::size_t> Rest() const { return {m_any, m_sides[m_any].next}; }

private:
    /// Whether a stretch stays near what carries another one.
    bool StaysNear(Stretch const &s, Stretch const &other) const { return DeviationOf(s, other, m_same) < m_tolerance; }

    /// Whether two sides stay near one another, and so does what has been laid on them from behind.
    bool AreNear(Side const &a, Side const &b) const {
        return StaysNear(a.front, b.front) && StaysNear(b.front, a.front) && StaysNear(a.back, b.back) &&
               StaysNear(b.back, a.back);
    }

    /// Whether a point is as good as one of the ends of a stretch: there is a place already.
    bool IsAtEnd(Stretch const &s, DrawingPoint p) const {
        return std::min(Distance(p, s.start), Distance(p, s.end)) < m_same;
    }

    /// Whether a disc of the tolerance does not fit into what a stretch encloses by itself.
    bool IsSmall(Stretch const &s) const {
        return (s.IsOverHalf() ? 2.0 * s.radius : Distance(s.start, s.end)) < m_tolerance;
    }

    /// Whether a place may join the cluster of another, as that will be when the folds so far are made.
    bool Fits(int cluster, DrawingPoint place) const {
        auto const [first, last] = m_joined.equal_range(cluster);
        return m_map.Places().Fit(cluster, place, m_tolerance) && std::all_of(first, last, [&](auto const &joined) {
                   return Distance(joined.second, place) < m_tolerance;
               });
    }

    /// Whether the tip is still between the same two sides, and they are what they were.
    bool IsThereStill(TipFold const &tip) const {
        Side const &side = m_sides[tip.side];
        std::size_t const other = tip.fold.shortSide == tip.side ? tip.fold.longSide : tip.fold.shortSide;
        return side.next == other && side.changes == tip.changes && m_sides[other].changes == tip.nextChanges;
    }

    /// Notes the folds at the tip between the side `i` and the next one: the shorter side on the longer one, and both
    /// when they are equally long.
    void LookAtTip(std::size_t i) {
        std::size_t const j = m_sides[i].next;
        double const difference = LengthOf(m_sides[i].front) - LengthOf(m_sides[j].front);
        if (difference < m_same)
            LookAtFold(i, i, j);
        if (difference > -m_same)
            LookAtFold(i, j, i);
    }

    /// Notes the fold of one side on the other when they stay near one another that far.
    void LookAtFold(std::size_t tip, std::size_t shorter, std::size_t longer) {
        Side const &shortSide = m_sides[shorter], &longSide = m_sides[longer];
        bool const isFirst = shorter == tip;
        DrawingPoint const far = isFirst ? shortSide.Begin() : shortSide.End();
        std::optional<Foot> const onBorder = FootOn(longSide.front, far, m_tolerance);
        std::optional<Foot> const onEdge = onBorder ? FootOn(longSide.edge, onBorder->point) : std::nullopt;
        if (!onEdge || IsAtEnd(longSide.front, onBorder->point) || IsAtEnd(longSide.edge, onEdge->point))
            return;
        int const farPlace = isFirst ? shortSide.beginPlace : shortSide.endPlace;
        Fold const fold{shorter,
                        longer,
                        farPlace,
                        onEdge->t,
                        PointAt(longSide.edge, onEdge->t),
                        onBorder->distance,
                        (far + onBorder->point) * 0.5};
        if (Fits(farPlace, fold.place) && StaysNear(shortSide.front, longSide.front) &&
            StaysNear(shortSide.back, longSide.back))
            m_tips.push({fold, tip, m_sides[tip].changes, m_sides[m_sides[tip].next].changes,
                         StepsOf(fold.distance, m_same), StepsOf(m_landmarks.Rank(fold.middle), m_same),
                         m_landmarks.Rank(PointAt(shortSide.front, 0.5))});
    }

    void Make(Fold const &fold) {
        Side const gone = m_sides[fold.shortSide];
        Trim(m_sides[fold.longSide], fold, gone.next == fold.longSide);
        m_sides[gone.previous].next = gone.next;
        m_sides[gone.next].previous = gone.previous;
        ++m_sides[fold.shortSide].changes;
        ++m_sides[fold.longSide].changes;
        m_any = fold.longSide;
        --m_left;
        m_joined.emplace(fold.farPlace, fold.place);
        m_folds.push_back(fold);
        LookAtTip(m_sides[fold.longSide].previous);
        LookAtTip(fold.longSide);
    }

    /// Takes off the begin or the end of a side as the face runs, up to where the fold cuts it.
    static void Trim(Side &side, Fold const &fold, bool isBegin) {
        bool const isStart = isBegin != side.half.IsReversed();
        (isBegin ? side.beginPlace : side.endPlace) = fold.farPlace;
        auto const trim = [&](Stretch &s, double t) { s = isStart ? PartOf(s, t, 1.0) : PartOf(s, 0.0, t); };
        trim(side.edge, fold.t);
        trim(side.front, PlanarMap::BorderCut(side.front, fold.t, fold.place));
        trim(side.back, PlanarMap::BorderCut(side.back, fold.t, fold.place));
    }

    PlanarMap const &m_map;
    double m_tolerance;
    double m_same; ///< a distance that is nothing
    Landmarks const &m_landmarks;
    std::vector<Side> m_sides;
    std::size_t m_left;    ///< how many sides are left
    std::size_t m_any = 0; ///< one that is left
    std::priority_queue<TipFold> m_tips;
    std::vector<Fold> m_folds;
    std::multimap<int, DrawingPoint> m_joined; ///< what the folds so far add to the clusters
};

/// The middle of a face's border by length.
DrawingPoint MiddleOf(PlanarMap const &map, HalfEdge first) {
    DrawingPoint sum;
    double total = 0.0;
    for (HalfEdge const h : WalkFrom(map, first)) {
        double const length = LengthOf(map.Border(h));
        sum = sum + PointAt(map.Border(h), 0.5) * length;
        total += length;
    }
    return sum * (1.0 / total);
}

/// The faces `thin` of a map, the thinnest first.
template <typename IsThin>
std::vector<int> ThinnestFirst(PlanarMap const &map, FaceWalks const &faces, double same, Landmarks const &landmarks,
                               IsThin isThin) {
    std::vector<Measured> thin;
    for (std::size_t w = 0; w < faces.walks.size(); ++w) {
        FaceWalk const &face = faces.walks[w];
        if (face.isOutside || !isThin(face))
            continue;
        DrawingPoint const middle = MiddleOf(map, face.first);
        thin.push_back({0, face.area / face.perimeter, landmarks.Rank(middle), middle, static_cast<int>(w)});
    }
    SortShortestFirst(thin, same);
    std::vector<int> order;
    order.reserve(thin.size());
    for (Measured const &face : thin)
        order.push_back(face.number);
    return order;
}

class ThinFaces {
public:
    ThinFaces(PlanarMap &map, double tolerance, double same, Landmarks const &landmarks,
              std::vector<DroppedEdge> &dropped, base::Workers const &workers)
        : m_workers(workers), m_map(map), m_tolerance(tolerance), m_same(same), m_landmarks(landmarks),
          m_dropped(dropped) {}

    /// Collapses what is thin now, the thinnest first. Returns whether there was anything.
    bool Collapse() {
        FaceWalks const faces = WalkFaces(m_map, m_workers);
        // What lets no disc of the tolerance in has less area than this.
        std::vector<int> const thin = ThinnestFirst(m_map, faces, m_same, m_landmarks, [&](FaceWalk const &face) {
            return face.area < 0.5 * m_tolerance * face.perimeter;
        });
        std::vector<std::vector<HalfEdge>> walks;
        walks.reserve(thin.size());
        for (int const face : thin)
            walks.push_back(WalkFrom(m_map, faces.walks[Index(face)].first));
        bool any = false;
        for (std::vector<HalfEdge> const &walk : walks) {
            // Neighbours that have collapsed took edges away.
            HalfEdge left;
            for (std::size_t i = 0; i < walk.size() && left == HalfEdge(); ++i)
                left = LeftOf(walk[i]);
            if (!(left == HalfEdge()))
                any = CollapseFace(left) || any;
        }
        return any;
    }

private:
    /// What bounds the face on the left of a half-edge in its place, itself as long as it is in the map; no half-edge
    /// when nothing has taken its place.
    HalfEdge LeftOf(HalfEdge h) const {
        while (!m_map.IsInMap(h.Edge())) {
            auto const heir = m_heirs.find(h.number);
            if (heir == m_heirs.end())
                return {};
            h = heir->second;
        }
        return h;
    }

    bool CollapseFace(HalfEdge first) {
        std::vector<HalfEdge> const walk = WalkFrom(m_map, first);
        if (HasBothSidesOfAnEdge(walk))
            return false;
        FoldPlan plan(m_map, walk, m_tolerance, m_same, m_landmarks);
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
            int const second = m_map.Split(edge, fold.t, fold.place);
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

    /// Whether the first of two stretches is the duplicate: where they lie on one another but for rounding the one of
    /// the later curve, or else the one whose curve stands later in the order that moves with the drawing.
    bool IsLater(Stretch const &s, Stretch const &other) const {
        DrawingPoint const middle = PointAt(s, 0.5), otherMiddle = PointAt(other, 0.5);
        if (Distance(middle, otherMiddle) < m_same)
            return std::tie(s.curve, s.from) > std::tie(other.curve, other.from);
        return s.order != other.order ? s.order > other.order
                                      : m_landmarks.Rank(middle) > m_landmarks.Rank(otherMiddle);
    }

    /// Of two half-edges that bound a face by themselves the later one goes, and leaves its place in that order to the
    /// other.
    void DropLater(HalfEdge a, HalfEdge b) {
        Stretch const &s = m_map.Edge(a).stretch, &other = m_map.Edge(b).stretch;
        bool const isFirstLater = IsLater(s, other);
        HalfEdge const later = isFirstLater ? a : b, original = isFirstLater ? b : a;
        m_map.StretchOf(original.Edge()).order = std::min(s.order, other.order);
        m_map.Drop(later, original);
        m_heirs[later.Twin().number] = original;
        m_dropped.push_back({later.Edge(), original.Edge(), m_map.NextPart(original.Edge())});
    }

    base::Workers m_workers;
    PlanarMap &m_map;
    double m_tolerance;
    double m_same; ///< a distance that is nothing
    Landmarks const &m_landmarks;
    std::vector<DroppedEdge> &m_dropped;
    std::unordered_map<int, HalfEdge> m_heirs; ///< of a dropped half-edge, what bounds its face from then on
};

/// The longest edge of the walk that has another face on its other side, -1 if there is none.
int LongestOuterEdge(PlanarMap const &map, FaceWalks const &faces, HalfEdge first, double same,
                     Landmarks const &landmarks) {
    std::vector<Measured> edges;
    for (HalfEdge const h : WalkFrom(map, first))
        if (faces.Of(h) != faces.Of(h.Twin())) {
            Stretch const &s = map.Edge(h).stretch;
            DrawingPoint const middle = PointAt(s, 0.5);
            edges.push_back({0, -LengthOf(s), landmarks.Rank(middle), middle, h.Edge()});
        }
    SortShortestFirst(edges, same);
    return edges.empty() ? -1 : edges.front().number;
}

} // namespace

void CollapseThinFaces(PlanarMap &map, double tolerance, double snap, Landmarks const &landmarks,
                       std::vector<DroppedEdge> &dropped, base::Workers const &workers) {
    SetAsideUnboundingEdges(map);
    double const same = SameDistance(tolerance, snap, landmarks);
    while (ThinFaces(map, tolerance, same, landmarks, dropped, workers).Collapse()) {
        ContractShortEdges(map, tolerance, snap, landmarks, dropped, workers);
        SetAsideUnboundingEdges(map);
    }
}

FaceWalks DropEmptyFaces(PlanarMap &map, double same, Landmarks const &landmarks, std::vector<DroppedEdge> &dropped,
                         base::Workers const &workers) {
    for (;;) {
        bool any = false;
        FaceWalks faces = WalkFaces(map, workers);
        std::vector<bool> isTouched(faces.walks.size(), false);
        auto const isEmpty = [&](FaceWalk const &face) { return face.area <= 0.5 * same * face.perimeter; };
        for (int const face : ThinnestFirst(map, faces, same, landmarks, isEmpty)) {
            if (isTouched[Index(face)])
                continue;
            int const edge = LongestOuterEdge(map, faces, faces.walks[Index(face)].first, same, landmarks);
            if (edge < 0)
                continue;
            int const walk = faces.Of(HalfEdge::Along(edge));
            int const neighbour = walk == face ? faces.Of(HalfEdge::Against(edge)) : walk;
            if (isTouched[Index(neighbour)])
                continue;
            isTouched[Index(face)] = isTouched[Index(neighbour)] = true;
            map.Remove(edge, EdgeState::kDuplicate);
            dropped.push_back({edge});
            any = true;
        }
        if (!any)
            return faces;
        SetAsideUnboundingEdges(map);
    }
}

} // namespace zvi::lib::drawing

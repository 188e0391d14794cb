#include "zvi/drawing/DrawingBlockFacesDetail.h"

#include "zvi/curves/MDomainMaker.h"
#include "zvi/drawing/DrawingFrameDetail.h"

#include <algorithm>
#include <array>

namespace zvi::lib::drawing {

namespace {

/// Chords of one place that lie nearer than this, in radians, get a star. The domain maker takes directions whose
/// cosine exceeds 0.999999, that is 0.0014 radians, for one.
constexpr double kClearlyApart = 0.002;

/// Distance of a star's points from its place. Places are laid out at least 1 apart, and the domain maker merges ends
/// nearer than 0.0001.
constexpr double kStarRadius = 0.25;

/// A place with more spokes becomes a chain of places with so many each, because that many directions fit on a circle.
constexpr int kMaxSpokes = 64;

/// Extent, in snap distances, up to which a layout at the true positions keeps its digits.
constexpr double kLargestExtent = 0x1p33;

/// Distances, in the layout, of the places that lie at no true position, and of the point to the left of everything.
constexpr double kSpacing = 3.0;
constexpr double kFarLeft = 10.0;

/// Angle, in radians, by which the links of a node in a chain stand off the direction 0: the one to the node before
/// counter-clockwise, the one to the node after clockwise.
constexpr double kLinkAngle = 0.02;

double Wrapped(double angle) {
    return angle - kTwoPi * std::floor(angle / kTwoPi);
}

/// Lays a block out for the domain maker and reads its faces back.
class Layout {
public:
    Layout(BlockView const &someBlock, std::vector<int> &scratch) : block(someBlock), nodeOfHalf(scratch) {}

    Loops Faces() {
        PlaceNodes();
        AddEdges();
        maker.MakeDomain();
        return ReadLoops();
    }

private:
    struct Node {
        DM_VTEX at{0.0, 0.0};
        bool hasStar = false;
        int vertex = -1; ///< index in the domain maker
    };

    Edge const &EdgeOf(int half) const { return block.network->edges[At(EdgeOfHalf(half))]; }

    DrawingPoint Direction(int half) const {
        Edge const &e = EdgeOf(half);
        return (half & 1) == 0 ? e.end - e.start : e.start - e.end;
    }

    /// Whether the chords leave the corner in the order of its spokes, clearly apart.
    bool ChordsAreClear(Corner const &corner) const {
        if (corner.count < 3)
            return true;
        double total = 0.0;
        int const *spokes = block.spokes->data() + corner.begin;
        double const first = ChordAngle(spokes[0]);
        double angle = first;
        for (int i = 1; i <= corner.count; ++i) {
            double const next = i < corner.count ? ChordAngle(spokes[i]) : first;
            double const gap = Wrapped(next - angle);
            if (gap < kClearlyApart)
                return false;
            total += gap;
            angle = next;
        }
        return total < 1.5 * kTwoPi;
    }

    double ChordAngle(int half) const {
        if (!EdgeOf(half).isArc)
            return (*block.directions)[At(half)];
        DrawingPoint const d = Direction(half);
        return std::atan2(d.y, d.x);
    }

    void PlaceNodes() {
        MeasureExtent();
        for (Corner const &corner : *block.corners)
            if (corner.count > kMaxSpokes)
                AddChain(corner);
            else
                AddNode(corner.begin, corner.begin + corner.count, PositionOf(corner.place),
                        !isTrue || !ChordsAreClear(corner));
    }

    void MeasureExtent() {
        Box box{HUGE_VAL, HUGE_VAL, -HUGE_VAL, -HUGE_VAL};
        for (Corner const &corner : *block.corners) {
            DrawingPoint const p = block.network->places[At(corner.place)];
            box = {std::min(box.minX, p.x), std::min(box.minY, p.y), std::max(box.maxX, p.x), std::max(box.maxY, p.y)};
        }
        origin = {box.minX, box.minY};
        scale = 1.0 / block.network->snap;
        double const extent = std::max(box.maxX - box.minX, box.maxY - box.minY) * scale;
        isTrue = !block.network->isCrowded && extent <= kLargestExtent;
        freeX = isTrue ? extent + kSpacing : 0.0;
    }

    /// The true position, at a scale that sets places 1 apart; or, where that does not hold, one in a row.
    DM_VTEX PositionOf(int place) {
        if (!isTrue)
            return FreePosition();
        DrawingPoint const p = (block.network->places[At(place)] - origin) * scale;
        return {p.x, p.y};
    }

    DM_VTEX FreePosition() {
        freeX += kSpacing;
        return {freeX, 0.0};
    }

    int AddNode(int begin, int end, DM_VTEX at, bool hasStar) {
        int const node = static_cast<int>(nodes.size());
        nodes.push_back({at, hasStar, -1});
        int const count = end - begin;
        for (int i = begin; i < end; ++i) {
            nodeOfHalf[At((*block.spokes)[At(i)])] = node;
            if (hasStar)
                SetStar((*block.spokes)[At(i)], i - begin, count);
        }
        return node;
    }

    void SetStar(int half, int index, int count) {
        double const angle = kTwoPi * (index + 0.5) / count;
        if (stars.empty())
            stars.resize(2 * block.edges->size(), {0.0, 0.0});
        stars[LocalHalf(half)] = {kStarRadius * std::cos(angle), kStarRadius * std::sin(angle)};
    }

    std::size_t LocalHalf(int half) const {
        auto const &edges = *block.edges;
        auto const at = std::lower_bound(edges.begin(), edges.end(), EdgeOfHalf(half)) - edges.begin();
        return 2 * static_cast<std::size_t>(at) + At(half & 1);
    }

    /// A row of nodes joined by links. Around each stand the link to the node before, its share of the spokes, the link
    /// to the node after, so that the row as a whole has the spokes in their order.
    void AddChain(Corner const &corner) {
        int before = -1;
        for (int i = 0; i < corner.count; i += kMaxSpokes) {
            int const count = std::min(kMaxSpokes, corner.count - i);
            int const node = AddNode(corner.begin + i, corner.begin + i + count, FreePosition(), true);
            // The spokes' own share of the circle is squeezed to leave room for the links at angle 0.
            for (int k = 0; k < count; ++k)
                SetStar((*block.spokes)[At(corner.begin + i + k)], k + 1, count + 2);
            if (before >= 0)
                links.push_back({before, node});
            before = node;
        }
    }

    /// Where the edge leaves its node: on the star, or, beside a star at its other end, on the chord.
    DM_VTEX MidPoint(int half) const {
        Node const &node = nodes[At(nodeOfHalf[At(half)])];
        if (node.hasStar) {
            DM_VTEX const star = stars[LocalHalf(half)];
            return {node.at.x + star.x, node.at.y + star.y};
        }
        DrawingPoint const d = Direction(half);
        double const share = kStarRadius / Length(d);
        return {node.at.x + d.x * share, node.at.y + d.y * share};
    }

    void AddEdges() {
        int const outer = OuterHalfEdge(block);
        for (std::size_t i = 0; i < block.edges->size(); ++i) {
            int const half = 2 * (*block.edges)[i];
            Node &start = nodes[At(nodeOfHalf[At(half)])];
            Node &end = nodes[At(nodeOfHalf[At(half + 1)])];
            points.clear();
            points.push_back(start.at);
            bool const isOuter = EdgeOfHalf(outer) == EdgeOfHalf(half);
            if (isOuter || start.hasStar || end.hasStar) {
                points.push_back(MidPoint(half));
                if (isOuter)
                    AddFarLeft((outer & 1) == 0);
                points.push_back(MidPoint(half + 1));
            }
            points.push_back(end.at);
            AddPolyline(static_cast<unsigned int>(i) + 1, start, end);
        }
        unsigned int id = static_cast<unsigned int>(block.edges->size());
        for (auto const &[before, after] : links) {
            Node &start = nodes[At(before)], &end = nodes[At(after)];
            points.assign(
                {start.at,
                 {start.at.x + kStarRadius * std::cos(-kLinkAngle), start.at.y + kStarRadius * std::sin(-kLinkAngle)},
                 {end.at.x + kStarRadius * std::cos(kLinkAngle), end.at.y + kStarRadius * std::sin(kLinkAngle)},
                 end.at});
            AddPolyline(++id, start, end);
        }
    }

    /// Three points that pass downward to the left of everything.
    void AddFarLeft(bool forward) {
        double const up = forward ? 1.0 : -1.0;
        points.push_back({-kFarLeft, up});
        points.push_back({-2.0 * kFarLeft, 0.0});
        points.push_back({-kFarLeft, -up});
    }

    void AddPolyline(unsigned int id, Node &start, Node &end) {
        for (std::size_t k = 0; k + 1 < points.size(); ++k) {
            maker.AddCurv(id, points[k], points[k + 1]);
            if (k == 0 && start.vertex < 0)
                start.vertex = vertexCount++;
            if (k + 2 < points.size())
                ++vertexCount;
            else if (end.vertex < 0)
                end.vertex = vertexCount++;
        }
    }

    Loops ReadLoops() {
        Loops loops;
        int const edgeCount = static_cast<int>(block.edges->size());
        for (DM_SURF const &surf : maker.GetResultSurf()) {
            std::vector<int> loop;
            for (std::size_t k = 0; k < surf.Curv.Size() && k + 1 < surf.Vtex.Size(); ++k) {
                if (surf.Curv[k] > edgeCount)
                    continue;
                int const half = 2 * (*block.edges)[At(surf.Curv[k] - 1)];
                int const start = nodes[At(nodeOfHalf[At(half)])].vertex;
                int const end = nodes[At(nodeOfHalf[At(half + 1)])].vertex;
                bool const forward = surf.Vtex[k] == start || surf.Vtex[k + 1] == end;
                int const taken = forward ? half : half + 1;
                if (loop.empty() || loop.back() != taken)
                    loop.push_back(taken);
            }
            if (loop.size() > 1 && loop.front() == loop.back())
                loop.pop_back();
            loops.push_back(std::move(loop));
        }
        return loops;
    }

    BlockView const &block;
    std::vector<int> &nodeOfHalf;
    std::vector<Node> nodes;
    std::vector<DM_VTEX> stars; ///< offset of each half-edge's point on its star
    std::vector<std::pair<int, int>> links;
    std::vector<DM_VTEX> points;
    MDomainMaker maker;
    DrawingPoint origin;
    double scale = 1.0;
    double freeX = 0.0;
    bool isTrue = true;
    int vertexCount = 0;
};

} // namespace

int OuterHalfEdge(BlockView const &block) {
    double left = HUGE_VAL;
    int half = -1, end = 0;
    for (int const e : *block.edges) {
        Leftmost const found = LeftmostOf(Turned(block.network->edges[At(e)]));
        if (found.point.x >= left)
            continue;
        left = found.point.x;
        end = found.end;
        half = 2 * e;
    }
    Edge const &e = block.network->edges[At(EdgeOfHalf(half))];
    if (end == 2)
        return e.sweep > 0.0 ? half : half + 1;
    // At a place the first spoke counter-clockwise from the left.
    int const place = end == 0 ? e.startPlace : e.endPlace;
    auto const corner = std::find_if(block.corners->begin(), block.corners->end(),
                                     [place](Corner const &c) { return c.place == place; });
    double const west = kFrameAngle + kPi;
    double best = HUGE_VAL;
    for (int i = corner->begin; i < corner->begin + corner->count; ++i) {
        int const spoke = (*block.spokes)[At(i)];
        double const angle = Wrapped((*block.directions)[At(spoke)] - west);
        if (angle < best) {
            best = angle;
            half = spoke;
        }
    }
    return half;
}

Loops FacesByDomainMaker(BlockView const &block, std::vector<int> &scratch) {
    return Layout(block, scratch).Faces();
}

} // namespace zvi::lib::drawing

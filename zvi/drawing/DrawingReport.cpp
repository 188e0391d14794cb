#include "zvi/drawing/DrawingReportDetail.h"

#include <algorithm>
#include <numeric>
#include <tuple>

namespace zvi::lib::drawing {

namespace {

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

/// Turns faces into domains.
class Reporter {
public:
    Reporter(Network const &someNetwork, std::vector<DrawingCurve> const &someCurves, Faces const &someFaces)
        : network(someNetwork), curves(someCurves), faces(someFaces) {}

    /// The loop from its first edge on, with neighbouring stretches of one curve put together.
    std::vector<DrawingPiece> LoopOf(Face const &face) const {
        auto const &h = face.halfEdges;
        auto const first = static_cast<std::size_t>(std::min_element(h.begin(), h.end()) - h.begin());
        std::size_t const begin = StartOfStretch(h, first);
        std::vector<DrawingPiece> loop;
        for (std::size_t k = 0; k < h.size(); ++k) {
            std::size_t const i = (begin + k) % h.size(), before = (begin + k + h.size() - 1) % h.size();
            DrawingPiece const piece = PieceOf(EdgeOf(h[i]), curves, (h[i] & 1) != 0);
            if (k > 0 && Continues(h[before], h[i]))
                Extend(loop.back(), piece);
            else
                loop.push_back(piece);
        }
        if (loop.size() == 1 && loop[0].from == 0.0 && loop[0].to == 1.0 && EdgeOf(h[0]).isArc)
            loop[0].type = DrawingCurveType::kCircle;
        return loop;
    }

    DrawingDomain DomainOf(int face, std::vector<int> const &holes) const {
        DrawingDomain domain;
        Add(domain, faces.faces[At(face)]);
        domain.outer = LoopOf(faces.faces[At(face)]);
        for (int const hole : holes) {
            Add(domain, faces.faces[At(hole)]);
            domain.holes.push_back(LoopOf(faces.faces[At(hole)]));
        }
        return domain;
    }

private:
    Edge const &EdgeOf(int half) const { return network.edges[At(EdgeOfHalf(half))]; }

    void Add(DrawingDomain &domain, Face const &face) const {
        domain.area += face.area;
        domain.perimeter += LoopLength(network, face.halfEdges);
    }

    /// Whether `next` goes on along the curve of `half` as one line or one arc.
    bool Continues(int half, int next) const {
        Edge const &a = EdgeOf(half), &b = EdgeOf(next);
        if (half == next || a.curve != b.curve || (half & 1) != (next & 1) || a.isArc != b.isArc)
            return false;
        if ((half & 1) == 0 ? a.to != b.from : a.from != b.to)
            return false;
        if (a.isArc)
            return a.center == b.center && a.radius == b.radius;
        DrawingPoint const u = a.end - a.start, v = b.end - b.start;
        return std::fabs(Cross(u, v)) <= 4.0 * network.rounding * std::max(Length(u), Length(v));
    }

    /// Goes back from `i` while the half-edges before it belong to one stretch with it.
    std::size_t StartOfStretch(std::vector<int> const &h, std::size_t i) const {
        for (std::size_t k = 0; k < h.size(); ++k) {
            std::size_t const before = (i + h.size() - 1) % h.size();
            if (!Continues(h[before], h[i]))
                break;
            i = before;
        }
        return i;
    }

    static void Extend(DrawingPiece &piece, DrawingPiece const &more) {
        piece.end = more.end;
        piece.from = std::min(piece.from, more.from);
        piece.to = std::max(piece.to, more.to);
    }

    Network const &network;
    std::vector<DrawingCurve> const &curves;
    Faces const &faces;
};

/// The order in which faces are reported: by their earliest half-edge.
std::vector<int> OrderOf(Faces const &faces) {
    std::vector<int> order, earliest;
    for (Face const &face : faces.faces)
        earliest.push_back(*std::min_element(face.halfEdges.begin(), face.halfEdges.end()));
    order.resize(earliest.size());
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(), [&](int a, int b) { return earliest[At(a)] < earliest[At(b)]; });
    return order;
}

} // namespace

void Report(Network const &network, std::vector<DrawingCurve> const &curves, Blocks const &blocks, Faces const &faces,
            std::vector<int> const &parents, std::vector<KeptDuplicate> const &, DrawingResult &result) {
    std::vector<int> const order = OrderOf(faces);
    std::vector<std::vector<int>> holes(faces.faces.size());
    for (int const f : order)
        if (parents[At(f)] >= 0)
            holes[At(parents[At(f)])].push_back(f);
    Reporter const reporter(network, curves, faces);
    for (int const f : order)
        if (!faces.faces[At(f)].isOutside)
            result.domains.push_back(reporter.DomainOf(f, holes[At(f)]));
    result.leftovers = network.leftovers;
    for (std::size_t e = 0; e < network.edges.size(); ++e) {
        int const block = blocks.blockOfEdge[e];
        if (block < 0)
            result.leftovers.push_back({PieceOf(network.edges[e], curves, false),
                                        block == kDangleEdge ? LeftoverReason::kDangle : LeftoverReason::kBridge});
    }
    result.counts = network.counts;
}

} // namespace zvi::lib::drawing

#include "zvi/drawing/DrawingReportDetail.h"

#include <algorithm>
#include <numeric>

namespace zvi::lib::drawing {

namespace {

/// An edge as a loop runs through it.
struct Stretch {
    Edge const *edge = nullptr;
    bool reversed = false;
};

/// Turns faces into domains, and remembers which edges and duplicates they took.
class Reporter {
public:
    Reporter(Network const &someNetwork, std::vector<DrawingCurve> const &someCurves, Faces const &someFaces,
             std::vector<KeptDuplicate> const &someDuplicates)
        : network(someNetwork), curves(someCurves), faces(someFaces), duplicates(someDuplicates),
          edgeTaken(network.edges.size(), false), nextDuplicate(network.edges.size(), -1),
          duplicateTaken(duplicates.size(), false), after(duplicates.size(), -1) {
        for (std::size_t d = duplicates.size(); d-- > 0;) {
            after[d] = nextDuplicate[At(duplicates[d].original)];
            nextDuplicate[At(duplicates[d].original)] = static_cast<int>(d);
        }
    }

    DrawingDomain DomainOf(int face, std::vector<int> const &holes) {
        DrawingDomain domain;
        domain.outer = Add(domain, face);
        for (int const hole : holes)
            domain.holes.push_back(Add(domain, hole));
        return domain;
    }

    bool IsTaken(std::size_t edge) const { return edgeTaken[edge]; }
    bool IsDuplicateTaken(std::size_t duplicate) const { return duplicateTaken[duplicate]; }

private:
    std::vector<DrawingPiece> Add(DrawingDomain &domain, int index) {
        Face const &face = faces.faces[At(index)];
        domain.area += face.area;
        domain.perimeter += LoopLength(network, face.halfEdges);
        return LoopOf(face);
    }

    /// The edge of the half-edge for the face that asks first, and for the face on its other side the next of the kept
    /// duplicates, so that a border drawn twice gives each of its two domains a curve of its own.
    Stretch Take(int half) {
        std::size_t const e = At(EdgeOfHalf(half));
        Edge const &edge = network.edges[e];
        int const d = nextDuplicate[e];
        if (!edgeTaken[e] || d < 0) {
            edgeTaken[e] = true;
            return {&edge, (half & 1) != 0};
        }
        nextDuplicate[e] = after[At(d)];
        duplicateTaken[At(d)] = true;
        Edge const &other = duplicates[At(d)].edge;
        bool const same =
            edge.IsLoop() ? (edge.sweep > 0.0) == (other.sweep > 0.0) : edge.startPlace == other.startPlace;
        return {&other, ((half & 1) != 0) == same};
    }

    /// The loop from its first edge on, with neighbouring stretches of one curve put together.
    std::vector<DrawingPiece> LoopOf(Face const &face) {
        std::vector<Stretch> loop;
        for (int const h : face.halfEdges)
            loop.push_back(Take(h));
        auto const &halves = face.halfEdges;
        std::size_t const count = loop.size();
        auto first = static_cast<std::size_t>(std::min_element(halves.begin(), halves.end()) - halves.begin());
        for (std::size_t k = 0; k < count; ++k) {
            std::size_t const before = (first + count - 1) % count;
            if (!Continues(loop[before], loop[first]))
                break;
            first = before;
        }
        std::rotate(loop.begin(), loop.begin() + static_cast<std::ptrdiff_t>(first), loop.end());
        std::vector<DrawingPiece> pieces;
        for (std::size_t i = 0; i < loop.size(); ++i) {
            DrawingPiece const piece = PieceOf(*loop[i].edge, curves, loop[i].reversed);
            if (i > 0 && Continues(loop[i - 1], loop[i]))
                Extend(pieces.back(), piece);
            else
                pieces.push_back(piece);
        }
        if (pieces.size() == 1 && loop[0].edge->isArc)
            pieces[0].type = DrawingCurveType::kCircle;
        return pieces;
    }

    /// Whether `next` goes on along the curve of `s` as one line or one arc.
    bool Continues(Stretch s, Stretch next) const {
        Edge const &a = *s.edge, &b = *next.edge;
        if (&a == &b || a.curve != b.curve || s.reversed != next.reversed || a.isArc != b.isArc)
            return false;
        if (s.reversed ? a.from != b.to : a.to != b.from)
            return false;
        if (a.isArc)
            return a.center == b.center && a.radius == b.radius;
        DrawingPoint const u = a.end - a.start, v = b.end - b.start;
        return std::fabs(Cross(u, v)) <= 4.0 * network.rounding * std::max(Length(u), Length(v));
    }

    static void Extend(DrawingPiece &piece, DrawingPiece const &more) {
        piece.end = more.end;
        piece.from = std::min(piece.from, more.from);
        piece.to = std::max(piece.to, more.to);
    }

    Network const &network;
    std::vector<DrawingCurve> const &curves;
    Faces const &faces;
    std::vector<KeptDuplicate> const &duplicates;
    std::vector<bool> edgeTaken;
    std::vector<int> nextDuplicate; ///< of each edge, the first duplicate not taken yet
    std::vector<bool> duplicateTaken;
    std::vector<int> after; ///< of each duplicate, the next one of the same edge
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

LeftoverReason ReasonOf(int block) {
    return block == kDangleEdge ? LeftoverReason::kDangle : LeftoverReason::kBridge;
}

} // namespace

void Report(Network const &network, std::vector<DrawingCurve> const &curves, Blocks const &blocks, Faces const &faces,
            std::vector<int> const &parents, std::vector<KeptDuplicate> const &duplicates, DrawingResult &result) {
    std::vector<int> const order = OrderOf(faces);
    std::vector<std::vector<int>> holes(faces.faces.size());
    for (int const f : order)
        if (parents[At(f)] >= 0)
            holes[At(parents[At(f)])].push_back(f);
    Reporter reporter(network, curves, faces, duplicates);
    for (int const f : order)
        if (!faces.faces[At(f)].isOutside)
            result.domains.push_back(reporter.DomainOf(f, holes[At(f)]));

    result.counts = network.counts;
    result.leftovers = network.leftovers;
    for (std::size_t e = 0; e < network.edges.size(); ++e)
        if (!reporter.IsTaken(e))
            result.leftovers.push_back({PieceOf(network.edges[e], curves, false), ReasonOf(blocks.blockOfEdge[e])});
    for (std::size_t d = 0; d < duplicates.size(); ++d)
        if (!reporter.IsDuplicateTaken(d)) {
            ++result.counts.duplicates;
            result.leftovers.push_back({PieceOf(duplicates[d].edge, curves, false), LeftoverReason::kDuplicate});
        }
}

} // namespace zvi::lib::drawing

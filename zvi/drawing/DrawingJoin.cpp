#include "zvi/drawing/DrawingJoinDetail.h"

#include <algorithm>

namespace zvi::lib::drawing {

namespace {

/// Coordinates beyond this size cannot be squared, and radii below its inverse vanish when they are.
constexpr double kLargestSize = 1e150;

/// An arc's ends may miss its circle by this share of the radius, or by the join tolerance.
constexpr double kOffCircle = 1e-6;

bool IsUsable(double v) {
    return std::fabs(v) <= kLargestSize;
}
bool IsUsable(DrawingPoint p) {
    return IsUsable(p.x) && IsUsable(p.y);
}

bool EndsLieOnCircle(DrawingCurve const &c, double tolerance) {
    double const allowed = std::max(tolerance, c.radius * kOffCircle);
    return std::fabs(Distance(c.start, c.center) - c.radius) <= allowed &&
           std::fabs(Distance(c.end, c.center) - c.radius) <= allowed;
}

bool IsSupported(DrawingCurve const &c, double tolerance) {
    if (c.type == DrawingCurveType::kLine)
        return IsUsable(c.start) && IsUsable(c.end);
    if (!IsUsable(c.center) || !IsUsable(c.radius) || c.radius < 1.0 / kLargestSize)
        return false;
    return c.type == DrawingCurveType::kCircle ||
           (IsUsable(c.start) && IsUsable(c.end) && EndsLieOnCircle(c, tolerance));
}

/// The edge as it is written, with no places yet.
Edge EdgeOf(DrawingCurve const &c, int index) {
    Edge e;
    e.curve = index;
    e.start = c.start;
    e.end = c.end;
    if (c.type == DrawingCurveType::kLine)
        return e;
    e.isArc = true;
    e.center = c.center;
    e.radius = c.radius;
    if (c.type == DrawingCurveType::kCircle) {
        e.start = e.end = {c.center.x + c.radius, c.center.y};
        e.sweep = kTwoPi;
        return e;
    }
    e.sweep = c.clockwise ? -1.0 : 1.0;
    double const turn = TurnTo(e, c.end);
    e.sweep *= turn;
    return e;
}

/// The piece that stands for a curve whose numbers are unusable: as written, whole.
DrawingPiece PieceAsWritten(DrawingCurve const &c) {
    DrawingPiece piece;
    piece.curve = c.id;
    piece.type = c.type;
    piece.start = c.start;
    piece.end = c.end;
    piece.center = c.center;
    piece.radius = c.radius;
    piece.clockwise = c.clockwise;
    return piece;
}

double LargestCoordinate(std::vector<Edge> const &edges) {
    double largest = 0.0;
    for (Edge const &e : edges)
        for (DrawingPoint const p : {e.start, e.end})
            largest = std::max({largest, std::fabs(p.x), std::fabs(p.y)});
    return largest;
}

bool IsCircle(Edge const &e) {
    return e.isArc && std::fabs(e.sweep) >= kTwoPi;
}

int JoinEnd(Network &network, PlaceIndex &index, DrawingPoint p, double tolerance) {
    std::size_t const before = network.places.size();
    int const place = index.NearestOrAdd(p, tolerance);
    if (tolerance < network.snap && network.places.size() > before)
        network.isCrowded = true;
    network.endsAsWritten.resize(network.places.size(), 0);
    if (network.places[At(place)] == p)
        ++network.endsAsWritten[At(place)];
    else
        ++network.counts.joined;
    return place;
}

/// Moves curves that shrank to a point to the leftovers. A nearly full arc whose ends met is a circle.
void KeepCurvesWithLength(Network &network, PlaceIndex &index, std::vector<DrawingCurve> const &curves) {
    std::vector<Edge> kept;
    kept.reserve(network.edges.size());
    for (Edge &e : network.edges) {
        if (e.IsLoop() && std::fabs(e.sweep) <= kPi) {
            DrawingPiece piece = PieceOf(e, curves, false);
            piece.type = curves[At(e.curve)].type;
            network.leftovers.push_back({piece, LeftoverReason::kZeroLength});
            continue;
        }
        if (IsBetterHalved(e, network.places, network.rounding)) {
            Edge half = TakeSecondHalf(e, index.NearestOrAdd(PointAt(e, 0.5), network.snap));
            FitToPlaces(half, network.places, network.rounding);
            kept.push_back(half);
        }
        FitToPlaces(e, network.places, network.rounding);
        kept.push_back(e);
    }
    network.edges.swap(kept);
}

} // namespace

void JoinEnds(std::vector<DrawingCurve> const &curves, DrawingOptions const &options, Network &network) {
    double const tolerance = options.joinTolerance > 0.0 ? options.joinTolerance : 0.0;
    for (std::size_t i = 0; i < curves.size(); ++i) {
        if (IsSupported(curves[i], tolerance))
            network.edges.push_back(EdgeOf(curves[i], static_cast<int>(i)));
        else
            network.leftovers.push_back({PieceAsWritten(curves[i]), LeftoverReason::kUnsupported});
    }
    network.rounding = LargestCoordinate(network.edges) * kRounding;
    network.snap = std::max(tolerance, network.rounding);

    // Cutting lets ends meet a circle where it starts as anywhere else; without it a circle stays by itself.
    PlaceIndex index(network.places, network.snap);
    if (options.split)
        for (Edge &e : network.edges)
            if (IsCircle(e))
                e.startPlace = e.endPlace = index.NearestOrAdd(e.start, network.snap);
    for (Edge &e : network.edges) {
        if (IsCircle(e))
            continue;
        e.startPlace = JoinEnd(network, index, e.start, tolerance);
        e.endPlace = JoinEnd(network, index, e.end, tolerance);
    }
    network.isCrowded = network.isCrowded || !options.split;
    if (!options.split)
        for (Edge &e : network.edges)
            if (IsCircle(e))
                e.startPlace = e.endPlace = index.Add(e.start);
    KeepCurvesWithLength(network, index, curves);
    network.endsAsWritten.resize(network.places.size(), 0);
}

} // namespace zvi::lib::drawing

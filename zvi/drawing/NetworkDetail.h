#pragma once

// The network that the stages of MakeDrawingDomains hand on: places, and the edges between them.

#include "zvi/drawing/DrawingRecords.h"

#include <cmath>
#include <cstddef>
#include <vector>

namespace zvi::lib::drawing {

inline constexpr double kPi = 3.14159265358979323846;
inline constexpr double kTwoPi = 2.0 * kPi;

/// Rounding of a coordinate as a share of the largest coordinate: sixteen units in the last place.
inline constexpr double kRounding = 0x1p-48;

inline DrawingPoint operator+(DrawingPoint a, DrawingPoint b) {
    return {a.x + b.x, a.y + b.y};
}
inline DrawingPoint operator-(DrawingPoint a, DrawingPoint b) {
    return {a.x - b.x, a.y - b.y};
}
inline DrawingPoint operator*(DrawingPoint a, double s) {
    return {a.x * s, a.y * s};
}
inline bool operator==(DrawingPoint a, DrawingPoint b) {
    return a.x == b.x && a.y == b.y;
}
inline double Dot(DrawingPoint a, DrawingPoint b) {
    return a.x * b.x + a.y * b.y;
}
inline double Cross(DrawingPoint a, DrawingPoint b) {
    return a.x * b.y - a.y * b.x;
}
inline double Length(DrawingPoint a) {
    return std::sqrt(Dot(a, a));
}
inline double Distance(DrawingPoint a, DrawingPoint b) {
    return Length(a - b);
}
/// The vector turned by a quarter, counter-clockwise.
inline DrawingPoint Left(DrawingPoint a) {
    return {-a.y, a.x};
}
inline double SquaredDistance(DrawingPoint a, DrawingPoint b) {
    return Dot(a - b, a - b);
}

/// The numbers of edges, places, faces and half-edges are int, and -1 says none; this is one as an index.
inline std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

struct Box {
    double minX = 0.0, minY = 0.0, maxX = 0.0, maxY = 0.0;
};

/// A stretch of a caller's curve between two places. It runs in the direction of that curve.
/// `sweep` is the angle an arc turns through, positive counter-clockwise, and 0 for a line. An edge that starts and
/// ends in one place is a full turn.
struct Edge {
    int curve = 0; ///< index of the caller's curve
    int startPlace = 0;
    int endPlace = 0;
    double from = 0.0; ///< fraction of the length of the caller's curve
    double to = 1.0;
    DrawingPoint start;
    DrawingPoint end;
    DrawingPoint center;
    double radius = 0.0;
    double sweep = 0.0;
    bool isArc = false;
    bool moved = false; ///< an end was moved off the caller's curve in the latest step

    bool IsLoop() const { return startPlace == endPlace; }
};

/// The edges, the places that they join, and what stays of the caller's curves beside them.
struct Network {
    std::vector<DrawingPoint> places;
    std::vector<int> endsAsWritten; ///< of each place of the beginning: how many ends were written at its very position
    std::vector<int> endCounts;     ///< of each place, while edges are cut: how many edges end there
    std::vector<Edge> edges;
    std::vector<DrawingLeftover> leftovers;
    DrawingCounts counts;
    double snap = 0.0;      ///< distance below which two places are one
    bool isCrowded = false; ///< some places may be nearer to one another than the snap distance
    double rounding = 0.0;  ///< distance that rounding alone accounts for, at the size of the coordinates
};

/// Angle of `p` about the centre of arc `e`, measured from its start in its direction, 0 to below a full turn.
double TurnTo(Edge const &e, DrawingPoint p);

/// Point of the edge at the fraction `t` of its length.
DrawingPoint PointAt(Edge const &e, double t);

/// Smallest box of the edge.
Box BoxOf(Edge const &e);

double LengthOf(Edge const &e);

/// Rise of the arc over its chord, positive when the arc lies to the right of the chord; 0 for a line.
double SagittaOf(Edge const &e);

/// Area between the edge and its chord, positive when the edge turns counter-clockwise; a loop gives the full disc.
double SegmentAreaOf(Edge const &e);

/// Sets the ends of `e` to its places. An arc whose ends left its circle by more than `rounding` is bent to meet them:
/// an arc up to a half turn keeps its rise, a longer one its middle point; one without any rise becomes a line.
/// Returns whether the edge was bent.
bool FitToPlaces(Edge &e, std::vector<DrawingPoint> const &places, double rounding);

/// Whether FitToPlaces would bend an arc of more than a half turn, which a small move of an end can throw far off.
bool IsBetterHalved(Edge const &e, std::vector<DrawingPoint> const &places, double rounding);

/// Makes `e` end at its middle, in the place `middle`, and gives the other half.
Edge TakeSecondHalf(Edge &e, int middle);

/// The edge as a piece of the result, as it runs.
DrawingPiece PieceOf(Edge const &e, std::vector<DrawingCurve> const &curves, bool reversed);

} // namespace zvi::lib::drawing

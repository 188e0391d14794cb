#pragma once

// The geometry of one stretch of a caller's curve.

#include "zvi/drawing/PlaneDetail.h"

#include <optional>
#include <vector>

namespace zvi::lib::drawing {

/// Stands for the caller's curve of a connector, which has none.
inline constexpr int kNoCurve = -1;

/// Angles that differ by less differ by rounding alone.
inline constexpr double kNoAngle = 1e-9;

/// A stretch of a caller's curve, in the direction of that curve. `sweep` is the angle an arc turns through, positive
/// counter-clockwise, and 0 for a line.
struct Stretch {
    int curve = kNoCurve; ///< index of the caller's curve
    int order = 0;        ///< where the curve stands among all in an order that moves with the drawing
    bool isArc = false;
    double from = 0.0; ///< fraction of the length of the caller's curve
    double to = 1.0;   ///< beyond 1 where it runs past the start of a circle
    DrawingPoint start;
    DrawingPoint end;
    DrawingPoint center;
    double radius = 0.0; ///< of an arc; of a connector how wide its gap is, however it has been cut
    double sweep = 0.0;

    bool IsConnector() const { return curve == kNoCurve; }
    /// Whether an arc turns through more than half of its circle, and not by rounding alone.
    bool IsOverHalf() const { return isArc && std::fabs(sweep) > kPi + kNoAngle; }
    /// Whether an arc turns through all of its circle.
    bool IsFullTurn() const { return isArc && std::fabs(sweep) >= kTwoPi; }
};

/// Nearest point of a stretch to some point, where it lies inside the stretch and not at an end; a circle has no ends.
struct Foot {
    double distance = 0.0;
    double t = 0.0; ///< fraction of the length of the stretch
    DrawingPoint point;
};

/// The foot of `p` on the inside of `s`. None when the nearest point of the carrier lies beyond the ends, or when `p`
/// is the centre of the arc, or not nearer to it than `within`.
std::optional<Foot> FootOn(Stretch const &s, DrawingPoint p, double within = HUGE_VAL);

/// Distance from `p` to the stretch, its ends included.
double DistanceTo(Stretch const &s, DrawingPoint p);

/// How far `p` lies outside the circle of an arc, negative inside. It keeps its digits however large the radius is.
double OutOfCircle(Stretch const &arc, DrawingPoint p);

/// Angle of `p` about the centre of an arc, measured from its start in its direction, 0 to below a full turn.
double TurnTo(Stretch const &arc, DrawingPoint p);

/// Whether a point is the centre of an arc but for rounding, so that no point of the arc is the nearest to it.
bool IsAtCenter(Stretch const &s, DrawingPoint p);

/// Fraction of the length at which the carrier of the stretch, gone on beyond the nearer end, is nearest to `p`.
double FractionAt(Stretch const &s, DrawingPoint p);

/// Point of the stretch at the fraction `t` of its length.
DrawingPoint PointAt(Stretch const &s, double t);

/// The part of the stretch between two fractions of its length.
Stretch PartOf(Stretch const &s, double from, double to);

/// The stretch as it runs the other way.
Stretch Reversed(Stretch s);

/// Smallest box of the stretch.
Box BoxOf(Stretch const &s);

inline double LengthOf(Stretch const &s) {
    return s.isArc ? s.radius * std::fabs(s.sweep) : Distance(s.start, s.end);
}

/// Rise of the arc over its chord, positive when the arc lies to the right of the chord; 0 for a line.
double SagittaOf(Stretch const &s);

/// Area between the stretch and its chord, positive when it turns counter-clockwise; a full turn gives the disc.
double SegmentAreaOfArc(Stretch const &s);
inline double SegmentAreaOf(Stretch const &s) {
    return s.isArc ? SegmentAreaOfArc(s) : 0.0;
}

/// The greatest distance of a point of `s` from the line or circle that carries `other`. A line shorter than `nothing`
/// has no direction and is a point.
double DeviationOf(Stretch const &s, Stretch const &other, double nothing);

/// Lets `s` end at the two points. An arc whose ends then miss its circle by more than `allowed` is bent to meet them:
/// one up to a half turn keeps its rise, a longer one its middle point; one without any rise, or that would turn the
/// other way, becomes a line.
void FitToEnds(Stretch &s, DrawingPoint start, DrawingPoint end, double allowed);

/// Whether FitToEnds would bend an arc of more than a half turn, which a small move of an end can throw far off.
bool IsBetterHalved(Stretch const &s, DrawingPoint start, DrawingPoint end, double allowed);

/// The stretch as a piece of the result.
DrawingPiece PieceOf(Stretch const &s, unsigned int id, bool reversed);
inline DrawingPiece PieceOf(Stretch const &s, std::vector<DrawingCurve> const &curves, bool reversed) {
    return PieceOf(s, curves[Index(s.curve)].id, reversed);
}

/// A piece of a result as a stretch of no curve, as its loop runs.
Stretch StretchOf(DrawingPiece const &piece);

} // namespace zvi::lib::drawing

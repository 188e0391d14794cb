#pragma once

#include "zvi/drawing/DrawingRecords.h"

#include <functional>
#include <vector>

namespace zvi::app {

/// A smooth curve in the drawing plane by its parameter.
using PlaneCurve = std::function<lib::DrawingPoint(double)>;

/// Appends to `points`, whose last one must be curve(from), the corners of chords that follow `curve` to curve(to).
/// Both ends are on the curve. Corners between them lie up to the sagitta outside of it, such that chords and curve
/// enclose the same area up to terms of higher order, and no chord or corner is farther than `error` from the curve. A
/// span that is nearly straight becomes one chord. At most kMostChords chords are made, however small the error.
void FlattenSpan(PlaneCurve const &curve, double from, double to, double error, std::vector<lib::DrawingPoint> &points);

/// Most chords that one span becomes.
inline constexpr int kMostChords = 4096;

/// The arc center + cosineAxis cos(t) + sineAxis sin(t) for t from `from` to `from` + `sweep` (radians, sweep up to a
/// full turn either way). The axes need not be at right angles.
struct EllipseArc {
    lib::DrawingPoint center;
    lib::DrawingPoint cosineAxis;
    lib::DrawingPoint sineAxis;
    double from = 0.0;
    double sweep = 0.0;

    lib::DrawingPoint At(double t) const;
    /// The same arc with its axes at right angles.
    EllipseArc WithPrincipalAxes() const;
};

/// Whether the ellipse is a circle to within 1e-9 of its size.
bool IsCircular(EllipseArc const &arc);

/// Whether the ellipse has collapsed to a segment, a point, or numbers that are not finite.
bool IsCollapsed(EllipseArc const &arc);

/// The corners of chords within `error` of the arc, from its start to its end; those at the ends of its axes are on it.
/// A full turn ends at the very point where it starts.
std::vector<lib::DrawingPoint> FlattenEllipse(EllipseArc const &arc, double error);

/// How far the arc from `from` to `to` runs counter-clockwise, in (0, turn]; both in the unit of `turn`, the full turn
/// (above 0).
/// Equal directions, also after any number of turns, make the full turn, and so does a millionth more than one.
double SweepBetween(double from, double to, double turn);

} // namespace zvi::app

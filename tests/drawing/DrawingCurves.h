#pragma once

#include "zvi/drawing/DrawingRecords.h"

#include <string>
#include <vector>

namespace zvi::lib::test {

inline constexpr double kPi = 3.14159265358979323846;

/// Curves from text: "line ID x1 y1 x2 y2", "arc ID cx cy r startDeg endDeg" (counter-clockwise), "circle ID cx cy r",
/// one after another, separated by semicolons or line ends.
std::vector<DrawingCurve> Curves(std::string const &text);
/// The curves as such text, a line each and with all digits. Arcs come out counter-clockwise.
std::string TextOf(std::vector<DrawingCurve> const &curves);

DrawingCurve LineOf(DrawingPoint a, DrawingPoint b);
DrawingCurve ArcOf(DrawingPoint center, double radius, double startDegrees, double endDegrees);
DrawingCurve CircleOf(DrawingPoint center, double radius);
/// The arc whose rise is that share of its chord, to the right of the chord when positive.
DrawingCurve ArcOver(DrawingPoint a, DrawingPoint b, double rise);
/// The curves with the ids 1, 2 and so on.
std::vector<DrawingCurve> Numbered(std::vector<DrawingCurve> curves);
/// A piece taken for a curve.
DrawingCurve CurveOf(DrawingPiece const &piece);

double Distance(DrawingPoint a, DrawingPoint b);
double DistanceTo(DrawingCurve const &c, DrawingPoint p);
/// Signed angle that the curve turns through, 0 for a line. `near` picks between turns that rounding cannot tell apart.
double SweepOf(DrawingCurve const &c, double near);
double SweepOf(DrawingCurve const &c);
/// Whether an arc turns through more than half of its circle, however near to one another its ends are.
bool IsOverHalf(DrawingCurve const &c);
double LengthOf(DrawingCurve const &c);
double LengthOf(std::vector<DrawingCurve> const &curves);
/// The point at the fraction `t` of the length, with the sweep given.
DrawingPoint PointAt(DrawingCurve const &c, double sweep, double t);
/// Signed area between the curve, with the sweep given, and the lines from `origin` to its ends.
double AreaFrom(DrawingPoint origin, DrawingCurve const &c, double sweep);
/// The largest coordinate that any point of the curves may have, in size.
double SizeOf(std::vector<DrawingCurve> const &curves);

/// A similarity: turned, mirrored, scaled, then moved.
struct Motion {
    double turn = 0.0;
    bool isMirrored = false;
    double scale = 1.0;
    DrawingPoint shift;
};
std::vector<DrawingCurve> Moved(std::vector<DrawingCurve> curves, Motion const &motion);

} // namespace zvi::lib::test
